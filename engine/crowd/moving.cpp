#include "engine/crowd/moving.h"

#include <cmath>
#include <span>

namespace pedflux::engine::crowd {

namespace {

/// Whether a wall obstructs a step. Within the margin only steps away from the wall are free.
bool stops(Segment wall, Segment way) {
    double const after = distance(wall, way.to);
    if (after < wall_margin && after <= distance(wall, way.from)) return true;
    return cross_each_other(wall, way, Touching::COUNTS);
}

struct Obstacles {
    Surfaces const& surfaces;
    std::span<std::uint32_t const> numbers;

    /// The first wall that obstructs a step, or none.
    Segment const* first_on(Segment way) const {
        for (std::uint32_t const number : numbers)
            if (surfaces.wall_open[number] == 0 && stops(surfaces.walls[number], way)) return &surfaces.walls[number];
        return nullptr;
    }
};

/// The end of a step from `from` to `to`: there, beside the wall that obstructs it, or where it began.
Point end_of_way(Obstacles const& obstacles, Point from, Point to) {
    Segment const* const wall = obstacles.first_on({from, to});
    if (wall == nullptr) return to;
    Point const along = unit(wall->to - wall->from);
    Point const beside = from + dot(to - from, along) * along;
    return obstacles.first_on({from, beside}) == nullptr ? beside : from;
}

/// The region after a step. The sign of the side decides, so that a point on the line belongs to one region.
std::uint32_t region_after(Surfaces const& surfaces, std::uint32_t cell, std::uint32_t region, Segment way) {
    for (std::uint32_t const number : surfaces.crossings_of[cell]) {
        Crossing const& crossing = surfaces.crossings[number];
        bool const left = orientation(crossing.from, crossing.to, way.to) >= 0;
        if (region == (left ? crossing.left : crossing.right)) continue;
        if (region != crossing.left && region != crossing.right) continue;
        if (cross_each_other({crossing.from, crossing.to}, way, Touching::COUNTS))
            return left ? crossing.left : crossing.right;
    }
    return region;
}

}  // namespace

bool clear_of_walls(Surfaces const& surfaces, std::uint32_t region, Point point) {
    for (std::uint32_t const number : surfaces.walls_of[surfaces.cell_of(region, point.x, point.z)])
        if (surfaces.wall_open[number] == 0 && distance(surfaces.walls[number], point) < wall_margin) return false;
    return true;
}

void move_to_goals(Scene& scene, std::size_t first, std::size_t last) {
    Bodies const& bodies = scene.bodies;
    for (std::size_t index = first; index < last; ++index) {
        Agent& agent = scene.agent_of(bodies.source[index]);
        Point const from{agent.x, agent.z};
        Point way{static_cast<double>(bodies.goal_x[index]) - static_cast<double>(bodies.x[index]),
                  static_cast<double>(bodies.goal_z[index]) - static_cast<double>(bodies.z[index])};
        double const most = static_cast<double>(agent.speed) * scene.seconds;
        double const size = length(way);
        if (size > most) way = (most / size) * way;
        Point to = from + way;
        std::uint32_t const cell = bodies.cell[index];
        if (bodies.radius[index] >= 0) {
            to = end_of_way({scene.surfaces, scene.surfaces.walls_of[cell]}, from, to);
            agent.region = region_after(scene.surfaces, cell, agent.region, {from, to});
        }
        agent.x = to.x;
        agent.z = to.z;
        agent.velocity_x = static_cast<float>((to.x - from.x) / scene.seconds);
        agent.velocity_z = static_cast<float>((to.z - from.z) / scene.seconds);
    }
}

}  // namespace pedflux::engine::crowd
