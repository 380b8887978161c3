#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The values of enumerations by name. The SDK's callers can pass any number as an enumeration's value, so a number
/// without a name is refused; files hold the names.
namespace pedflux::engine {

template <class Enumeration>
struct Named {
    Enumeration value;
    std::string_view name;
};

/// The values of an enumeration, listed once for each with `PEDFLUX_NAMES`.
template <class Enumeration>
inline constexpr auto value_names = nullptr;

#define PEDFLUX_NAMES(Enumeration, ...) \
    template <>                         \
    inline constexpr auto value_names<Enumeration> = std::to_array<Named<Enumeration>>(__VA_ARGS__)

/// A value of any enumeration.
struct NamedNumber {
    int number;
    std::string_view name;
};
using NamedNumbers = std::span<NamedNumber const>;

/// value_names without the type of the enumeration.
template <class Enumeration>
inline constexpr auto named_numbers = [] {
    std::array<NamedNumber, value_names<Enumeration>.size()> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = {static_cast<int>(value_names<Enumeration>[i].value), value_names<Enumeration>[i].name};
    }
    return numbers;
}();

/// The name; empty for a number that is not a value of the enumeration.
std::string_view name_of_number(NamedNumbers numbers, int number);
std::optional<int> number_of_name(NamedNumbers numbers, std::string_view name);
/// All values for a message: BOTH_WAYS (0), BALL_TO_BOX (1).
std::string names_of(NamedNumbers numbers);

template <class Enumeration>
std::string_view name_of_value(Enumeration value) {
    return name_of_number(named_numbers<Enumeration>, static_cast<int>(value));
}
template <class Enumeration>
std::optional<Enumeration> value_of_name(std::string_view name) {
    auto const number = number_of_name(named_numbers<Enumeration>, name);
    return number ? std::optional(static_cast<Enumeration>(*number)) : std::nullopt;
}
template <class Enumeration>
std::string names_of() {
    return names_of(named_numbers<Enumeration>);
}

}  // namespace pedflux::engine
