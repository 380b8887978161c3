#pragma once

#include "engine/model/enumerations.h"
#include "engine/model/json.h"
#include "engine/model/rules.h"

#include <pedflux/color.h>
#include <pedflux/exception.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/vectors.h>

#include <algorithm>
#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

/// How a type is written to a project file and read from it: `Codec<T>` says it once for each type. Structs that list
/// their fields, variants of such structs, optional values and lists need nothing of their own.
namespace pedflux::engine {

template <class T>
struct Codec;

/// What reading needs besides the value: where in the file it stands, and the list of warnings.
struct Reading {
    std::vector<Issue>& warnings;
    std::string where;

    /// Throws Exception: what stands here in the file is not what it must be.
    [[noreturn]] void refuse(std::string_view expected, Json const& found) const;
    void warn(std::string const& summary);
};

/// While it lives, `where` points one level further down.
class Step {
  public:
    Step(Reading& reading, std::string_view name) : reading_(reading), length_(reading.where.size()) {
        reading.where.append(reading.where.empty() ? "" : ".").append(name);
    }
    Step(Step const&) = delete;
    Step& operator=(Step const&) = delete;
    ~Step() { reading_.where.resize(length_); }

  private:
    Reading& reading_;
    std::size_t length_;
};

/// A struct that lists its fields.
template <class T>
concept Described = std::is_class_v<T> && requires(T& value) {
    T::fields(value, [](auto const&...) {});
};

/// A shared object of the SDK that stands for a value: how to get at that value and how to make an object of it.
///
///     template <>
///     struct SharedValue<Distribution> {
///         using Value = DistributionSpec;
///         static DistributionSpec const& value(Distribution const& distribution);
///         static std::shared_ptr<Distribution> make(DistributionSpec const& law);
///     };
template <class T>
struct SharedValue;
template <class T>
concept StandsForValue = requires {
    typename SharedValue<T>::Value;
};

template <class T>
void write_fields(T const& value, Json& json) {
    T::fields(value, [&]<class F>(std::string_view name, F const& field, auto const&...) {
        Json written = Codec<F>::write(field);
        if (!written.is_null()) json[std::string(name)] = std::move(written);
    });
}

/// Reads the fields that the file has; the others keep their defaults. Members with other names go to `unknown`.
template <class T>
void read_fields(T& value, Json const& json, Reading& reading, Json& unknown) {
    if (!json.is_object()) reading.refuse("an object", json);
    std::vector<std::string_view> known{"kind"};
    T::fields(value, [&]<class F>(std::string_view name, F& field, auto const&...) {
        known.push_back(name);
        auto const member = json.find(std::string(name));
        if (member == json.end()) return;
        Step const step(reading, name);
        Codec<F>::read(field, *member, reading);
    });
    for (auto const& [name, member] : json.items()) {
        if (std::ranges::find(known, std::string_view(name)) == known.end()) unknown[name] = member;
    }
}

template <Described T>
struct Codec<T> {
    static Json write(T const& value) {
        Json json = Json::object();
        write_fields(value, json);
        return json;
    }
    static void read(T& value, Json const& json, Reading& reading) {
        Json unknown;
        read_fields(value, json, reading, unknown);
        for (auto const& [name, member] : unknown.items()) reading.warn("'" + name + "' is not known and is left out");
    }
};

/// One of several structs, each with the NAME that the file calls it by.
template <class... Kinds>
struct Codec<std::variant<Kinds...>> {
    static Json write(std::variant<Kinds...> const& value) {
        return std::visit(
            []<class T>(T const& held) {
                Json json = {{"kind", T::NAME}};
                write_fields(held, json);
                return json;
            },
            value);
    }
    static void read(std::variant<Kinds...>& value, Json const& json, Reading& reading) {
        auto const kind = json.is_object() ? json.find("kind") : json.end();
        bool const found =
            kind != json.end() && kind->is_string() && (read_as<Kinds>(value, *kind, json, reading) || ...);
        if (!found) {
            std::string names;
            ((names += (names.empty() ? "" : ", ") + std::string(Kinds::NAME)), ...);
            reading.refuse("an object whose kind is one of " + names, json);
        }
    }

  private:
    template <class T>
    static bool read_as(std::variant<Kinds...>& value, Json const& kind, Json const& json, Reading& reading) {
        if (kind.get_ref<std::string const&>() != T::NAME) return false;
        T read_value;
        Codec<T>::read(read_value, json, reading);
        value = std::move(read_value);
        return true;
    }
};

template <class T>
struct Codec<std::optional<T>> {
    static Json write(std::optional<T> const& value) { return value ? Codec<T>::write(*value) : Json(); }
    static void read(std::optional<T>& value, Json const& json, Reading& reading) {
        value.reset();
        if (!json.is_null()) Codec<T>::read(value.emplace(), json, reading);
    }
};

template <class T>
struct Codec<std::vector<T>> {
    static Json write(std::vector<T> const& values) {
        Json json = Json::array();
        for (auto const& value : values) json.push_back(Codec<T>::write(value));
        return json;
    }
    static void read(std::vector<T>& values, Json const& json, Reading& reading) {
        if (!json.is_array()) reading.refuse("a list", json);
        values.clear();
        for (auto const& element : json) {
            Step const step(reading, std::to_string(values.size()));
            Codec<T>::read(values.emplace_back(), element, reading);
        }
    }
};

/// Absent when there is no object.
template <StandsForValue T>
struct Codec<std::shared_ptr<T>> {
    using Value = typename SharedValue<T>::Value;
    static Json write(std::shared_ptr<T> const& object) {
        return object ? Codec<Value>::write(SharedValue<T>::value(*object)) : Json();
    }
    static void read(std::shared_ptr<T>& object, Json const& json, Reading& reading) {
        Value value;
        Codec<Value>::read(value, json, reading);
        object = SharedValue<T>::make(value);
    }
};

/// Enumerations are written by name.
template <class T>
requires std::is_enum_v<T>
struct Codec<T> {
    static Json write(T value) { return name_of_value(value); }
    static void read(T& value, Json const& json, Reading& reading) {
        if (json.is_string()) {
            if (auto const found = value_of_name<T>(json.get_ref<std::string const&>())) {
                value = *found;
                return;
            }
        }
        reading.refuse("one of " + names_of<T>(), json);
    }
};

// The types that are written in one piece.
#define PEDFLUX_CODEC(Type)                                                \
    template <>                                                            \
    struct Codec<Type> {                                                   \
        static Json write(Type const& value);                              \
        static void read(Type& value, Json const& json, Reading& reading); \
    };
PEDFLUX_CODEC(bool)
PEDFLUX_CODEC(int)
PEDFLUX_CODEC(double)
PEDFLUX_CODEC(std::string)
PEDFLUX_CODEC(GlobalId)
PEDFLUX_CODEC(Vec3d)
PEDFLUX_CODEC(Color)
PEDFLUX_CODEC(std::shared_ptr<Geometry>)
#undef PEDFLUX_CODEC

}  // namespace pedflux::engine
