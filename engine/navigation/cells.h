#pragma once

#include "engine/geometry/plane.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace pedflux::engine::navigation {

/// A rectangle of the plan.
struct Extent {
    Point low{1e300, 1e300};
    Point high{-1e300, -1e300};

    void cover(Point point) {
        low = {std::min(low.x, point.x), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.z, point.z)};
    }
    bool empty() const { return low.x > high.x; }
};

/// Square cells over a plan, each with the numbers of the things whose extent meets it, in ascending order.
class Cells {
  public:
    Cells() = default;

    /// About as many cells as things.
    explicit Cells(std::vector<Extent> const& things) {
        for (Extent const& thing : things) {
            extent_.cover(thing.low);
            extent_.cover(thing.high);
        }
        if (extent_.empty()) return;
        Point const size = extent_.high - extent_.low;
        double const longest = std::max({size.x, size.z, 1e-3});
        double const count = static_cast<double>(std::max<std::size_t>(things.size(), 1));
        // No more than `count` cells along a side, however thin the plan is.
        cell_ = std::max(std::sqrt(size.x * size.z / count), longest / count);
        columns_ = static_cast<std::size_t>(size.x / cell_) + 1;
        rows_ = static_cast<std::size_t>(size.z / cell_) + 1;
        begin_.assign(columns_ * rows_ + 1, 0);
        for (Extent const& thing : things) for_cells(thing, [this](std::size_t cell) { ++begin_[cell + 1]; });
        for (std::size_t i = 1; i < begin_.size(); ++i) begin_[i] += begin_[i - 1];
        things_.resize(begin_.back());
        std::vector<std::uint32_t> next(begin_.begin(), begin_.end() - 1);
        for (std::size_t i = 0; i < things.size(); ++i)
            for_cells(things[i], [&](std::size_t cell) { things_[next[cell]++] = static_cast<std::uint32_t>(i); });
    }

    /// The things whose extent may hold the point. Points outside are taken for the nearest inside.
    std::span<std::uint32_t const> at(Point point) const {
        if (columns_ == 0) return {};
        return in_cell(column(point.x) + columns_ * row(point.z));
    }

    /// Calls `visit(thing)` for everything that may be within `radius` of the point, some more than once, from the
    /// point's cell outwards. `visit` returns the radius that is still of interest.
    template <class Visit>
    void around(Point point, double radius, Visit visit) const {
        if (columns_ == 0) return;
        auto const centre_column = static_cast<std::ptrdiff_t>(column(point.x));
        auto const centre_row = static_cast<std::ptrdiff_t>(row(point.z));
        auto const columns = static_cast<std::ptrdiff_t>(columns_);
        auto const rows = static_cast<std::ptrdiff_t>(rows_);
        auto const last = std::max(columns, rows);
        // What lies in ring n of cells is at least n - 1 cells away, and the distance to the plan's extent besides.
        for (std::ptrdiff_t ring = 0; ring < last && static_cast<double>(ring - 1) * cell_ <= radius; ++ring)
            for (std::ptrdiff_t r = std::max<std::ptrdiff_t>(centre_row - ring, 0);
                 r <= std::min(centre_row + ring, rows - 1); ++r) {
                bool const whole_row = r == centre_row - ring || r == centre_row + ring;
                for (std::ptrdiff_t c = centre_column - ring; c <= centre_column + ring;
                     c += whole_row || ring == 0 ? 1 : 2 * ring) {
                    if (c < 0 || c >= columns) continue;
                    for (std::uint32_t const thing : in_cell(static_cast<std::size_t>(c + columns * r)))
                        radius = visit(thing);
                }
            }
    }

  private:
    std::span<std::uint32_t const> in_cell(std::size_t cell) const {
        return std::span(things_).subspan(begin_[cell], begin_[cell + 1] - begin_[cell]);
    }
    static std::size_t cell_of(double offset, double cell, std::size_t count) {
        return static_cast<std::size_t>(std::clamp(offset / cell, 0.0, static_cast<double>(count - 1)));
    }
    std::size_t column(double x) const { return cell_of(x - extent_.low.x, cell_, columns_); }
    std::size_t row(double z) const { return cell_of(z - extent_.low.z, cell_, rows_); }

    template <class Visit>
    void for_cells(Extent const& thing, Visit visit) const {
        for (std::size_t r = row(thing.low.z); r <= row(thing.high.z); ++r)
            for (std::size_t c = column(thing.low.x); c <= column(thing.high.x); ++c) visit(c + columns_ * r);
    }

    Extent extent_;
    double cell_ = 1;
    std::size_t columns_ = 0;
    std::size_t rows_ = 0;
    std::vector<std::uint32_t> begin_;
    std::vector<std::uint32_t> things_;
};

}  // namespace pedflux::engine::navigation
