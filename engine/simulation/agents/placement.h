#pragma once

#include "engine/geometry/uniform_grid.h"
#include "engine/navigation/navigation.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/spawning.h"
#include "engine/simulation/world/clock.h"
#include "engine/simulation/world/world.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Where agents enter.
namespace pedflux::engine {

/// The bodies that are present, to find room for others.
class Occupancy {
  public:
    Occupancy(Agents const& agents, crowd::Crowd const& crowd);

    void add(navigation::RegionIndex region, Point point, double radius);
    /// Whether a body would touch no other.
    bool is_free(navigation::RegionIndex region, Point point, double radius) const;

  private:
    struct Body {
        Point point;
        double radius;
    };
    std::vector<SparseGrid<Body>> bodies_;  ///< of each region
    double largest_ = 0;                    ///< radius
};

/// A free spot for an agent at the place where it enters; none when there is no room now.
std::optional<Standpoint> spot_for(World const& world, navigation::Navigation const& navigation,
                                   Spawning const& spawning, Clock const& clock, SpawnRequest const& request,
                                   Occupancy const& occupancy);

}  // namespace pedflux::engine
