#pragma once

#include "engine/geometry/mesh.h"
#include "engine/geometry/plane.h"

/// Meshes of simple shapes. Each throws Exception for sizes that are not valid; the shapes are described at
/// `MeshGeometry`.
namespace pedflux::engine {

Mesh box(Vector corner, Vector opposite_corner);
Mesh vertical_rectangle(Vector corner, Vector opposite_corner);
Mesh cone(double radius, Vector base_center, Vector apex, int side_count);
Mesh cylinder(double radius, Vector base_center, Vector top_center, int side_count);
Mesh ramp(Vector start, Vector end, double width);
Mesh ramp(Vector start, Vector end, double width, double thickness);
Mesh flat_polygon(double y, Ring ring);

}  // namespace pedflux::engine
