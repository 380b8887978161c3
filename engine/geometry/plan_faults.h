#pragma once

#include "engine/geometry/plane.h"

#include <optional>
#include <string>

/// Why a drawn plan cannot be walked, in one sentence that names the place. Readers of plans ask before they build.
namespace pedflux::engine {

/// The ring of a list of corners that ends with its first corner, as files give it. Throws Exception when it does not.
Ring closed_ring(std::vector<Point> const& corners);

/// What is wrong with a ring: too few different corners, a coordinate that is not finite, no area, or a boundary that
/// crosses or touches itself. Empty when nothing is.
std::optional<std::string> fault_of(Ring const& ring);

/// What is wrong with a polygon: a faulty ring, a hole outside of the outline, or rings that cross. Rings may touch in
/// single points.
std::optional<std::string> fault_of(Polygon const& polygon);

}  // namespace pedflux::engine
