#pragma once

#include "engine/navigation/mesh.h"

#include <vector>

/// What can be seen from a point, or at a right angle from a line, by looking from triangle to triangle (the triangular
/// expansion algorithm: Bungiu et al., "Efficient computation of visibility polygons", 2014). Looking through an edge
/// narrows the view to the edge; a view is bounded by the corners that narrowed it, so no new points are computed.
namespace pedflux::engine::navigation {

/// Looking out from a point in all directions.
struct FromPoint {
    Point eye;
    /// Positive when `point` lies further left than `bound`.
    double leftness(Point bound, Point point) const { return cross(bound - eye, point - eye); }
};

/// Looking from a line in one direction, at a right angle to it.
struct FromLine {
    Point direction;
    double leftness(Point bound, Point point) const { return cross(direction, point - bound); }
};

/// A bound of a view and its vertex, `none` when it is an end of a line.
struct Bound {
    Point point;
    std::uint32_t vertex = none;
};

/// What one looks through into a triangle.
struct View {
    std::uint32_t triangle = none;
    Bound right;
    Bound left;
};

/// Whether a point of the view's triangle is seen, with a margin of `tolerance` square metres against rounding.
template <class Eye>
bool sees(Eye const& eye, Point right, Point left, Point point, double tolerance) {
    return eye.leftness(right, point) >= -tolerance && eye.leftness(left, point) <= tolerance;
}

/// Looks through edge `edge` of a triangle between two bounds. Calls `see(view)` for every triangle seen, which returns
/// whether to look on from there, and `meet(vertex)` for every vertex seen that is not an end of the first edge.
template <class Eye, class See, class Meet>
void look_through(Mesh const& mesh, Eye const& eye, std::uint32_t triangle, std::size_t edge, Bound right, Bound left,
                  See see, Meet meet) {
    struct Opening {
        std::uint32_t triangle;
        std::size_t edge;
        Bound right;
        Bound left;
    };
    static thread_local std::vector<Opening> openings;
    openings.assign(1, {triangle, edge, right, left});
    while (!openings.empty()) {
        Opening const opening = openings.back();
        openings.pop_back();
        std::uint32_t const next = mesh.triangles()[opening.triangle].neighbour[opening.edge];
        if (next == none) continue;
        if (!see(View{next, opening.right, opening.left})) continue;
        Triangle const& entered = mesh.triangles()[next];
        // The corner after the entered edge's opposite one is the left end of the edge, seen from the eye.
        std::uint32_t const right_end = mesh.triangles()[opening.triangle].corner[after(opening.edge)];
        std::size_t apex = 0;
        while (entered.neighbour[apex] != opening.triangle || entered.corner[before(apex)] != right_end) ++apex;
        Bound const corner{mesh.vertices()[entered.corner[apex]], entered.corner[apex]};
        double const from_right = eye.leftness(opening.right.point, corner.point);
        double const from_left = eye.leftness(opening.left.point, corner.point);
        if (from_right >= 0 && from_left <= 0) meet(corner.vertex);
        if (from_left < 0)
            openings.push_back({next, before(apex), from_right > 0 ? corner : opening.right, opening.left});
        if (from_right > 0)
            openings.push_back({next, after(apex), opening.right, from_left < 0 ? corner : opening.left});
    }
}

}  // namespace pedflux::engine::navigation
