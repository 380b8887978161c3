#pragma once

#include "engine/geometry/plane.h"

#include <vector>

/// The clear area in which routes run, and the usable parts of doors and goals.
namespace pedflux::engine::navigation {

/// Tolerance for a line to count as lying in a region (metres).
inline constexpr double line_tolerance = 0.01;

/// A part of a line, as fractions of its length.
struct Part {
    double from = 0;
    double to = 1;
};

/// The parts of the line that lie in any of the polygons, in order.
std::vector<Part> parts_inside(Segment line, Polygons const& polygons);
/// The intersection of two lists of parts.
std::vector<Part> common_parts(std::vector<Part> const& left, std::vector<Part> const& right);

/// The area at `clearance` metres or more from walls. Where people enter or leave across the edge, along `lines`, the
/// edge is no wall: there the clear area reaches the line, except within the clearance of its ends.
Polygons clear_area(Polygons const& walkable, std::vector<Segment> const& lines, double clearance);

}  // namespace pedflux::engine::navigation
