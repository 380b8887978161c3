#pragma once

#include "engine/navigation/building.h"
#include "engine/navigation/goals.h"
#include "engine/navigation/views.h"

#include <limits>

namespace pedflux::engine::navigation {

inline constexpr double unreachable = std::numeric_limits<double>::infinity();

/// The shortest ways from every waypoint of a building to one destination.
struct Ways {
    /// Per waypoint: the metres to walk from a corner, or from a point of a portal edge through this portal edge.
    std::vector<double> rest;
    std::vector<Onward> onward;
    /// Per point of a portal edge: the metres to walk for those who came out of it.
    std::vector<double> rest_after;
    std::vector<Onward> onward_after;
};

/// Everything about one destination for one class of people.
struct Routes {
    RouteClass people;
    /// Per region: what a metre of plan counts as.
    std::vector<double> metre_costs;
    Ways ways;
    /// Per region: the destination itself, and what comes next on the way to it.
    std::vector<RegionGoals> goals;
    std::vector<Lists<WaypointView>> views;
    /// Counts the changes.
    std::uint32_t version = 0;
};

/// By Dijkstra's algorithm from the destination on. Throws Exception for a class that does not fit the building.
Routes routes_to(Building const& building, Destination const& destination, RouteClass const& people);

/// After the connection's passage has changed in the building: finds again what depends on it.
void follow_change(Routes& routes, Building const& building, ConnectionIndex connection);

}  // namespace pedflux::engine::navigation
