#pragma once

#include "engine/navigation/building.h"
#include "engine/navigation/goals.h"
#include "engine/navigation/views.h"

#include <limits>

namespace pedflux::engine::navigation {

inline constexpr double unreachable = std::numeric_limits<double>::infinity();

/// The shortest ways from all waypoints of a building to one destination.
struct Ways {
    /// By waypoint: distance (metres) from a corner, or from a portal point through its portal edge.
    std::vector<double> rest;
    std::vector<Onward> onward;
    /// By portal point: distance (metres) for those who have come out of the portal edge.
    std::vector<double> rest_after;
    std::vector<Onward> onward_after;
};

/// The routes of one class of people to one destination.
struct Routes {
    RouteClass people;
    /// By region: the cost of a metre of the plane, in metres.
    std::vector<double> metre_costs;
    Ways ways;
    /// By region: the visible parts of the destination, and the waypoints that lead to it.
    std::vector<RegionGoals> goals;
    std::vector<Lists<WaypointView>> views;
    /// Number of changes so far.
    std::uint32_t version = 0;
};

/// Dijkstra's algorithm, outwards from the destination. Throws Exception for a class that does not fit the building.
Routes routes_to(Building const& building, Destination const& destination, RouteClass const& people);

/// Updates routes after a change of the connection's passage.
void follow_change(Routes& routes, Building const& building, ConnectionIndex connection);

}  // namespace pedflux::engine::navigation
