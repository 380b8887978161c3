#pragma once

#include "engine/behaviour/population/population.h"

#include <pedflux/population_sources.h>

#include <memory>

namespace pedflux {

struct PopulationSource::State {
    engine::Population population;
};

struct PopulationArrival::State {
    engine::Arrival arrival;
};

namespace engine {

/// Access to the data of SDK sources and arrivals.
struct PopulationAccess {
    static Population const& population(PopulationSource const& source) { return source.state_->population; }
    static Population& population(PopulationSource& source) { return source.state_->population; }
    static Arrival const& arrival(PopulationArrival const& arrival) { return arrival.state_->arrival; }
    static std::shared_ptr<PopulationArrival> make(Arrival arrival);
};

/// The data of a source.
inline Population const& population_of(PopulationSource const& source) { return PopulationAccess::population(source); }

/// A source of the class that belongs to the population's type. Throws as `require_valid` does.
std::shared_ptr<PopulationSource> make_source(Population const& population);

}  // namespace engine
}  // namespace pedflux
