#pragma once

#include "engine/navigation/building.h"
#include "engine/navigation/goals.h"

#include <limits>

namespace pedflux::engine::navigation {

inline constexpr double unreachable = std::numeric_limits<double>::infinity();

/// How the shortest way goes on from a site.
struct Onward {
    /// Its next point, and the site that this is or, in a gate, that is nearest to it; `none` when it is the goal.
    Point point;
    std::uint32_t site = none;
};

/// The shortest ways from every site of a building to one destination, by Dijkstra's algorithm from the destination on.
struct Routes {
    /// Per region.
    std::vector<RegionGoals> goals;
    /// Per site: the metres to walk from a corner, or from a point of a gate through this gate.
    std::vector<double> rest;
    std::vector<Onward> onward;
    /// Per point of a gate: the metres to walk for those who came out of it.
    std::vector<double> rest_after;
    std::vector<Onward> onward_after;
    /// Counts the changes.
    std::uint32_t version = 0;
};

Routes routes_to(Building const& building, Destination const& destination);

/// After the connection's passage has changed in the building: finds again what depends on it.
void follow_change(Routes& routes, Building const& building, ConnectionIndex connection);

}  // namespace pedflux::engine::navigation
