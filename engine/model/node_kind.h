#pragma once

#include "engine/model/check.h"
#include "engine/model/fields.h"
#include "engine/model/node.h"

#include <memory>
#include <utility>

/// Makes the kinds of nodes out of their states. Included where the classes of a family are implemented.
namespace pedflux::engine {

/// A state may have a rule that binds several of its fields together. `subject` names the state in messages.
template <class State>
concept ChecksItsFields = requires(Subject const& subject, State const& state) {
    State::check(subject, state);
};

template <class Base, class State>
struct NodeFunctions {
    static NodePointer make();
    static NodePointer copy(NodeState const& node) { return NodePointer(new State(static_cast<State const&>(node))); }
    static void check(Subject const& subject, NodeState const& node) {
        if constexpr (ChecksItsFields<State>) State::check(subject, static_cast<State const&>(node));
    }
    static std::shared_ptr<Base> handle(NodePointer node) {
        return std::make_shared<typename State::Handle>(std::move(node));
    }
};

/// The kind of a state, of the family of `Base`.
template <class Base, class State>
KindOfNode<Base> const& node_kind() {
    using Functions = NodeFunctions<Base, State>;
    static constexpr KindOfNode<Base> kind{
        {static_cast<int>(State::TYPE), State::NAME, Functions::make, Functions::copy, &fields_of<State>,
         ChecksItsFields<State> ? &Functions::check : nullptr},
        Functions::handle};
    return kind;
}

template <class Base, class State>
NodePointer NodeFunctions<Base, State>::make() {
    auto* const state = new State;
    state->kind = &node_kind<Base, State>();
    return NodePointer(state);
}

/// Throws Exception when a new node breaks a rule.
void check_new_node(NodeState const& node);

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
    edit(static_cast<State&>(*node));
    check_new_node(*node);
    return node;
}
/// A node with the defaults. Parts that are required can still be empty; an object of a project refuses it then.
template <class Base, class State>
NodePointer make_node() {
    return NodeFunctions<Base, State>::make();
}

}  // namespace pedflux::engine
