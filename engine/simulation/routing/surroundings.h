#pragma once

#include "engine/crowd/crowd.h"
#include "engine/navigation/navigation.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/world/world.h"

#include <pedflux/agents.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

/// What is around a point: walls, agents, free space. These are occasional questions, so they go through all walls and
/// agents.
namespace pedflux::engine {

struct Surroundings {
    FloorPlan const& plan;
    navigation::Navigation const& navigation;
    Agents const& agents;
    crowd::Crowd const& crowd;
};

struct FreeSpace {
    static constexpr int segments = 16;
    std::array<double, segments> radii{};  ///< metres
};

/// The walkable surface under a position: of those that the position lies on in the plan, the nearest in height, at
/// most 1 m away. Throws Exception when there is none.
Standpoint standpoint_of(Surroundings const& around, Vec3d const& position);
Vec3d position_of(FloorPlan const& plan, Standpoint const& standpoint);

/// The nearest wall point within `reach` (metres).
std::shared_ptr<ObstaclePoint> nearest_obstacle(Surroundings const& around, Standpoint const& from, double reach);
/// The first wall point on a ray.
std::shared_ptr<ObstaclePoint> obstacle_towards(Surroundings const& around, Standpoint const& from, Point direction,
                                                double reach);
/// Whether a body at a point would touch neither a wall nor an agent other than its own.
bool is_open(Surroundings const& around, Standpoint const& place, double radius, std::uint32_t agent);
/// The nearest such point, to 5 cm.
std::optional<Standpoint> nearest_open(Surroundings const& around, Standpoint const& from, double reach, double radius,
                                       std::uint32_t agent);
FreeSpace free_space_around(Surroundings const& around, Standpoint const& from, double reach, std::uint32_t agent);

/// The direction in the plan through the middle of a segment of free space.
Point direction_of_segment(int segment);

}  // namespace pedflux::engine
