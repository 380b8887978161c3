#pragma once

#include "engine/navigation/mesh.h"
#include "engine/navigation/sight.h"

#include <span>
#include <vector>

/// The points of a region at which shortest ways turn or leave it, and who sees whom. Nothing here depends on a
/// destination or on what is open: it is found once.
namespace pedflux::engine::navigation {

/// A part of a connection's line that people can pass, and the points that stand for it in one of its regions. The
/// points of the other region are as many, in the same order.
struct PortalEdge {
    ConnectionIndex connection = none;
    /// Whether it leads from the connection's `from` region to its `to` region.
    bool forward = true;
    std::vector<Point> points;
};

/// A point of a way: a corner that ways turn around, or a point of a portal edge.
struct Waypoint {
    Point point;
    /// The portal edge's number in the region, `none` at a corner.
    std::uint32_t portal_edge = none;
    /// Unit vectors along the walls on the right and left of a corner, seen from inside.
    Point right_wall;
    Point left_wall;
    /// From a corner straight away from its walls, as far as people spread around it or to the next wall.
    Point spread_end;
    /// The triangle at a corner that has the wall on the right.
    std::uint32_t first_triangle = none;

    bool is_corner() const { return portal_edge == none; }
};

/// A triangle from which a waypoint is seen between two vertices; from all of it when these are `none`.
struct Outlook {
    std::uint32_t triangle = none;
    std::uint32_t right = none;
    std::uint32_t left = none;
};

/// A waypoint that is seen from another one.
struct WaypointLink {
    std::uint32_t waypoint = none;
    /// Metres of plan between the two.
    double length = 0;
};

/// Lists of things, one after the other.
template <class Thing>
struct Lists {
    std::vector<std::uint32_t> begin{0};
    std::vector<Thing> things;

    std::span<Thing const> operator[](std::size_t list) const {
        return std::span(things).subspan(begin[list], begin[list + 1] - begin[list]);
    }
};

struct Waypoints {
    /// Corners first, then the points of each portal edge in order.
    std::vector<Waypoint> all;
    /// The number of each portal edge's first waypoint, and the number of waypoints.
    std::vector<std::uint32_t> portal_edge_begin;
    /// Per portal point, from where it is seen.
    Lists<Outlook> portal_outlooks;
    /// Per waypoint, the waypoints to which a shortest way may come from it; by ascending waypoint.
    Lists<WaypointLink> links;
    /// Per vertex of the mesh, and per triangle, the corners and points of portal edges there.
    Lists<std::uint32_t> corners_at;
    Lists<std::uint32_t> portal_points_in;
};

Waypoints waypoints_of(Mesh const& mesh, std::vector<PortalEdge> const& portal_edges);

/// A triangle and one of its corners.
struct Wedge {
    std::uint32_t triangle = none;
    std::size_t corner = 0;
};
/// The triangles around a vertex from the given one, which has a wall on its right, to the wall on the left.
std::vector<Wedge> fan_from(Mesh const& mesh, Wedge first);
/// The triangles around a corner.
std::vector<Wedge> fan_of(Mesh const& mesh, Waypoint const& corner);

/// Whether a way through the corner can come from, or go to, this direction (a unit vector) and bend around the corner:
/// the line through the corner must leave both walls on one side.
bool bends_around(Waypoint const& corner, Point direction);
/// Whether the direction leads away from the corner into its area, or along its walls.
bool leads_inside(Waypoint const& corner, Point direction);

/// Sorts `count` lists' things, given with the number of their list, into Lists; the order within a list stays.
template <class Thing>
Lists<Thing> listed(std::size_t count, std::vector<std::pair<std::uint32_t, Thing>> const& given) {
    Lists<Thing> lists;
    lists.begin.assign(count + 1, 0);
    for (auto const& [list, thing] : given) ++lists.begin[list + 1];
    for (std::size_t i = 1; i <= count; ++i) lists.begin[i] += lists.begin[i - 1];
    lists.things.resize(given.size());
    std::vector<std::uint32_t> next(lists.begin.begin(), lists.begin.end() - 1);
    for (auto const& [list, thing] : given) lists.things[next[list]++] = thing;
    return lists;
}

}  // namespace pedflux::engine::navigation
