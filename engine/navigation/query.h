#pragma once

#include "engine/navigation/navigation.h"
#include "engine/navigation/routes.h"

namespace pedflux::engine::navigation {

/// Implements Navigation::next. The hint belongs to the same region, destination and version, or has no triangle.
RouteStep next_step(RegionMap const& region, Routes const& routes, Point point, RouteHint& hint);

}  // namespace pedflux::engine::navigation
