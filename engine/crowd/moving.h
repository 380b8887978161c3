#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Smallest distance of the centre of a body from a wall (metres).
inline constexpr double wall_margin = 0.001;

/// Whether the centre of a body may be at the point, given the closed walls around it.
bool clear_of_walls(Surfaces const& surfaces, std::uint32_t region, Point point);

/// Moves the agents of bodies first to last to their intended positions: no farther than they can walk, along walls
/// that are in the way, and into another region across crossings.
void move_to_goals(Scene& scene, std::size_t first, std::size_t last);

}  // namespace pedflux::engine::crowd
