#pragma once

#include "engine/geometry/plane.h"

#include <array>

/// Sums, differences and margins of plan areas, by the Clipper library (Vatti's algorithm on whole numbers, so no input
/// makes it fail). Coordinates are rounded to 0.01 mm. Results have counter-clockwise outlines, clockwise holes and no
/// corner without a turn; parts touch in points at most.
///
/// All throw Exception for coordinates that are not finite or reach over more than 10 km.
namespace pedflux::engine {

/// The resolution of these operations in metres.
inline constexpr double plan_resolution = 1e-5;

/// The area that any of the polygons covers.
Polygons united(Polygons const& polygons);

/// The area that the triangles cover. Slits and seams under 1 mm, as where a corner of one triangle meets the edge of
/// another, are closed; triangles without area add nothing.
Polygons united(std::vector<std::array<Point, 3>> const& triangles);

Polygons difference(Polygons const& polygons, Polygons const& taken_away);
Polygons intersection(Polygons const& left, Polygons const& right);

/// The polygons grown by `margin` metres, or shrunk where it is negative. Corners stay pointed up to twice the margin,
/// sharper ones are cut off.
Polygons offset(Polygons const& polygons, double margin);

}  // namespace pedflux::engine
