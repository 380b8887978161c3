#pragma once

#include "engine/base/lists.h"
#include "engine/navigation/mesh.h"
#include "engine/navigation/sight.h"

#include <vector>

/// The points of a region at which shortest ways turn or leave the region, and their mutual visibility. Nothing here
/// depends on destinations or on what is open, so it is computed once.
namespace pedflux::engine::navigation {

/// A passable part of a connection's line, and the points that represent it in one of its regions. The other region has
/// as many points, in the same order.
struct PortalEdge {
    ConnectionIndex connection = none;
    /// Whether it is crossed from the connection's `from` region to its `to` region.
    bool forward = true;
    std::vector<Point> points;
};

/// A corner that ways bend around, or a point of a portal edge.
struct Waypoint {
    Point point;
    /// Number of the portal edge in the region, `none` for a corner.
    std::uint32_t portal_edge = none;
    /// Unit vectors along the walls to the right and left of a corner, seen from inside.
    Point right_wall;
    Point left_wall;
    /// Straight away from the walls of a corner, as far as people spread around it or to the next wall.
    Point spread_end;
    /// The triangle at a corner along the wall on the right.
    std::uint32_t first_triangle = none;

    bool is_corner() const { return portal_edge == none; }
};

/// A triangle from which a waypoint is visible between two vertices; from all of it when these are `none`.
struct Outlook {
    std::uint32_t triangle = none;
    std::uint32_t right = none;
    std::uint32_t left = none;
};

/// A waypoint that is visible from another one.
struct WaypointLink {
    std::uint32_t waypoint = none;
    /// Distance in the plane (metres).
    double length = 0;
};

struct Waypoints {
    /// Corners first, then the points of each portal edge in order.
    std::vector<Waypoint> all;
    /// The first waypoint of each portal edge, then the number of waypoints.
    std::vector<std::uint32_t> portal_edge_begin;
    /// By portal point, where it is visible from.
    Lists<Outlook> portal_outlooks;
    /// By waypoint, the waypoints from which a shortest way may lead here, by ascending number.
    Lists<WaypointLink> links;
    /// Corners by vertex of the mesh, portal points by triangle.
    Lists<std::uint32_t> corners_at;
    Lists<std::uint32_t> portal_points_in;
};

Waypoints waypoints_of(Mesh const& mesh, std::vector<PortalEdge> const& portal_edges);

/// A triangle and one of its corners.
struct Wedge {
    std::uint32_t triangle = none;
    std::size_t corner = 0;
};
/// The triangles around a vertex, from the given one, which has a wall on its right, to the wall on the left.
std::vector<Wedge> fan_from(Mesh const& mesh, Wedge first);
/// The triangles around a corner.
std::vector<Wedge> fan_of(Mesh const& mesh, Waypoint const& corner);

/// Whether a way in this direction (a unit vector), coming or going, can bend around the corner: both walls must lie on
/// one side of its line.
bool bends_around(Waypoint const& corner, Point direction);
/// Whether the direction points from the corner into the area or along a wall.
bool leads_inside(Waypoint const& corner, Point direction);

}  // namespace pedflux::engine::navigation
