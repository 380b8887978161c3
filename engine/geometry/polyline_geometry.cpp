#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::AffineMap;
using engine::Polyline;
using engine::value_of;
using engine::Vector;

Polyline checked(std::vector<Vector> vertices) {
    if (vertices.size() < 2)
        engine::refuse(fmt::format("polyline has {} vertices; it must have at least two", vertices.size()));
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        engine::require_point(fmt::format("vertex {} of the polyline", i), vertices[i]);
        if (i > 0 && vertices[i] == vertices[i - 1])
            engine::refuse(
                fmt::format("polyline: vertex {} repeats the one before at {}; neighbouring vertices must differ", i,
                            text_of(vertices[i])));
    }
    return {std::move(vertices)};
}

std::shared_ptr<PolylineGeometry> edited(Polyline const& polyline, std::vector<int> const& vertices,
                                         AffineMap const& map) {
    return geometry_of(Polyline{with_some_mapped(polyline.vertices, vertices, map)});
}

}  // namespace

PolylineGeometry::PolylineGeometry(std::vector<Vec3d> const& vertices)
    : polyline_(std::make_shared<Polyline const>(checked(engine::vectors_of(vertices)))) {}
PolylineGeometry::PolylineGeometry(std::shared_ptr<Polyline const> polyline) : polyline_(std::move(polyline)) {}
PolylineGeometry::~PolylineGeometry() = default;

std::shared_ptr<PolylineGeometry> PolylineGeometry::Create(std::vector<Vec3d> const& vertices) {
    return std::make_shared<PolylineGeometry>(vertices);
}

int PolylineGeometry::GetVertexCount() { return static_cast<int>(polyline_->vertices.size()); }

Vec3d PolylineGeometry::GetVertex(int index) {
    auto const& vertices = polyline_->vertices;
    return value_of(vertices[engine::require_index("vertex", index, vertices.size())]);
}

Vec3d PolylineGeometry::GetStartPoint() { return value_of(polyline_->vertices.front()); }
Vec3d PolylineGeometry::GetEndPoint() { return value_of(polyline_->vertices.back()); }
std::vector<Vec3d> PolylineGeometry::GetVertices() { return engine::values_of(polyline_->vertices); }

std::shared_ptr<PolylineGeometry> PolylineGeometry::VerticesTranslatedBy(std::vector<int> const& vertices,
                                                                         Vec3d const& offset) {
    return edited(*polyline_, vertices, engine::translation(offset));
}

std::shared_ptr<PolylineGeometry> PolylineGeometry::VerticesScaledAbout(std::vector<int> const& vertices,
                                                                        Vec3d const& point, double factor) {
    return edited(*polyline_, vertices, engine::scaling_about(point, factor));
}

std::shared_ptr<PolylineGeometry> PolylineGeometry::VerticesScaledAlong(std::vector<int> const& vertices,
                                                                        Axis3d const& axis, double factor) {
    return edited(*polyline_, vertices, engine::scaling_along(axis, factor));
}

std::shared_ptr<PolylineGeometry> PolylineGeometry::VerticesRotatedAbout(std::vector<int> const& vertices,
                                                                         Axis3d const& axis, double angle) {
    return edited(*polyline_, vertices, engine::rotation_about(axis, angle));
}

int PolylineGeometry::GetGeometryTypeId() { return static_cast<int>(GeometryType::POLYLINE); }
BoundingBox3d PolylineGeometry::GetBoundingBox() { return engine::bounding_box_of(polyline_->vertices); }
BoundingSphere3d PolylineGeometry::GetBoundingSphere() { return engine::bounding_sphere_of(polyline_->vertices); }

std::shared_ptr<PolylineGeometry> PolylineGeometry::AsPolylineGeometry() {
    return std::make_shared<PolylineGeometry>(*this);
}

std::shared_ptr<Geometry> PolylineGeometry::Mapped(AffineMap const& map) {
    Polyline moved = *polyline_;
    std::transform(moved.vertices.begin(), moved.vertices.end(), moved.vertices.begin(), map);
    return geometry_of(moved);
}

}  // namespace pedflux
