#include "engine/geometry/simple_ring.h"

#include "engine/base/checks.h"
#include "engine/geometry/exact.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

bool within(double value, double a, double b) { return std::min(a, b) <= value && value <= std::max(a, b); }

bool on_segment(Segment segment, Point point) {
    return exact_orientation(segment.from, segment.to, point) == 0 && within(point.x, segment.from.x, segment.to.x) &&
           within(point.z, segment.from.z, segment.to.z);
}

/// Whether the ranges of z overlap.
bool are_level(Segment a, Segment b) {
    return std::max(a.from.z, a.to.z) >= std::min(b.from.z, b.to.z) &&
           std::max(b.from.z, b.to.z) >= std::min(a.from.z, a.to.z);
}

bool meet(Segment a, Segment b) {
    if (!are_level(a, b)) return false;
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
    return fmt::format("edge {} from {} to {}", index, text_of(segment.from), text_of(segment.to));
}

[[noreturn]] void refuse_meeting(Ring const& ring, std::size_t a, std::size_t b) {
    refuse(fmt::format("polygon: {} meets {}; the boundary must not cross or touch itself",
                       edge_text(ring, std::min(a, b)), edge_text(ring, std::max(a, b))));
}

/// Whether the second of two neighbouring edges runs back over the first.
bool folds_back(Point before, Point corner, Point after) {
    return exact_orientation(before, corner, after) == 0 && dot(before - corner, after - corner) > 0;
}

}  // namespace

void require_simple(Ring const& ring) {
    std::size_t const count = ring.size();
    if (count < 3) refuse(fmt::format("polygon has {} corners; it must have at least three", count));
    for (std::size_t i = 0; i < count; ++i)
        if (ring[i] == ring[(i + 1) % count])
            refuse(fmt::format("polygon: corner {} repeats corner {} at {}; neighbouring corners must differ",
                               (i + 1) % count, i, text_of(ring[i])));
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

}  // namespace pedflux::engine
