#include "engine/scene/goal_lines.h"

#include "engine/geometry/access.h"
#include "engine/geometry/vector.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

namespace pedflux::engine {

namespace {

/// A direction in the plan, of length 1, and how far points lie along it and across it.
struct Direction {
    double x = 1;
    double z = 0;

    double along(Vector point) const { return point.x * x + point.z * z; }
    double across(Vector point) const { return point.z * x - point.x * z; }
    Vector point(double along_it, double across_it, double y) const {
        return {along_it * x - across_it * z, y, along_it * z + across_it * x};
    }
};

struct Interval {
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();

    void add(double value) {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    double length() const { return most - least; }
    double middle() const { return (least + most) / 2; }
};

using Points = std::vector<Vector>;

Points vertices_of(MeshGeometry& mesh) {
    Points points;
    for (auto const& vertex : mesh.GetVertices()) points.push_back(vector_of(vertex));
    return points;
}

/// The vertices of the faces that point upwards by more than a rounding error of a wall; of all faces if there is none.
Points walkable_vertices_of(MeshGeometry& mesh) {
    constexpr double upwards = 0.01;
    Points points;
    for (auto handle : mesh.GetFaces()) {
        if (handle.GetNormal().GetY() < upwards) continue;
        for (auto const& corner : {handle.GetFirstVertex(), handle.GetSecondVertex(), handle.GetThirdVertex()}) {
            points.push_back(vector_of(corner));
        }
    }
    return points.empty() ? vertices_of(mesh) : points;
}

/// Each point once, so that the result does not depend on how the surface is triangulated.
Points distinct(Points points) {
    std::ranges::sort(points, [](Vector a, Vector b) { return std::tie(a.x, a.y, a.z) < std::tie(b.x, b.y, b.z); });
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

/// The convex hull in the plan: A. M. Andrew, "Another efficient algorithm for convex hulls in two dimensions" (1979).
Points hull_of(Points points) {
    auto const before = [](Vector a, Vector b) { return a.x < b.x || (a.x == b.x && a.z < b.z); };
    auto const turn = [](Vector a, Vector b, Vector c) {
        return (b.x - a.x) * (c.z - a.z) - (b.z - a.z) * (c.x - a.x);
    };
    std::ranges::sort(points, before);
    Points hull;
    for (int side = 0; side < 2; ++side) {
        auto const start = hull.size();
        for (Vector const point : points) {
            while (hull.size() >= start + 2 && turn(hull[hull.size() - 2], hull.back(), point) <= 0) hull.pop_back();
            hull.push_back(point);
        }
        hull.pop_back();
        std::ranges::reverse(points);
    }
    return hull.empty() ? Points{points.front()} : hull;
}

/// The direction of the long side of the smallest rectangle around the points, one side of which lies on the hull: H.
/// Freeman and R. Shapira, "Determining the minimum-area encasing rectangle for an arbitrary closed curve" (1975). It
/// points to larger x, or larger z where x stays.
Direction long_direction_of(Points const& points) {
    Points const hull = hull_of(points);
    Direction best;
    double best_area = std::numeric_limits<double>::infinity();
    double best_length = 0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        Vector const edge = hull[(i + 1) % hull.size()] - hull[i];
        double const edge_length = std::hypot(edge.x, edge.z);
        if (edge_length == 0) continue;
        Direction direction{edge.x / edge_length, edge.z / edge_length};
        Interval along, across;
        for (Vector const point : hull) {
            along.add(direction.along(point));
            across.add(direction.across(point));
        }
        if (across.length() > along.length()) direction = {-direction.z, direction.x};
        double const area = along.length() * across.length();
        double const length = std::max(along.length(), across.length());
        // Rectangles that differ only by rounding count as equal, so that moving a shape does not swap its ends.
        double const rounding = 1e-9 * length * length;
        if (area < best_area - rounding || (area < best_area + rounding && length > best_length * (1 + 1e-9))) {
            best = direction;
            best_area = area;
            best_length = length;
        }
    }
    constexpr double upright = 1e-12;
    bool const backwards = best.x < -upright || (std::abs(best.x) <= upright && best.z < 0);
    return backwards ? Direction{-best.x, -best.z} : best;
}

/// The direction of ascent of the least-squares plane through the points; (0, 0) when it is level.
Direction rise_of(Points const& points) {
    Vector mean;
    for (Vector const point : points) mean = mean + (1 / static_cast<double>(points.size())) * point;
    double xx = 0, xz = 0, zz = 0, xy = 0, zy = 0;
    for (Vector const point : points) {
        Vector const offset = point - mean;
        xx += offset.x * offset.x;
        xz += offset.x * offset.z;
        zz += offset.z * offset.z;
        xy += offset.x * offset.y;
        zy += offset.z * offset.y;
    }
    double const determinant = xx * zz - xz * xz;
    if (determinant <= 1e-12 * (xx + zz) * (xx + zz)) return {0, 0};
    double const slope_x = (zz * xy - xz * zy) / determinant;
    double const slope_z = (xx * zy - xz * xy) / determinant;
    double const slope = std::hypot(slope_x, slope_z);
    constexpr double level = 0.001;  // a millimetre in a metre
    return slope < level ? Direction{0, 0} : Direction{slope_x / slope, slope_z / slope};
}

LineSeg3d line_between(Vector a, Vector b) { return {value_of(a), value_of(b)}; }

/// The line across a polyline at its first vertex. Vertical segments have no direction in plan and are skipped; a
/// polyline of vertical segments only has its lines along z.
LineSeg3d line_at_start(std::vector<Vector> const& vertices) {
    Vector const start = vertices.front();
    Direction direction;
    for (Vector const vertex : vertices) {
        double const length = std::hypot(vertex.x - start.x, vertex.z - start.z);
        if (length == 0) continue;
        direction = {(vertex.x - start.x) / length, (vertex.z - start.z) / length};
        break;
    }
    Vector const aside{-direction.z * path_width / 2, 0, direction.x * path_width / 2};
    return line_between(start - aside, start + aside);
}

EndLines polyline_ends(std::vector<Vector> vertices) {
    LineSeg3d const ball = line_at_start(vertices);
    std::ranges::reverse(vertices);
    return {ball, line_at_start(vertices)};
}

}  // namespace

LineSeg3d centre_goal_line(Geometry& geometry) {
    auto const mesh = geometry.AsMeshGeometry();
    Points const points = vertices_of(*mesh);
    Direction const direction = long_direction_of(points);
    Interval along, across, height;
    for (Vector const point : points) {
        along.add(direction.along(point));
        across.add(direction.across(point));
        height.add(point.y);
    }
    return line_between(direction.point(along.least, across.middle(), height.least),
                        direction.point(along.most, across.middle(), height.least));
}

EndLines end_goal_lines(Geometry& geometry) {
    if (auto const polyline = geometry.AsPolylineGeometry()) return polyline_ends(polyline_of(*polyline).vertices);
    auto const mesh = geometry.AsMeshGeometry();
    Points const points = distinct(walkable_vertices_of(*mesh));
    Direction direction = rise_of(points);
    if (direction.x == 0 && direction.z == 0) direction = long_direction_of(points);

    Interval along;
    for (Vector const point : points) along.add(direction.along(point));
    auto const end_line = [&](double end) {
        double const nearby = 0.01 * along.length();
        Interval across, height;
        for (Vector const point : points) {
            if (std::abs(direction.along(point) - end) > nearby) continue;
            across.add(direction.across(point));
            height.add(point.y);
        }
        return line_between(direction.point(end, across.least, height.middle()),
                            direction.point(end, across.most, height.middle()));
    };
    return {end_line(along.least), end_line(along.most)};
}

}  // namespace pedflux::engine
