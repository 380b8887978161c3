#pragma once

#include "engine/model/check.h"
#include "engine/model/field_values.h"
#include "engine/model/fields.h"
#include "engine/model/node.h"
#include "engine/model/state.h"

#include <memory>
#include <optional>
#include <typeinfo>
#include <utility>

/// The setters and getters of handles. The field's name and rule are those of the state's list:
///
///     void Stair::SetLocalDirectionBias(AgentDirectionBias bias) { set(*this, &StairState::direction_bias, bias); }
///     AgentDirectionBias Stair::GetLocalDirectionBias() { return get(*this, &StairState::direction_bias); }
namespace pedflux::engine {

/// Throws Exception when a value breaks the rule of the field at `place`.
void check_field(Owner const& owner, Fields const& fields, void const* place, std::type_info const& type,
                 void const* value);
/// The same for a field of a node; a node that the value is must not hold the one that it is set in.
void check_field(NodeState const& node, void const* place, std::type_info const& type, void const* value);
/// Throws Exception: the field at `place` has no value.
[[noreturn]] void refuse_unset(Owner const& owner, Fields const& fields, void const* place, std::type_info const& type);
/// Throws Exception: the field at `place` must be given.
[[noreturn]] void refuse_empty(Owner const& owner, Fields const& fields, void const* place, std::type_info const& type);

/// Checks the value by the field's rule and stores it.
template <class State, class Member, class Base, class Value>
void set_field(Owner const& owner, State& state, Member Base::*member, Value&& value) {
    Member& place = state.*member;
    Member stored(std::forward<Value>(value));
    check_field(owner, fields_in(state), &place, typeid(Member), &stored);
    place = std::move(stored);
}

template <class State, class Member, class Value>
void set(SimObject& handle, Member State::*member, Value&& value) {
    State& state = state_of<State>(handle);
    set_field(owner_of(state), state, member, std::forward<Value>(value));
}

/// The value of an optional field. Throws Exception when it is not set.
template <class State, class Value>
Value const& get_field(Owner const& owner, State const& state, std::optional<Value> State::*member) {
    std::optional<Value> const& place = state.*member;
    if (!place) refuse_unset(owner, fields_in(state), &place, typeid(place));
    return *place;
}

/// The value of a field; of an optional one the value that is set.
template <class State, class Member>
Member const& get(SimObject const& handle, Member State::*member) {
    return state_of<State>(handle).*member;
}
template <class State, class Value>
Value const& get(SimObject const& handle, std::optional<Value> State::*member) {
    State const& state = state_of<State>(handle);
    return get_field(owner_of(state), state, member);
}

// The same for nodes. A node that is set as a part of another one is shared with its other holders.

/// Throws Exception when the fields of a changed node break a rule.
void check_changed_node(NodeState const& node, NodeState const& changed);

/// Changes several fields of a node at once: all, or none when the outcome breaks a rule.
template <class State, IsNode Handle, class Edit>
void change(Handle& handle, Edit const& edit) {
    State& state = state_of<State>(handle);
    State changed = state;
    edit(changed);
    check_changed_node(state, changed);
    state = std::move(changed);
}

template <IsNode Handle, class Member, class State, class Value>
void set(Handle& handle, Member State::*member, Value&& value) {
    State& state = state_of<State>(handle);
    Member& place = state.*member;
    Member stored(std::forward<Value>(value));
    check_field(state, &place, typeid(Member), &stored);
    place = std::move(stored);
}

template <IsNode Handle, class Member, class State>
Member const& get(Handle const& handle, Member State::*member) {
    return state_of<State>(handle).*member;
}
template <IsNode Handle, class Value, class State>
Value const& get(Handle const& handle, std::optional<Value> State::*member) {
    State const& state = state_of<State>(handle);
    return get_field(owner_of(state), state, member);
}

template <class State, class Value>
bool has(SimObject const& handle, std::optional<Value> State::*member) {
    return (state_of<State>(handle).*member).has_value();
}

template <class State, class Value>
void clear(SimObject& handle, std::optional<Value> State::*member) {
    (state_of<State>(handle).*member).reset();
}

// Properties of objects that are shared outside of the project: nodes, distributions, times. The object keeps a copy
// and hands out copies, so that it cannot be changed through a pointer that was set or read before.
// An empty pointer stands for none.

template <StandsForValue T>
std::shared_ptr<T> copy_of(std::shared_ptr<T> const& value) {
    return value ? SharedValue<T>::make(SharedValue<T>::value(*value)) : nullptr;
}

/// Refuses an empty pointer.
template <class State, class T>
void set_copy(SimObject& handle, std::shared_ptr<T> State::*member, std::shared_ptr<T> const& value) {
    State const& state = state_of<State>(handle);
    if (!value) refuse_empty(owner_of(state), fields_in(state), &(state.*member), typeid(value));
    set(handle, member, copy_of(value));
}

/// A copy of the value. Throws Exception when none is set.
template <class State, class T>
std::shared_ptr<T> get_copy(SimObject const& handle, std::shared_ptr<T> State::*member) {
    State const& state = state_of<State>(handle);
    auto const& place = state.*member;
    if (!place) refuse_unset(owner_of(state), fields_in(state), &place, typeid(place));
    return copy_of(place);
}

template <class State, class T>
bool has(SimObject const& handle, std::shared_ptr<T> State::*member) {
    return state_of<State>(handle).*member != nullptr;
}
template <class State, class T>
void clear(SimObject& handle, std::shared_ptr<T> State::*member) {
    (state_of<State>(handle).*member).reset();
}

}  // namespace pedflux::engine
