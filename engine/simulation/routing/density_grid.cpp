#include "engine/simulation/routing/density_grid.h"

#include "engine/simulation/agents/agent_motion.h"
#include "engine/simulation/world/floor_plan.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

DensityGrid::DensityGrid(FloorPlan const& plan) {
    std::size_t first = 0;
    for (auto const& surface : plan.surfaces) {
        Point low{1e300, 1e300};
        Point high{-1e300, -1e300};
        for (auto const& face : surface.faces) {
            for (auto const& corner : face) {
                low = {std::min(low.x, corner.x), std::min(low.z, corner.z)};
                high = {std::max(high.x, corner.x), std::max(high.z, corner.z)};
            }
        }
        auto const cells = [](double length) { return static_cast<std::uint32_t>(length / cell_size) + 3; };
        Grid const grid{low - Point{cell_size / 2, cell_size / 2}, cells(high.x - low.x), cells(high.z - low.z), first};
        first += std::size_t{grid.columns} * grid.rows;
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
        auto const nearest = [](double metres, std::uint32_t cells) {
            return static_cast<std::size_t>(std::clamp(std::round(metres / cell_size), 0.0, cells - 1.0));
        };
        auto const column = nearest(motion.position.x - grid.first_middle.x, grid.columns);
        auto const row = nearest(motion.position.z - grid.first_middle.z, grid.rows);
        auto const cell = grid.first + row * grid.columns + column;
        ++counts_[cell];
        counted_.push_back(cell);
    }
}

double DensityGrid::density(navigation::RegionIndex region, Point point) const {
    auto const& grid = grids_[region];
    double const x = std::clamp((point.x - grid.first_middle.x) / cell_size, 0.0, grid.columns - 2.0);
    double const z = std::clamp((point.z - grid.first_middle.z) / cell_size, 0.0, grid.rows - 2.0);
    auto const column = static_cast<std::size_t>(x);
    auto const row = static_cast<std::size_t>(z);
    double const right = x - static_cast<double>(column);
    double const down = z - static_cast<double>(row);
    auto const* const here = &counts_[grid.first + row * grid.columns + column];
    auto const* const below = here + grid.columns;
    double const persons =
        (1 - down) * ((1 - right) * here[0] + right * here[1]) + down * ((1 - right) * below[0] + right * below[1]);
    return persons / (cell_size * cell_size);
}

}  // namespace pedflux::engine
