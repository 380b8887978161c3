#include "engine/geometry/checks.h"

#include <pedflux/exception.h>

#include <array>
#include <charconv>
#include <string>

namespace pedflux::engine {

namespace {

std::string sentence(std::string_view what, std::string const& value, std::string_view right) {
    return std::string(what) + " is " + value + "; it must be " + std::string(right);
}

bool is_coordinate(double value) { return std::abs(value) <= largest_coordinate; }

}  // namespace

std::string text_of(double value) {
    std::array<char, 32> text;
    auto const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

std::string text_of(Vector vector) {
    return "(" + text_of(vector.x) + ", " + text_of(vector.y) + ", " + text_of(vector.z) + ")";
}

void refuse(std::string const& message) { throw Exception(message); }

double require_finite(std::string_view what, double value) {
    if (!std::isfinite(value)) refuse(sentence(what, text_of(value), "a finite number"));
    return value;
}

double require_not_negative(std::string_view what, double value) {
    if (!std::isfinite(value) || value < 0) refuse(sentence(what, text_of(value), "a finite number of 0 or more"));
    return value;
}

double require_positive(std::string_view what, double value) {
    if (!std::isfinite(value) || value <= 0) refuse(sentence(what, text_of(value), "a finite number above 0"));
    return value;
}

Vector require_point(std::string_view what, Vector point) {
    if (!is_coordinate(point.x) || !is_coordinate(point.y) || !is_coordinate(point.z))
        refuse(sentence(what, text_of(point), "finite and within 1e9 m of 0 in each coordinate"));
    return point;
}

Vector require_point(std::string_view what, Vec3d const& point) { return require_point(what, vector_of(point)); }

Vector require_direction(std::string_view what, Vector direction) {
    Vector const unit = normalized(direction);
    if (!is_finite(unit)) refuse(sentence(what, text_of(direction), "finite and not zero"));
    return unit;
}

std::size_t require_index(std::string_view element, int index, std::size_t count) {
    if (index < 0 || static_cast<std::size_t>(index) >= count) {
        if (count == 0)
            refuse("There is no " + std::string(element) + " " + std::to_string(index) + ", there are none");
        refuse(
            sentence(std::string(element) + " index", std::to_string(index), "from 0 to " + std::to_string(count - 1)));
    }
    return static_cast<std::size_t>(index);
}

}  // namespace pedflux::engine
