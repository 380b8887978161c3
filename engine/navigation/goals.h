#pragma once

#include "engine/navigation/building.h"

#include <vector>

namespace pedflux::engine::navigation {

/// One side of a line of a destination, or a point of it.
struct GoalSource {
    Segment line;
    /// Unit vector perpendicular to the line, towards those who see it; (0, 0) when the source is a point.
    Point direction;

    bool is_point() const { return direction == Point{}; }
};

/// The part of a triangle, between two bounds, from which a source is visible.
struct GoalView {
    std::uint32_t source = none;
    Point right;
    Point left;
};

/// A waypoint from which the destination is visible.
struct GoalSight {
    std::uint32_t waypoint = none;
    double distance = 0;
    Point goal;
};

/// The parts of a destination that lie in one region.
struct RegionGoals {
    Polygons areas;
    std::vector<GoalSource> sources;
    /// By triangle; empty when there is no source.
    Lists<GoalView> views;
    std::vector<GoalSight> sights;
};

/// Whether the source is visible from a point of the view's triangle.
bool sees_goal(GoalSource const& source, GoalView const& view, Point point);

/// Where in a region the lines and areas of a destination are visible. Waypoints are numbered within the region.
/// @param metre cost of a metre of the plane, in metres
RegionGoals goals_in(RegionMap const& region, double metre, std::vector<Segment> const& lines, Polygons const& areas);

}  // namespace pedflux::engine::navigation
