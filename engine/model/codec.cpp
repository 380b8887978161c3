#include "engine/model/codec.h"

#include <array>
#include <cstdint>
#include <limits>

namespace pedflux::engine {

void Reading::refuse(std::string_view expected, Json const& found) const {
    std::string text = found.dump(-1, ' ', false, Json::error_handler_t::replace);
    constexpr std::size_t SHOWN = 60;
    if (text.size() > SHOWN) text = text.substr(0, SHOWN) + "...";
    throw Exception(where + " must be " + std::string(expected) + ", not " + text);
}

void Reading::warn(std::string const& summary) {
    warnings.emplace_back(IssueCategory::WARNING, "Project file", where + ": " + summary);
}

namespace {

double read_number(Json const& json, Reading const& reading) {
    if (!json.is_number()) reading.refuse("a number", json);
    return json.get<double>();
}

template <std::size_t count>
std::array<double, count> read_numbers(Json const& json, Reading const& reading) {
    if (!json.is_array() || json.size() != count) {
        reading.refuse("a list of " + std::to_string(count) + " numbers", json);
    }
    std::array<double, count> numbers{};
    for (std::size_t i = 0; i < count; ++i) numbers[i] = read_number(json[i], reading);
    return numbers;
}

}  // namespace

Json Codec<bool>::write(bool const& value) { return value; }
void Codec<bool>::read(bool& value, Json const& json, Reading& reading) {
    if (!json.is_boolean()) reading.refuse("true or false", json);
    value = json.get<bool>();
}

Json Codec<int>::write(int const& value) { return value; }
void Codec<int>::read(int& value, Json const& json, Reading& reading) {
    using Limits = std::numeric_limits<int>;
    bool const fits = json.is_number_unsigned() ? json.get<std::uint64_t>() <= std::uint64_t{Limits::max()}
                                                : json.is_number_integer() && json.get<std::int64_t>() >= Limits::min();
    if (!fits) reading.refuse("a whole number of 32 bits", json);
    value = json.get<int>();
}

Json Codec<double>::write(double const& value) { return value; }
void Codec<double>::read(double& value, Json const& json, Reading& reading) { value = read_number(json, reading); }

Json Codec<std::string>::write(std::string const& value) { return value; }
void Codec<std::string>::read(std::string& value, Json const& json, Reading& reading) {
    if (!json.is_string()) reading.refuse("a text", json);
    value = json.get<std::string>();
}

Json Codec<GlobalId>::write(GlobalId const& value) { return GlobalId(value).GetString(); }
void Codec<GlobalId>::read(GlobalId& value, Json const& json, Reading& reading) {
    if (!json.is_string()) reading.refuse("an identifier", json);
    try {
        value = GlobalId(json.get<std::string>());
    } catch (Exception const& failure) {
        throw Exception(reading.where + ": " + failure.GetMessage());
    }
}

Json Codec<Vec3d>::write(Vec3d const& value) { return {value.GetX(), value.GetY(), value.GetZ()}; }
void Codec<Vec3d>::read(Vec3d& value, Json const& json, Reading& reading) {
    auto const [x, y, z] = read_numbers<3>(json, reading);
    value = Vec3d(x, y, z);
}

Json Codec<Color>::write(Color const& value) {
    Color color = value;
    return {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()};
}
void Codec<Color>::read(Color& value, Json const& json, Reading& reading) {
    auto const [red, green, blue, alpha] = read_numbers<4>(json, reading);
    try {
        value = Color(red, green, blue, alpha);
    } catch (Exception const& failure) {
        throw Exception(reading.where + ": " + failure.GetMessage());
    }
}

}  // namespace pedflux::engine
