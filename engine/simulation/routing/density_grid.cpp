#include "engine/simulation/routing/density_grid.h"

#include "engine/simulation/agents/agent_motion.h"
#include "engine/simulation/world/floor_plan.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

DensityGrid::DensityGrid(FloorPlan const& plan) {
    std::size_t first = 0;
    for (auto const& surface : plan.surfaces) {
        Bounds bounds;
        for (auto const& face : surface.faces) {
            for (auto const& corner : face) bounds.cover({corner.x, corner.z});
        }
        // A cell more on each side, so that densities at the edge lie between the middles of cells.
        SurfaceGrid grid{grid_over(bounds, cell_size), first};
        grid.corner = grid.corner - Point{cell_size, cell_size};
        grid.columns += 2;
        grid.rows += 2;
        first += grid.cell_count();
        grids_.push_back(grid);
    }
    counts_.resize(first);
}

void DensityGrid::count(std::span<AgentMotion const> motions) {
    for (auto const cell : counted_) counts_[cell] = 0;
    counted_.clear();
    for (auto const& motion : motions) {
        // A controlled agent may be off the floor; it counts at the edge.
        auto const& grid = grids_[motion.region];
        auto const cell = grid.first + grid.cell_of(motion.position);
        ++counts_[cell];
        counted_.push_back(cell);
    }
}

double DensityGrid::density(navigation::RegionIndex region, Point point) const {
    auto const& grid = grids_[region];
    Point const first_centre = grid.centre(0, 0);
    double const x = std::clamp((point.x - first_centre.x) / cell_size, 0.0, grid.columns - 2.0);
    double const z = std::clamp((point.z - first_centre.z) / cell_size, 0.0, grid.rows - 2.0);
    auto const column = static_cast<std::uint32_t>(x);
    auto const row = static_cast<std::uint32_t>(z);
    double const right = x - column;
    double const down = z - row;
    auto const* const here = &counts_[grid.first + grid.cell(column, row)];
    auto const* const below = here + grid.columns;
    double const persons =
        (1 - down) * ((1 - right) * here[0] + right * here[1]) + down * ((1 - right) * below[0] + right * below[1]);
    return persons / (cell_size * cell_size);
}

}  // namespace pedflux::engine
