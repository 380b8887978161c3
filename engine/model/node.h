#pragma once

#include "engine/model/codec.h"
#include "engine/model/rules.h"

#include <pedflux/node.h>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// Nodes are the values that say when, who and what: triggers, tests, filters, actions, tallies, transitions, wait
/// styles. They nest. A family of nodes has one base class in the SDK, and each kind of the family a class derived from
/// it; behind each object stands a state that lists its fields once, as the states of project objects do:
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
///             field("childTrigger", self.child, REQUIRED);
///             field("delayInSeconds", self.delay, NOT_NEGATIVE);
///         }
///     };
///
/// Copying, comparing, saving, opening, the children, the search for references and the checks come from that list.
///
/// Nodes outside of projects are shared: whoever holds a child can change it. A project object keeps a deep copy of
/// the node that it is given and hands out deep copies. A node outside of a project refers to objects by identifiers
/// that are not looked up before an object of a project takes it.
namespace pedflux::engine {

struct NodeKind;
struct Owner;

/// How deep nodes can nest in nodes.
inline constexpr int DEEPEST_NODE = 64;
/// How many nodes one can hold.
inline constexpr int MOST_NODES = 100'000;

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
    NodePointer (*copy)(NodeState const& state);  ///< with copies of all that it holds
    void (*write)(NodeState const& state, Json& json);
    void (*read)(NodeState& state, Json const& json, Reading& reading);
    /// Throws Exception when a value breaks its rule. `path` leads to the node for messages.
    void (*check)(Owner const& owner, std::string const& path, NodeState const& state);
    void (*references)(ObjectState const* owner, NodeState const& state, std::vector<Reference>& found);
    /// The nodes that stand directly in it, of any family.
    void (*inner)(NodeState const& state, std::function<void(NodeState const&)> const& visit);
};

/// A kind of one family. `Base` is the SDK's base class.
template <class Base>
struct KindOfNode : NodeKind {
    std::shared_ptr<Base> (*handle)(NodePointer state);
    /// The children of the same family, in the order of the fields. Children that are not set are left out.
    std::vector<std::shared_ptr<Base>> (*children)(NodeState const& state);
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

template <IsNode Handle>
NodeState& node_of(Handle const& handle) {
    return NodeAccess::state(const_cast<Handle&>(handle));
}

/// The state by the type that belongs to the face's class.
template <class State, IsNode Handle>
State& state_of(Handle const& handle) {
    return static_cast<State&>(node_of(handle));
}

template <class T>
constexpr bool IS_NODE_POINTER = false;
template <IsNode Handle>
constexpr bool IS_NODE_POINTER<std::shared_ptr<Handle>> = true;

/// A node of its own with copies of all that it holds.
/// Throws Exception as `require_shallow` does.
NodePointer copy_of(NodeState const& state);

/// A new object of the same class with a copy of the node.
template <IsNode Base>
std::shared_ptr<Base> clone_of(Base const& node) {
    NodePointer copied = copy_of(node_of(node));
    auto const* const kind = static_cast<KindOfNode<Base> const*>(copied->kind);
    return kind->handle(std::move(copied));
}
template <IsNode Base>
std::shared_ptr<Base> copy_of(std::shared_ptr<Base> const& node) {
    return node ? clone_of(*node) : nullptr;
}

/// Throws Exception when nodes nest deeper in it than DEEPEST_NODE, or are more than MOST_NODES.
void require_shallow(NodeState const& state);

/// The index as one of a list. Throws Exception: AllOfTrigger: there is no child 3, it has 2.
std::size_t checked_index(NodeState const& state, std::string_view what, int index, std::size_t count);

/// The type that a family numbers its kinds by.
template <IsNode Handle>
int type_of(Handle const& handle) {
    return node_of(handle).kind->type;
}

/// The children of the same family; see KindOfNode::children.
template <IsNode Base>
std::vector<std::shared_ptr<Base>> children_of(Base const& node) {
    NodeState const& state = node_of(node);
    return static_cast<KindOfNode<Base> const*>(state.kind)->children(state);
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

/// Nodes are written with their kind's name.
template <IsNode Base>
struct Codec<std::shared_ptr<Base>> {
    static Json write(std::shared_ptr<Base> const& node) {
        if (!node) return {};
        NodeState const& state = node_of(*node);
        Json json = {{"kind", state.kind->name}};
        state.kind->write(state, json);
        return json;
    }
    static void read(std::shared_ptr<Base>& node, Json const& json, Reading& reading) {
        auto const name = json.is_object() ? json.find("kind") : json.end();
        std::string names;
        for (auto const* const kind : kinds_of<Base>()) {
            if (name != json.end() && *name == kind->name) {
                NodePointer state = kind->make();
                kind->read(*state, json, reading);
                node = kind->handle(std::move(state));
                return;
            }
            names.append(names.empty() ? "" : ", ").append(kind->name);
        }
        reading.refuse("an object whose kind is one of " + names, json);
    }
};

}  // namespace pedflux::engine
