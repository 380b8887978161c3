#pragma once

#include "engine/geometry/plane.h"

#include <array>
#include <vector>

namespace pedflux::engine {

/// 1 when a simple polygon runs counter-clockwise, -1 when it runs clockwise.
int direction_of(Ring const& ring);

/// Some triangulation of the inside of a simple polygon, as indices of its corners, running the way the ring does. No
/// triangle is without area, but slivers are not avoided.
std::vector<std::array<int, 3>> clip_ears(Ring const& ring);

}  // namespace pedflux::engine
