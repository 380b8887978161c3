#pragma once

#include "engine/behaviour/population/population.h"

#include <pedflux/population_sources.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

// What the setters of the population sources have in common.
namespace pedflux::engine {

/// Changes a copy, which replaces the population only if it is valid.
template <class Change>
void edit(Population& population, Change const& change) {
    auto changed = population;
    change(changed);
    require_valid(changed);
    population = std::move(changed);
}

void set_arrival(Population& population, std::shared_ptr<PopulationArrival> const& arrival);

/// The position of a place in a list, or the list's length.
std::size_t position_of(std::vector<GlobalId> const& places, GlobalId const& place);

/// The same, but throws an Exception when the place is not there; `what` names the places of the list in the singular.
std::size_t require_position(Population const& population, std::string_view what, std::vector<GlobalId> const& places,
                             GlobalId place);

}  // namespace pedflux::engine
