#include "engine/simulation/routing/surroundings.h"

#include "engine/geometry/checks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// How far a position may be above or below the surface that it is meant to be on (metres).
constexpr double height_tolerance = 1;
/// Points are searched on rings at this distance (metres), so many on each.
constexpr double ring_width = 0.05;
constexpr int ring_points = 48;
/// How far beside a wall its free side is looked for (metres).
constexpr double beside = 0.01;

bool is_closed(Surroundings const& around, navigation::Wall const& wall, navigation::RegionIndex region) {
    if (wall.connection == navigation::none) return true;
    auto const& passage = around.navigation.passage(wall.connection);
    bool const is_inside = around.plan.joints[wall.connection].connection == region;
    return is_inside ? !passage.open_forward : !passage.open_backward;
}

std::shared_ptr<ObstaclePoint> obstacle(Surroundings const& around, navigation::RegionIndex region, Segment wall,
                                        Point point) {
    // Walls run around their area either way, so the normal points to the side that is free.
    Point const left = unit(turned_left(wall.to - wall.from));
    bool const left_is_free = around.navigation.contains(region, point + beside * left);
    Point const normal = left_is_free ? left : -1 * left;
    return std::make_shared<ObstaclePoint>(position_of(around.plan, {region, point}), Vec3d(normal.x, 0, normal.z));
}

/// Where a ray meets a segment, in metres from the start of the ray; none where they are parallel.
std::optional<double> hit(Point from, Point direction, Segment segment) {
    auto const crossing = line_crossing(from, direction, segment);
    if (!crossing || crossing->on_ray < 0 || crossing->on_segment < 0 || crossing->on_segment > 1) return std::nullopt;
    return crossing->on_ray;
}

}  // namespace

Standpoint standpoint_of(Surroundings const& around, Vec3d const& position) {
    Vector const place = require_point("A position", position);
    Point const point{place.x, place.z};
    std::optional<Standpoint> found;
    double least = height_tolerance;
    for (navigation::RegionIndex region = 0; region < around.plan.surfaces.size(); ++region) {
        double const offset = std::abs(height_at(around.plan, region, point) - place.y);
        if (offset > least || !around.navigation.contains(region, point)) continue;
        least = offset;
        found = {region, point};
    }
    if (!found) {
        refuse(
            fmt::format("The position {} is on no walkable surface and not within 1 m of its height", text_of(place)));
    }
    return *found;
}

Vec3d position_of(FloorPlan const& plan, Standpoint const& standpoint) {
    return {standpoint.point.x, height_at(plan, standpoint.region, standpoint.point), standpoint.point.z};
}

std::shared_ptr<ObstaclePoint> nearest_obstacle(Surroundings const& around, Standpoint const& from, double reach) {
    Segment const* nearest = nullptr;
    for (auto const& wall : around.navigation.walls(from.region)) {
        double const off = distance(wall.segment, from.point);
        if (off > reach || !is_closed(around, wall, from.region)) continue;
        reach = off;
        nearest = &wall.segment;
    }
    return nearest ? obstacle(around, from.region, *nearest, nearest_point(*nearest, from.point)) : nullptr;
}

std::shared_ptr<ObstaclePoint> obstacle_towards(Surroundings const& around, Standpoint const& from, Point direction,
                                                double reach) {
    Segment const* nearest = nullptr;
    for (auto const& wall : around.navigation.walls(from.region)) {
        auto const off = hit(from.point, direction, wall.segment);
        if (!off || *off > reach || !is_closed(around, wall, from.region)) continue;
        reach = *off;
        nearest = &wall.segment;
    }
    return nearest ? obstacle(around, from.region, *nearest, from.point + reach * direction) : nullptr;
}

bool is_open(Surroundings const& around, Standpoint const& place, double radius, std::uint32_t agent) {
    if (!around.navigation.contains(place.region, place.point)) return false;
    for (auto const& wall : around.navigation.walls(place.region)) {
        if (is_closed(around, wall, place.region) && distance(wall.segment, place.point) < radius) return false;
    }
    return std::ranges::none_of(around.agents.motions, [&](AgentMotion const& motion) {
        return motion.agent != agent && motion.region == place.region &&
               distance(motion.position, place.point) < radius + around.crowd.radius(motion.body);
    });
}

std::optional<Standpoint> nearest_open(Surroundings const& around, Standpoint const& from, double reach, double radius,
                                       std::uint32_t agent) {
    if (is_open(around, from, radius, agent)) return from;
    for (double ring = ring_width; ring <= reach; ring += ring_width) {
        for (int i = 0; i < ring_points; ++i) {
            double const angle = 2 * std::numbers::pi * i / ring_points;
            Standpoint const place{from.region, from.point + ring * Point{std::cos(angle), std::sin(angle)}};
            if (is_open(around, place, radius, agent)) return place;
        }
    }
    return std::nullopt;
}

Point direction_of_segment(int segment) {
    double const heading = 2 * std::numbers::pi * segment / FreeSpace::segments;
    return {std::sin(heading), -std::cos(heading)};
}

FreeSpace free_space_around(Surroundings const& around, Standpoint const& from, double reach, std::uint32_t agent) {
    constexpr int rays_per_segment = 5;
    FreeSpace space;
    space.radii.fill(reach);
    for (int segment = 0; segment < FreeSpace::segments; ++segment) {
        auto& radius = space.radii[static_cast<std::size_t>(segment)];
        for (int ray = 0; ray < rays_per_segment; ++ray) {
            double const from_middle = (ray + 0.5) / rays_per_segment - 0.5;
            double const heading = 2 * std::numbers::pi * (segment + from_middle) / FreeSpace::segments;
            Point const direction{std::sin(heading), -std::cos(heading)};
            for (auto const& wall : around.navigation.walls(from.region)) {
                auto const off = hit(from.point, direction, wall.segment);
                if (off && *off < radius && is_closed(around, wall, from.region)) radius = *off;
            }
            for (auto const& motion : around.agents.motions) {
                if (motion.agent == agent || motion.region != from.region) continue;
                Point const offset = motion.position - from.point;
                double const body = around.crowd.radius(motion.body);
                double const ahead = dot(offset, direction);
                double const aside = std::abs(cross(direction, offset));
                if (ahead <= 0 || aside >= body) continue;
                radius = std::min(radius, std::max(0.0, ahead - std::sqrt(body * body - aside * aside)));
            }
        }
    }
    return space;
}

}  // namespace pedflux::engine
