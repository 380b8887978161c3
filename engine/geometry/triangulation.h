#pragma once

#include "engine/geometry/plane.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// Constrained Delaunay triangulation of areas that are given by their boundaries.
///
/// Vertices are added from left to right, each joined to the part of the hull that it sees (Lawson's flips keep the
/// triangulation Delaunay). Boundary edges are then forced in by flipping the edges in their way (Sloan, "A fast
/// algorithm for generating constrained Delaunay triangulations", 1993). Orientations are decided exactly.
namespace pedflux::engine {

/// Coordinates in whole steps of a resolution, up to 10^9 of them, so that orientations fit 64 bits.
struct LatticePoint {
    std::int64_t x = 0;
    std::int64_t z = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the linter takes what the compiler writes for code.
    auto operator<=>(LatticePoint const&) const = default;
};

inline constexpr std::uint32_t no_triangle = std::numeric_limits<std::uint32_t>::max();

/// Corners are counter-clockwise. Edge i is opposite to corner i; across it lies neighbour i, `no_triangle` at the
/// boundary.
struct ConnectedTriangle {
    std::array<std::uint32_t, 3> corner{no_triangle, no_triangle, no_triangle};
    std::array<std::uint32_t, 3> neighbour{no_triangle, no_triangle, no_triangle};
};

/// The corner, or edge, after and before another.
constexpr std::size_t after(std::size_t index) { return index == 2 ? 0 : index + 1; }
constexpr std::size_t before(std::size_t index) { return index == 0 ? 2 : index - 1; }

/// A part of the boundary, between two vertices. Where edges coincide, an even number of them is no boundary.
struct BoundaryEdge {
    std::uint32_t from;
    std::uint32_t to;
};

/// Thrown where two boundary edges cross away from the vertices, near the vertex.
struct BoundaryCrossing {
    std::uint32_t vertex;
};

/// The triangles inside of the boundary, which consists of closed rings. Vertices differ and are in the order of x and
/// then z; an edge may pass through vertices. `Vertex` is Point or LatticePoint.
template <class Vertex>
std::vector<ConnectedTriangle> constrained_delaunay(std::vector<Vertex> const& vertices,
                                                    std::vector<BoundaryEdge> const& boundary);

/// The constrained Delaunay triangulation of the inside of a simple polygon, as indices of its corners. All corners
/// are used, also collinear ones, and none is added. The triangles have the direction of the ring.
std::vector<std::array<int, 3>> triangulate(Ring const& ring);

}  // namespace pedflux::engine
