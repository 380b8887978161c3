#pragma once

#include "engine/model/check.h"
#include "engine/model/properties.h"
#include "engine/transport/vehicle_states.h"

#include <utility>
#include <variant>

namespace pedflux::engine {

/// Edits a copy of the vehicle's state, which replaces the state only if it is valid as a whole: many setters change
/// several fields that depend on each other.
template <class Change>
void edit(Vehicle& vehicle, Change const& change) {
    auto& state = state_of<VehicleState>(vehicle);
    VehicleState changed = state;
    change(changed);
    check_value(owner_of(state), "", changed, NoRule{});
    VehicleState::check(changed);
    state = std::move(changed);
}

/// The value of an optional variant if it is of the type, otherwise null.
template <class Held, class Variant>
Held const* held_in(std::optional<Variant> const& variant) {
    return variant ? std::get_if<Held>(&*variant) : nullptr;
}

/// The same; throws Exception if it is of another type: Vehicle 'Train' has no alighting.randomDistribution.
template <class Held, class Variant>
Held const& require_held(Vehicle& vehicle, std::optional<Variant> const& variant, std::string_view property) {
    auto const* const held = held_in<Held>(variant);
    if (held == nullptr) refuse_unset(owner_of(state_of<VehicleState>(vehicle)), property);
    return *held;
}

}  // namespace pedflux::engine
