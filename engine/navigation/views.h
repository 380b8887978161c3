#pragma once

#include "engine/navigation/building.h"

#include <span>

namespace pedflux::engine::navigation {

/// The continuation of the shortest way from a waypoint.
struct Onward {
    /// The next point, and its waypoint or, inside a portal edge, the nearest portal point; `none` at the goal.
    Point point;
    std::uint32_t waypoint = none;
};

/// A waypoint that may come next on the shortest way from some part of a triangle, and the vertices between which it is
/// visible there. At a corner, `none` on one side stands for the line on which the next leg becomes visible. At a
/// portal point, `none` on both sides means the whole triangle.
struct WaypointView {
    std::uint32_t waypoint = none;
    std::uint32_t right = none;
    std::uint32_t left = none;
};

/// Bounds the view of a corner on the side without a vertex.
inline Point bound_behind(Waypoint const& corner, Onward const& onward) { return 2 * corner.point - onward.point; }

/// By triangle, the waypoints that may come next on the way to a destination, by ascending number. The arguments are
/// indexed by waypoint of the region: the distance from it, its continuation, and the distance from a portal point
/// without entering its portal edge.
/// @param metre cost of a metre of the plane, in metres
Lists<WaypointView> views_to(RegionMap const& region, double metre, std::span<double const> rest,
                             std::span<Onward const> onward, std::span<double const> rest_after);

}  // namespace pedflux::engine::navigation
