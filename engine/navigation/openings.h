#pragma once

#include "engine/geometry/plane.h"

#include <vector>

/// Where routes may run, and which parts of doors and goals they can use.
namespace pedflux::engine::navigation {

/// A line counts as lying in a region up to this distance from it, in metres.
inline constexpr double line_tolerance = 0.01;

/// A part of a line, in fractions of its length.
struct Part {
    double from = 0;
    double to = 1;
};

/// The parts of the line that lie in any of the polygons, in order.
std::vector<Part> parts_inside(Segment line, Polygons const& polygons);
/// The parts that lie in both lists.
std::vector<Part> common_parts(std::vector<Part> const& left, std::vector<Part> const& right);

/// The area that keeps `clearance` metres from walls. The edge of a walkable area is no wall where people leave or
/// enter it, along `lines`: there the area reaches the line, except for the clearance from the line's ends.
Polygons clear_area(Polygons const& walkable, std::vector<Segment> const& lines, double clearance);

}  // namespace pedflux::engine::navigation
