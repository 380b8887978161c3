#include "engine/geometry/triangulation.h"

#include "engine/geometry/checks.h"
#include "engine/geometry/exact.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <unordered_map>

namespace pedflux::engine {

namespace {

using Triangle = std::array<int, 3>;

std::size_t index_of(int corner) { return static_cast<std::size_t>(corner); }

// ---- Is it simple?

bool within(double value, double a, double b) { return std::min(a, b) <= value && value <= std::max(a, b); }

bool on_segment(Segment segment, Point point) {
    return exact_orientation(segment.from, segment.to, point) == 0 && within(point.x, segment.from.x, segment.to.x) &&
           within(point.z, segment.from.z, segment.to.z);
}

bool meet(Segment a, Segment b) {
    int const b_from = exact_orientation(a.from, a.to, b.from);
    int const b_to = exact_orientation(a.from, a.to, b.to);
    int const a_from = exact_orientation(b.from, b.to, a.from);
    int const a_to = exact_orientation(b.from, b.to, a.to);
    if (b_from * b_to < 0 && a_from * a_to < 0) return true;
    return on_segment(a, b.from) || on_segment(a, b.to) || on_segment(b, a.from) || on_segment(b, a.to);
}

Segment edge(Ring const& ring, std::size_t index) { return {ring[index], ring[(index + 1) % ring.size()]}; }

std::string edge_text(Ring const& ring, std::size_t index) {
    Segment const segment = edge(ring, index);
    return "edge " + std::to_string(index) + " from " + text_of(segment.from) + " to " + text_of(segment.to);
}

[[noreturn]] void refuse_meeting(Ring const& ring, std::size_t a, std::size_t b) {
    refuse("polygon: " + edge_text(ring, std::min(a, b)) + " meets " + edge_text(ring, std::max(a, b)) +
           "; the boundary must not cross or touch itself");
}

/// Two neighbouring edges of which one runs back over the other.
bool folds_back(Point before, Point corner, Point after) {
    return exact_orientation(before, corner, after) == 0 && dot(before - corner, after - corner) > 0;
}

// ---- Ears

/// The corners not cut off yet, as a circular list.
class EarClipper {
  public:
    explicit EarClipper(Ring const& ring) : ring_(ring), before_(ring.size()), after_(ring.size()) {
        std::iota(after_.begin(), after_.end(), 1);
        after_.back() = 0;
        std::iota(before_.begin(), before_.end(), -1);
        before_.front() = static_cast<int>(ring.size()) - 1;
        direction_ = direction_of_ring();
    }

    /// A polygon with more than three corners has two ears (Meisters: "Polygons have ears", 1975), and all tests here
    /// are exact, so the search for the next ear always ends.
    std::vector<Triangle> clip() {
        std::vector<Triangle> triangles;
        triangles.reserve(ring_.size() - 2);
        int corner = 0;
        while (triangles.size() + 3 < ring_.size()) {
            while (!is_ear(corner)) corner = after(corner);
            triangles.push_back({before(corner), corner, after(corner)});
            after_[index_of(before(corner))] = after(corner);
            before_[index_of(after(corner))] = before(corner);
            // Going on from the second next one keeps the triangles from fanning out around one corner.
            corner = after(after(corner));
        }
        triangles.push_back({before(corner), corner, after(corner)});
        return triangles;
    }

    int direction() const { return direction_; }

  private:
    int before(int corner) const { return before_[index_of(corner)]; }
    int after(int corner) const { return after_[index_of(corner)]; }
    Point point(int corner) const { return ring_[index_of(corner)]; }

    /// 1 when the ring runs counter-clockwise: it turns that way at its least corner, which no edge goes around.
    int direction_of_ring() const {
        auto const least = std::min_element(ring_.begin(), ring_.end(),
                                            [](Point a, Point b) { return a.x != b.x ? a.x < b.x : a.z < b.z; });
        int const corner = static_cast<int>(least - ring_.begin());
        return exact_orientation(point(before(corner)), *least, point(after(corner)));
    }

    bool is_convex(int corner) const {
        return exact_orientation(point(before(corner)), point(corner), point(after(corner))) == direction_;
    }

    bool is_ear(int corner) const {
        if (!is_convex(corner)) return false;
        Point const a = point(before(corner));
        Point const b = point(corner);
        Point const c = point(after(corner));
        auto const covers = [this, a, b, c, x_range = std::minmax({a.x, b.x, c.x}),
                             z_range = std::minmax({a.z, b.z, c.z})](Point p) {
            return p.x >= x_range.first && p.x <= x_range.second && p.z >= z_range.first && p.z <= z_range.second &&
                   exact_orientation(a, b, p) != -direction_ && exact_orientation(b, c, p) != -direction_ &&
                   exact_orientation(c, a, p) != -direction_;
        };
        // If any corner lies in the triangle, one that is not convex does.
        for (int other = after(after(corner)); other != before(corner); other = after(other))
            if (covers(point(other)) && !is_convex(other)) return false;
        return true;
    }

    Ring const& ring_;
    std::vector<int> before_;
    std::vector<int> after_;
    int direction_ = 0;
};

// ---- Flips

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

void require_simple(Ring const& ring) {
    std::size_t const count = ring.size();
    if (count < 3) refuse("polygon has " + std::to_string(count) + " corners; it must have at least three");
    for (std::size_t i = 0; i < count; ++i)
        if (ring[i] == ring[(i + 1) % count])
            refuse("polygon: corner " + std::to_string((i + 1) % count) + " repeats corner " + std::to_string(i) +
                   " at " + text_of(ring[i]) + "; neighbouring corners must differ");
    for (std::size_t i = 0; i < count; ++i)
        if (folds_back(ring[i], ring[(i + 1) % count], ring[(i + 2) % count])) refuse_meeting(ring, i, (i + 1) % count);

    auto const left = [&ring](std::size_t i) { return std::min(edge(ring, i).from.x, edge(ring, i).to.x); };
    auto const right = [&ring](std::size_t i) { return std::max(edge(ring, i).from.x, edge(ring, i).to.x); };
    auto const are_neighbours = [count](std::size_t i, std::size_t j) {
        return (i + 1) % count == j || (j + 1) % count == i;
    };
    std::vector<std::size_t> sweep(count);
    std::iota(sweep.begin(), sweep.end(), 0);
    std::stable_sort(sweep.begin(), sweep.end(), [&left](std::size_t i, std::size_t j) { return left(i) < left(j); });
    for (auto i = sweep.begin(); i != sweep.end(); ++i)
        for (auto j = i + 1; j != sweep.end() && left(*j) <= right(*i); ++j)
            if (!are_neighbours(*i, *j) && meet(edge(ring, *i), edge(ring, *j))) refuse_meeting(ring, *i, *j);
}

std::vector<std::array<int, 3>> triangulate(Ring const& ring) {
    EarClipper clipper(ring);
    auto ears = clipper.clip();
    return DelaunayFlipper(ring, clipper.direction(), std::move(ears)).flip();
}

}  // namespace pedflux::engine
