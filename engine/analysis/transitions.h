#pragma once

#include "engine/analysis/visits.h"

#include <pedflux/transitions.h>

#include <cstdint>
#include <vector>

namespace pedflux::engine {

/// A person goes from one surface to another, into the simulation or out of it.
struct RecordedCrossing {
    int frame = 0;  ///< the first that shows it
    std::uint32_t agent = 0;
    SurfaceIndex from = no_surface;
    SurfaceIndex to = no_surface;
};

/// The crossings that make a transition, in the order of time and then of persons. Throws Exception for one of which a
/// stored run does not tell.
std::vector<RecordedCrossing> crossings_at(Transition const& transition, RunPlaces const& places, Visits const& visits);

/// Those of everybody who arrived and left, in the same order.
std::vector<RecordedCrossing> exits_of(RunPlaces const& places, Visits const& visits);

}  // namespace pedflux::engine
