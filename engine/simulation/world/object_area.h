#pragma once

#include "engine/behaviour/area.h"
#include "engine/simulation/world/world.h"

namespace pedflux::engine {

/// What an object means to agents that come and go. Throws Exception for objects of which simulations do not know who
/// is in them.
Area object_area_of(Document const& document, World& world, GlobalId const& object);

}  // namespace pedflux::engine
