#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Number of passes in a step: so many that a push reaches through a packed crowd. With four, two streams that meet
/// press bodies into each other by a quarter of a radius.
inline constexpr int separation_passes = 12;

/// Forgets the contacts of the bodies from first to last that their goals do not make.
void drop_far_contacts(Scene& scene, std::size_t first, std::size_t last);

/// Moves the goals of the bodies from first to last apart from each other and from walls, reading goal_x, goal_z and
/// writing next_x, next_z (position-based contact: Mueller et al. 2007, "Position based dynamics", in Jacobi form).
void separate(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
