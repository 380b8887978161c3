#pragma once

#include "engine/geometry/triangulation.h"
#include "engine/navigation/navigation_input.h"

#include <vector>

namespace pedflux::engine::navigation {

using Triangle = ConnectedTriangle;
static_assert(none == no_triangle);

struct Triangulation {
    std::vector<Point> vertices;
    std::vector<Triangle> triangles;
};

/// The constrained Delaunay triangulation of polygons as engine/geometry/polygons.h returns them. Each vertex occurs
/// once; where rings touch in a point, the triangles on both sides share nothing but the vertex.
Triangulation triangulated(Polygons const& polygons);

}  // namespace pedflux::engine::navigation
