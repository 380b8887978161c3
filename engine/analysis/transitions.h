#pragma once

#include "engine/analysis/visits.h"

#include <pedflux/transitions.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace pedflux::engine {

/// A person goes from one surface to another; the outside is none.
struct Passage {
    int frame = 0;  ///< the first that shows it
    std::uint32_t agent = 0;
    std::optional<std::uint16_t> from;
    std::optional<std::uint16_t> to;
};

/// Every passage of the run, in the order of time and then of persons.
std::vector<Passage> passages_of(RunReader const& reader, Visits const& visits);

/// Those at which a transition happens. Throws Exception for one of which a stored run does not tell.
std::vector<Passage> passages_at(Transition const& transition, Document const& document, RunReader const& reader,
                                 std::vector<Passage> const& passages);

}  // namespace pedflux::engine
