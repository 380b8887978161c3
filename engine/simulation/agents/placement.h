#pragma once

#include "engine/geometry/uniform_grid.h"
#include "engine/simulation/frame/simulation_state.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace pedflux::engine {

/// Who stands where, to find room for others.
class Occupancy {
  public:
    explicit Occupancy(SimulationState const& run);

    void add(navigation::RegionIndex region, Point place, double radius);
    /// Whether a body would touch no other.
    bool is_free(navigation::RegionIndex region, Point place, double radius) const;

  private:
    struct Body {
        Point place;
        double radius;
    };
    std::vector<SparseGrid<Body>> bodies_;  ///< by region
    double largest_ = 0;
};

struct Spot {
    navigation::RegionIndex region;
    Point place;
};

/// A free spot for a person at the place where it comes from; none when there is no room now.
std::optional<Spot> spot_for(SimulationState const& run, SpawnRequest const& request, Occupancy const& occupancy);

}  // namespace pedflux::engine
