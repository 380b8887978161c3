#pragma once

#include "engine/geometry/plane.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

/// Square cells of the plane, by which points and shapes are found. UniformGrid numbers the cells of a rectangle, for
/// data that is stored by cell; SparseGrid stores items in the cells where there are any.
namespace pedflux::engine {

/// Cells numbered row by row, from the corner with the least x and z.
struct UniformGrid {
    Point corner;
    double width = 1;  ///< of a cell, in metres
    std::uint32_t columns = 0;
    std::uint32_t rows = 0;

    std::size_t cell_count() const { return std::size_t{columns} * rows; }

    /// Points beside the grid belong to the nearest cell.
    std::uint32_t column_of(double x) const { return cell_along(x - corner.x, columns); }
    std::uint32_t row_of(double z) const { return cell_along(z - corner.z, rows); }
    std::size_t cell(std::uint32_t column, std::uint32_t row) const { return column + std::size_t{columns} * row; }
    std::size_t cell_of(Point point) const { return cell(column_of(point.x), row_of(point.z)); }
    Point centre(std::uint32_t column, std::uint32_t row) const {
        return corner + Point{(column + 0.5) * width, (row + 0.5) * width};
    }

    /// Calls visit(column, row) for all cells that the bounds meet, row by row.
    template <class Visit>
    void for_cells(Bounds const& bounds, Visit visit) const {
        for (std::uint32_t row = row_of(bounds.low.z); row <= row_of(bounds.high.z); ++row)
            for (std::uint32_t column = column_of(bounds.low.x); column <= column_of(bounds.high.x); ++column)
                visit(column, row);
    }

  private:
    std::uint32_t cell_along(double offset, std::uint32_t count) const {
        return static_cast<std::uint32_t>(std::clamp(offset / width, 0.0, static_cast<double>(count - 1)));
    }
};

/// The grid over bounds that are not empty.
inline UniformGrid grid_over(Bounds const& bounds, double width) {
    auto const cells = [width](double length) { return static_cast<std::uint32_t>(length / width) + 1; };
    Point const size = bounds.high - bounds.low;
    return {bounds.low, width, cells(size.x), cells(size.z)};
}

/// Items by the cell of their position, for a plane without bounds.
template <class Item>
class SparseGrid {
  public:
    explicit SparseGrid(double width) : width_(width) {}

    void add(Point position, Item const& item) {
        cells_[key_of(cell_along(position.x), cell_along(position.z))].push_back(item);
    }

    /// Whether test(item) holds for an item whose position may be within reach.
    template <class Test>
    bool any_near(Point position, double reach, Test test) const {
        for (auto column = cell_along(position.x - reach); column <= cell_along(position.x + reach); ++column)
            for (auto row = cell_along(position.z - reach); row <= cell_along(position.z + reach); ++row) {
                auto const cell = cells_.find(key_of(column, row));
                if (cell != cells_.end() && std::any_of(cell->second.begin(), cell->second.end(), test)) return true;
            }
        return false;
    }

  private:
    std::int64_t cell_along(double coordinate) const {
        return static_cast<std::int64_t>(std::floor(coordinate / width_));
    }
    static std::uint64_t key_of(std::int64_t column, std::int64_t row) {
        return static_cast<std::uint64_t>(column) << 32 | static_cast<std::uint32_t>(row);
    }

    double width_;
    std::unordered_map<std::uint64_t, std::vector<Item>> cells_;
};

}  // namespace pedflux::engine
