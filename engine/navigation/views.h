#pragma once

#include "engine/navigation/building.h"

#include <span>

namespace pedflux::engine::navigation {

/// How the shortest way goes on from a waypoint.
struct Onward {
    /// Its next point, and the waypoint that this is or, in a portal edge, that is nearest to it; `none` when it is the
    /// goal.
    Point point;
    std::uint32_t waypoint = none;
};

/// A waypoint that may be the next point of the shortest way from somewhere in a triangle: there it is seen between two
/// vertices. `none` on one side of a corner stands for the line on which the way that goes on from the corner comes
/// into sight; on both sides of a portal point it is seen from all of the triangle.
struct WaypointView {
    std::uint32_t waypoint = none;
    std::uint32_t right = none;
    std::uint32_t left = none;
};

/// The point that bounds the view of a corner where no vertex does.
inline Point bound_behind(Waypoint const& corner, Onward const& onward) { return 2 * corner.point - onward.point; }

/// Per triangle, the waypoints of a region that may come next on the way to one destination; by ascending waypoint.
/// What is given is per waypoint of the region: the metres to walk from it, how the way goes on, and the metres to walk
/// from a point of a portal edge without entering this portal edge.
/// @param metre what a metre of plan counts as, in metres
Lists<WaypointView> views_to(RegionMap const& region, double metre, std::span<double const> rest,
                             std::span<Onward const> onward, std::span<double const> rest_after);

}  // namespace pedflux::engine::navigation
