#pragma once

#include "engine/geometry/plane.h"

namespace pedflux::engine {

/// Throws Exception when the ring is no simple polygon: fewer than three corners, one repeated next to itself, or
/// edges that meet elsewhere than at their common corner. The message names the edges; edge i leaves corner i. All
/// decisions are exact.
void require_simple(Ring const& ring);

}  // namespace pedflux::engine
