#pragma once

#include "engine/model/codec.h"
#include "engine/model/node.h"
#include "engine/model/rules.h"

#include <pedflux/distributions.h>
#include <pedflux/identifiers.h>
#include <pedflux/vectors.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

/// Whether values follow their fields' rules. Setters and opening a project ask the same functions.
namespace pedflux::engine {

/// Whose values are checked: an object's, or a node's outside of projects, or without one the project's own settings.
struct Owner {
    ObjectState const* object;
    Document const* document;  ///< none for an object that is no longer part of a project
    NodeState const* node = nullptr;
};

inline Owner owner_of(ObjectState const& object) { return {&object, object.document}; }
inline Owner owner_of(NodeState const& node) { return {nullptr, nullptr, &node}; }

/// What a value belongs to, for messages.
struct Subject {
    Owner owner;
    std::string property;

    /// Throws Exception: Stair 'Up': localAgentBodyRadius must be greater than 0 m, not -1.
    [[noreturn]] void refuse(std::string const& allowed, std::string const& found) const;
};

bool contains(Range const& range, double value);
/// The range for messages: greater than 0 and at most 2 m.
std::string described(Range const& range);

// One `require` for each pair of type and rule that can be broken; every other pair is right.
template <class T, class Rule>
void require(Subject const&, T const&, Rule const&) {}
void require(Subject const& subject, double value, NoRule);
void require(Subject const& subject, double value, Range const& range);
void require(Subject const& subject, int value, Range const& range);
void require(Subject const& subject, std::string const& text, NoRule);
void require(Subject const& subject, Vec3d const& vector, NoRule);
void require(Subject const& subject, GlobalId const& id, RefersTo const& rule);
void require(Subject const& subject, std::vector<GlobalId> const& ids, RefersTo const& rule);
void require(Subject const& subject, std::shared_ptr<Geometry> const& geometry, GeometryRule const& rule);
void require(Subject const& subject, std::shared_ptr<Distribution> const& distribution, Range const& range);
void require(Subject const& subject, std::shared_ptr<Distribution> const& distribution, RequiredRange const& range);

/// Throws Exception: DelayedTrigger: childTrigger must be given, not empty.
[[noreturn]] void refuse_empty(Subject const& subject);

template <StandsForValue T>
void require(Subject const& subject, std::shared_ptr<T> const& value, Required) {
    if (!value) refuse_empty(subject);
}
/// A node's values are those of whoever holds it.
template <IsNode Base, class Rule>
void require(Subject const& subject, std::shared_ptr<Base> const& node, Rule) {
    if (node) {
        NodeState const& state = node_of(*node);
        state.kind->check(subject.owner, subject.property, state);
    } else if constexpr (std::is_same_v<Rule, Required>) {
        refuse_empty(subject);
    }
}

template <class Enumeration>
requires std::is_enum_v<Enumeration>
void require(Subject const& subject, Enumeration value, NoRule) {
    if (name_of_value(value).empty()) {
        subject.refuse("one of " + names_of<Enumeration>(), std::to_string(static_cast<int>(value)));
    }
}

template <class T>
constexpr bool IS_OPTIONAL = false;
template <class T>
constexpr bool IS_OPTIONAL<std::optional<T>> = true;
template <class T>
constexpr bool IS_LIST = false;
template <class T>
constexpr bool IS_LIST<std::vector<T>> = true;
template <class T>
constexpr bool IS_VARIANT = false;
template <class... Ts>
constexpr bool IS_VARIANT<std::variant<Ts...>> = true;
template <class T>
constexpr bool IS_SHARED_VALUE = false;
template <StandsForValue T>
constexpr bool IS_SHARED_VALUE<std::shared_ptr<T>> = true;

/// Calls visit(path, value, rule) for a value and all that it is made of. The rule of an optional value or of a list
/// holds for what is in it as well.
template <class T, class Rule, class Visit>
void walk(std::string const& path, T const& value, Rule const& rule, Visit const& visit) {
    visit(path, value, rule);
    if constexpr (IS_OPTIONAL<T>) {
        if (value) walk(path, *value, rule, visit);
    } else if constexpr (IS_LIST<T>) {
        for (std::size_t i = 0; i < value.size(); ++i) walk(path + "." + std::to_string(i), value[i], rule, visit);
    } else if constexpr (IS_VARIANT<T>) {
        std::visit([&](auto const& held) { walk(path, held, NoRule{}, visit); }, value);
    } else if constexpr (IS_SHARED_VALUE<T>) {
        using Shared = SharedValue<typename T::element_type>;
        if (value) walk(path, Shared::value(*value), NoRule{}, visit);
    } else if constexpr (Described<T>) {
        T::fields(value, [&](std::string_view name, auto const& field, auto const&... field_rule) {
            std::string const inner = path.empty() ? std::string(name) : path + "." + std::string(name);
            if constexpr (sizeof...(field_rule) == 0) {
                walk(inner, field, NoRule{}, visit);
            } else {
                walk(inner, field, field_rule..., visit);
            }
        });
    }
}

/// Throws Exception when a value, or anything in it, breaks its rule.
template <class T, class Rule>
void check_value(Owner const& owner, std::string const& property, T const& value, Rule const& rule) {
    walk(property, value, rule, [&](std::string const& path, auto const& part, auto const& part_rule) {
        require(Subject{owner, path}, part, part_rule);
    });
}

/// Adds every identifier in a value, other than the invalid one, to the references of its owner.
template <class T>
void collect_references(ObjectState const* owner, T const& value, std::vector<Reference>& found) {
    walk("", value, NoRule{}, [&]<class Part, class Rule>(auto const&, Part const& part, Rule const& rule) {
        if constexpr (std::is_same_v<Part, GlobalId>) {
            static_assert(std::is_same_v<Rule, RefersTo>, "a field of identifiers says what they refer to");
            found.push_back({owner, part, rule.role});
        } else if constexpr (IS_NODE_POINTER<Part>) {
            if (part) node_of(*part).kind->references(owner, node_of(*part), found);
        }
    });
}

}  // namespace pedflux::engine
