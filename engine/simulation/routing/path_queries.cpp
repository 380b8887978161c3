#include "engine/simulation/routing/path_queries.h"

#include "engine/simulation/routing/routes.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace pedflux::engine {

namespace {

/// Points are searched on rings at this distance (metres), so many on each.
constexpr double ring_width = 0.1;
constexpr int ring_points = 32;

}  // namespace

navigation::ConnectionIndex joint_at(FloorPlan const& plan, navigation::RegionIndex from, navigation::RegionIndex to,
                                     Point point) {
    navigation::ConnectionIndex nearest = navigation::none;
    double least = std::numeric_limits<double>::infinity();
    for (navigation::ConnectionIndex i = 0; i < plan.joints.size(); ++i) {
        auto const& joint = plan.joints[i];
        bool const fits =
            (joint.connection == from && joint.floor == to) || (joint.connection == to && joint.floor == from);
        if (!fits || distance(joint.line, point) >= least) continue;
        least = distance(joint.line, point);
        nearest = i;
    }
    return nearest;
}

std::optional<Point> direction_to(navigation::Navigation const& navigation, Standpoint const& from,
                                  navigation::DestinationIndex destination) {
    navigation::RouteHint hint;
    auto const step = navigation.next(from.region, from.point, destination, hint);
    if (step.kind == navigation::RouteStep::Kind::UNREACHABLE) return std::nullopt;
    if (step.kind == navigation::RouteStep::Kind::ARRIVED) return Point{};
    return unit(step.aim - from.point);
}

PlaceIndex nearest_place(Routes& routes, World const& world, Standpoint const& from, RouteClassIndex people,
                         std::span<PlaceIndex const> places) {
    PlaceIndex best = places.front();
    double least = std::numeric_limits<double>::infinity();
    for (auto const place : places) {
        auto const way =
            routes.navigation.distance(from.region, from.point, destination_at(routes, world, place, people));
        if (way && *way < least) {
            least = *way;
            best = place;
        }
    }
    return best;
}

std::optional<WayToNext> way_to_next(navigation::Navigation const& navigation, FloorPlan const& plan,
                                     Standpoint const& from, navigation::DestinationIndex destination) {
    auto const direction = direction_to(navigation, from, destination);
    auto const path = navigation.path(from.region, from.point, destination);
    if (!direction || path.empty()) return std::nullopt;
    WayToNext way;
    way.direction = *direction;
    std::size_t last = 0;
    while (last + 1 < path.size() && path[last + 1].region == from.region) {
        way.distance += distance(path[last].point, path[last + 1].point);
        ++last;
    }
    way.distance *= plan.inclines[from.region].length_factor;
    way.line = {path[last].point, path[last].point};
    if (last + 1 < path.size()) {
        way.connection = joint_at(plan, from.region, path[last + 1].region, path[last].point);
        way.line = plan.joints[way.connection].line;
    }
    return way;
}

std::optional<Point> nearest_with_way(navigation::Navigation const& navigation, navigation::RegionIndex region,
                                      Point point, double reach, navigation::DestinationIndex destination) {
    auto const has_way = [&](Point candidate) {
        return navigation.contains(region, candidate) && navigation.reachable(region, candidate, destination);
    };
    if (has_way(point)) return point;
    Point const walkable = navigation.nearest_walkable(region, point);
    if (distance(walkable, point) <= reach && navigation.reachable(region, walkable, destination)) return walkable;
    auto const rings = static_cast<int>(reach / ring_width + 1e-9);
    for (int ring = 1; ring <= rings; ++ring) {
        for (int i = 0; i < ring_points; ++i) {
            double const angle = 2 * std::numbers::pi * i / ring_points;
            Point const candidate = point + ring * ring_width * Point{std::cos(angle), std::sin(angle)};
            if (has_way(candidate)) return candidate;
        }
    }
    return std::nullopt;
}

}  // namespace pedflux::engine
