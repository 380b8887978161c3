#pragma once

#include "engine/geometry/mesh.h"

#include <pedflux/geometry.h>

#include <array>
#include <memory>
#include <vector>

/// Conversion between the SDK's geometries and the plain data behind them.
namespace pedflux::engine {

/// At least two vertices; neighbours differ.
struct Polyline {
    std::vector<Vector> vertices;
};

/// The directions are perpendicular unit vectors.
struct Rectangle {
    Vector center;
    Vector length_direction;
    Vector width_direction;
    double length = 0;
    double width = 0;
};

/// In the order of `RectangleGeometry::GetVertices`.
std::array<Vector, 4> corners_of(Rectangle const& rectangle);

/// Valid as long as the geometry.
Mesh const& mesh_of(MeshGeometry const& geometry);
Polyline const& polyline_of(PolylineGeometry const& geometry);
Rectangle const& rectangle_of(RectangleGeometry const& geometry);

std::shared_ptr<MeshGeometry> geometry_of(Mesh mesh);
/// Throws Exception for vertices that make no valid Polyline.
std::shared_ptr<PolylineGeometry> geometry_of(Polyline const& polyline);
std::shared_ptr<RectangleGeometry> geometry_of(Rectangle const& rectangle);

std::vector<Vector> vectors_of(std::vector<Vec3d> const& values);
std::vector<Vec3d> values_of(std::vector<Vector> const& vectors);
BoundingBox3d bounding_box_of(std::vector<Vector> const& points);
BoundingSphere3d bounding_sphere_of(std::vector<Vector> const& points);

/// The vertices, those with the given indices mapped once each. Throws Exception for an index out of range.
std::vector<Vector> with_some_mapped(std::vector<Vector> vertices, std::vector<int> const& indices,
                                     AffineMap const& map);

}  // namespace pedflux::engine
