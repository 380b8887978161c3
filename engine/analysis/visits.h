#pragma once

#include "engine/analysis/places.h"
#include "engine/results/run_reader.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Where each person of a run was, from frame to frame.
namespace pedflux::engine {

/// A time without a break on one surface.
struct SurfaceVisit {
    std::uint16_t surface = 0;
    int first = 0;  ///< frame
    int last = 0;   ///< frame
};

/// The visits of each person, in the order of time. Reads the whole run.
using Visits = std::vector<std::vector<SurfaceVisit>>;
Visits visits_of(RunReader& reader);

/// The first frame that does not show a person any more; none for one who was there to the end of the run.
std::optional<int> departure_of(RunReader const& reader, AgentRecord const& person);

/// A time without a break in a place, from the first frame in it to the first one that is not; a portal is passed at
/// once.
struct Visit {
    int enter = 0;
    std::optional<int> exit;  ///< none for who was there to the end of the run
};
std::vector<Visit> visits_of(RunReader const& reader, AgentRecord const& person,
                             std::vector<SurfaceVisit> const& surface_visits, RunPlace const& place);

}  // namespace pedflux::engine
