#pragma once

#include "engine/base/lists.h"
#include "engine/geometry/uniform_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace pedflux::engine::navigation {

/// Items by the cells that their bounds meet, in ascending order within a cell.
class Cells {
  public:
    Cells() = default;

    /// About as many cells as items.
    explicit Cells(std::vector<Bounds> const& items) {
        Bounds all;
        for (Bounds const& item : items) {
            all.cover(item.low);
            all.cover(item.high);
        }
        if (all.empty()) return;
        Point const size = all.high - all.low;
        double const longest = std::max({size.x, size.z, 1e-3});
        auto const count = static_cast<double>(items.size());
        // No more than `count` cells along a side, however narrow the area is.
        grid_ = grid_over(all, std::max(std::sqrt(size.x * size.z / count), longest / count));
        std::vector<std::pair<std::uint32_t, std::uint32_t>> item_of_cell;
        for (std::uint32_t i = 0; i < items.size(); ++i)
            grid_.for_cells(items[i], [&](std::uint32_t column, std::uint32_t row) {
                item_of_cell.emplace_back(static_cast<std::uint32_t>(grid_.cell(column, row)), i);
            });
        items_ = grouped(grid_.cell_count(), item_of_cell);
    }

    /// The items whose bounds may contain the point.
    std::span<std::uint32_t const> at(Point point) const {
        if (grid_.columns == 0) return {};
        return items_[grid_.cell_of(point)];
    }

    /// Calls `visit(item)` for everything that may be within `radius` of the point, some items more than once, from the
    /// point's cell outwards. `visit` returns the radius that is still of interest.
    template <class Visit>
    void around(Point point, double radius, Visit visit) const {
        if (grid_.columns == 0) return;
        std::int64_t const centre_column = grid_.column_of(point.x);
        std::int64_t const centre_row = grid_.row_of(point.z);
        std::int64_t const columns = grid_.columns;
        std::int64_t const rows = grid_.rows;
        // The items of ring n are at least n - 1 cells away, apart from the distance of the point to the grid.
        for (std::int64_t ring = 0; ring < std::max(columns, rows); ++ring) {
            if (static_cast<double>(ring - 1) * grid_.width > radius) break;
            for (std::int64_t row = std::max<std::int64_t>(centre_row - ring, 0);
                 row <= std::min(centre_row + ring, rows - 1); ++row) {
                bool const whole_row = row == centre_row - ring || row == centre_row + ring;
                for (std::int64_t column = centre_column - ring; column <= centre_column + ring;
                     column += whole_row || ring == 0 ? 1 : 2 * ring) {
                    if (column < 0 || column >= columns) continue;
                    for (std::uint32_t const item : items_[static_cast<std::size_t>(column + columns * row)])
                        radius = visit(item);
                }
            }
        }
    }

  private:
    UniformGrid grid_;
    Lists<std::uint32_t> items_;
};

}  // namespace pedflux::engine::navigation
