#pragma once

#include "engine/model/check.h"
#include "engine/model/node.h"
#include "engine/model/state.h"

#include <pedflux/exception.h>

#include <cassert>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

/// What the setters and getters of faces come down to. The field's name and rule are those of the state's list:
///
///     void Stair::SetLocalDirectionBias(AgentDirectionBias bias) { set(*this, &StairState::direction_bias, bias); }
///     AgentDirectionBias Stair::GetLocalDirectionBias() { return get(*this, &StairState::direction_bias); }
namespace pedflux::engine {

/// Calls found(name, field, rule) for the field that the pointer names.
template <class State, class Member, class Base, class Found>
void with_field(State& state, Member Base::*member, Found const& found) {
    auto const* const wanted = &(state.*member);
    [[maybe_unused]] bool listed = false;
    State::fields(state, [&]<class Field>(std::string_view name, Field& field, auto const&... rule) {
        if constexpr (std::is_same_v<std::remove_const_t<Field>, Member>) {
            if (&field != wanted) return;
            listed = true;
            if constexpr (sizeof...(rule) == 0) {
                found(name, field, NoRule{});
            } else {
                found(name, field, rule...);
            }
        }
    });
    assert(listed && "every field stands in the state's list");
}

/// Checks the value by the field's rule and stores it.
template <class State, class Member, class Base, class Value>
void set_field(Owner const& owner, State& state, Member Base::*member, Value&& value) {
    with_field(state, member, [&](std::string_view name, Member& field, auto const& rule) {
        Member stored(std::forward<Value>(value));
        check_value(owner, std::string(name), stored, rule);
        field = std::move(stored);
    });
}

template <class State, class Member, class Value>
void set(SimObject& handle, Member State::*member, Value&& value) {
    State& state = state_of<State>(handle);
    set_field(owner_of(state), state, member, std::forward<Value>(value));
}

/// Throws Exception: Stair 'Up' has no localAgentBodyRadius.
[[noreturn]] void refuse_unset(Owner const& owner, std::string_view property);

/// The value of an optional field. Throws Exception when it is not set.
template <class State, class Value>
Value const& get_field(Owner const& owner, State const& state, std::optional<Value> State::*member) {
    if (!(state.*member)) {
        with_field(state, member, [&](std::string_view name, auto const&...) { refuse_unset(owner, name); });
    }
    return *(state.*member);
}

/// The value of a field; of an optional one the value that is set.
template <class State, class Member>
Member const& get(SimObject& handle, Member State::*member) {
    return state_of<State>(handle).*member;
}
template <class State, class Value>
Value const& get(SimObject& handle, std::optional<Value> State::*member) {
    State const& state = state_of<State>(handle);
    return get_field(owner_of(state), state, member);
}

// The same for nodes. A node that is set as a part of another one is shared with whoever else holds it.

/// Calls found(name, pointer) for every node that stands directly in a state.
template <class State, class Found>
void with_nodes(State& state, Found const& found) {
    auto const search = [&](auto const& self, std::string_view name, auto& value) -> void {
        using Value = std::remove_cvref_t<decltype(value)>;
        if constexpr (IS_NODE_POINTER<Value>) {
            if (value) found(name, value);
        } else if constexpr (IS_LIST<Value>) {
            for (auto& element : value) self(self, name, element);
        } else if constexpr (IS_OPTIONAL<Value>) {
            if (value) self(self, name, *value);
        } else if constexpr (IS_VARIANT<Value>) {
            std::visit([&](auto& held) { self(self, name, held); }, value);
        } else if constexpr (Described<Value>) {
            Value::fields(value,
                          [&](std::string_view inner, auto& field, auto const&...) { self(self, inner, field); });
        }
    };
    search(search, "", state);
}

/// A state may have a rule that binds several of its fields together. `subject` names the state in messages.
template <class State>
concept ChecksItsFields = requires(Subject const& subject, State const& state) {
    State::check(subject, state);
};

template <class State>
void check_node(Owner const& owner, std::string const& path, State const& state) {
    check_value(owner, path, state, NoRule{});
    if constexpr (ChecksItsFields<State>) State::check(Subject{owner, path}, state);
}

/// Changes several fields of a node at once: all, or none when the outcome breaks a rule.
template <class State, IsNode Handle, class Edit>
void change(Handle& handle, Edit const& edit) {
    State& state = state_of<State>(handle);
    State changed = state;
    edit(changed);
    with_nodes(changed,
               [&](std::string_view name, auto const& node) { require_may_hold(state, name, node_of(*node)); });
    check_node(owner_of(state), "", changed);
    state = std::move(changed);
}

template <IsNode Handle, class Member, class State, class Value>
void set(Handle& handle, Member State::*member, Value&& value) {
    State& state = state_of<State>(handle);
    with_field(state, member, [&](std::string_view name, Member& field, auto const& rule) {
        Member stored(std::forward<Value>(value));
        // First how far it reaches, since the check goes all the way.
        if constexpr (IS_NODE_POINTER<Member>) {
            if (stored) require_may_hold(state, name, node_of(*stored));
        }
        check_value(owner_of(state), std::string(name), stored, rule);
        field = std::move(stored);
    });
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
bool has(SimObject& handle, std::optional<Value> State::*member) {
    return (state_of<State>(handle).*member).has_value();
}

template <class State, class Value>
void clear(SimObject& handle, std::optional<Value> State::*member) {
    (state_of<State>(handle).*member).reset();
}

// Properties of objects that are shared outside of the project: nodes, distributions, times. The object keeps a copy
// and hands out copies, so that nobody changes it through what was set or read before. An empty pointer is none.

template <StandsForValue T>
std::shared_ptr<T> copy_of(std::shared_ptr<T> const& value) {
    return value ? SharedValue<T>::make(SharedValue<T>::value(*value)) : nullptr;
}

/// Refuses an empty pointer.
template <class State, class T>
void set_copy(SimObject& handle, std::shared_ptr<T> State::*member, std::shared_ptr<T> const& value) {
    State& state = state_of<State>(handle);
    if (!value) {
        with_field(state, member, [&](std::string_view name, auto const&...) {
            refuse_empty(Subject{owner_of(state), std::string(name)});
        });
    }
    set(handle, member, copy_of(value));
}

/// A copy of the value. Throws Exception when none is set.
template <class State, class T>
std::shared_ptr<T> get_copy(SimObject& handle, std::shared_ptr<T> State::*member) {
    State& state = state_of<State>(handle);
    if (!(state.*member)) {
        with_field(state, member, [&](std::string_view name, auto const&...) { refuse_unset(owner_of(state), name); });
    }
    return copy_of(state.*member);
}

template <class State, class T>
bool has(SimObject& handle, std::shared_ptr<T> State::*member) {
    return state_of<State>(handle).*member != nullptr;
}
template <class State, class T>
void clear(SimObject& handle, std::shared_ptr<T> State::*member) {
    (state_of<State>(handle).*member).reset();
}

/// The document that an object belongs to. Throws Exception when it belongs to none any more.
Document& document_of(ObjectState& object);

}  // namespace pedflux::engine
