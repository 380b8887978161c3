#pragma once

#include "engine/analysis/visits.h"
#include "engine/behaviour/population/trip.h"

#include <cstdint>
#include <vector>

namespace pedflux::engine {

/// A trip of a person, from frame to frame.
struct TripMade {
    std::uint32_t agent = 0;
    int start = 0;
    int end = 0;
};

/// The trips along a path, by person and time. A trip begins at the first visit of the path's start after the previous
/// trip, passes each further place at its first visit after that, and ends at the first such visit of the path's end.
std::vector<TripMade> trips_of(TripPath const& path, RunPlaces const& places, Visits const& visits);

/// The whole stay in the simulation, of everybody who arrived.
std::vector<TripMade> whole_trips_of(RunReader const& reader);

}  // namespace pedflux::engine
