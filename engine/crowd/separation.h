#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Number of passes in a step.
inline constexpr int separation_passes = 4;

/// Moves the goals of the bodies from first to last apart from each other and from walls, reading goal_x, goal_z and
/// writing next_x, next_z (position-based contact: Mueller et al. 2007, "Position based dynamics", in Jacobi form).
void separate(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
