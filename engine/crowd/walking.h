#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Determines the intended positions of bodies first to last after the step (goal_x, goal_z) from the state before it,
/// and collects possible contacts.
///
/// Speed follows from the local density in a strip ahead, in which nearer people weigh more, by SpeedLaw. The direction
/// is the wanted one, turned aside by people that the walker would meet within the anticipation time.
void decide_goals(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
