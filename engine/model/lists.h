#pragma once

#include "engine/model/properties.h"

#include <pedflux/identifiers.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

/// Fields that list other objects, each of them once, in the order in which they were added.
namespace pedflux::engine {

inline bool lists(std::vector<GlobalId> const& list, GlobalId const& id) {
    return std::ranges::any_of(list, [&](GlobalId const& other) { return other.InternalEquals(id); });
}

/// Adds what is not in the list yet, after all of it has passed the field's rule.
template <class State>
void add_to_list(SimObject& handle, std::vector<GlobalId> State::*member, std::vector<GlobalId> const& ids) {
    auto& state = state_of<State>(handle);
    with_field(state, member, [&](std::string_view name, std::vector<GlobalId>& list, auto const& rule) {
        for (auto const& id : ids) check_value(owner_of(state), std::string(name), id, rule);
        for (auto const& id : ids) {
            if (!lists(list, id)) list.push_back(id);
        }
    });
}

/// Throws Exception when the object is not in the list.
template <class State>
std::ptrdiff_t index_in_list(SimObject& handle, std::vector<GlobalId> State::*member, GlobalId const& id) {
    auto& state = state_of<State>(handle);
    auto const& list = state.*member;
    auto const found = std::ranges::find_if(list, [&](GlobalId const& other) { return other.InternalEquals(id); });
    if (found == list.end()) {
        with_field(state, member, [&](std::string_view name, auto const&...) {
            Subject{owner_of(state), std::string(name)}.refuse("a list that has " + GlobalId(id).GetString(),
                                                               "one without it");
        });
    }
    return found - list.begin();
}

template <class State>
void remove_from_list(SimObject& handle, std::vector<GlobalId> State::*member, GlobalId const& id) {
    auto const index = index_in_list(handle, member, id);
    auto& list = state_of<State>(handle).*member;
    list.erase(list.begin() + index);
}

}  // namespace pedflux::engine
