#pragma once

#include "engine/behaviour/distribution_face.h"
#include "engine/model/properties.h"

#include <pedflux/distributions.h>
#include <pedflux/exception.h>

#include <memory>
#include <string>
#include <string_view>

/// Properties that are distributions. The object keeps a copy and hands out copies, so that nobody changes an object
/// through a distribution that was set or read before.
namespace pedflux::engine {

template <class State>
void set_distribution(SimObject& face, std::shared_ptr<Distribution> State::*member,
                      std::shared_ptr<Distribution> const& distribution) {
    State& state = state_of<State>(face);
    if (!distribution) {
        with_field(state, member, [&](std::string_view name, auto const&...) {
            Subject{owner_of(state), std::string(name)}.refuse("a distribution", "empty");
        });
    }
    set(face, member, copy_of(distribution));
}

/// A copy of the distribution. Throws Exception when none is set.
template <class State>
std::shared_ptr<Distribution> get_distribution(SimObject& face, std::shared_ptr<Distribution> State::*member) {
    State& state = state_of<State>(face);
    if (!(state.*member)) {
        with_field(state, member, [&](std::string_view name, auto const&...) { refuse_unset(owner_of(state), name); });
    }
    return copy_of(state.*member);
}

}  // namespace pedflux::engine
