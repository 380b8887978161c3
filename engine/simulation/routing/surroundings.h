#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <pedflux/agents.h>

#include <array>
#include <memory>
#include <optional>

/// What is around a point: walls, other people, free space. Asked now and then, so it looks at all of them.
namespace pedflux::engine {

struct FreeSpace {
    static constexpr int segments = 16;
    std::array<double, segments> radii{};  ///< metres
};

/// A point of a region, for questions about places.
struct Standpoint {
    navigation::RegionIndex region = 0;
    Point point;
};

/// The walkable surface under a position: of those that the position is on in the plan, the nearest in height, which
/// may be 1 m off. Throws Exception when there is none.
Standpoint standpoint_of(SimulationState const& run, Vec3d const& position);
Vec3d position_of(SimulationState const& run, Standpoint const& standpoint);

/// The nearest wall point at most so far away.
std::shared_ptr<ObstaclePoint> nearest_obstacle(SimulationState const& run, Standpoint const& from, double distance);
/// The first wall point on a ray.
std::shared_ptr<ObstaclePoint> obstacle_towards(SimulationState const& run, Standpoint const& from, Point direction,
                                                double distance);
/// Whether a body there would meet neither a wall nor anybody but the agent itself.
bool is_open(SimulationState const& run, Standpoint const& place, double radius, std::uint32_t agent);
/// The nearest such place, found to 5 cm.
std::optional<Standpoint> nearest_open(SimulationState const& run, Standpoint const& from, double distance,
                                       double radius, std::uint32_t agent);
FreeSpace free_space_around(SimulationState const& run, Standpoint const& from, double distance, std::uint32_t agent);

/// The direction in the plan through the middle of a segment of free space.
Point direction_of_segment(int segment);

}  // namespace pedflux::engine
