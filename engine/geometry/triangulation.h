#pragma once

#include "engine/geometry/plane.h"

#include <array>
#include <vector>

namespace pedflux::engine {

/// The constrained Delaunay triangulation of the inside of a simple polygon, as indices of its corners. No corner is
/// added, none is left out, also not one in line with its neighbours, and the triangles run the way the ring does.
std::vector<std::array<int, 3>> triangulate(Ring const& ring);

}  // namespace pedflux::engine
