#include "engine/navigation/building.h"

#include "engine/geometry/polygons.h"
#include "engine/navigation/openings.h"
#include "engine/navigation/way_through.h"

#include <pedflux/exception.h>

#include <cmath>

namespace pedflux::engine::navigation {

namespace {

/// Points of a portal edge are at most this far apart (metres), or a quarter of the portal edge.
constexpr double portal_point_spacing = 0.25;
constexpr double fewest_portal_edge_pieces = 4;

std::string named(std::string const& kind, std::size_t index, std::string const& name) {
    return name.empty() ? kind + " " + std::to_string(index) : kind + " \"" + name + "\"";
}

std::string text_of(Segment line) {
    return "from " + pedflux::engine::text_of(line.from) + " to " + pedflux::engine::text_of(line.to);
}

RegionMap const& region_at(Building const& building, RegionIndex region, std::string const& who) {
    if (region >= building.regions.size())
        throw Exception(who + " names region " + std::to_string(region) + "; there are " +
                        std::to_string(building.regions.size()));
    return building.regions[region];
}

void check_line(Building const& building, RegionLine const& line, std::string const& who) {
    RegionMap const& region = region_at(building, line.region, who);
    if (!is_finite(line.line.from) || !is_finite(line.line.to))
        throw Exception(who + " has a line with a coordinate that is not a finite number");
    if (length(line.line) <= line_tolerance)
        throw Exception(who + " has a line at " + pedflux::engine::text_of(line.line.from) +
                        " without length; it must be longer than 0.01 m");
    if (parts_inside(line.line, region.walkable_reach).empty())
        throw Exception(who + " has a line " + text_of(line.line) + " that lies outside of " + region.name +
                        "; it must lie in it or on its edge");
}

void check_passage(Passage const& passage, std::string const& who) {
    if (!(passage.cost >= 0) || !std::isfinite(passage.cost))
        throw Exception(who + " costs " + std::to_string(passage.cost) + " m; it must be 0 or more");
}

RegionMap region_map(Region const& region, std::size_t index) {
    RegionMap map;
    map.name = named("region", index, region.name);
    if (!(region.length_factor >= 1) || !std::isfinite(region.length_factor))
        throw Exception(map.name + " has a length factor of " + std::to_string(region.length_factor) +
                        "; it must be 1 or more");
    map.length_factor = region.length_factor;
    map.walkable = united(region.walkable);
    if (map.walkable.empty()) throw Exception(map.name + " has no walkable area");
    map.walkable_reach = offset(map.walkable, line_tolerance);
    map.walkable_mesh = Mesh(map.walkable);
    return map;
}

std::vector<Point> points_along(Mesh const& mesh, Segment line, Part part, std::size_t pieces) {
    Segment const used{mesh.nearest(at(line, part.from)).point, mesh.nearest(at(line, part.to)).point};
    std::vector<Point> points;
    for (std::size_t i = 0; i <= pieces; ++i)
        points.push_back(mesh.nearest(at(used, static_cast<double>(i) / static_cast<double>(pieces))).point);
    return points;
}

void add_portal_edges(Building& building, ConnectionIndex index) {
    Connection const& connection = building.connections[index];
    RegionMap& from = building.regions[connection.from.region];
    RegionMap& to = building.regions[connection.to.region];
    auto const parts = common_parts(parts_inside(connection.from.line, from.clear_reach),
                                    parts_inside(connection.to.line, to.clear_reach));
    bool passable = false;
    for (Part const& part : parts) {
        double const width = (part.to - part.from) * length(connection.from.line);
        if (width <= 2 * line_tolerance) continue;
        passable = true;
        auto const pieces =
            static_cast<std::size_t>(std::max(fewest_portal_edge_pieces, std::ceil(width / portal_point_spacing)));
        from.portal_edges.push_back({index, true, points_along(from.clear_mesh, connection.from.line, part, pieces)});
        to.portal_edges.push_back({index, false, points_along(to.clear_mesh, connection.to.line, part, pieces)});
    }
    if (!passable)
        throw Exception(named("connection", index, connection.name) + " " + text_of(connection.from.line) +
                        " between " + from.name + " and " + to.name + " is too narrow for a person");
}

/// Portal edges of a connection were added to both of its regions in the same order, so their points pair up one by
/// one.
void pair_portal_points(Building& building) {
    std::vector<std::vector<std::uint32_t>> forward(building.connections.size());
    std::vector<std::vector<std::uint32_t>> backward(building.connections.size());
    for (RegionIndex r = 0; r < building.regions.size(); ++r) {
        RegionMap& region = building.regions[r];
        region.first_waypoint = static_cast<std::uint32_t>(building.region_of.size());
        building.region_of.insert(building.region_of.end(), region.waypoints.all.size(), r);
        for (std::uint32_t waypoint = 0; waypoint < region.waypoints.all.size(); ++waypoint) {
            if (region.waypoints.all[waypoint].is_corner()) continue;
            PortalEdge const& portal_edge = region.portal_edges[region.waypoints.all[waypoint].portal_edge];
            (portal_edge.forward ? forward : backward)[portal_edge.connection].push_back(region.first_waypoint +
                                                                                         waypoint);
        }
    }
    building.opposite.assign(building.region_of.size(), none);
    for (std::size_t connection = 0; connection < forward.size(); ++connection)
        for (std::size_t i = 0; i < forward[connection].size(); ++i) {
            building.opposite[forward[connection][i]] = backward[connection][i];
            building.opposite[backward[connection][i]] = forward[connection][i];
        }
}

}  // namespace

Building building_of(NavigationInput const& input) {
    if (!(input.clearance >= 0) || !std::isfinite(input.clearance))
        throw Exception("the clearance of routes is " + std::to_string(input.clearance) + " m; it must be 0 or more");
    Building building;
    for (std::size_t i = 0; i < input.regions.size(); ++i) building.regions.push_back(region_map(input.regions[i], i));

    std::vector<std::vector<Segment>> lines(input.regions.size());
    building.connections = input.connections;
    for (std::size_t i = 0; i < input.connections.size(); ++i) {
        Connection const& connection = input.connections[i];
        std::string const who = named("connection", i, connection.name);
        check_passage(connection.passage, who);
        for (RegionLine const& line : {connection.from, connection.to}) {
            check_line(building, line, who);
            lines[line.region].push_back(line.line);
        }
    }
    for (std::size_t i = 0; i < input.destinations.size(); ++i)
        for (RegionLine const& line : input.destinations[i].lines) {
            check_line(building, line, named("destination", i, input.destinations[i].name));
            lines[line.region].push_back(line.line);
        }
    for (std::size_t i = 0; i < building.regions.size(); ++i) {
        RegionMap& region = building.regions[i];
        region.clear = clear_area(region.walkable, lines[i], input.clearance);
        region.clear_reach = offset(region.clear, line_tolerance);
        region.clear_mesh = Mesh(region.clear);
    }
    for (ConnectionIndex i = 0; i < building.connections.size(); ++i) add_portal_edges(building, i);
    for (RegionMap& region : building.regions) region.waypoints = waypoints_of(region.clear_mesh, region.portal_edges);
    pair_portal_points(building);
    return building;
}

void check_destination(Building const& building, Destination const& destination) {
    std::string const who = destination.name.empty() ? "a destination" : "destination \"" + destination.name + "\"";
    if (destination.lines.empty() && destination.areas.empty())
        throw Exception(who + " has neither a line nor an area");
    for (RegionLine const& line : destination.lines) {
        check_line(building, line, who);
        if (parts_inside(line.line, building.regions[line.region].clear_reach).empty())
            throw Exception(who + " has a line " + text_of(line.line) + " that nobody can reach; it must be wider or " +
                            "further from walls");
    }
    for (RegionArea const& area : destination.areas) {
        RegionMap const& region = region_at(building, area.region, who);
        if (intersection({area.area}, region.clear).empty())
            throw Exception(who + " has an area that nobody can reach in " + region.name +
                            "; it must lie in it and away from walls");
    }
}

}  // namespace pedflux::engine::navigation
