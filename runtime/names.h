#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

/// The names and messages that a class brings with it, put together by the compiler from the class's own name.
namespace pedflux::jni {

/// The name of a class or enumeration without its namespace: "Vec3d" for pedflux::Vec3d.
template <class T>
consteval std::string_view class_name() {
    std::string_view name = __PRETTY_FUNCTION__;  // "… [with T = pedflux::Vec3d; …]" or "… [T = pedflux::Vec3d]"
    name.remove_prefix(name.find("T = ") + 4);
    name = name.substr(0, name.find_first_of(";]"));
    return name.substr(name.rfind(':') + 1);  // npos + 1 is 0
}

namespace detail {

template <std::size_t length>
struct Literal {
    char text[length] = {};
    consteval Literal(char const (&literal)[length]) { std::copy_n(literal, length, text); }
    constexpr std::string_view view() const { return {text, length - 1}; }
};

template <class T, Literal before, Literal after>
consteval auto joined() {
    constexpr std::string_view name = class_name<T>();
    std::array<char, before.view().size() + name.size() + after.view().size() + 1> text{};
    auto end = std::ranges::copy(before.view(), text.begin()).out;
    end = std::ranges::copy(name, end).out;
    std::ranges::copy(after.view(), end);
    return text;
}

template <class T, Literal before, Literal after>
inline constexpr auto stored = joined<T, before, after>();

}  // namespace detail

/// The class name of T between two texts, zero-terminated, in static storage.
template <class T, detail::Literal before, detail::Literal after = "">
constexpr char const* named() {
    return detail::stored<T, before, after>.data();
}

/// "com/kelvar/pedflux/Vec3d": the proxy class of T.
template <class T>
constexpr char const* proxy_class() {
    return named<T, "com/kelvar/pedflux/">();
}

}  // namespace pedflux::jni
