#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// The values of enumerations by name. The SDK's callers can pass any number as an enumeration's value, so what is not
/// in these lists is refused; files hold the names.
namespace pedflux::engine {

template <class Enumeration>
struct Named {
    Enumeration value;
    std::string_view name;
};

/// The values of an enumeration, given once for each with `PEDFLUX_NAMES`.
template <class Enumeration>
inline constexpr auto NAMES = nullptr;

#define PEDFLUX_NAMES(Enumeration, ...) \
    template <>                         \
    inline constexpr auto NAMES<Enumeration> = std::to_array<Named<Enumeration>>(__VA_ARGS__)

/// The name; empty for a number that is not a value of the enumeration.
template <class Enumeration>
std::string_view name_of_value(Enumeration value) {
    for (auto const& named : NAMES<Enumeration>) {
        if (named.value == value) return named.name;
    }
    return {};
}

template <class Enumeration>
std::optional<Enumeration> value_of_name(std::string_view name) {
    for (auto const& named : NAMES<Enumeration>) {
        if (named.name == name) return named.value;
    }
    return std::nullopt;
}

/// All values for a message: BOTH_WAYS (0), BALL_TO_BOX (1).
template <class Enumeration>
std::string names_of() {
    std::string names;
    for (auto const& named : NAMES<Enumeration>) {
        names.append(names.empty() ? "" : ", ").append(named.name);
        names += " (" + std::to_string(static_cast<int>(named.value)) + ")";
    }
    return names;
}

}  // namespace pedflux::engine
