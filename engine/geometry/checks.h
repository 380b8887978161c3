#pragma once

#include "engine/geometry/vector.h"

#include <cstddef>
#include <string>
#include <string_view>

/// The refusals that geometry, and whoever takes numbers from a user, has in common. Each throws Exception with a
/// sentence that begins with `what`, the name of the checked thing.
namespace pedflux::engine {

/// Coordinates stay within this distance (metres) of the zero point, where a double still tells micrometres apart.
inline constexpr double largest_coordinate = 1e9;

/// The shortest text that reads back as the same number.
std::string text_of(double value);
/// "(1, 2.5, -3)"
std::string text_of(Vector vector);

[[noreturn]] void refuse(std::string const& message);

double require_finite(std::string_view what, double value);
double require_not_negative(std::string_view what, double value);
double require_positive(std::string_view what, double value);
/// Whether a finite point lies within the largest coordinate.
Vector require_point(std::string_view what, Vector point);
Vector require_point(std::string_view what, Vec3d const& point);
/// The direction at length 1.
Vector require_direction(std::string_view what, Vector direction);
/// The index as a position in something that has `count` elements; `element` names one of them.
std::size_t require_index(std::string_view element, int index, std::size_t count);

}  // namespace pedflux::engine
