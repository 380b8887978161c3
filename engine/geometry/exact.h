#pragma once

#include "engine/geometry/plane.h"

namespace pedflux::engine {

/// The sign of `orientation(a, b, c)` without any rounding: 1 counter-clockwise, -1 clockwise, 0 in line. Coordinates
/// must be neither so large nor so small that their products overflow or underflow.
///
/// A rounded result that exceeds its error bound is right; otherwise the products are summed exactly. After Shewchuk:
/// "Adaptive precision floating-point arithmetic and fast robust geometric predicates", 1997.
int exact_orientation(Point a, Point b, Point c);

}  // namespace pedflux::engine
