#pragma once

#include "engine/geometry/affine_map.h"
#include "engine/geometry/vector.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/// Triangle meshes as plain data. `MeshGeometry` is their face.
namespace pedflux::engine {

/// Corners closer than this (metres) become one vertex where nothing else is said.
inline constexpr double default_weld_tolerance = 1e-6;

/// A mesh as the functions below make it: at least one face, faces with an area, coordinates that `require_point`
/// accepts, and edges to match.
struct Mesh {
    std::vector<Vector> vertices;
    std::vector<std::array<int, 3>> faces;       ///< vertices, in the order that gives the normal
    std::vector<std::array<int, 2>> edges;       ///< vertices, as the first face of the edge runs
    std::vector<std::array<int, 3>> face_edges;  ///< of each face, from its first vertex to the second and so on
    std::vector<std::vector<int>> edge_faces;    ///< of each edge, ascending
    double tolerance = default_weld_tolerance;
};

/// A mesh of vertices and faces as they are. Throws Exception when it would not be as `Mesh` tells.
Mesh make_mesh(std::vector<Vector> vertices, std::vector<std::array<int, 3>> faces,
               double tolerance = default_weld_tolerance);

/// A mesh of triangles that know nothing of each other: a corner at most `tolerance` from an earlier vertex becomes
/// that vertex.
Mesh weld(std::span<std::array<Vector, 3> const> triangles, double tolerance = default_weld_tolerance);

/// The same faces over other vertices, checked again.
Mesh with_vertices(Mesh const& mesh, std::vector<Vector> vertices);

/// The mesh after a map of space; a mirrored face is turned over, so that it looks to the same side of the solid.
Mesh mapped(Mesh const& mesh, AffineMap const& map);

std::array<Vector, 3> corners_of(Mesh const& mesh, std::size_t face);
/// Of length 1.
Vector normal_of(Mesh const& mesh, std::size_t face);

/// The points where the segment meets the mesh within 1e-6 m, from its start on, each once; where the segment
/// runs along a face, the two ends of its way along that face.
std::vector<Vector> intersections(Mesh const& mesh, Vector from, Vector to);

}  // namespace pedflux::engine
