#pragma once

#include "engine/geometry/uniform_grid.h"
#include "engine/navigation/navigation_input.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace pedflux::engine {

struct FloorPlan;
struct AgentMotion;

/// The local density of agents, counted on a grid over each region.
class DensityGrid {
  public:
    /// Side of a cell (metres).
    static constexpr double cell_size = 1;

    explicit DensityGrid(FloorPlan const& plan);

    /// Replaces the former counts.
    void count(std::span<AgentMotion const> motions);
    /// Persons per square metre around a point, interpolated between cells. Beside walls it is underestimated, since
    /// cells there are not floor all over.
    double density(navigation::RegionIndex region, Point point) const;

  private:
    struct SurfaceGrid : UniformGrid {
        std::size_t first = 0;  ///< among all cells
    };

    std::vector<SurfaceGrid> grids_;     ///< of each region
    std::vector<std::uint16_t> counts_;  ///< of each cell
    std::vector<std::size_t> counted_;   ///< the cells that are not 0
};

}  // namespace pedflux::engine
