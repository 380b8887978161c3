#pragma once

#include "engine/model/node.h"

#include <pedflux/color.h>

#include <cstddef>
#include <string_view>
#include <type_traits>

/// Makes the states and the handle classes of a family of nodes out of its table.
///
/// A family lists its kinds in one table, a `.def` file with one line for each kind: its class, its type and its
/// properties. Whoever needs the list defines the line's macro and includes the table; states, kinds, accessors,
/// constructors and enumerations are made that way. A property is written in a word that the table's head defines as
///
///     (access, type, name, member, initial value, rules...)
///
/// where `access` tells which accessors the handle class has (see engine/model/node_handles.h), `name` is that of
/// the accessors and, in lower camel case, of the field in files, and `member` is the state's member. Fields are saved
/// in the order of the line. Words end in no comma, so that a line reads
///
///     TRIGGER(DelayedTrigger, DELAYED, AS_CHILDREN, ANY, CHILD, SECONDS(DelayInSeconds, delay))
namespace pedflux::engine {

/// Text as a template argument.
template <std::size_t Size>
struct PropertyName {
    // NOLINTNEXTLINE(google-explicit-constructor): stands for the literal that it is made of.
    consteval PropertyName(char const (&name)[Size]) {
        for (std::size_t i = 0; i < Size; ++i) text[i] = name[i];
        if (text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
    }
    char text[Size]{};
};

/// The name of a field in files: that of its accessors in lower camel case.
template <PropertyName name>
inline constexpr std::string_view FIELD_NAME{name.text, sizeof(name.text) - 1};

/// How the SDK's constructors and setters take a value: numbers, choices and colours by value, everything else by
/// reference.
template <class Value>
using Parameter = std::conditional_t<std::is_scalar_v<Value> || std::is_same_v<Value, Color>, Value, Value const&>;

}  // namespace pedflux::engine

// A macro for each of a list's entries, of which there can be 16: macro(context, entry), without or with commas.
#define PEDFLUX_PARENTHESES ()
#define PEDFLUX_UNWRAP(...) __VA_ARGS__
#define PEDFLUX_SCAN(...) PEDFLUX_SCAN_4(PEDFLUX_SCAN_4(__VA_ARGS__))
#define PEDFLUX_SCAN_4(...) PEDFLUX_SCAN_2(PEDFLUX_SCAN_2(__VA_ARGS__))
#define PEDFLUX_SCAN_2(...) PEDFLUX_SCAN_1(PEDFLUX_SCAN_1(__VA_ARGS__))
#define PEDFLUX_SCAN_1(...) __VA_ARGS__
#define PEDFLUX_FOR_EACH(macro, context, ...) \
    __VA_OPT__(PEDFLUX_SCAN(PEDFLUX_FOR_EACH_STEP(macro, context, __VA_ARGS__)))
#define PEDFLUX_FOR_EACH_STEP(macro, context, entry, ...) \
    macro(context, entry) __VA_OPT__(PEDFLUX_FOR_EACH_NEXT PEDFLUX_PARENTHESES(macro, context, __VA_ARGS__))
#define PEDFLUX_FOR_EACH_NEXT() PEDFLUX_FOR_EACH_STEP
#define PEDFLUX_COMMAS(macro, context, ...) __VA_OPT__(PEDFLUX_SCAN(PEDFLUX_COMMAS_STEP(macro, context, __VA_ARGS__)))
#define PEDFLUX_COMMAS_STEP(macro, context, entry, ...) \
    macro(context, entry) __VA_OPT__(, PEDFLUX_COMMAS_NEXT PEDFLUX_PARENTHESES(macro, context, __VA_ARGS__))
#define PEDFLUX_COMMAS_NEXT() PEDFLUX_COMMAS_STEP

// The state of a kind.

#define PEDFLUX_MEMBER(context, property) PEDFLUX_MEMBER_OF property
#define PEDFLUX_MEMBER_OF(access, Type, Name, member, initial, ...) Type member{initial};
#define PEDFLUX_FIELD(context, property) PEDFLUX_FIELD_OF property
#define PEDFLUX_FIELD_OF(access, Type, Name, member, initial, ...) \
    field(FIELD_NAME<#Name>, self.member __VA_OPT__(, ) __VA_ARGS__);

/// The properties of a kind.
#define PEDFLUX_PROPERTIES(...)                                                       \
    PEDFLUX_FOR_EACH(PEDFLUX_MEMBER, , __VA_ARGS__)                                   \
    template <class Self, class Field>                                                \
    static void fields([[maybe_unused]] Self& self, [[maybe_unused]] Field&& field) { \
        PEDFLUX_FOR_EACH(PEDFLUX_FIELD, , __VA_ARGS__)                                \
    }

/// The same after those of the state that the kind's is derived from.
#define PEDFLUX_PROPERTIES_AFTER(Base, ...)                                           \
    PEDFLUX_FOR_EACH(PEDFLUX_MEMBER, , __VA_ARGS__)                                   \
    template <class Self, class Field>                                                \
    static void fields([[maybe_unused]] Self& self, [[maybe_unused]] Field&& field) { \
        Base::fields(self, field);                                                    \
        PEDFLUX_FOR_EACH(PEDFLUX_FIELD, , __VA_ARGS__)                                \
    }

/// What every kind has: its type, its name in files and messages, which is that of its class, and the class.
#define PEDFLUX_KIND(Enumeration, Class, type)             \
    static constexpr Enumeration TYPE = Enumeration::type; \
    static constexpr std::string_view NAME = #Class;       \
    using Handle = Class;
