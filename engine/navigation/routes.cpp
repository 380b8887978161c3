#include "engine/navigation/routes.h"

#include "engine/base/checks.h"
#include "engine/navigation/way_through.h"

#include <algorithm>
#include <cmath>
#include <queue>
#include <tuple>

#include <fmt/format.h>

namespace pedflux::engine::navigation {

namespace {

/// Ways that differ less (metres) count as equally long.
constexpr double no_shorter = 1e-9;

/// A waypoint whose distance has become known. Portal points are reached twice: by those who have come out of the
/// portal edge and, on its other side, by those who are about to enter it.
struct Reached {
    double distance = 0;
    std::uint32_t waypoint = none;
    bool after = false;

    bool operator>(Reached const& other) const {
        return std::tie(distance, waypoint, after) > std::tie(other.distance, other.waypoint, other.after);
    }
};

bool is_closed(RouteClass const& people, PortalEdge const& portal_edge) {
    if (people.closed.empty()) return false;
    auto const& closure = people.closed[portal_edge.connection];
    return portal_edge.forward ? closure.forward : closure.backward;
}

class Search {
  public:
    Search(Building const& building, Routes& routes) : building_(building), routes_(routes) {}

    void start_from_goals() {
        for (std::size_t r = 0; r < building_.regions.size(); ++r)
            for (GoalSight const& sight : routes_.goals[r].sights)
                reach(building_.regions[r].first_waypoint + sight.waypoint, sight.distance, {sight.goal, none});
    }

    /// Relaxes a portal point: its distance is that of the opposite point plus the cost of the passage.
    void enter_portal_edge(std::uint32_t waypoint) {
        std::uint32_t const other = building_.opposite[waypoint];
        PortalEdge const& portal_edge = portal_edge_of(building_, waypoint);
        Passage const& passage = building_.connections[portal_edge.connection].passage;
        if (!is_open(portal_edge, passage) || is_closed(routes_.people, portal_edge)) return;
        double const distance = routes_.ways.rest_after[other] + passage.cost;
        if (distance >= routes_.ways.rest[waypoint] - no_shorter) return;
        routes_.ways.rest[waypoint] = distance;
        routes_.ways.onward[waypoint] = {waypoint_of(building_, other).point, other};
        reached_.push({distance, waypoint, false});
    }

    void run() {
        while (!reached_.empty()) {
            Reached const next = reached_.top();
            reached_.pop();
            if (next.distance > (next.after ? routes_.ways.rest_after : routes_.ways.rest)[next.waypoint]) continue;
            if (next.after)
                enter_portal_edge(building_.opposite[next.waypoint]);
            else
                spread(next.waypoint);
        }
    }

  private:
    void reach(std::uint32_t waypoint, double distance, Onward onward) {
        bool const after = !waypoint_of(building_, waypoint).is_corner();
        double& known = (after ? routes_.ways.rest_after : routes_.ways.rest)[waypoint];
        if (distance >= known - no_shorter) return;
        known = distance;
        (after ? routes_.ways.onward_after : routes_.ways.onward)[waypoint] = onward;
        reached_.push({distance, waypoint, after});
    }

    void spread(std::uint32_t waypoint) {
        RegionIndex const index = building_.region_of[waypoint];
        RegionMap const& region = building_.regions[index];
        double const metre = routes_.metre_costs[index];
        std::uint32_t const local = waypoint - region.first_waypoint;
        Waypoint const& from = region.waypoints.all[local];
        for (WaypointLink const& link : region.waypoints.links[local])
            reach(region.first_waypoint + link.waypoint, routes_.ways.rest[waypoint] + metre * link.length,
                  {from.point, waypoint});
        if (from.is_corner()) return;
        if (local > region.waypoints.portal_edge_begin[from.portal_edge])
            spread_between(region, metre, local - 1, local);
        if (local + 1 < region.waypoints.portal_edge_begin[from.portal_edge + 1])
            spread_between(region, metre, local, local + 1);
    }

    /// Relaxes all waypoints that see both of two neighbouring portal points, across the line between them.
    void spread_between(RegionMap const& region, double metre, std::uint32_t first, std::uint32_t second) {
        double const first_rest = routes_.ways.rest[region.first_waypoint + first];
        double const second_rest = routes_.ways.rest[region.first_waypoint + second];
        if (first_rest == unreachable || second_rest == unreachable) return;
        Segment const piece{region.waypoints.all[first].point, region.waypoints.all[second].point};
        auto const left = region.waypoints.links[first];
        auto const right = region.waypoints.links[second];
        for (auto a = left.begin(), b = right.begin(); a != left.end() && b != right.end();) {
            if (a->waypoint != b->waypoint) {
                ++(a->waypoint < b->waypoint ? a : b);
                continue;
            }
            WayThrough const way =
                way_through(region.waypoints.all[a->waypoint].point, piece, first_rest, second_rest, metre);
            bool const nearer_second = distance(way.point, piece.to) < distance(way.point, piece.from);
            reach(region.first_waypoint + a->waypoint, way.distance,
                  {way.point, region.first_waypoint + (nearer_second ? second : first)});
            ++a;
            ++b;
        }
    }

    Building const& building_;
    Routes& routes_;
    std::priority_queue<Reached, std::vector<Reached>, std::greater<>> reached_;
};

void find_all(Routes& routes, Building const& building) {
    std::size_t const count = building.region_of.size();
    routes.ways.rest.assign(count, unreachable);
    routes.ways.onward.assign(count, {});
    routes.ways.rest_after.assign(count, unreachable);
    routes.ways.onward_after.assign(count, {});
    Search search(building, routes);
    search.start_from_goals();
    search.run();
}

/// Whether the shortest way from any waypoint leads through this portal point.
bool is_used(Routes const& routes, std::uint32_t portal_point) {
    auto const leads_there = [portal_point](Onward const& onward) { return onward.waypoint == portal_point; };
    return std::any_of(routes.ways.onward.begin(), routes.ways.onward.end(), leads_there) ||
           std::any_of(routes.ways.onward_after.begin(), routes.ways.onward_after.end(), leads_there);
}

void find_views(Routes& routes, Building const& building, RegionIndex index) {
    RegionMap const& region = building.regions[index];
    auto const of_region = [&](auto const& values) {
        return std::span(values).subspan(region.first_waypoint, region.waypoints.all.size());
    };
    routes.views[index] = views_to(region, routes.metre_costs[index], of_region(routes.ways.rest),
                                   of_region(routes.ways.onward), of_region(routes.ways.rest_after));
}

bool same(Ways const& left, Ways const& right, std::uint32_t waypoint) {
    return left.rest[waypoint] == right.rest[waypoint] && left.rest_after[waypoint] == right.rest_after[waypoint] &&
           left.onward[waypoint].point == right.onward[waypoint].point;
}

void check_class(Building const& building, RouteClass const& people) {
    if (!people.closed.empty() && people.closed.size() != building.connections.size())
        refuse(fmt::format("a class of people closes {} connections or leaves them open; there are {}",
                           people.closed.size(), building.connections.size()));
    if (!people.weights.empty() && people.weights.size() != building.regions.size())
        refuse(fmt::format("a class of people weighs {} regions; there are {}", people.weights.size(),
                           building.regions.size()));
    for (double const weight : people.weights)
        if (!(weight > 0) || !std::isfinite(weight))
            refuse(fmt::format("a metre counts as {:f} to a class of people; it must be above 0", weight));
}

}  // namespace

Routes routes_to(Building const& building, Destination const& destination, RouteClass const& people) {
    check_destination(building, destination);
    check_class(building, people);
    Routes routes;
    routes.people = people;
    for (RegionIndex r = 0; r < building.regions.size(); ++r)
        routes.metre_costs.push_back(building.regions[r].length_factor *
                                     (people.weights.empty() ? 1 : people.weights[r]));
    for (RegionIndex r = 0; r < building.regions.size(); ++r) {
        std::vector<Segment> lines;
        for (RegionLine const& line : destination.lines)
            if (line.region == r) lines.push_back(line.line);
        Polygons areas;
        for (RegionArea const& area : destination.areas)
            if (area.region == r) areas.push_back(area.area);
        routes.goals.push_back(goals_in(building.regions[r], routes.metre_costs[r], lines, areas));
    }
    find_all(routes, building);
    routes.views.resize(building.regions.size());
    for (RegionIndex r = 0; r < building.regions.size(); ++r) find_views(routes, building, r);
    return routes;
}

void follow_change(Routes& routes, Building const& building, ConnectionIndex connection) {
    bool longer = false;
    std::vector<std::uint32_t> changed;
    for (std::uint32_t waypoint = 0; waypoint < building.opposite.size(); ++waypoint) {
        if (building.opposite[waypoint] == none) continue;
        PortalEdge const& portal_edge = portal_edge_of(building, waypoint);
        if (portal_edge.connection != connection) continue;
        Passage const& passage = building.connections[connection].passage;
        bool const is_passed = is_open(portal_edge, passage) && !is_closed(routes.people, portal_edge);
        double const rest =
            is_passed ? routes.ways.rest_after[building.opposite[waypoint]] + passage.cost : unreachable;
        if (rest == routes.ways.rest[waypoint]) continue;
        changed.push_back(waypoint);
        longer = longer || (rest > routes.ways.rest[waypoint] && is_used(routes, waypoint));
    }
    if (changed.empty()) return;
    ++routes.version;
    Ways const before = routes.ways;
    if (longer)
        find_all(routes, building);
    else {
        Search search(building, routes);
        for (std::uint32_t const waypoint : changed) {
            routes.ways.rest[waypoint] = unreachable;
            search.enter_portal_edge(waypoint);
        }
        search.run();
    }
    for (RegionIndex r = 0; r < building.regions.size(); ++r) {
        std::uint32_t const first = building.regions[r].first_waypoint;
        std::uint32_t const end = first + static_cast<std::uint32_t>(building.regions[r].waypoints.all.size());
        for (std::uint32_t waypoint = first; waypoint < end; ++waypoint)
            if (!same(before, routes.ways, waypoint)) {
                find_views(routes, building, r);
                break;
            }
    }
}

}  // namespace pedflux::engine::navigation
