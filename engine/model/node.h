#pragma once

#include "engine/model/check.h"
#include "engine/model/field_values.h"
#include "engine/model/fields.h"
#include "engine/model/rules.h"

#include <pedflux/node.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// Nodes are nested values: triggers, tests, filters, actions, tallies, transitions and wait styles. A family of nodes
/// has one base class in the SDK, and each kind of the family a class derived from it; behind each object stands a
/// state that lists its fields once, as the states of project objects do:
///
///     struct DelayedTriggerState : NodeState {
///         static constexpr TriggerType TYPE = TriggerType::DELAYED;
///         static constexpr std::string_view NAME = "DelayedTrigger";  // in files and messages
///         using Handle = DelayedTrigger;
///
///         std::shared_ptr<Trigger> child;
///         int delay = 0;  ///< seconds
///
///         template <class Self, class Field>
///         static void fields(Self& self, Field&& field) {
///             field("childTrigger", self.child, must_be_given);
///             field("delayInSeconds", self.delay, not_negative);
///         }
///     };
///
/// Copying, comparing, saving, opening, the children, the search for references and the checks come from that list.
///
/// Nodes outside of projects are shared: a holder of a child can change it. A project object keeps a deep copy of
/// the node that it is given and hands out deep copies. A node outside of a project refers to objects by identifiers
/// that are not looked up before an object of a project takes it.
namespace pedflux::engine {

/// How deep nodes can nest in nodes.
inline constexpr int deepest_node = 64;
/// How many nodes one can hold.
inline constexpr int most_nodes = 100'000;

struct NodeState {
    NodeState() = default;
    NodeState(NodeState const&) = default;
    NodeState& operator=(NodeState const&) = default;
    virtual ~NodeState() = default;

    NodeKind const* kind = nullptr;
    NodeState* next_released = nullptr;  ///< used by NodeRelease alone
};

/// What can be done with a node without knowing its type.
struct NodeKind {
    int type;
    std::string_view name;
    NodePointer (*make)();
    NodePointer (*copy)(NodeState const& state);  ///< holds what the other one holds
    FieldTable (*fields)();
    void (*check)(Subject const& subject, NodeState const& state);  ///< binds several fields together; often none
};

/// A kind of one family. `Base` is the SDK's base class.
template <class Base>
struct KindOfNode : NodeKind {
    std::shared_ptr<Base> (*handle)(NodePointer state);
};

/// All kinds of a family. A component defines it once for each family, with `node_kind`:
///
///     template <>
///     std::span<KindOfNode<WaitStyle> const* const> kinds_of<WaitStyle>() {
///         static KindOfNode<WaitStyle> const* const kinds[] = {&node_kind<StandStillWaitStyleState>(), ...};
///         return kinds;
///     }
template <class Base>
std::span<KindOfNode<Base> const* const> kinds_of();

template <IsNode Handle>
NodeState& node_of(Handle const& handle) {
    return NodeAccess::state(const_cast<Handle&>(handle));
}

/// The state by the type that belongs to the handle's class.
template <class State, IsNode Handle>
State& state_of(Handle const& handle) {
    return static_cast<State&>(node_of(handle));
}

/// A node of its own with copies of all that it holds.
/// Throws Exception as `require_shallow` does.
NodePointer copy_of(NodeState const& state);

/// An object of the class that belongs to the node's kind.
template <IsNode Base>
std::shared_ptr<Base> handle_of(NodePointer node) {
    auto const* const kind = static_cast<KindOfNode<Base> const*>(node->kind);
    return kind->handle(std::move(node));
}

/// A new object of the same class with a copy of the node.
template <IsNode Base>
std::shared_ptr<Base> clone_of(Base const& node) {
    return handle_of<Base>(copy_of(node_of(node)));
}
template <IsNode Base>
std::shared_ptr<Base> copy_of(std::shared_ptr<Base> const& node) {
    return node ? clone_of(*node) : nullptr;
}

/// Throws Exception when nodes nest deeper in it than deepest_node, or are more than most_nodes.
void require_shallow(NodeState const& state);

/// The index as one of a list. Throws Exception: AllOfTrigger: there is no child 3, it has 2.
std::size_t checked_index(NodeState const& state, std::string_view what, int index, std::size_t count);

/// The type that a family numbers its kinds by.
template <IsNode Handle>
int type_of(Handle const& handle) {
    return node_of(handle).kind->type;
}

/// The children of the same family, in the order of the fields. Children that are not set are left out.
template <IsNode Base>
std::vector<std::shared_ptr<Base>> children_of(Base const& node) {
    using Pointer = std::shared_ptr<Base>;
    std::vector<Pointer> found;
    visit_nodes(fields_in(node_of(node)), [&](HeldNode const& held) {
        if (*held.type.id == typeid(Pointer)) found.push_back(*static_cast<Pointer const*>(held.pointer));
    });
    return found;
}

/// The child with a number from 0 on. Throws Exception for a number that no child has.
template <IsNode Base>
std::shared_ptr<Base> child_of(Base const& node, int index) {
    auto const children = children_of(node);
    return children[checked_index(node_of(node), "child", index, children.size())];
}

/// The children, their children and so on, each before its own, in order.
template <IsNode Base>
std::vector<std::shared_ptr<Base>> nested_children_of(Base const& node) {
    require_shallow(node_of(node));
    std::vector<std::shared_ptr<Base>> found;
    auto const collect = [&](auto const& self, Base const& parent) -> void {
        for (auto const& child : children_of(parent)) {
            found.push_back(child);
            self(self, *child);
        }
    };
    collect(collect, node);
    return found;
}

bool may_hold_node(NodeState const& parent, NodeState const& child);
/// Throws Exception when a node may not stand in another one: it is the other one or holds it, or would nest too deep.
void require_may_hold(NodeState const& parent, std::string_view property, NodeState const& child);
/// The same as an answer; an empty child is none.
template <IsNode Base>
bool may_hold(Base const& parent, std::shared_ptr<Base> const& child) {
    return child && may_hold_node(node_of(parent), node_of(*child));
}

/// Throws Exception when one of the nodes that stand in a changed state may not stand in the state that it replaces.
void require_may_hold_all(NodeState const& parent, NodeState const& changed);

template <class Base>
constexpr NodeType node_type() {
    return {[](void const* pointer) -> NodeState* {
                auto const& node = *static_cast<std::shared_ptr<Base> const*>(pointer);
                return node ? &node_of(*node) : nullptr;
            },
            [](std::size_t index) -> NodeKind const* {
                auto const kinds = kinds_of<Base>();
                return index < kinds.size() ? kinds[index] : nullptr;
            },
            [](void* pointer, NodePointer node) {
                *static_cast<std::shared_ptr<Base>*>(pointer) = handle_of<Base>(std::move(node));
            }};
}

}  // namespace pedflux::engine
