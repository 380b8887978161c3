#pragma once

#include "engine/navigation/mesh.h"

#include <vector>

/// Visibility from a point, or at a right angle from a line, by triangular expansion (Bungiu et al., "Efficient
/// computation of visibility polygons", 2014). Every edge on the way narrows the view. Views are bounded by the
/// vertices that narrowed them, so no new points are computed.
namespace pedflux::engine::navigation {

/// A view in all directions from a point.
struct FromPoint {
    Point eye;
    /// Positive when `point` lies to the left of `bound`.
    double leftness(Point bound, Point point) const { return cross(bound - eye, point - eye); }
};

/// A view at a right angle from one side of a line.
struct FromLine {
    Point direction;
    double leftness(Point bound, Point point) const { return cross(direction, point - bound); }
};

/// A bound of a view, and its vertex; `none` when it is the end of a line.
struct Bound {
    Point point;
    std::uint32_t vertex = none;
};

/// The view into a triangle.
struct View {
    std::uint32_t triangle = none;
    Bound right;
    Bound left;
};

/// Whether a point of the view's triangle is visible, with a margin of `tolerance` square metres for rounding.
template <class Eye>
bool sees(Eye const& eye, Point right, Point left, Point point, double tolerance) {
    return eye.leftness(right, point) >= -tolerance && eye.leftness(left, point) <= tolerance;
}

/// Expands a view through edge `edge` of a triangle between two bounds. Calls `see(view)` for every visible triangle,
/// which returns whether to expand the view from there, and `meet(vertex)` for every visible vertex except the ends of
/// the first edge.
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
        // Seen from the eye, the corner after the one opposite to the entered edge is its left end.
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
