#pragma once

#include "engine/navigation/building.h"

#include <vector>

namespace pedflux::engine::navigation {

/// A line of a destination from one of its sides, or a point of it.
struct GoalSource {
    Segment line;
    /// Unit vector at a right angle to the line towards those who see it, (0, 0) when the source is a point.
    Point direction;

    bool is_point() const { return direction == Point{}; }
};

/// Where a source is seen from: the part of a triangle between two bounds.
struct GoalView {
    std::uint32_t source = none;
    Point right;
    Point left;
};

/// A waypoint from which a destination is in sight.
struct GoalSight {
    std::uint32_t waypoint = none;
    double distance = 0;
    Point goal;
};

/// A destination in one region.
struct RegionGoals {
    Polygons areas;
    std::vector<GoalSource> sources;
    /// Per triangle; no lists where there is no source.
    Lists<GoalView> views;
    std::vector<GoalSight> sights;
};

/// Whether the source is seen from a point of the view's triangle.
bool sees_goal(GoalSource const& source, GoalView const& view, Point point);

/// What is seen of a destination's lines and areas in a region. Waypoints are numbers of the region.
/// @param metre what a metre of plan counts as, in metres
RegionGoals goals_in(RegionMap const& region, double metre, std::vector<Segment> const& lines, Polygons const& areas);

}  // namespace pedflux::engine::navigation
