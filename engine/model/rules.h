#pragma once

#include "engine/model/state.h"

#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>

#include <limits>
#include <string_view>
#include <variant>

namespace pedflux::engine {

// Rules for the values of fields. A field without a rule accepts every valid value of its type: finite numbers, the
// named values of an enumeration, text in UTF-8.

/// The field has no rule of its own.
struct NoRule {};

/// Finite numbers from `least` to `most`.
struct Range {
    double least = -std::numeric_limits<double>::infinity();
    double most = std::numeric_limits<double>::infinity();
    std::string_view unit = "";
    bool without_least = false;  ///< greater than `least`
};

inline constexpr double unlimited = std::numeric_limits<double>::infinity();
inline constexpr Range not_negative{0, unlimited};
inline constexpr Range above_zero{0, unlimited, "", true};
inline constexpr Range at_least_one{1, unlimited};

/// A part that must be given.
struct Required {};
inline constexpr Required must_be_given;

/// A distribution that must be given, with its range.
struct RequiredRange : Range {};

/// The geometries that an object can have.
struct GeometryRule {
    std::string_view what;  ///< for messages: "a mesh"
    bool (*allows)(Geometry& geometry);
};

/// The role of an object for the one that refers to it.
enum class Role {
    OTHER,
    ORIGIN,       ///< agents come from it
    DESTINATION,  ///< agents go to it
};

/// A reference to an object.
struct Reference {
    ObjectState const* from;  ///< none for the project's settings
    GlobalId to;
    Role role;
};

/// An identifier, or a list of different identifiers, of objects of certain kinds.
struct RefersTo {
    std::string_view what;  ///< for messages: "a route bank"
    bool (*allows)(ObjectState const& object);
    Role role = Role::OTHER;
};

/// The rule of any field.
using FieldRule = std::variant<NoRule, Range, Required, RequiredRange, GeometryRule, RefersTo>;

/// Objects whose states derive from State.
template <class State>
constexpr RefersTo refers_to(std::string_view what, Role role = Role::OTHER) {
    return {what, [](ObjectState const& object) { return dynamic_cast<State const*>(&object) != nullptr; }, role};
}

/// Any object at all.
constexpr RefersTo refers_to_any(std::string_view what, Role role = Role::OTHER) {
    return {what, [](ObjectState const&) { return true; }, role};
}

/// Objects of one kind.
template <ObjectType type>
constexpr RefersTo refers_to_kind(std::string_view what, Role role = Role::OTHER) {
    return {what, [](ObjectState const& object) { return object.kind->type == type; }, role};
}

}  // namespace pedflux::engine
