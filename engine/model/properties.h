#pragma once

#include "engine/model/check.h"
#include "engine/model/state.h"

#include <pedflux/exception.h>

#include <cassert>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

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
void set(SimObject& face, Member State::*member, Value&& value) {
    State& state = state_of<State>(face);
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
Member const& get(SimObject& face, Member State::*member) {
    return state_of<State>(face).*member;
}
template <class State, class Value>
Value const& get(SimObject& face, std::optional<Value> State::*member) {
    State const& state = state_of<State>(face);
    return get_field(owner_of(state), state, member);
}

template <class State, class Value>
bool has(SimObject& face, std::optional<Value> State::*member) {
    return (state_of<State>(face).*member).has_value();
}

template <class State, class Value>
void clear(SimObject& face, std::optional<Value> State::*member) {
    (state_of<State>(face).*member).reset();
}

/// The document that an object belongs to. Throws Exception when it belongs to none any more.
Document& document_of(ObjectState& object);

}  // namespace pedflux::engine
