#pragma once

#include "engine/crowd/bodies.h"

#include <cstddef>

namespace pedflux::engine::crowd {

/// Sorts all agents by cell: a counting sort that fills cell_start and source. Within a cell the order is that of the
/// indices.
void sort_by_cell(Scene& scene);

/// Sorts the agents within each of the cells first to last by position, which makes the order independent of the
/// indices, and copies the data that neighbours read.
void fill_bodies(Scene& scene, std::size_t first_cell, std::size_t last_cell);

}  // namespace pedflux::engine::crowd
