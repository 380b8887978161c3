#pragma once

#include "engine/crowd/bodies.h"

namespace pedflux::engine::crowd {

/// Calls visit(first, last) for the ranges of bodies that contain everybody within one cell width of a position: three
/// rows of its own region, and of adjoining regions near crossings.
///
/// The innermost loop of a step. It asks for whole rows of cells at once, since the bodies of neighbouring cells of a
/// row follow each other in memory, and does without the clamping of UniformGrid.
template <typename Visit>
void for_neighbours(Scene const& scene, std::uint32_t region, std::uint32_t cell, double x, double z,
                    Visit const& visit) {
    Surfaces const& surfaces = scene.surfaces;
    auto const visit_grid = [&](RegionGrid const& grid) {
        auto const column = static_cast<std::int64_t>((x - grid.corner.x) / grid.width + 1) - 1;
        auto const row = static_cast<std::int64_t>((z - grid.corner.z) / grid.width + 1) - 1;
        std::int64_t const first_column = column > 0 ? column - 1 : 0;
        std::int64_t const last_column = column + 1 < grid.columns ? column + 1 : grid.columns - 1;
        std::int64_t const last_row = row + 1 < grid.rows ? row + 1 : grid.rows - 1;
        if (first_column > last_column) return;
        for (std::int64_t at = row > 0 ? row - 1 : 0; at <= last_row; ++at) {
            auto const line = static_cast<std::size_t>(grid.first_cell + at * grid.columns);
            std::uint32_t const first = scene.bodies.cell_start[line + static_cast<std::size_t>(first_column)];
            std::uint32_t const last = scene.bodies.cell_start[line + static_cast<std::size_t>(last_column) + 1];
            if (first < last) visit(first, last);
        }
    };
    visit_grid(surfaces.grids[region]);
    for (std::uint32_t const other : surfaces.neighbours_of[cell]) visit_grid(surfaces.grids[other]);
}

}  // namespace pedflux::engine::crowd
