#include "engine/navigation/mesh.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine::navigation {

Mesh::Mesh(Polygons const& polygons) : triangulation_(triangulated(polygons)) {
    std::vector<Bounds> of_triangles;
    std::vector<Bounds> of_boundary;
    for (std::uint32_t t = 0; t < triangles().size(); ++t) {
        Bounds& bounds = of_triangles.emplace_back();
        for (Point const corner : corners(t)) bounds.cover(corner);
        for (std::size_t i = 0; i < 3; ++i) {
            if (triangles()[t].neighbour[i] != none) continue;
            boundary_.push_back({t, static_cast<std::uint32_t>(i)});
            Bounds& edge_bounds = of_boundary.emplace_back();
            edge_bounds.cover(edge(t, i).from);
            edge_bounds.cover(edge(t, i).to);
        }
    }
    triangle_cells_ = Cells(of_triangles);
    boundary_cells_ = Cells(of_boundary);
}

std::uint32_t Mesh::triangle_at(Point point) const {
    auto const candidates = triangle_cells_.at(point);
    auto const found = std::find_if(candidates.begin(), candidates.end(),
                                    [&](std::uint32_t triangle) { return has(triangle, point); });
    return found == candidates.end() ? none : *found;
}

Mesh::Place Mesh::nearest(Point point) const {
    if (std::uint32_t const triangle = triangle_at(point); triangle != none) return {triangle, point};
    Place best;
    double best_squared = std::numeric_limits<double>::infinity();
    std::uint32_t best_edge = none;
    boundary_cells_.around(point, best_squared, [&](std::uint32_t index) {
        auto const [triangle, side] = boundary_[index];
        Point const candidate = nearest_point(edge(triangle, side), point);
        double const squared = squared_length(candidate - point);
        if (squared < best_squared || (squared <= best_squared && index < best_edge)) {
            best = {triangle, candidate};
            best_squared = squared;
            best_edge = index;
        }
        return std::sqrt(best_squared);
    });
    return best;
}

std::vector<std::uint32_t> Mesh::touched(Place place) const {
    std::vector<std::uint32_t> found{place.triangle};
    for (std::size_t next = 0; next < found.size(); ++next)
        for (std::size_t i = 0; i < 3; ++i) {
            std::uint32_t const neighbour = triangles()[found[next]].neighbour[i];
            if (neighbour == none || pedflux::engine::distance(edge(found[next], i), place.point) > touching) continue;
            if (std::find(found.begin(), found.end(), neighbour) == found.end()) found.push_back(neighbour);
        }
    std::sort(found.begin(), found.end());
    return found;
}

Point Mesh::walk(Place from, Point to) const {
    std::uint32_t triangle = from.triangle;
    std::uint32_t came_from = none;
    // Rounding could make the walk circle around a corner that it hits. It never needs more steps than there are
    // triangles.
    for (std::size_t steps = 0; steps <= triangles().size(); ++steps) {
        double first = 1;
        std::uint32_t next = triangle;
        std::size_t exit = 3;
        for (std::size_t i = 0; i < 3; ++i) {
            Segment const side = edge(triangle, i);
            double const target = orientation(side.from, side.to, to);
            if (target >= -touching || (came_from != none && triangles()[triangle].neighbour[i] == came_from)) continue;
            double const start = std::max(orientation(side.from, side.to, from.point), 0.0);
            double const fraction = start / (start - target);
            // At a corner, any continuation is better than the boundary.
            if (exit != 3 && (fraction > first || (fraction == first && next != none))) continue;
            first = fraction;
            exit = i;
            next = triangles()[triangle].neighbour[i];
        }
        if (exit == 3) return to;
        if (next == none) return at({from.point, to}, first);
        came_from = triangle;
        triangle = next;
    }
    return from.point;
}

}  // namespace pedflux::engine::navigation
