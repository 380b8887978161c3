#pragma once

#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/places.h"
#include "engine/simulation/world/volumes.h"

#include <cstdint>
#include <vector>

/// What does not change while a simulation is stepped.
namespace pedflux::engine {

/// A point of a walkable region.
struct Standpoint {
    navigation::RegionIndex region = 0;
    Point point;
};

struct World {
    FloorPlan plan;
    Places places;  ///< grows when somebody asks for an area that was no place before
    std::vector<VolumeMesh> volumes;
    std::vector<Point> doorway_outward;  ///< of length 1 where the doorway lies on an edge, otherwise (0, 0)
    std::uint64_t seed = 0;              ///< of all random numbers
};

/// The height of a point on a region's surface, in metres.
inline double height_at(FloorPlan const& plan, navigation::RegionIndex region, Point point) {
    return plan.grounds[region].height(point);
}

}  // namespace pedflux::engine
