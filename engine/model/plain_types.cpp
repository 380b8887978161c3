#include "engine/base/checks.h"
#include "engine/geometry/checks.h"
#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/model/field_type.h"
#include "engine/model/geometry_codec.h"
#include "engine/model/names.h"
#include "engine/model/reading.h"

#include <pedflux/exception.h>

#include <array>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <variant>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

/// The types that files hold in one piece: how they are written, read and checked.
namespace pedflux::engine {

namespace {

double read_number(Json const& json, Reading const& reading) {
    if (!json.is_number()) reading.refuse("a number", json);
    return json.get<double>();
}

template <std::size_t count>
std::array<double, count> read_numbers(Json const& json, Reading const& reading) {
    if (!json.is_array() || json.size() != count) {
        reading.refuse(fmt::format("a list of {} numbers", count), json);
    }
    std::array<double, count> numbers{};
    for (std::size_t i = 0; i < count; ++i) numbers[i] = read_number(json[i], reading);
    return numbers;
}

/// The value that `make` gives. What the value's class refuses is refused with the place in the file.
template <class Make>
auto made_by(Make const& make, Reading const& reading) {
    try {
        return make();
    } catch (Exception const& failure) {
        throw Exception(fmt::format("{}: {}", reading.where, failure.GetMessage()));
    }
}

Json write(bool value) { return value; }
void read(bool& value, Json const& json, Reading& reading) {
    if (!json.is_boolean()) reading.refuse("true or false", json);
    value = json.get<bool>();
}

Json write(int value) { return value; }
void read(int& value, Json const& json, Reading& reading) {
    using Limits = std::numeric_limits<int>;
    bool const fits = json.is_number_unsigned() ? json.get<std::uint64_t>() <= std::uint64_t{Limits::max()}
                                                : json.is_number_integer() && json.get<std::int64_t>() >= Limits::min();
    if (!fits) reading.refuse("a whole number of 32 bits", json);
    value = json.get<int>();
}

Json write(unsigned int value) { return value; }
void read(unsigned int& value, Json const& json, Reading& reading) {
    if (!json.is_number_unsigned() || json.get<std::uint64_t>() > std::numeric_limits<unsigned int>::max()) {
        reading.refuse("a whole number from 0 to 4294967295", json);
    }
    value = json.get<unsigned int>();
}

Json write(double value) { return value; }
void read(double& value, Json const& json, Reading& reading) { value = read_number(json, reading); }

Json write(std::string const& value) { return value; }
void read(std::string& value, Json const& json, Reading& reading) {
    if (!json.is_string()) reading.refuse("a text", json);
    value = json.get<std::string>();
}

Json write(GlobalId const& value) { return GlobalId(value).GetString(); }
void read(GlobalId& value, Json const& json, Reading& reading) {
    if (!json.is_string()) reading.refuse("an identifier", json);
    value = made_by([&] { return GlobalId(json.get<std::string>()); }, reading);
}

Json write(Vec3d const& value) { return {value.GetX(), value.GetY(), value.GetZ()}; }
void read(Vec3d& value, Json const& json, Reading& reading) {
    auto const [x, y, z] = read_numbers<3>(json, reading);
    value = Vec3d(x, y, z);
}

Json write(Color const& value) {
    Color color = value;
    return {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()};
}
void read(Color& value, Json const& json, Reading& reading) {
    auto const numbers = read_numbers<4>(json, reading);
    value = made_by([&] { return Color(numbers[0], numbers[1], numbers[2], numbers[3]); }, reading);
}

Json write(std::shared_ptr<Geometry> const& value) { return write_geometry(value); }
void read(std::shared_ptr<Geometry>& value, Json const& json, Reading& reading) { read_geometry(value, json, reading); }

std::string number_text(double value) { return text_of(value); }
std::string number_text(int value) { return std::to_string(value); }

// One `require` for each pair of type and rule that can be broken; every value of the other pairs is right.

template <class T, class AnyRule>
void require(Subject const&, T const&, AnyRule const&) {}

void require(Subject const& subject, double const& value, NoRule const&) {
    if (!std::isfinite(value)) subject.refuse("finite", text_of(value));
}

template <class Number>
requires std::same_as<Number, double> || std::same_as<Number, int>
void require(Subject const& subject, Number const& value, Range const& range) {
    if (!contains(range, value)) subject.refuse(described(range), number_text(value));
}

void require(Subject const& subject, unsigned int const& value, Range const& range) {
    require(subject, static_cast<double>(value), range);
}

void require(Subject const& subject, std::string const& text, NoRule const&) {
    if (!is_utf8(text)) subject.refuse("text in UTF-8", "bytes that are none");
}

void require(Subject const& subject, Vec3d const& vector, NoRule const&) {
    if (!Vec3d(vector).IsValid()) subject.refuse("a vector of finite components", text_of(vector_of(vector)));
}

void require(Subject const& subject, GlobalId const& id, RefersTo const& rule) { check_reference(subject, id, rule); }

void require(Subject const& subject, std::shared_ptr<Geometry> const& geometry, GeometryRule const& rule) {
    if (!geometry) subject.refuse(std::string(rule.what), "empty");
    if (!rule.allows(*geometry)) subject.refuse(std::string(rule.what), "another kind of geometry");
}

template <class T>
FieldType const& plain_type() {
    static FieldType const type{
        &typeid(T),
        PlainType{[](void const* value) { return write(*static_cast<T const*>(value)); },
                  [](void* value, Json const& json, Reading& reading) { read(*static_cast<T*>(value), json, reading); },
                  [](Subject const& subject, void const* value, FieldRule const& rule) {
                      std::visit([&](auto const& given) { require(subject, *static_cast<T const*>(value), given); },
                                 rule);
                  }}};
    return type;
}

}  // namespace

template <>
FieldType const& field_type<bool>() {
    return plain_type<bool>();
}
template <>
FieldType const& field_type<int>() {
    return plain_type<int>();
}
template <>
FieldType const& field_type<unsigned int>() {
    return plain_type<unsigned int>();
}
template <>
FieldType const& field_type<double>() {
    return plain_type<double>();
}
template <>
FieldType const& field_type<std::string>() {
    return plain_type<std::string>();
}
template <>
FieldType const& field_type<GlobalId>() {
    return plain_type<GlobalId>();
}
template <>
FieldType const& field_type<Vec3d>() {
    return plain_type<Vec3d>();
}
template <>
FieldType const& field_type<Color>() {
    return plain_type<Color>();
}
template <>
FieldType const& field_type<std::shared_ptr<Geometry>>() {
    return plain_type<std::shared_ptr<Geometry>>();
}

}  // namespace pedflux::engine
