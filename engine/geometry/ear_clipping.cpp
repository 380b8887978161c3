#include "engine/geometry/ear_clipping.h"

#include "engine/geometry/exact.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace pedflux::engine {

namespace {

std::size_t index_of(int corner) { return static_cast<std::size_t>(corner); }

/// A rectangle along the axes.
struct Extent {
    Point low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    void add(Point point) {
        low = {std::min(low.x, point.x), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.z, point.z)};
    }
    bool holds(Point p) const { return p.x >= low.x && p.x <= high.x && p.z >= low.z && p.z <= high.z; }
};

/// Some corners of a ring by the square of the plan that they lie in.
class CornerGrid {
  public:
    CornerGrid(Ring const& ring, std::vector<int> const& corners) {
        for (Point const corner : ring) extent_.add(corner);
        Point const size = extent_.high - extent_.low;
        auto const wanted = static_cast<double>(corners.size() + 1);
        // About one corner to a cell; cells are counted as doubles first, since a strip may be of any proportions.
        width_ = std::max(std::sqrt(size.x * size.z / wanted), std::max(size.x, size.z) / wanted);
        columns_ = column(extent_.high.x) + 1;
        cells_.resize(columns_ * (row(extent_.high.z) + 1));
        for (int const corner : corners) {
            Point const p = ring[index_of(corner)];
            cells_[row(p.z) * columns_ + column(p.x)].push_back(corner);
        }
    }

    /// Whether `test` is true of a corner in a cell that the extent, which lies within the ring's, touches.
    template <class Test>
    bool any_near(Extent const& extent, Test test) const {
        for (std::size_t z = row(extent.low.z); z <= row(extent.high.z); ++z)
            for (std::size_t x = column(extent.low.x); x <= column(extent.high.x); ++x) {
                auto const& cell = cells_[z * columns_ + x];
                if (std::any_of(cell.begin(), cell.end(), test)) return true;
            }
        return false;
    }

  private:
    std::size_t column(double x) const { return static_cast<std::size_t>((x - extent_.low.x) / width_); }
    std::size_t row(double z) const { return static_cast<std::size_t>((z - extent_.low.z) / width_); }

    Extent extent_;
    double width_ = 0;
    std::size_t columns_ = 0;
    std::vector<std::vector<int>> cells_;
};

class EarClipper {
  public:
    explicit EarClipper(Ring const& ring)
        : ring_(ring),
          direction_(direction_of(ring)),
          before_(ring.size()),
          after_(ring.size()),
          place_in_queue_(ring.size()),
          grid_(ring, link_and_find_others()) {
        for (int corner = 0; index_of(corner) < ring.size(); ++corner) enqueue(corner);
    }

    /// A polygon with more than three corners has two ears (Meisters: "Polygons have ears", 1975). Cutting one off
    /// leaves a corner that was no ear as it was, unless it is a neighbour (O'Rourke: "Computational Geometry in C",
    /// 1998, 1.6), so that a corner waits for its turn once at first and once more each time it lost a neighbour. As
    /// all decisions are exact, the queue cannot run out early. A corner that lost a neighbour goes to the end, which
    /// keeps the triangles from fanning out around one corner.
    std::vector<std::array<int, 3>> clip() {
        std::vector<std::array<int, 3>> triangles;
        triangles.reserve(ring_.size() - 2);
        for (std::size_t turn = 0; triangles.size() + 2 < ring_.size(); ++turn) {
            int const corner = queue_.at(turn);
            if (place_in_queue_[index_of(corner)] != turn || !is_ear(corner)) continue;
            int const before = before_[index_of(corner)];
            int const after = after_[index_of(corner)];
            triangles.push_back({before, corner, after});
            place_in_queue_[index_of(corner)] = removed;
            after_[index_of(before)] = after;
            before_[index_of(after)] = before;
            enqueue(before);
            enqueue(after);
        }
        return triangles;
    }

  private:
    static constexpr std::size_t removed = std::numeric_limits<std::size_t>::max();

    Point point(int corner) const { return ring_[index_of(corner)]; }

    void enqueue(int corner) {
        place_in_queue_[index_of(corner)] = queue_.size();
        queue_.push_back(corner);
    }

    /// Joins the corners into a circle, and returns those that are not convex. No other ever ceases to be convex.
    std::vector<int> link_and_find_others() {
        std::iota(after_.begin(), after_.end(), 1);
        after_.back() = 0;
        std::iota(before_.begin(), before_.end(), -1);
        before_.front() = static_cast<int>(ring_.size()) - 1;
        std::vector<int> others;
        for (int corner = 0; index_of(corner) < ring_.size(); ++corner)
            if (!is_convex(corner)) others.push_back(corner);
        return others;
    }

    bool is_convex(int corner) const {
        return exact_orientation(point(before_[index_of(corner)]), point(corner), point(after_[index_of(corner)])) ==
               direction_;
    }

    /// Convex, and no other corner in or on its triangle. If any lies there, one that is not convex does.
    bool is_ear(int corner) const {
        if (!is_convex(corner)) return false;
        int const before = before_[index_of(corner)];
        int const after = after_[index_of(corner)];
        Point const a = point(before);
        Point const b = point(corner);
        Point const c = point(after);
        Extent extent;
        for (Point const p : {a, b, c}) extent.add(p);
        return !grid_.any_near(extent, [&](int other) {
            Point const p = point(other);
            return extent.holds(p) && other != before && other != after && other != corner &&
                   place_in_queue_[index_of(other)] != removed && exact_orientation(a, b, p) != -direction_ &&
                   exact_orientation(b, c, p) != -direction_ && exact_orientation(c, a, p) != -direction_ &&
                   !is_convex(other);
        });
    }

    Ring const& ring_;
    int direction_;
    std::vector<int> before_;
    std::vector<int> after_;
    std::vector<std::size_t> place_in_queue_;  ///< the latest; earlier ones are void
    std::vector<int> queue_;
    CornerGrid grid_;
};

}  // namespace

int direction_of(Ring const& ring) {
    // No edge goes around the least corner.
    auto const least =
        std::min_element(ring.begin(), ring.end(), [](Point a, Point b) { return a.x != b.x ? a.x < b.x : a.z < b.z; });
    auto const corner = static_cast<std::size_t>(least - ring.begin());
    return exact_orientation(ring[(corner + ring.size() - 1) % ring.size()], *least, ring[(corner + 1) % ring.size()]);
}

std::vector<std::array<int, 3>> clip_ears(Ring const& ring) { return EarClipper(ring).clip(); }

}  // namespace pedflux::engine
