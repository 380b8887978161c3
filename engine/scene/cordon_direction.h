#pragma once

#include "engine/geometry/vector.h"
#include "engine/scene/scene_states.h"

namespace pedflux::engine {

/// The horizontal unit vector across a cordon's line, as returned by `Cordon::GetDirectionVector`.
Vector direction_of(CordonState const& cordon);

}  // namespace pedflux::engine
