#include "engine/geometry/checks.h"

#include <cmath>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

bool is_coordinate(double value) { return std::abs(value) <= largest_coordinate; }

}  // namespace

std::string text_of(Vector vector) {
    return fmt::format("({}, {}, {})", text_of(vector.x), text_of(vector.y), text_of(vector.z));
}

Vector require_point(std::string_view what, Vector point) {
    if (!is_coordinate(point.x) || !is_coordinate(point.y) || !is_coordinate(point.z))
        refuse_value(what, text_of(point), "finite and within 1e9 m of 0 in each coordinate");
    return point;
}

Vector require_point(std::string_view what, Vec3d const& point) { return require_point(what, vector_of(point)); }

Vector require_direction(std::string_view what, Vector direction) {
    Vector const unit = normalized(direction);
    if (!is_finite(unit)) refuse_value(what, text_of(direction), "finite and not zero");
    return unit;
}

}  // namespace pedflux::engine
