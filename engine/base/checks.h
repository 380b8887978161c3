#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The refusals that whoever takes numbers from a user has in common. Each throws Exception with a sentence that begins
/// with `what`, the name of the checked thing.
namespace pedflux::engine {

/// The shortest text that reads back as the same number.
std::string text_of(double value);

[[noreturn]] void refuse(std::string const& message);
/// Throws Exception: `what` is `value`; it must be `right`.
[[noreturn]] void refuse_value(std::string_view what, std::string const& value, std::string_view right);

double require_finite(std::string_view what, double value);
double require_not_negative(std::string_view what, double value);
double require_positive(std::string_view what, double value);
/// The index as a position in something that has `count` elements; `element` names one of them.
std::size_t require_index(std::string_view element, int index, std::size_t count);

}  // namespace pedflux::engine
