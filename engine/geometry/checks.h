#pragma once

#include "engine/base/checks.h"
#include "engine/geometry/vector.h"

/// Checks of points and directions. Each throws Exception with a message that begins with `what`, the name of the
/// checked value.
namespace pedflux::engine {

/// Largest distance of a coordinate from 0 (metres), at which a double still resolves micrometres.
inline constexpr double largest_coordinate = 1e9;

/// "(1, 2.5, -3)"
std::string text_of(Vector vector);

/// Throws Exception for a point that is not finite or beyond the largest coordinate.
Vector require_point(std::string_view what, Vector point);
Vector require_point(std::string_view what, Vec3d const& point);
/// The direction as a unit vector.
Vector require_direction(std::string_view what, Vector direction);

}  // namespace pedflux::engine
