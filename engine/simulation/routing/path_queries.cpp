#include "engine/simulation/routing/path_queries.h"

#include <cmath>
#include <numbers>

namespace pedflux::engine {

namespace {

constexpr double ring_width = 0.1;
constexpr int ring_places = 32;

}  // namespace

navigation::ConnectionIndex joint_at(SimulationState const& run, navigation::RegionIndex from,
                                     navigation::RegionIndex to, Point point) {
    navigation::ConnectionIndex nearest = navigation::none;
    double least = std::numeric_limits<double>::infinity();
    for (navigation::ConnectionIndex i = 0; i < run.plan.joints.size(); ++i) {
        auto const& joint = run.plan.joints[i];
        bool const fits =
            (joint.connection == from && joint.floor == to) || (joint.connection == to && joint.floor == from);
        if (!fits || distance(joint.line, point) >= least) continue;
        least = distance(joint.line, point);
        nearest = i;
    }
    return nearest;
}

std::optional<Point> direction_to(SimulationState const& run, Standpoint const& from,
                                  navigation::DestinationIndex destination) {
    navigation::RouteHint hint;
    auto const step = run.navigation.next(from.region, from.point, destination, hint);
    if (step.kind == navigation::RouteStep::Kind::UNREACHABLE) return std::nullopt;
    if (step.kind == navigation::RouteStep::Kind::ARRIVED) return Point{};
    return unit(step.aim - from.point);
}

PlaceIndex nearest_place(SimulationState& run, Standpoint const& from, RouteClassIndex people,
                         std::span<PlaceIndex const> places) {
    PlaceIndex best = places.front();
    double least = std::numeric_limits<double>::infinity();
    for (auto const place : places) {
        auto const way = run.navigation.distance(from.region, from.point, destination_at(run, place, people));
        if (way && *way < least) {
            least = *way;
            best = place;
        }
    }
    return best;
}

std::optional<WayToNext> way_to_next(SimulationState const& run, Standpoint const& from,
                                     navigation::DestinationIndex destination) {
    auto const direction = direction_to(run, from, destination);
    auto const path = run.navigation.path(from.region, from.point, destination);
    if (!direction || path.empty()) return std::nullopt;
    WayToNext way;
    way.direction = *direction;
    std::size_t last = 0;
    while (last + 1 < path.size() && path[last + 1].region == from.region) {
        way.distance += distance(path[last].point, path[last + 1].point);
        ++last;
    }
    way.distance *= run.plan.inclines[from.region].length_factor;
    way.line = {path[last].point, path[last].point};
    if (last + 1 < path.size()) {
        way.connection = joint_at(run, from.region, path[last + 1].region, path[last].point);
        way.line = run.plan.joints[way.connection].line;
    }
    return way;
}

std::optional<Point> nearest_with_way(SimulationState const& run, navigation::RegionIndex region, Point point,
                                      double reach, navigation::DestinationIndex destination) {
    auto const has_way = [&](Point place) {
        return run.navigation.contains(region, place) && run.navigation.reachable(region, place, destination);
    };
    if (has_way(point)) return point;
    Point const walkable = run.navigation.nearest_walkable(region, point);
    if (distance(walkable, point) <= reach && run.navigation.reachable(region, walkable, destination)) return walkable;
    auto const rings = static_cast<int>(reach / ring_width + 1e-9);
    for (int ring = 1; ring <= rings; ++ring) {
        for (int i = 0; i < ring_places; ++i) {
            double const angle = 2 * std::numbers::pi * i / ring_places;
            Point const place = point + ring * ring_width * Point{std::cos(angle), std::sin(angle)};
            if (has_way(place)) return place;
        }
    }
    return std::nullopt;
}

}  // namespace pedflux::engine
