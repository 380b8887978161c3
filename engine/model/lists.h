#pragma once

#include "engine/model/properties.h"

#include <pedflux/identifiers.h>

#include <cstddef>
#include <vector>

/// Fields that list other objects, each of them once, in the order in which they were added.
namespace pedflux::engine {

bool lists(std::vector<GlobalId> const& list, GlobalId const& id);

// The same functions for a list in the object's state.
void add_to_list(ObjectState const& state, std::vector<GlobalId>& list, std::vector<GlobalId> const& ids);
std::ptrdiff_t index_in_list(ObjectState const& state, std::vector<GlobalId> const& list, GlobalId const& id);

/// Adds what is not in the list yet, after all of it has passed the field's rule.
template <class State>
void add_to_list(SimObject& handle, std::vector<GlobalId> State::*member, std::vector<GlobalId> const& ids) {
    auto& state = state_of<State>(handle);
    add_to_list(state, state.*member, ids);
}

/// Throws Exception when the object is not in the list.
template <class State>
std::ptrdiff_t index_in_list(SimObject& handle, std::vector<GlobalId> State::*member, GlobalId const& id) {
    auto const& state = state_of<State>(handle);
    return index_in_list(state, state.*member, id);
}

template <class State>
void remove_from_list(SimObject& handle, std::vector<GlobalId> State::*member, GlobalId const& id) {
    auto const index = index_in_list(handle, member, id);
    auto& list = state_of<State>(handle).*member;
    list.erase(list.begin() + index);
}

}  // namespace pedflux::engine
