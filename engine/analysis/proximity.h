#pragma once

#include "engine/geometry/plane.h"
#include "engine/results/run_reader.h"

#include <cstddef>
#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace pedflux::engine {

/// Which persons of a frame are close to each other: on the same surface, within a distance measured in plan and,
/// unless barriers are ignored, with walkable floor on the straight line between them.
class Proximity {
  public:
    /// @param distance metres
    Proximity(RunReader const& reader, double distance, bool ignore_barriers);

    /// The pairs, as indices into the list, the smaller one first.
    std::vector<std::pair<std::size_t, std::size_t>> pairs(std::span<AgentFrame const> persons) const;
    /// The number of others that each person is close to.
    std::vector<int> counts(std::span<AgentFrame const> persons) const;

  private:
    bool are_close(AgentFrame const& a, AgentFrame const& b) const;

    double distance_;
    std::vector<std::vector<Segment>> walls_;  ///< of each surface
};

}  // namespace pedflux::engine
