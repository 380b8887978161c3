#pragma once

#include "engine/geometry/plane.h"
#include "engine/results/run_reader.h"

#include <cstddef>
#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace pedflux::engine {

/// Who of a frame is close to whom: on the same surface, no further apart than a distance in the plan, and, unless
/// barriers are ignored, with nothing between them where people cannot walk.
class Proximity {
  public:
    /// @param distance metres
    Proximity(RunReader const& reader, double distance, bool ignore_barriers);

    /// The pairs, as positions in the list, the smaller one first.
    std::vector<std::pair<std::size_t, std::size_t>> pairs(std::span<AgentFrame const> persons) const;
    /// With how many others each person is close.
    std::vector<int> counts(std::span<AgentFrame const> persons) const;

  private:
    bool are_close(AgentFrame const& a, AgentFrame const& b) const;

    double distance_;
    std::vector<std::vector<Segment>> walls_;  ///< of each surface
};

}  // namespace pedflux::engine
