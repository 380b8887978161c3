#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"
#include "engine/geometry/solids.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <utility>

namespace pedflux {

namespace {

using engine::AffineMap;
using engine::geometry_of;
using engine::Mesh;
using engine::value_of;

constexpr int default_side_count = 24;

Mesh welded(std::vector<Tri3d> const& triangles, double tolerance) {
    std::vector<std::array<engine::Vector, 3>> corners;
    corners.reserve(triangles.size());
    for (Tri3d triangle : triangles)
        corners.push_back({engine::vector_of(triangle.GetFirstVertex()), engine::vector_of(triangle.GetSecondVertex()),
                           engine::vector_of(triangle.GetThirdVertex())});
    return engine::weld(corners, tolerance);
}

std::size_t position(char const* element, int index, std::size_t count) {
    return engine::require_index(element, index, count);
}

template <std::size_t count>
std::vector<int> list_of(std::array<int, count> const& indices) {
    return {indices.begin(), indices.end()};
}

LineSeg3d edge_value(Mesh const& mesh, std::array<int, 2> const& edge) {
    return {value_of(mesh.vertices[static_cast<std::size_t>(edge[0])]),
            value_of(mesh.vertices[static_cast<std::size_t>(edge[1])])};
}

Tri3d face_value(Mesh const& mesh, std::size_t face) {
    auto const [a, b, c] = corners_of(mesh, face);
    return {value_of(a), value_of(b), value_of(c)};
}

/// The vertices of some edges or faces.
template <std::size_t count>
std::vector<int> vertices_of(char const* element, std::vector<std::array<int, count>> const& elements,
                             std::vector<int> const& indices) {
    std::vector<int> vertices;
    for (int const index : indices) {
        auto const& corners = elements[position(element, index, elements.size())];
        vertices.insert(vertices.end(), corners.begin(), corners.end());
    }
    return vertices;
}

std::shared_ptr<MeshGeometry> edited(Mesh const& mesh, std::vector<int> const& vertices, AffineMap const& map) {
    return geometry_of(with_vertices(mesh, with_some_mapped(mesh.vertices, vertices, map)));
}

}  // namespace

MeshGeometry::MeshGeometry(std::vector<Tri3d> const& triangles)
    : MeshGeometry(triangles, engine::default_weld_tolerance) {}
MeshGeometry::MeshGeometry(std::vector<Tri3d> const& triangles, double tolerance)
    : mesh_(std::make_shared<Mesh const>(welded(triangles, tolerance))) {}
MeshGeometry::MeshGeometry(std::shared_ptr<Mesh const> mesh) : mesh_(std::move(mesh)) {}
MeshGeometry::~MeshGeometry() = default;

std::shared_ptr<MeshGeometry> MeshGeometry::Create(std::vector<Tri3d> const& triangles) {
    return std::make_shared<MeshGeometry>(triangles);
}

std::shared_ptr<MeshGeometry> MeshGeometry::Create(std::vector<Tri3d> const& triangles, double tolerance) {
    return std::make_shared<MeshGeometry>(triangles, tolerance);
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateBox(Vec3d const& corner, Vec3d const& oppositeCorner) {
    return geometry_of(engine::box(engine::require_point("corner of the box", corner),
                                   engine::require_point("opposite corner of the box", oppositeCorner)));
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateVerticalRectangle(Vec3d const& corner, Vec3d const& oppositeCorner) {
    return geometry_of(
        engine::vertical_rectangle(engine::require_point("corner of the rectangle", corner),
                                   engine::require_point("opposite corner of the rectangle", oppositeCorner)));
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateCone(double radius, Vec3d const& baseCenter, Vec3d const& apex) {
    return CreateCone(radius, baseCenter, apex, default_side_count);
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateCone(double radius, Vec3d const& baseCenter, Vec3d const& apex,
                                                       int sideCount) {
    return geometry_of(engine::cone(radius, engine::require_point("base centre of the cone", baseCenter),
                                    engine::require_point("apex of the cone", apex), sideCount));
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateCylinder(double radius, Vec3d const& baseCenter,
                                                           Vec3d const& topCenter) {
    return CreateCylinder(radius, baseCenter, topCenter, default_side_count);
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateCylinder(double radius, Vec3d const& baseCenter,
                                                           Vec3d const& topCenter, int sideCount) {
    return geometry_of(engine::cylinder(radius, engine::require_point("base centre of the cylinder", baseCenter),
                                        engine::require_point("top centre of the cylinder", topCenter), sideCount));
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateRamp(Vec3d const& start, Vec3d const& end, double width) {
    return geometry_of(engine::ramp(engine::require_point("start of the ramp", start),
                                    engine::require_point("end of the ramp", end), width));
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateRamp(Vec3d const& start, Vec3d const& end, double width,
                                                       double thickness) {
    return geometry_of(engine::ramp(engine::require_point("start of the ramp", start),
                                    engine::require_point("end of the ramp", end), width, thickness));
}

std::shared_ptr<MeshGeometry> MeshGeometry::CreateFlatPolygon(double y, std::vector<Vec2d> const& vertices) {
    engine::Ring ring;
    for (Vec2d const& vertex : vertices) ring.push_back({vertex.GetX(), vertex.GetZ()});
    return geometry_of(engine::flat_polygon(y, std::move(ring)));
}

int MeshGeometry::GetVertexCount() const { return static_cast<int>(mesh_->vertices.size()); }
int MeshGeometry::GetEdgeCount() const { return static_cast<int>(mesh_->edges.size()); }
int MeshGeometry::GetFaceCount() const { return static_cast<int>(mesh_->faces.size()); }

Vec3d MeshGeometry::GetVertex(int index) {
    return value_of(mesh_->vertices[position("vertex", index, mesh_->vertices.size())]);
}

Vec3d MeshGeometry::GetNormalForFace(int index) {
    return value_of(normal_of(*mesh_, position("face", index, mesh_->faces.size())));
}

LineSeg3d MeshGeometry::GetEdge(int index) {
    return edge_value(*mesh_, mesh_->edges[position("edge", index, mesh_->edges.size())]);
}

Tri3d MeshGeometry::GetFace(int index) { return face_value(*mesh_, position("face", index, mesh_->faces.size())); }
std::vector<Vec3d> MeshGeometry::GetVertices() { return engine::values_of(mesh_->vertices); }

std::vector<LineSeg3d> MeshGeometry::GetEdges() {
    std::vector<LineSeg3d> edges(mesh_->edges.size());
    std::transform(mesh_->edges.begin(), mesh_->edges.end(), edges.begin(),
                   [this](auto const& edge) { return edge_value(*mesh_, edge); });
    return edges;
}

std::vector<Tri3d> MeshGeometry::GetFaces() {
    std::vector<Tri3d> faces(mesh_->faces.size());
    for (std::size_t face = 0; face < faces.size(); ++face) faces[face] = face_value(*mesh_, face);
    return faces;
}

std::vector<int> MeshGeometry::GetVertexIndicesForEdge(int index) {
    return list_of(mesh_->edges[position("edge", index, mesh_->edges.size())]);
}

std::vector<int> MeshGeometry::GetVertexIndicesForFace(int index) {
    return list_of(mesh_->faces[position("face", index, mesh_->faces.size())]);
}

std::vector<int> MeshGeometry::GetEdgeIndicesForFace(int index) {
    return list_of(mesh_->face_edges[position("face", index, mesh_->faces.size())]);
}

std::vector<int> MeshGeometry::GetFaceIndicesForEdge(int index) {
    return mesh_->edge_faces[position("edge", index, mesh_->edges.size())];
}

std::vector<Vec3d> MeshGeometry::GetIntersections(Vec3d const& from, Vec3d const& to) {
    return engine::values_of(intersections(*mesh_, engine::require_point("start of the segment", from),
                                           engine::require_point("end of the segment", to)));
}

// Every operation on vertices also exists for those of edges and of faces.
#define PEDFLUX_EDITS(Elements, indices_of_vertices)                                                       \
    std::shared_ptr<MeshGeometry> MeshGeometry::Elements##TranslatedBy(std::vector<int> const& indices,    \
                                                                       Vec3d const& offset) {              \
        return edited(*mesh_, indices_of_vertices, engine::translation(offset));                           \
    }                                                                                                      \
    std::shared_ptr<MeshGeometry> MeshGeometry::Elements##ScaledAbout(std::vector<int> const& indices,     \
                                                                      Vec3d const& point, double factor) { \
        return edited(*mesh_, indices_of_vertices, engine::scaling_about(point, factor));                  \
    }                                                                                                      \
    std::shared_ptr<MeshGeometry> MeshGeometry::Elements##ScaledAlong(std::vector<int> const& indices,     \
                                                                      Axis3d const& axis, double factor) { \
        return edited(*mesh_, indices_of_vertices, engine::scaling_along(axis, factor));                   \
    }                                                                                                      \
    std::shared_ptr<MeshGeometry> MeshGeometry::Elements##RotatedAbout(std::vector<int> const& indices,    \
                                                                       Axis3d const& axis, double angle) { \
        return edited(*mesh_, indices_of_vertices, engine::rotation_about(axis, angle));                   \
    }
PEDFLUX_EDITS(Vertices, indices)
PEDFLUX_EDITS(Edges, vertices_of("edge", mesh_->edges, indices))
PEDFLUX_EDITS(Faces, vertices_of("face", mesh_->faces, indices))
#undef PEDFLUX_EDITS

int MeshGeometry::GetGeometryTypeId() { return static_cast<int>(GeometryType::MESH); }
BoundingBox3d MeshGeometry::GetBoundingBox() { return engine::bounding_box_of(mesh_->vertices); }
BoundingSphere3d MeshGeometry::GetBoundingSphere() { return engine::bounding_sphere_of(mesh_->vertices); }
std::shared_ptr<MeshGeometry> MeshGeometry::AsMeshGeometry() { return std::make_shared<MeshGeometry>(*this); }
std::shared_ptr<Geometry> MeshGeometry::Mapped(AffineMap const& map) { return geometry_of(mapped(*mesh_, map)); }

}  // namespace pedflux
