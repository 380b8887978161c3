#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Nobody comes nearer to a wall with the centre than this, in metres, whatever pushes.
inline constexpr double wall_margin = 0.001;

/// Whether a centre at the point stands clear of every closed wall that the region's people meet there.
bool clear_of_walls(Surfaces const& surfaces, std::uint32_t region, Point point);

/// Moves the agents of the bodies from first to last to their goals: no farther than they can walk, along walls where
/// one is in the way, and into another region where they walk over a crossing.
void move_to_goals(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
