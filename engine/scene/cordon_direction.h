#pragma once

#include "engine/geometry/vector.h"
#include "engine/scene/scene_states.h"

namespace pedflux::engine {

/// The level direction of length 1 across a cordon's line, as `Cordon::GetDirectionVector` tells it.
Vector direction_of(CordonState const& cordon);

}  // namespace pedflux::engine
