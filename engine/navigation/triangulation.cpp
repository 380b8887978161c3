#include "engine/navigation/triangulation.h"

#include "engine/base/checks.h"
#include "engine/geometry/polygons.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine::navigation {

namespace {

template <class Visit>
void for_each_ring(Polygons const& polygons, Visit visit) {
    for (Polygon const& polygon : polygons) {
        visit(polygon.outline);
        for (Ring const& hole : polygon.holes) visit(hole);
    }
}

/// The vertices of polygons, each once, in the resolution of operations with polygons. In whole steps of it, collinear
/// corners are collinear exactly.
class Lattice {
  public:
    explicit Lattice(Polygons const& polygons) : origin_(polygons[0].outline[0]) {
        origin_ = {std::round(origin_.x), std::round(origin_.z)};
        std::vector<std::pair<LatticePoint, Point>> places;
        for_each_ring(polygons, [&](Ring const& ring) {
            for (Point const point : ring) places.emplace_back(on_lattice(point), point);
        });
        std::stable_sort(places.begin(), places.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
        auto const same = [](auto const& a, auto const& b) { return a.first == b.first; };
        places.erase(std::unique(places.begin(), places.end(), same), places.end());
        for (auto const& [place, point] : places) {
            lattice_points.push_back(place);
            points.push_back(point);
        }
    }

    std::uint32_t index_of(Point point) const {
        auto const found = std::lower_bound(lattice_points.begin(), lattice_points.end(), on_lattice(point));
        return static_cast<std::uint32_t>(found - lattice_points.begin());
    }

    std::vector<LatticePoint> lattice_points;
    std::vector<Point> points;

  private:
    LatticePoint on_lattice(Point point) const {
        return {std::llround((point.x - origin_.x) / polygon_resolution),
                std::llround((point.z - origin_.z) / polygon_resolution)};
    }

    Point origin_;
};

std::vector<BoundaryEdge> boundary_of(Polygons const& polygons, Lattice const& lattice) {
    std::vector<BoundaryEdge> boundary;
    for_each_ring(polygons, [&](Ring const& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i)
            boundary.push_back({lattice.index_of(ring[i]), lattice.index_of(ring[(i + 1) % ring.size()])});
    });
    return boundary;
}

}  // namespace

Triangulation triangulated(Polygons const& polygons) {
    constexpr int most_attempts = 4;
    Polygons cleaned = polygons;
    for (int attempt = 1; !cleaned.empty(); ++attempt) {
        Lattice lattice(cleaned);
        try {
            auto triangles = constrained_delaunay(lattice.lattice_points, boundary_of(cleaned, lattice));
            return {std::move(lattice.points), std::move(triangles)};
        } catch (BoundaryCrossing const& crossing) {
            // Rounding in an earlier operation let two edges cross by a step; another union parts them.
            if (attempt == most_attempts)
                refuse(fmt::format("boundaries of a plan cross at {}", text_of(lattice.points[crossing.vertex])));
            cleaned = united(cleaned);
        }
    }
    return {};
}

}  // namespace pedflux::engine::navigation
