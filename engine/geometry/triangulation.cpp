#include "engine/geometry/triangulation.h"

#include "engine/geometry/ear_clipping.h"
#include "engine/geometry/exact.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>

namespace pedflux::engine {

namespace {

using Triangle = std::array<int, 3>;

std::size_t index_of(int corner) { return static_cast<std::size_t>(corner); }

/// A side of a triangle: the one from its corner `side` to the next.
struct Side {
    int triangle = 0;
    int side = 0;
};

int next(int side) { return (side + 1) % 3; }
int previous(int side) { return (side + 2) % 3; }

/// Flips inner edges until each is locally Delaunay (Lawson: "Software for C1 surface interpolation", 1977). That
/// takes the slivers away that ears leave along nearly straight boundaries.
class DelaunayFlipper {
  public:
    DelaunayFlipper(Ring const& ring, int direction, std::vector<Triangle> triangles)
        : ring_(ring), direction_(direction), triangles_(std::move(triangles)), neighbours_(triangles_.size()) {
        connect();
    }

    std::vector<Triangle> flip() {
        std::vector<Side> pending;
        for (int triangle = 0; index_of(triangle) < triangles_.size(); ++triangle)
            for (int side = 0; side < 3; ++side) pending.push_back({triangle, side});
        // Every flip improves the worst angles, so there is an end; rounding must not take it away.
        std::size_t flips_left = ring_.size() * ring_.size();
        while (!pending.empty() && flips_left > 0) {
            Side const side = pending.back();
            pending.pop_back();
            auto const opposite = neighbour(side);
            if (!opposite || !should_flip(side, *opposite)) continue;
            flip_edge(side, *opposite);
            --flips_left;
            for (int i = 0; i < 3; ++i) {
                pending.push_back({side.triangle, i});
                pending.push_back({opposite->triangle, i});
            }
        }
        return std::move(triangles_);
    }

  private:
    int corner(Side side) const { return triangles_[index_of(side.triangle)][index_of(side.side)]; }
    int corner_after(Side side) const { return corner({side.triangle, next(side.side)}); }
    int corner_across(Side side) const { return corner({side.triangle, previous(side.side)}); }
    Point point(int corner) const { return ring_[index_of(corner)]; }
    std::optional<Side>& neighbour(Side side) { return neighbours_[index_of(side.triangle)][index_of(side.side)]; }

    void join(Side a, std::optional<Side> b) {
        neighbour(a) = b;
        if (b) neighbour(*b) = a;
    }

    void connect() {
        std::unordered_map<std::uint64_t, Side> waiting;
        auto const key = [](int from, int to) {
            return static_cast<std::uint64_t>(from) << 32 | static_cast<std::uint64_t>(to);
        };
        for (int triangle = 0; index_of(triangle) < triangles_.size(); ++triangle)
            for (int i = 0; i < 3; ++i) {
                Side const side{triangle, i};
                auto const twin = waiting.find(key(corner_after(side), corner(side)));
                if (twin != waiting.end())
                    join(side, twin->second);
                else
                    waiting.emplace(key(corner(side), corner_after(side)), side);
            }
    }

    /// Of the angle across the side.
    double cotangent(Side side) const {
        Point const a = point(corner(side)) - point(corner_across(side));
        Point const b = point(corner_after(side)) - point(corner_across(side));
        return dot(a, b) / std::abs(cross(a, b));
    }

    bool should_flip(Side side, Side opposite) const {
        // The angles across an edge that is not Delaunay sum up to more than 180 degrees.
        if (!(cotangent(side) + cotangent(opposite) < -1e-9)) return false;
        Point const from = point(corner(side));
        Point const to = point(corner_after(side));
        Point const here = point(corner_across(side));
        Point const there = point(corner_across(opposite));
        return exact_orientation(from, there, here) == direction_ && exact_orientation(there, to, here) == direction_;
    }

    /// (from, to, here) and (to, from, there) become (from, there, here) and (there, to, here).
    void flip_edge(Side side, Side opposite) {
        int const from = corner(side);
        int const to = corner_after(side);
        int const here = corner_across(side);
        int const there = corner_across(opposite);
        auto const to_here = neighbour({side.triangle, next(side.side)});
        auto const here_from = neighbour({side.triangle, previous(side.side)});
        auto const from_there = neighbour({opposite.triangle, next(opposite.side)});
        auto const there_to = neighbour({opposite.triangle, previous(opposite.side)});
        triangles_[index_of(side.triangle)] = {from, there, here};
        triangles_[index_of(opposite.triangle)] = {there, to, here};
        join({side.triangle, 0}, from_there);
        join({side.triangle, 1}, Side{opposite.triangle, 2});
        join({side.triangle, 2}, here_from);
        join({opposite.triangle, 0}, there_to);
        join({opposite.triangle, 1}, to_here);
    }

    Ring const& ring_;
    int direction_;
    std::vector<Triangle> triangles_;
    std::vector<std::array<std::optional<Side>, 3>> neighbours_;
};

}  // namespace

std::vector<std::array<int, 3>> triangulate(Ring const& ring) {
    return DelaunayFlipper(ring, direction_of(ring), clip_ears(ring)).flip();
}

}  // namespace pedflux::engine
