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

/// The lines at both ends of what agents walk on: the faces that look upwards, or all of them if none does.
struct EndLines {
    LineSeg3d ball;
    LineSeg3d box;
};

/// The ends lie across the direction in which the surface rises, the ball at the lower end. A surface that does not
/// rise has its ends across the longer side of the smallest rectangle that holds it as seen from above, the ball at the
/// end with the smaller x (or z). A line spans the vertices at its end.
///
/// A polyline has its ball at its first point and its box at its last one; the lines there are path_width long and lie
/// across the polyline.
EndLines end_goal_lines(Geometry& geometry);

/// Metres that agents who go along a polyline need across it.
inline constexpr double path_width = 0.6;

}  // namespace pedflux::engine
