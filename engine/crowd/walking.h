#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Decides for the bodies from first to last where they want to be after the step (goal_x, goal_z), from what all were
/// doing before it, and notes whom they may touch on the way.
///
/// Speed: the felt density is that of a strip ahead, people weighing less with distance; SpeedLaw turns it into a
/// speed. Direction: the wanted one, turned aside by people whom the walker would meet within the anticipation time.
void decide_goals(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
