#pragma once

#include "engine/navigation/cells.h"
#include "engine/navigation/triangulation.h"

namespace pedflux::engine::navigation {

/// Smaller distances count as zero (metres).
inline constexpr double touching = 1e-7;

/// A triangulated area with point location.
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
    /// The edge opposite to a corner. Seen from inside the triangle, `from` is the end on the right.
    Segment edge(std::uint32_t triangle, std::size_t edge) const {
        auto const& corner = triangulation_.triangles[triangle].corner;
        return {vertices()[corner[after(edge)]], vertices()[corner[before(edge)]]};
    }

    /// Whether the triangle, boundary included, contains the point.
    bool has(std::uint32_t triangle, Point point) const {
        auto const [a, b, c] = corners(triangle);
        return orientation(a, b, point) >= 0 && orientation(b, c, point) >= 0 && orientation(c, a, point) >= 0;
    }

    struct Place {
        std::uint32_t triangle = none;
        Point point;
    };
    /// The triangle that contains the point, the one with the lowest number of several; `none` outside the area.
    std::uint32_t triangle_at(Point point) const;
    /// The point of the area nearest to a point, and a triangle that contains it up to rounding; `none` if the area is
    /// empty.
    Place nearest(Point point) const;
    /// All triangles that touch the place, given one of them.
    std::vector<std::uint32_t> touched(Place place) const;
    /// The end of a straight walk from a place towards a point: that point, or the first point of the boundary on the
    /// way.
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
