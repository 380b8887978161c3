#pragma once

#include "engine/model/properties.h"

#include <pedflux/agent_actions.h>

#include <memory>

/// The operations of an action that an object holds, by the field of its state:
///
///     ACTION(Floor, FloorState, Enter, enter_action)
///
/// Without an action the copy is empty; setting an empty action clears it.
#define ACTION(Class, State, Name, field)                                                 \
    bool Class::Has##Name##Action() { return engine::has(*this, &engine::State::field); } \
    std::shared_ptr<AgentAction> Class::Get##Name##ActionCopy() {                         \
        return engine::copy_of(engine::get(*this, &engine::State::field));                \
    }                                                                                     \
    void Class::Set##Name##Action(std::shared_ptr<AgentAction> const& action) {           \
        engine::set(*this, &engine::State::field, engine::copy_of(action));               \
    }
