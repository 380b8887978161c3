#include "engine/navigation/navigation.h"

#include "engine/base/checks.h"
#include "engine/navigation/query.h"
#include "engine/navigation/walls.h"

#include <cmath>

#include <fmt/format.h>

namespace pedflux::engine::navigation {

struct Navigation::State {
    Building building;
    std::vector<Routes> routes;
    std::vector<std::vector<Wall>> walls;
};

namespace {

[[noreturn]] void refuse_index(std::uint32_t index, char const* kind, std::size_t count) {
    refuse(fmt::format("there is no {} {}; there are {}", kind, index, count));
}

[[noreturn]] void refuse_point(Point point) {
    refuse(fmt::format("a route was asked for at {}; both coordinates must be finite", text_of(point)));
}

template <class Things>
auto& named_by(std::uint32_t index, char const* kind, Things& things) {
    if (index >= things.size()) refuse_index(index, kind, things.size());
    return things[index];
}

Point finite(Point point) {
    if (!is_finite(point)) refuse_point(point);
    return point;
}

std::vector<std::vector<Wall>> walls_of(Building const& building, NavigationInput const& input) {
    std::vector<std::vector<Opening>> openings(building.regions.size());
    for (ConnectionIndex i = 0; i < input.connections.size(); ++i)
        for (RegionLine const& line : {input.connections[i].from, input.connections[i].to})
            openings[line.region].push_back({line.line, i, none});
    for (DestinationIndex i = 0; i < input.destinations.size(); ++i)
        for (RegionLine const& line : input.destinations[i].lines)
            openings[line.region].push_back({line.line, none, i});
    std::vector<std::vector<Wall>> walls;
    for (std::size_t r = 0; r < building.regions.size(); ++r)
        walls.push_back(walls_of(building.regions[r].walkable, openings[r]));
    return walls;
}

/// The exit point of somebody who entered a portal edge at `point`.
Point across(Building const& building, std::uint32_t portal_point, Point point) {
    std::vector<Point> const& here = portal_edge_of(building, portal_point).points;
    std::uint32_t const other = building.opposite[portal_point];
    std::vector<Point> const& there = portal_edge_of(building, other).points;
    return at({there.front(), there.back()}, nearest_fraction({here.front(), here.back()}, point));
}

}  // namespace

Navigation::Navigation(NavigationInput const& input) : state_(std::make_unique<State>()) {
    state_->building = building_of(input);
    state_->walls = walls_of(state_->building, input);
    for (Destination const& destination : input.destinations) add_destination(destination);
}

Navigation::Navigation(Navigation&&) noexcept = default;
Navigation& Navigation::operator=(Navigation&&) noexcept = default;
Navigation::~Navigation() = default;

DestinationIndex Navigation::add_destination(Destination const& destination, RouteClass const& people) {
    state_->routes.push_back(routes_to(state_->building, destination, people));
    return static_cast<DestinationIndex>(state_->routes.size() - 1);
}

void Navigation::set_passage(ConnectionIndex connection, Passage const& passage) {
    Connection& changed = named_by(connection, "connection", state_->building.connections);
    if (!(passage.cost >= 0) || !std::isfinite(passage.cost))
        refuse(
            fmt::format("the passage of connection {} costs {:f} m; it must be 0 or more", connection, passage.cost));
    changed.passage = passage;
    for (Routes& routes : state_->routes) follow_change(routes, state_->building, connection);
}

Passage const& Navigation::passage(ConnectionIndex connection) const {
    return named_by(connection, "connection", state_->building.connections).passage;
}

std::size_t Navigation::region_count() const { return state_->building.regions.size(); }
std::size_t Navigation::destination_count() const { return state_->routes.size(); }

RouteStep Navigation::next(RegionIndex region, Point point, DestinationIndex destination, RouteHint& hint) const {
    RegionMap const& map = named_by(region, "region", state_->building.regions);
    Routes const& routes = named_by(destination, "destination", state_->routes);
    if (hint.region != region || hint.destination != destination || hint.version != routes.version) {
        hint = {};
        hint.region = region;
        hint.destination = destination;
        hint.version = routes.version;
    }
    return next_step(map, routes, finite(point), hint);
}

std::optional<double> Navigation::distance(RegionIndex region, Point point, DestinationIndex destination) const {
    RouteHint hint;
    RouteStep const step = next(region, point, destination, hint);
    if (step.kind == RouteStep::Kind::UNREACHABLE) return std::nullopt;
    return step.distance;
}

bool Navigation::reachable(RegionIndex region, Point point, DestinationIndex destination) const {
    return distance(region, point, destination).has_value();
}

std::vector<RoutePoint> Navigation::path(RegionIndex region, Point point, DestinationIndex destination) const {
    RouteHint hint;
    RouteStep const step = next(region, point, destination, hint);
    if (step.kind == RouteStep::Kind::UNREACHABLE) return {};
    std::vector<RoutePoint> way{{region, point}};
    if (!(step.aim == point)) way.push_back({region, step.aim});
    if (step.kind == RouteStep::Kind::ARRIVED || step.kind == RouteStep::Kind::GOAL) return way;

    Building const& building = state_->building;
    Routes const& routes = state_->routes[destination];
    std::uint32_t waypoint = building.regions[region].first_waypoint + hint.aimed;
    for (bool after = false; waypoint != none && way.size() <= 2 * building.region_of.size();) {
        bool const through_portal_edge = !after && building.opposite[waypoint] != none;
        Onward const& onward = (after ? routes.ways.onward_after : routes.ways.onward)[waypoint];
        RegionIndex const region_there = building.region_of[through_portal_edge ? onward.waypoint : waypoint];
        Point const there = through_portal_edge ? across(building, waypoint, way.back().point) : onward.point;
        if (!(there == way.back().point) || region_there != way.back().region) way.push_back({region_there, there});
        waypoint = onward.waypoint;
        after = through_portal_edge;
    }
    return way;
}

bool Navigation::contains(RegionIndex region, Point point) const {
    return named_by(region, "region", state_->building.regions).walkable_mesh.triangle_at(finite(point)) != none;
}

Point Navigation::nearest_walkable(RegionIndex region, Point point) const {
    return named_by(region, "region", state_->building.regions).walkable_mesh.nearest(finite(point)).point;
}

Point Navigation::nearest_clear(RegionIndex region, Point point) const {
    Mesh::Place const place = named_by(region, "region", state_->building.regions).clear_mesh.nearest(finite(point));
    return place.triangle == none ? point : place.point;
}

bool Navigation::in_sight(RegionIndex region, Point from, Point to) const {
    Mesh const& mesh = named_by(region, "region", state_->building.regions).clear_mesh;
    Mesh::Place const place = mesh.nearest(finite(from));
    return place.triangle != none && pedflux::engine::distance(place.point, from) <= touching &&
           mesh.walk(place, finite(to)) == to;
}

std::vector<Wall> const& Navigation::walls(RegionIndex region) const {
    return named_by(region, "region", state_->walls);
}

}  // namespace pedflux::engine::navigation
