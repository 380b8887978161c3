#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Sorts everybody by cell: fills cell_start and source, by counting. Within a cell the order is that of the numbers.
void sort_by_cell(Scene& scene);

/// Orders the people within each of the cells from first to last by their places, which do not depend on who was added
/// first, and copies what their neighbours read of them.
void fill_bodies(Scene& scene, std::size_t first_cell, std::size_t last_cell);

}  // namespace pedflux::engine::crowd
