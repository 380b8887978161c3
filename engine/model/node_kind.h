#pragma once

#include "engine/model/check.h"
#include "engine/model/codec.h"
#include "engine/model/node.h"
#include "engine/model/properties.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Makes the kinds of nodes out of their states' lists of fields. Included where the classes of a family are
/// implemented.
namespace pedflux::engine {

/// Replaces everything shared in a value by a copy.
template <class T>
void take_copies(T& value) {
    if constexpr (IS_NODE_POINTER<T> || IS_SHARED_VALUE<T>) {
        value = copy_of(value);
    } else if constexpr (IS_LIST<T>) {
        for (auto& element : value) take_copies(element);
    } else if constexpr (IS_OPTIONAL<T>) {
        if (value) take_copies(*value);
    } else if constexpr (IS_VARIANT<T>) {
        std::visit([](auto& held) { take_copies(held); }, value);
    } else if constexpr (Described<T>) {
        T::fields(value, [](std::string_view, auto& field, auto const&...) { take_copies(field); });
    }
}

template <class Base, class State>
struct NodeFunctions {
    static State const& as_state(NodeState const& node) { return static_cast<State const&>(node); }

    static NodePointer make();
    static NodePointer copy(NodeState const& node) {
        auto* const state = new State(as_state(node));
        NodePointer copied(state);
        take_copies(*state);
        return copied;
    }
    static void write(NodeState const& node, Json& json) { write_fields(as_state(node), json); }
    static void read(NodeState& node, Json const& json, Reading& reading) {
        Json unknown;
        read_fields(static_cast<State&>(node), json, reading, unknown);
        for (auto const& [name, member] : unknown.items()) reading.warn("'" + name + "' is not known and is left out");
    }
    static void check(Owner const& owner, std::string const& path, NodeState const& node) {
        check_node(owner, path, as_state(node));
    }
    static void references(ObjectState const* owner, NodeState const& node, std::vector<Reference>& found) {
        collect_references(owner, as_state(node), found);
    }
    static void inner(NodeState const& node, std::function<void(NodeState const&)> const& visit) {
        with_nodes(as_state(node), [&](std::string_view, auto const& held) { visit(node_of(*held)); });
    }
    static std::shared_ptr<Base> handle(NodePointer node) {
        return std::make_shared<typename State::Handle>(std::move(node));
    }
    static std::vector<std::shared_ptr<Base>> children(NodeState const& node) {
        std::vector<std::shared_ptr<Base>> found;
        with_nodes(as_state(node), [&]<class Held>(std::string_view, Held const& held) {
            if constexpr (std::is_same_v<Held, std::shared_ptr<Base>>) found.push_back(held);
        });
        return found;
    }
};

/// The kind of a state, of the family of `Base`.
template <class Base, class State>
KindOfNode<Base> const& node_kind() {
    using Functions = NodeFunctions<Base, State>;
    static constexpr KindOfNode<Base> kind{
        {static_cast<int>(State::TYPE), State::NAME, Functions::make, Functions::copy, Functions::write,
         Functions::read, Functions::check, Functions::references, Functions::inner},
        Functions::handle,
        Functions::children};
    return kind;
}

template <class Base, class State>
NodePointer NodeFunctions<Base, State>::make() {
    auto* const state = new State;
    state->kind = &node_kind<Base, State>();
    return NodePointer(state);
}

/// A node with the fields that `edit` gives it. Throws Exception when they break a rule.
///
///     DelayedTrigger::DelayedTrigger(std::shared_ptr<Trigger> const& child, int seconds)
///         : Trigger(make_node<Trigger, DelayedTriggerState>([&](auto& state) {
///               state.child = child;
///               state.delay = seconds;
///           })) {}
template <class Base, class State, class Edit>
NodePointer make_node(Edit const& edit) {
    NodePointer node = NodeFunctions<Base, State>::make();
    auto& state = static_cast<State&>(*node);
    edit(state);
    with_nodes(state, [&](std::string_view name, auto const& held) { require_may_hold(state, name, node_of(*held)); });
    check_node(owner_of(state), "", state);
    return node;
}
/// A node with the defaults. Parts that are required can still be empty; an object of a project refuses it then.
template <class Base, class State>
NodePointer make_node() {
    return NodeFunctions<Base, State>::make();
}

}  // namespace pedflux::engine
