#include "engine/navigation/building.h"

#include "engine/base/checks.h"
#include "engine/geometry/polygons.h"
#include "engine/navigation/openings.h"
#include "engine/navigation/way_through.h"

#include <cmath>

#include <fmt/format.h>

namespace pedflux::engine::navigation {

namespace {

/// Largest distance of neighbouring portal points (metres); short portal edges have at least four pieces.
constexpr double portal_point_spacing = 0.25;
constexpr double fewest_portal_edge_pieces = 4;

std::string named(std::string const& kind, std::size_t index, std::string const& name) {
    return name.empty() ? fmt::format("{} {}", kind, index) : fmt::format("{} \"{}\"", kind, name);
}

std::string text_of(Segment line) {
    return fmt::format("from {} to {}", pedflux::engine::text_of(line.from), pedflux::engine::text_of(line.to));
}

RegionMap const& region_at(Building const& building, RegionIndex region, std::string const& who) {
    if (region >= building.regions.size())
        refuse(fmt::format("{} names region {}; there are {}", who, region, building.regions.size()));
    return building.regions[region];
}

void check_line(Building const& building, RegionLine const& line, std::string const& who) {
    RegionMap const& region = region_at(building, line.region, who);
    if (!is_finite(line.line.from) || !is_finite(line.line.to))
        refuse(fmt::format("{} has a line with a coordinate that is not a finite number", who));
    if (length(line.line) <= line_tolerance)
        refuse(fmt::format("{} has a line at {} without length; it must be longer than 0.01 m", who,
                           pedflux::engine::text_of(line.line.from)));
    if (parts_inside(line.line, region.walkable_reach).empty())
        refuse(fmt::format("{} has a line {} that lies outside of {}; it must lie in it or on its edge", who,
                           text_of(line.line), region.name));
}

void check_passage(Passage const& passage, std::string const& who) {
    if (!(passage.cost >= 0) || !std::isfinite(passage.cost))
        refuse(fmt::format("{} costs {:f} m; it must be 0 or more", who, passage.cost));
}

RegionMap region_map(Region const& region, std::size_t index) {
    RegionMap map;
    map.name = named("region", index, region.name);
    if (!(region.length_factor >= 1) || !std::isfinite(region.length_factor))
        refuse(fmt::format("{} has a length factor of {:f}; it must be 1 or more", map.name, region.length_factor));
    map.length_factor = region.length_factor;
    map.walkable = united(region.walkable);
    if (map.walkable.empty()) refuse(fmt::format("{} has no walkable area", map.name));
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
        refuse(fmt::format("{} {} between {} and {} is too narrow for a person",
                           named("connection", index, connection.name), text_of(connection.from.line), from.name,
                           to.name));
}

/// The portal edges of a connection are in the same order in both regions, so their points pair up one by one.
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
        refuse(fmt::format("the clearance of routes is {:f} m; it must be 0 or more", input.clearance));
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
    std::string const who =
        destination.name.empty() ? "a destination" : fmt::format("destination \"{}\"", destination.name);
    if (destination.lines.empty() && destination.areas.empty())
        refuse(fmt::format("{} has neither a line nor an area", who));
    for (RegionLine const& line : destination.lines) {
        check_line(building, line, who);
        if (parts_inside(line.line, building.regions[line.region].clear_reach).empty())
            refuse(fmt::format("{} has a line {} that nobody can reach; it must be wider or further from walls", who,
                               text_of(line.line)));
    }
    for (RegionArea const& area : destination.areas) {
        RegionMap const& region = region_at(building, area.region, who);
        if (intersection({area.area}, region.clear).empty())
            refuse(fmt::format("{} has an area that nobody can reach in {}; it must lie in it and away from walls", who,
                               region.name));
    }
}

}  // namespace pedflux::engine::navigation
