#pragma once

#include "engine/crowd/floor_plan.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace pedflux::engine::crowd {

/// Elements of all cells in one array: those of cell c stand from start[c] to start[c + 1].
struct CellLists {
    std::vector<std::uint32_t> start;
    std::vector<std::uint32_t> items;

    std::span<std::uint32_t const> of(std::uint32_t cell) const {
        return {items.data() + start[cell], items.data() + start[cell + 1]};
    }
};

/// The grid of one region, which covers its walls and crossings. Cells are numbered row by row from `first_cell`.
struct CellGrid {
    Point corner;
    std::uint32_t columns = 1;
    std::uint32_t rows = 1;
    std::uint32_t first_cell = 0;
};

/// The floor plan prepared for stepping: cells of one sight length, each with the walls, crossings and adjoining
/// regions within reach. Coordinates are relative to `origin`, so that single precision holds them to a tenth of a
/// millimetre.
struct Surfaces {
    /// @param reach width of a cell, and the distance up to which a cell lists walls and crossings (metres)
    Surfaces(FloorPlan const& plan, double reach);

    std::uint32_t cell_count() const { return static_cast<std::uint32_t>(walls_of.start.size() - 1); }
    /// The cell that contains the point or, outside the grid, the nearest one.
    std::uint32_t cell_of(std::uint32_t region, double x, double z) const;
    std::uint32_t wall_number(std::uint32_t region, std::size_t wall) const;

    double reach;
    Point origin;
    std::vector<CellGrid> grids;
    std::vector<Segment> walls;
    /// Not a vector of bool, since several threads read it in every step.
    std::vector<std::uint8_t> wall_open;
    std::vector<std::uint32_t> first_wall;
    std::vector<Crossing> crossings;
    CellLists walls_of;
    CellLists crossings_of;
    CellLists neighbours_of;
};

}  // namespace pedflux::engine::crowd
