#include "engine/base/checks.h"

#include <pedflux/exception.h>

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {

std::string text_of(double value) {
    std::array<char, 32> text;
    auto const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

void refuse(std::string const& message) { throw Exception(message); }

void refuse_value(std::string_view what, std::string const& value, std::string_view right) {
    refuse(fmt::format("{} is {}; it must be {}", what, value, right));
}

double require_finite(std::string_view what, double value) {
    if (!std::isfinite(value)) refuse_value(what, text_of(value), "a finite number");
    return value;
}

double require_not_negative(std::string_view what, double value) {
    if (!std::isfinite(value) || value < 0) refuse_value(what, text_of(value), "a finite number of 0 or more");
    return value;
}

double require_positive(std::string_view what, double value) {
    if (!std::isfinite(value) || value <= 0) refuse_value(what, text_of(value), "a finite number above 0");
    return value;
}

std::size_t require_index(std::string_view element, int index, std::size_t count) {
    if (index < 0 || static_cast<std::size_t>(index) >= count) {
        if (count == 0) refuse(fmt::format("There is no {} {}, there are none", element, index));
        refuse_value(fmt::format("{} index", element), std::to_string(index), fmt::format("from 0 to {}", count - 1));
    }
    return static_cast<std::size_t>(index);
}

}  // namespace pedflux::engine
