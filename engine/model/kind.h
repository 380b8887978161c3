#pragma once

#include "engine/model/check.h"
#include "engine/model/codec.h"
#include "engine/model/document.h"

#include <memory>
#include <utility>
#include <vector>

/// Makes the kinds of objects out of their states' lists of fields. Included where kinds are instantiated.
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
    static void write(ObjectState const& object, Json& json) { write_fields(as_state(object), json); }
    static void read(ObjectState& object, Json const& json, Reading& reading) {
        read_fields(static_cast<State&>(object), json, reading, object.unknown);
    }
    static void check(ObjectState const& object) {
        check_value(owner_of(object), "", as_state(object), NoRule{});
        if constexpr (ChecksItself<State>) State::check(as_state(object));
    }
    static void references(ObjectState const& object, std::vector<Reference>& found) {
        collect_references(&object, as_state(object), found);
    }
    static std::shared_ptr<SimObject> handle(std::shared_ptr<ObjectState> object) {
        return std::make_shared<typename State::Handle>(std::move(object));
    }
};

template <class State>
Kind const& kind_of() {
    using Functions = KindFunctions<State>;
    static constexpr Kind kind{State::TYPE,      State::NAME,           Functions::make,
                               Functions::copy,  Functions::write,      Functions::read,
                               Functions::check, Functions::references, Functions::handle};
    return kind;
}

}  // namespace pedflux::engine
