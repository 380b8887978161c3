#pragma once

#include "engine/geometry/uniform_grid.h"
#include "engine/navigation/navigation.h"

#include <cstdint>
#include <span>
#include <vector>

/// Where people walk across an opening or around a corner.
namespace pedflux::engine {

struct FloorPlan;
struct AgentMotion;

/// How many people there are, by small squares of the plan.
class DensityGrid {
  public:
    explicit DensityGrid(FloorPlan const& plan);

    /// Forgets what was counted before.
    void count(std::span<AgentMotion const> motions);
    /// Persons per square metre around a point. Beside a wall it is less than people feel, as some of what it looks at
    /// is no floor.
    double density(navigation::RegionIndex region, Point point) const;

  private:
    /// The squares of a surface and, around them, squares that stay empty.
    struct SurfaceGrid : UniformGrid {
        std::size_t first = 0;  ///< among all squares
    };

    std::vector<SurfaceGrid> grids_;
    std::vector<std::uint16_t> counts_;
    std::vector<std::size_t> counted_;
};

/// What somebody chose of an opening, or of the line beside a corner.
struct LocalTarget {
    navigation::RouteStep::Kind of = navigation::RouteStep::Kind::ARRIVED;
    std::uint32_t number = navigation::none;  ///< of the corner, connection or destination
    bool straight = true;                     ///< over the nearest point, wherever that is
    Point aim;                                ///< if not
    double until = 0;                         ///< seconds of the simulation; then it is chosen anew
};

/// Where to walk on the target of a route's step. Who comes straight to it walks straight on; those who come from
/// beside share it, since they would all aim at its near post. Who would walk into a throng there takes the lane that
/// is passed soonest, as people spread over the width of a stair that they come to from the side.
/// @param now in seconds
Point aim_on(navigation::RouteStep const& step, AgentMotion& motion, std::uint32_t key, DensityGrid const& density_grid,
             double now);

}  // namespace pedflux::engine
