#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Checks of numbers that come from a caller. Each throws Exception with a message that begins with `what`, the name of
/// the checked value.
namespace pedflux::engine {

/// The shortest decimal text that parses to the same number.
std::string text_of(double value);

[[noreturn]] void refuse(std::string const& message);
/// Throws Exception: `what` is `value`; it must be `right`.
[[noreturn]] void refuse_value(std::string_view what, std::string const& value, std::string_view right);

double require_finite(std::string_view what, double value);
double require_not_negative(std::string_view what, double value);
double require_positive(std::string_view what, double value);
/// The index, checked to be from 0 to `count` - 1; `element` names one element.
std::size_t require_index(std::string_view element, int index, std::size_t count);

}  // namespace pedflux::engine
