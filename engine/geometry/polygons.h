#pragma once

#include "engine/geometry/plane.h"

#include <array>

/// Boolean operations on areas of the plane and their offsets, by the Clipper library (Vatti's algorithm in integers,
/// which no input breaks). Coordinates are rounded to 0.01 mm. Results have counter-clockwise outlines, clockwise holes
/// and no collinear corners; parts touch in points at most.
///
/// All throw Exception for coordinates that are not finite or span more than 10 km.
namespace pedflux::engine {

/// Resolution of the results (metres).
inline constexpr double polygon_resolution = 1e-5;

/// The union of the polygons.
Polygons united(Polygons const& polygons);

/// The union of the triangles. Gaps under 1 mm, as where a corner of one triangle meets the edge of another, are
/// closed; triangles without area are ignored.
Polygons united(std::vector<std::array<Point, 3>> const& triangles);

Polygons difference(Polygons const& polygons, Polygons const& taken_away);
Polygons intersection(Polygons const& left, Polygons const& right);

/// The polygons grown by `margin` metres, or shrunk when it is negative. Corners stay sharp up to twice the margin;
/// sharper ones are cut off.
Polygons offset(Polygons const& polygons, double margin);

}  // namespace pedflux::engine
