#pragma once

#include "engine/base/checks.h"
#include "engine/geometry/vector.h"

/// Refusals of points and directions. Each throws Exception with a sentence that begins with `what`, the name of the
/// checked thing.
namespace pedflux::engine {

/// Coordinates stay within this distance (metres) of the zero point, where a double still tells micrometres apart.
inline constexpr double largest_coordinate = 1e9;

/// "(1, 2.5, -3)"
std::string text_of(Vector vector);

/// Whether a finite point lies within the largest coordinate.
Vector require_point(std::string_view what, Vector point);
Vector require_point(std::string_view what, Vec3d const& point);
/// The direction at length 1.
Vector require_direction(std::string_view what, Vector direction);

}  // namespace pedflux::engine
