#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <limits>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::AffineMap;
using engine::Mesh;
using engine::Rectangle;
using engine::value_of;
using engine::Vector;

/// Tolerance of the cosine of a right angle, and of lengths relative to the rectangle.
constexpr double relative_tolerance = 1e-6;

/// The directions, corrected to be exactly perpendicular.
Rectangle checked(Vector center, Vector along, Vector across, double length, double width) {
    Vector const length_direction = engine::require_direction("length direction of the rectangle", along);
    Vector const width_direction = engine::require_direction("width direction of the rectangle", across);
    double const skew = dot(length_direction, width_direction);
    if (std::abs(skew) > relative_tolerance)
        engine::refuse(
            fmt::format("width direction of the rectangle is {}; it must be perpendicular to the length direction {}",
                        text_of(across), text_of(along)));
    return {.center = engine::require_point("centre of the rectangle", center),
            .length_direction = length_direction,
            .width_direction = normalized(width_direction - skew * length_direction),
            .length = engine::require_positive("length of the rectangle", length),
            .width = engine::require_positive("width of the rectangle", width)};
}

Mesh mesh_of(Rectangle const& rectangle) {
    auto const corners = corners_of(rectangle);
    return engine::make_mesh({corners.begin(), corners.end()}, {{0, 1, 2}, {0, 2, 3}});
}

[[noreturn]] void refuse_no_rectangle(std::string const& why) {
    engine::refuse(fmt::format(
        "the triangles make up no rectangle: {}; they must cover one once, look to one side, share whole edges, and "
        "have the length direction along two sides",
        why));
}

/// Edges without a counterpart in the opposite direction.
std::vector<std::array<Vector, 2>> rim_of(Mesh const& mesh) {
    std::vector<std::array<Vector, 2>> rim;
    for (std::size_t edge = 0; edge < mesh.edges.size(); ++edge) {
        auto const [from, to] = mesh.edges[edge];
        int balance = 0;
        for (int const face : mesh.edge_faces[edge]) {
            auto const& corners = mesh.faces[static_cast<std::size_t>(face)];
            auto const at = std::find(corners.begin(), corners.end(), from) - corners.begin();
            balance += corners[static_cast<std::size_t>(at + 1) % 3] == to ? 1 : -1;
        }
        if (balance != 0)
            rim.push_back({mesh.vertices[static_cast<std::size_t>(from)], mesh.vertices[static_cast<std::size_t>(to)]});
    }
    return rim;
}

double area_of(Mesh const& mesh) {
    double area = 0;
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
        auto const [a, b, c] = corners_of(mesh, face);
        area += 0.5 * length(cross(b - a, c - a));
    }
    return area;
}

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double size() const { return high - low; }
    double middle() const { return 0.5 * (low + high); }
};

/// Faces with the same orientation whose outer edges lie on the sides of the bounding rectangle cover its inside
/// uniformly; the area tells whether they do so once.
Rectangle rectangle_of(Mesh const& mesh, Vector along) {
    Vector const normal = normal_of(mesh, 0);
    Vector const length_direction = engine::require_direction("length direction of the rectangle", along);
    Vector const origin = mesh.vertices[0];
    if (std::abs(dot(length_direction, normal)) > relative_tolerance)
        refuse_no_rectangle(fmt::format("the length direction {} leaves their plane", text_of(along)));
    Vector const straight = normalized(length_direction - dot(length_direction, normal) * normal);
    Vector const width_direction = cross(normal, straight);
    Range lengths;
    Range widths;
    for (Vector const vertex : mesh.vertices) {
        lengths.add(dot(vertex - origin, straight));
        widths.add(dot(vertex - origin, width_direction));
    }
    double const slack = mesh.tolerance + relative_tolerance * (lengths.size() + widths.size());
    for (Vector const vertex : mesh.vertices)
        if (std::abs(dot(vertex - origin, normal)) > slack)
            refuse_no_rectangle(
                fmt::format("the vertex {} is not in the plane of the first triangle", text_of(vertex)));
    for (std::size_t face = 0; face < mesh.faces.size(); ++face)
        if (dot(normal_of(mesh, face), normal) < 0)
            refuse_no_rectangle(fmt::format("triangle {} looks to the other side than the first", face));
    for (auto const& [from, to] : rim_of(mesh)) {
        auto const on_side = [&, from = from, to = to](Vector direction, double side) {
            return std::abs(dot(from - origin, direction) - side) <= slack &&
                   std::abs(dot(to - origin, direction) - side) <= slack;
        };
        if (!on_side(straight, lengths.low) && !on_side(straight, lengths.high) &&
            !on_side(width_direction, widths.low) && !on_side(width_direction, widths.high))
            refuse_no_rectangle(fmt::format("the edge from {} to {} is on no side", text_of(from), text_of(to)));
    }
    double const expected_area = lengths.size() * widths.size();
    if (double const area = area_of(mesh); std::abs(area - expected_area) > 4 * relative_tolerance * expected_area)
        refuse_no_rectangle(fmt::format("they have {} square metres, it has {}", engine::text_of(area),
                                        engine::text_of(expected_area)));
    return checked(origin + lengths.middle() * straight + widths.middle() * width_direction, straight, width_direction,
                   lengths.size(), widths.size());
}

}  // namespace

RectangleGeometry::RectangleGeometry(std::vector<Tri3d> const& triangles, Vec3d const& lengthDirection)
    : rectangle_(std::make_shared<Rectangle const>(
          rectangle_of(engine::mesh_of(MeshGeometry(triangles)), engine::vector_of(lengthDirection)))) {}
RectangleGeometry::RectangleGeometry(Vec3d const& center, Vec3d const& lengthDirection, Vec3d const& widthDirection,
                                     double length, double width)
    : rectangle_(
          std::make_shared<Rectangle const>(checked(engine::vector_of(center), engine::vector_of(lengthDirection),
                                                    engine::vector_of(widthDirection), length, width))) {}
RectangleGeometry::RectangleGeometry(std::shared_ptr<Rectangle const> rectangle) : rectangle_(std::move(rectangle)) {}
RectangleGeometry::~RectangleGeometry() = default;

double RectangleGeometry::GetLength() { return rectangle_->length; }
double RectangleGeometry::GetWidth() { return rectangle_->width; }
Vec3d RectangleGeometry::GetLengthDirection() { return value_of(rectangle_->length_direction); }
Vec3d RectangleGeometry::GetWidthDirection() { return value_of(rectangle_->width_direction); }

Vec3d RectangleGeometry::GetNormalDirection() {
    return value_of(normalized(cross(rectangle_->length_direction, rectangle_->width_direction)));
}

std::vector<Vec3d> RectangleGeometry::GetVertices() { return engine::values_of(mesh_of(*rectangle_).vertices); }
int RectangleGeometry::GetGeometryTypeId() { return static_cast<int>(GeometryType::RECTANGLE); }
BoundingBox3d RectangleGeometry::GetBoundingBox() { return engine::bounding_box_of(mesh_of(*rectangle_).vertices); }

BoundingSphere3d RectangleGeometry::GetBoundingSphere() {
    return engine::bounding_sphere_of(mesh_of(*rectangle_).vertices);
}

std::shared_ptr<MeshGeometry> RectangleGeometry::AsMeshGeometry() { return engine::geometry_of(mesh_of(*rectangle_)); }

std::shared_ptr<RectangleGeometry> RectangleGeometry::AsRectangleGeometry() {
    return std::make_shared<RectangleGeometry>(*this);
}

std::shared_ptr<Geometry> RectangleGeometry::Mapped(AffineMap const& map) {
    Vector const along = map.direction(rectangle_->length_direction);
    // A mirrored rectangle keeps facing outwards, which reverses its width direction.
    Vector const across = (map.mirrors() ? -1.0 : 1.0) * map.direction(rectangle_->width_direction);
    double const stretch_along = length(along);
    double const stretch_across = length(across);
    if (std::abs(dot(along, across)) > 1e-9 * stretch_along * stretch_across)
        return engine::geometry_of(engine::mapped(mesh_of(*rectangle_), map));
    return engine::geometry_of(checked(map(rectangle_->center), along, across, stretch_along * rectangle_->length,
                                       stretch_across * rectangle_->width));
}

}  // namespace pedflux
