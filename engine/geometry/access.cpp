#include "engine/geometry/access.h"

#include "engine/base/checks.h"
#include "engine/geometry/smallest_sphere.h"

#include <algorithm>
#include <utility>

namespace pedflux::engine {

struct GeometryAccess {
    static Mesh const& state(MeshGeometry const& geometry) { return *geometry.mesh_; }
    static Polyline const& state(PolylineGeometry const& geometry) { return *geometry.polyline_; }
    static Rectangle const& state(RectangleGeometry const& geometry) { return *geometry.rectangle_; }

    template <class Handle, class State>
    static std::shared_ptr<Handle> face(State state) {
        return std::shared_ptr<Handle>(new Handle(std::make_shared<State const>(std::move(state))));
    }
};

Mesh const& mesh_of(MeshGeometry const& geometry) { return GeometryAccess::state(geometry); }
Polyline const& polyline_of(PolylineGeometry const& geometry) { return GeometryAccess::state(geometry); }
Rectangle const& rectangle_of(RectangleGeometry const& geometry) { return GeometryAccess::state(geometry); }

std::shared_ptr<MeshGeometry> geometry_of(Mesh mesh) { return GeometryAccess::face<MeshGeometry>(std::move(mesh)); }

std::shared_ptr<PolylineGeometry> geometry_of(Polyline const& polyline) {
    return std::make_shared<PolylineGeometry>(values_of(polyline.vertices));
}

std::shared_ptr<RectangleGeometry> geometry_of(Rectangle const& rectangle) {
    return GeometryAccess::face<RectangleGeometry>(rectangle);
}

std::array<Vector, 4> corners_of(Rectangle const& rectangle) {
    Vector const along = 0.5 * rectangle.length * rectangle.length_direction;
    Vector const across = 0.5 * rectangle.width * rectangle.width_direction;
    Vector const center = rectangle.center;
    return {center - along - across, center + along - across, center + along + across, center - along + across};
}

std::vector<Vector> vectors_of(std::vector<Vec3d> const& values) {
    std::vector<Vector> vectors(values.size());
    std::transform(values.begin(), values.end(), vectors.begin(), vector_of);
    return vectors;
}

std::vector<Vec3d> values_of(std::vector<Vector> const& vectors) {
    std::vector<Vec3d> values(vectors.size());
    std::transform(vectors.begin(), vectors.end(), values.begin(), value_of);
    return values;
}

BoundingBox3d bounding_box_of(std::vector<Vector> const& points) {
    Vector low = points.front();
    Vector high = points.front();
    for (Vector const point : points) {
        low = smaller(low, point);
        high = larger(high, point);
    }
    return {value_of(low), value_of(high)};
}

BoundingSphere3d bounding_sphere_of(std::vector<Vector> const& points) {
    Sphere const sphere = smallest_sphere(points);
    return {value_of(sphere.center), sphere.radius};
}

std::vector<Vector> with_some_mapped(std::vector<Vector> vertices, std::vector<int> const& indices,
                                     AffineMap const& map) {
    std::vector<bool> is_mapped(vertices.size());
    for (int const index : indices) {
        std::size_t const vertex = require_index("vertex", index, vertices.size());
        if (!is_mapped[vertex]) vertices[vertex] = map(vertices[vertex]);
        is_mapped[vertex] = true;
    }
    return vertices;
}

}  // namespace pedflux::engine
