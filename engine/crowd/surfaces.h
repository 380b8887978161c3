#pragma once

#include "engine/base/lists.h"
#include "engine/crowd/floor_plan.h"
#include "engine/geometry/uniform_grid.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pedflux::engine::crowd {

/// The grid of one region, which covers its walls and crossings, among the cells of all regions.
struct RegionGrid : UniformGrid {
    std::uint32_t first_cell = 0;
};

/// The floor plan prepared for stepping: cells of one sight length, each with the walls, crossings and adjoining
/// regions within reach. Coordinates are relative to `origin`, so that single precision holds them to a tenth of a
/// millimetre.
struct Surfaces {
    /// @param reach width of a cell, and the distance up to which a cell lists walls and crossings (metres)
    Surfaces(FloorPlan const& plan, double reach);

    std::uint32_t cell_count() const { return static_cast<std::uint32_t>(walls_of.count()); }
    /// The cell that contains the point or, outside the grid, the nearest one.
    std::uint32_t cell_of(std::uint32_t region, double x, double z) const {
        RegionGrid const& grid = grids[region];
        return grid.first_cell + static_cast<std::uint32_t>(grid.UniformGrid::cell_of({x, z}));
    }
    std::uint32_t wall_number(std::uint32_t region, std::size_t wall) const;

    double reach;
    Point origin;
    std::vector<RegionGrid> grids;
    std::vector<Segment> walls;
    /// Not a vector of bool, since several threads read it in every step.
    std::vector<std::uint8_t> wall_open;
    std::vector<std::uint32_t> first_wall;
    std::vector<Crossing> crossings;
    Lists<std::uint32_t> walls_of;
    Lists<std::uint32_t> crossings_of;
    Lists<std::uint32_t> neighbours_of;
};

}  // namespace pedflux::engine::crowd
