#pragma once

#include "engine/geometry/plane.h"

namespace pedflux::engine {

/// Throws Exception when the ring is no simple polygon: fewer than three corners, equal neighbouring corners, or edges
/// that meet elsewhere than at their common corner. The message names the edges by their numbers; edge i begins at
/// corner i. All decisions are exact.
void require_simple(Ring const& ring);

}  // namespace pedflux::engine
