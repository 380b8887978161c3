#pragma once

#include "engine/analysis/visits.h"
#include "engine/behaviour/population/trip.h"

#include <cstdint>
#include <vector>

namespace pedflux::engine {

/// A trip that a person made, by the frames of its moments.
struct TripMade {
    std::uint32_t agent = 0;
    int start = 0;
    int end = 0;
};

/// The trips along a path, person by person in the order of time. One begins at the first visit of the path's start
/// after the last trip, leads over the first visits of the other places that follow, and ends at the first such moment
/// at the path's end.
std::vector<TripMade> trips_of(TripPath const& path, Document const& document, RunReader const& reader,
                               Visits const& visits);

/// The whole stay in the simulation of everybody who arrived.
std::vector<TripMade> whole_trips_of(RunReader const& reader);

}  // namespace pedflux::engine
