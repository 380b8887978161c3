#pragma once

#include "engine/geometry/affine_map.h"
#include "engine/geometry/vector.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/// Triangle meshes as plain data, behind the SDK class `MeshGeometry`.
namespace pedflux::engine {

/// Default distance up to which corners are welded into one vertex (metres).
inline constexpr double default_weld_tolerance = 1e-6;

/// A mesh as the functions below make it: at least one face, no face without area, coordinates that `require_point`
/// accepts, and consistent edges.
struct Mesh {
    std::vector<Vector> vertices;
    std::vector<std::array<int, 3>> faces;       ///< vertices, in the order that defines the normal
    std::vector<std::array<int, 2>> edges;       ///< vertices, in the direction of the edge's first face
    std::vector<std::array<int, 3>> face_edges;  ///< by face, the first one from its first vertex to its second
    std::vector<std::vector<int>> edge_faces;    ///< by edge, ascending
    double tolerance = default_weld_tolerance;
};

/// A mesh of the given vertices and faces. Throws Exception when it would not be a valid `Mesh`.
Mesh make_mesh(std::vector<Vector> vertices, std::vector<std::array<int, 3>> faces,
               double tolerance = default_weld_tolerance);

/// A mesh of unconnected triangles. A corner at most `tolerance` from an earlier vertex becomes that vertex.
Mesh weld(std::span<std::array<Vector, 3> const> triangles, double tolerance = default_weld_tolerance);

/// The same faces with other vertices, checked again.
Mesh with_vertices(Mesh const& mesh, std::vector<Vector> vertices);

/// The mesh mapped by an affine map. Mirrored faces are reversed, so that they still face outwards.
Mesh mapped(Mesh const& mesh, AffineMap const& map);

std::array<Vector, 3> corners_of(Mesh const& mesh, std::size_t face);
/// The unit normal.
Vector normal_of(Mesh const& mesh, std::size_t face);

/// The points where the segment meets the mesh within 1e-6 m, in order and without repetition; where the segment runs
/// along a face, both ends of the common part.
std::vector<Vector> intersections(Mesh const& mesh, Vector from, Vector to);

}  // namespace pedflux::engine
