#pragma once

#include "engine/geometry/plane.h"
#include "engine/navigation/navigation_input.h"

#include <array>
#include <cstdint>
#include <vector>

namespace pedflux::engine::navigation {

/// Corners counter-clockwise. Edge i lies opposite to corner i; across it lies neighbour i, `none` at the boundary.
struct Triangle {
    std::array<std::uint32_t, 3> corner{none, none, none};
    std::array<std::uint32_t, 3> neighbour{none, none, none};
};

/// The corner, or edge, after and before another.
constexpr std::size_t after(std::size_t index) { return index == 2 ? 0 : index + 1; }
constexpr std::size_t before(std::size_t index) { return index == 0 ? 2 : index - 1; }

struct Triangulation {
    std::vector<Point> vertices;
    std::vector<Triangle> triangles;
};

/// The constrained Delaunay triangulation of polygons as engine/geometry/polygons.h gives them. Vertices are those
/// of the polygons, each once; where rings touch in a point the triangles on both sides share the vertex only.
///
/// Points are added from left to right, each joined to the hull that it sees (Lawson's flips keep it Delaunay); rings
/// are then forced in by flipping the edges in their way (Sloan, "A fast algorithm for generating constrained Delaunay
/// triangulations", 1993). Sides are decided on whole numbers, without rounding.
Triangulation triangulated(Polygons const& polygons);

}  // namespace pedflux::engine::navigation
