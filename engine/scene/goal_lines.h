#pragma once

#include <pedflux/vectors.h>

namespace pedflux {
class Geometry;
}

/// Where agents enter and leave objects.
namespace pedflux::engine {

/// The long centre line of the smallest rectangle that holds the shape's vertices as seen from above, at the lowest of
/// their elevations, from the end with the smaller x (or z, where both have the same x). Of two rectangles of one area
/// the one with the longer side counts.
LineSeg3d centre_goal_line(Geometry& geometry);

/// The lines at both ends of a walkable surface, which consists of the faces that point upwards, or of all faces if
/// none does.
struct EndLines {
    LineSeg3d ball;
    LineSeg3d box;
};

/// The lines are perpendicular to the direction of ascent, with the ball at the lower end. On a level surface they are
/// perpendicular to the longer side of its smallest bounding rectangle in plan, with the ball at the end with the
/// smaller x (or z). A line spans the vertices at its end.
///
/// A polyline has its ball at its first point and its box at its last one; the lines there are perpendicular to it and
/// path_width long.
EndLines end_goal_lines(Geometry& geometry);

/// The width of a path along a polyline (metres).
inline constexpr double path_width = 0.6;

}  // namespace pedflux::engine
