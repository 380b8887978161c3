#pragma once

#include "engine/model/fields.h"
#include "engine/model/state.h"

#include <pedflux/objects.h>

#include <memory>
#include <utility>

/// Makes the kinds of objects out of their states. Included where kinds are instantiated.
namespace pedflux::engine {

/// A state may add a rule that binds several fields together.
template <class State>
concept ChecksItself = requires(State const& state) {
    State::check(state);
};

template <class State>
struct KindFunctions {
    static State const& as_state(ObjectState const& object) { return static_cast<State const&>(object); }

    static std::shared_ptr<ObjectState> make() {
        auto state = std::make_shared<State>();
        state->kind = &kind_of<State>();
        return state;
    }
    static std::shared_ptr<ObjectState> copy(ObjectState const& object) {
        return std::make_shared<State>(as_state(object));
    }
    static void check(ObjectState const& object) {
        if constexpr (ChecksItself<State>) State::check(as_state(object));
    }
    static std::shared_ptr<SimObject> handle(std::shared_ptr<ObjectState> object) {
        return std::make_shared<typename State::Handle>(std::move(object));
    }
};

template <class State>
Kind const& kind_of() {
    using Functions = KindFunctions<State>;
    static constexpr Kind kind{State::TYPE,      State::NAME,       Functions::make,
                               Functions::copy,  &fields_of<State>, ChecksItself<State> ? &Functions::check : nullptr,
                               Functions::handle};
    return kind;
}

}  // namespace pedflux::engine
