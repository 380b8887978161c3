#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Number of passes in a step, enough for a push to reach through a dense crowd. With four, two opposing streams press
/// bodies into each other by a quarter of a radius.
inline constexpr int separation_passes = 12;

/// Drops the contacts of bodies first to last that their intended positions do not make.
void drop_far_contacts(Scene& scene, std::size_t first, std::size_t last);

/// Moves the intended positions of bodies first to last apart from each other and from walls. Reads goal_x and goal_z,
/// writes next_x and next_z (position-based contacts after Müller et al., "Position based dynamics", 2007, in Jacobi
/// form).
void separate(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
