#pragma once

#include "engine/model/enumerations.h"
#include "engine/model/json.h"
#include "engine/model/rules.h"

#include <pedflux/color.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>
#include <pedflux/vectors.h>

#include <concepts>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <variant>
#include <vector>

/// Descriptions of the types that fields can have. A description is made once for each type, `field_type<T>()`, and
/// says only how to reach what a value is made of; writing, reading, checking and copying are ordinary functions over
/// descriptions (field_values.h, codec.h). Enumerations, optional values, lists, variants and structs that list their
/// fields need nothing of their own.
namespace pedflux::engine {

struct Field;
struct FieldType;
struct NodeKind;
struct NodeState;
struct Reading;
struct Subject;

using FieldTable = std::span<Field const>;

/// A value that files hold in one piece.
struct PlainType {
    Json (*write)(void const* value);
    void (*read)(void* value, Json const& json, Reading& reading);
    /// Throws Exception when the value breaks the rule.
    void (*check)(Subject const& subject, void const* value, FieldRule const& rule);
};

/// Files hold the name.
struct EnumerationType {
    NamedNumbers names;
    int (*get)(void const* value);
    void (*set)(void* value, int number);
};

struct OptionalType {
    FieldType const& (*held)();
    void const* (*get)(void const* value);  ///< none when it is not set
    void* (*emplace)(void* value);
    void (*reset)(void* value);
};

struct ListType {
    FieldType const& (*element)();
    std::size_t (*size)(void const* list);
    void const* (*at)(void const* list, std::size_t index);
    void (*clear)(void* list);
    void* (*append)(void* list);
};

/// One of several structs, each with the NAME that files call it by.
struct VariantType {
    struct Alternative {
        std::string_view name;
        FieldTable (*fields)();
        void* (*emplace)(void* value);
    };
    std::span<Alternative const> alternatives;
    std::size_t (*index)(void const* value);
    void const* (*get)(void const* value);
};

/// A struct that lists its fields.
struct RecordType {
    FieldTable (*fields)();
};

/// A pointer to a shared object of the SDK that stands for a value.
struct SharedValueType {
    FieldType const& (*held)();
    std::shared_ptr<void const> (*get)(void const* pointer);  ///< a copy of the value; none of an empty pointer
    std::shared_ptr<void> (*make)();                          ///< a value to read into
    void (*assign)(void* pointer, void const* value);
    void (*check)(Subject const& subject, void const* pointer, FieldRule const& rule);
};

/// A pointer to a node of one family (node.h).
struct NodeType {
    NodeState* (*get)(void const* pointer);
    NodeKind const* (*kind)(std::size_t index);  ///< the kinds of the family; none after the last
    void (*assign)(void* pointer, NodePointer node);
};

struct FieldType {
    std::type_info const* id;
    std::variant<PlainType, EnumerationType, OptionalType, ListType, VariantType, RecordType, SharedValueType, NodeType>
        shape;
};

template <class T>
FieldType const& field_type();

template <>
FieldType const& field_type<bool>();
template <>
FieldType const& field_type<int>();
template <>
FieldType const& field_type<unsigned int>();
template <>
FieldType const& field_type<double>();
template <>
FieldType const& field_type<std::string>();
template <>
FieldType const& field_type<GlobalId>();
template <>
FieldType const& field_type<Vec3d>();
template <>
FieldType const& field_type<Color>();
template <>
FieldType const& field_type<std::shared_ptr<Geometry>>();

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
///         static std::shared_ptr<Distribution> make(DistributionSpec const& spec);
///     };
///
/// It can have a `check` for the rules of fields; without one the only rule is must_be_given.
template <class T>
struct SharedValue;
template <class T>
concept StandsForValue = requires {
    typename SharedValue<T>::Value;
};

struct NodeAccess {
    template <class Handle>
    static auto state(Handle& handle) -> decltype((*handle.node_)) {
        return *handle.node_;
    }
};

/// A class of the SDK behind which a node stands.
template <class Handle>
concept IsNode = requires(Handle& handle) {
    { NodeAccess::state(handle) } -> std::same_as<NodeState&>;
};

template <class T>
constexpr bool is_optional = false;
template <class T>
constexpr bool is_optional<std::optional<T>> = true;
template <class T>
constexpr bool is_list = false;
template <class T>
constexpr bool is_list<std::vector<T>> = true;
template <class T>
constexpr bool is_variant = false;
template <class... Ts>
constexpr bool is_variant<std::variant<Ts...>> = true;
template <class T>
constexpr bool is_shared_value = false;
template <StandsForValue T>
constexpr bool is_shared_value<std::shared_ptr<T>> = true;
template <class T>
constexpr bool is_node_pointer = false;
template <IsNode Handle>
constexpr bool is_node_pointer<std::shared_ptr<Handle>> = true;

/// The fields of a struct or state; see fields.h.
template <class T>
FieldTable fields_of();

/// Throws Exception when the rule is must_be_given and the value is not given.
void check_given(Subject const& subject, bool given, FieldRule const& rule);

template <class T>
constexpr EnumerationType enumeration_type() {
    return {named_numbers<T>, [](void const* value) { return static_cast<int>(*static_cast<T const*>(value)); },
            [](void* value, int number) { *static_cast<T*>(value) = static_cast<T>(number); }};
}

template <class T>
constexpr OptionalType optional_type() {
    return {&field_type<typename T::value_type>,
            [](void const* value) -> void const* {
                auto const& optional = *static_cast<T const*>(value);
                return optional ? &*optional : nullptr;
            },
            [](void* value) -> void* { return &static_cast<T*>(value)->emplace(); },
            [](void* value) { static_cast<T*>(value)->reset(); }};
}

template <class T>
constexpr ListType list_type() {
    return {&field_type<typename T::value_type>, [](void const* list) { return static_cast<T const*>(list)->size(); },
            [](void const* list, std::size_t index) -> void const* { return &(*static_cast<T const*>(list))[index]; },
            [](void* list) { static_cast<T*>(list)->clear(); },
            [](void* list) -> void* { return &static_cast<T*>(list)->emplace_back(); }};
}

template <class T, class Kind>
void* emplace_alternative(void* value) {
    return &static_cast<T*>(value)->template emplace<Kind>();
}
template <class T, class... Kinds>
inline constexpr VariantType::Alternative alternatives_of[] = {
    {Kinds::NAME, &fields_of<Kinds>, &emplace_alternative<T, Kinds>}...};

template <class T, class... Kinds>
constexpr VariantType variant_type(std::variant<Kinds...> const*) {
    return {alternatives_of<T, Kinds...>, [](void const* value) { return static_cast<T const*>(value)->index(); },
            [](void const* value) {
                return std::visit([](auto const& held) -> void const* { return &held; }, *static_cast<T const*>(value));
            }};
}

template <class T>
constexpr SharedValueType shared_value_type() {
    using Shared = SharedValue<T>;
    using Value = typename Shared::Value;
    using Pointer = std::shared_ptr<T>;
    return {&field_type<Value>,
            [](void const* pointer) -> std::shared_ptr<void const> {
                auto const& object = *static_cast<Pointer const*>(pointer);
                return object ? std::make_shared<Value>(Shared::value(*object)) : nullptr;
            },
            []() -> std::shared_ptr<void> { return std::make_shared<Value>(); },
            [](void* pointer, void const* value) {
                *static_cast<Pointer*>(pointer) = Shared::make(*static_cast<Value const*>(value));
            },
            [](Subject const& subject, void const* pointer, FieldRule const& rule) {
                auto const& object = *static_cast<Pointer const*>(pointer);
                if constexpr (requires { Shared::check(subject, object, rule); }) {
                    Shared::check(subject, object, rule);
                } else {
                    check_given(subject, object != nullptr, rule);
                }
            }};
}

/// The functions of a family's NodeType, which need the family's kinds; see node.h.
template <class Base>
constexpr NodeType node_type();

template <class T>
constexpr auto shape_of() {
    if constexpr (std::is_enum_v<T>) {
        return enumeration_type<T>();
    } else if constexpr (is_optional<T>) {
        return optional_type<T>();
    } else if constexpr (is_list<T>) {
        return list_type<T>();
    } else if constexpr (is_variant<T>) {
        return variant_type<T>(static_cast<T const*>(nullptr));
    } else if constexpr (is_node_pointer<T>) {
        return node_type<typename T::element_type>();
    } else if constexpr (is_shared_value<T>) {
        return shared_value_type<typename T::element_type>();
    } else {
        static_assert(Described<T>, "the type of a field has a description, names for its values or a list of fields");
        return RecordType{&fields_of<T>};
    }
}

template <class T>
FieldType const& field_type() {
    static constexpr FieldType type{&typeid(T), shape_of<T>()};
    return type;
}

}  // namespace pedflux::engine
