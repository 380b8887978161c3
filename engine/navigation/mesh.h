#pragma once

#include "engine/navigation/cells.h"
#include "engine/navigation/triangulation.h"

namespace pedflux::engine::navigation {

/// Distances below this are none, in metres.
inline constexpr double touching = 1e-7;

/// A triangulated area that knows where points lie in it.
class Mesh {
  public:
    Mesh() = default;
    explicit Mesh(Polygons const& polygons);

    std::vector<Point> const& vertices() const { return triangulation_.vertices; }
    std::vector<Triangle> const& triangles() const { return triangulation_.triangles; }
    std::array<Point, 3> corners(std::uint32_t triangle) const {
        auto const& corner = triangulation_.triangles[triangle].corner;
        return {vertices()[corner[0]], vertices()[corner[1]], vertices()[corner[2]]};
    }
    /// Seen from inside, the edge's end on the right is `from`.
    Segment edge(std::uint32_t triangle, std::size_t edge) const {
        auto const& corner = triangulation_.triangles[triangle].corner;
        return {vertices()[corner[after(edge)]], vertices()[corner[before(edge)]]};
    }

    /// Whether the triangle, boundary included, has the point.
    bool has(std::uint32_t triangle, Point point) const {
        auto const [a, b, c] = corners(triangle);
        return orientation(a, b, point) >= 0 && orientation(b, c, point) >= 0 && orientation(c, a, point) >= 0;
    }

    struct Place {
        std::uint32_t triangle = none;
        Point point;
    };
    /// The triangle that has the point, the lowest of several; `none` outside.
    std::uint32_t triangle_at(Point point) const;
    /// The point of the area nearest to a point, and a triangle that has it up to rounding; `none` if there is no area.
    Place nearest(Point point) const;
    /// The triangles that a point touches, one of which is given.
    std::vector<std::uint32_t> touched(Place place) const;
    /// How far one gets from a place straight towards another point: that point, or the first one on the boundary.
    Point walk(Place from, Point to) const;

  private:
    struct BoundaryEdge {
        std::uint32_t triangle;
        std::uint32_t edge;
    };
    Triangulation triangulation_;
    std::vector<BoundaryEdge> boundary_;
    Cells triangle_cells_;
    Cells boundary_cells_;
};

}  // namespace pedflux::engine::navigation
