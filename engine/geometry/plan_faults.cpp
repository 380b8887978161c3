#include "engine/geometry/plan_faults.h"

#include <pedflux/exception.h>

#include <algorithm>

namespace pedflux::engine {

namespace {

struct Edge {
    Segment segment;
    std::size_t ring = 0;
    std::size_t index = 0;
    std::size_t ring_size = 0;

    double low() const { return std::min(segment.from.x, segment.to.x); }
    double high() const { return std::max(segment.from.x, segment.to.x); }
};

void add_edges(std::vector<Edge>& edges, Ring const& ring, std::size_t number) {
    for (std::size_t i = 0; i < ring.size(); ++i)
        edges.push_back({{ring[i], ring[(i + 1) % ring.size()]}, number, i, ring.size()});
}

bool neighbours(Edge const& a, Edge const& b) {
    std::size_t const between = a.index < b.index ? b.index - a.index : a.index - b.index;
    return a.ring == b.ring && (between == 1 || between + 1 == a.ring_size);
}

int side(double area) { return (area > 0) - (area < 0); }

bool on_segment(Segment segment, Point point) {
    return orientation(segment.from, segment.to, point) == 0 && dot(segment.from - point, segment.to - point) <= 0;
}

Point crossing_point(Segment a, Segment b) {
    double const from = orientation(b.from, b.to, a.from);
    double const to = orientation(b.from, b.to, a.to);
    return at(a, from / (from - to));
}

bool cross_properly(Segment a, Segment b) {
    return side(orientation(a.from, a.to, b.from)) * side(orientation(a.from, a.to, b.to)) < 0 &&
           side(orientation(b.from, b.to, a.from)) * side(orientation(b.from, b.to, a.to)) < 0;
}

/// A point that both segments share, empty when they are apart.
std::optional<Point> shared_point(Segment a, Segment b) {
    if (cross_properly(a, b)) return crossing_point(a, b);
    for (Point const end : {b.from, b.to})
        if (on_segment(a, end)) return end;
    for (Point const end : {a.from, a.to})
        if (on_segment(b, end)) return end;
    return std::nullopt;
}

/// Two edges in line with more than a point in common.
bool overlap(Segment a, Segment b) {
    if (orientation(a.from, a.to, b.from) != 0 || orientation(a.from, a.to, b.to) != 0) return false;
    Point const along = a.to - a.from;
    double const first = dot(b.from - a.from, along);
    double const second = dot(b.to - a.from, along);
    return std::max(first, second) > 0 && std::min(first, second) < dot(along, along);
}

/// Calls `check(a, b)` for pairs of edges whose x ranges meet until it returns something.
template <class Check>
std::optional<std::string> first_of_pairs(std::vector<Edge> edges, Check check) {
    std::stable_sort(edges.begin(), edges.end(), [](Edge const& a, Edge const& b) { return a.low() < b.low(); });
    for (std::size_t i = 0; i < edges.size(); ++i)
        for (std::size_t j = i + 1; j < edges.size() && edges[j].low() <= edges[i].high(); ++j)
            if (auto fault = check(edges[i], edges[j])) return fault;
    return std::nullopt;
}

std::optional<std::string> self_contact(Edge const& a, Edge const& b) {
    if (neighbours(a, b)) {
        if (a.ring_size > 2 && overlap(a.segment, b.segment))
            return "the boundary runs back over itself near " +
                   text_of(a.segment.to == b.segment.from ? a.segment.to : a.segment.from);
        return std::nullopt;
    }
    if (auto const point = shared_point(a.segment, b.segment))
        return "the boundary crosses or touches itself at " + text_of(*point);
    return std::nullopt;
}

std::optional<std::string> ring_contact(Edge const& a, Edge const& b) {
    if (a.ring == b.ring) return std::nullopt;
    if (cross_properly(a.segment, b.segment))
        return "two boundaries cross at " + text_of(crossing_point(a.segment, b.segment));
    if (overlap(a.segment, b.segment)) return "two boundaries run along each other at " + text_of(a.segment.from);
    return std::nullopt;
}

}  // namespace

Ring closed_ring(std::vector<Point> const& corners) {
    if (corners.size() < 4)
        throw Exception("a ring has " + std::to_string(corners.size()) +
                        " corners; it needs at least three and the first one repeated at the end");
    if (!(corners.front() == corners.back()))
        throw Exception("a ring begins at " + text_of(corners.front()) + " and ends at " + text_of(corners.back()) +
                        "; it must end where it begins");
    return {corners.begin(), corners.end() - 1};
}

std::optional<std::string> fault_of(Ring const& ring) {
    if (ring.size() < 3) return "a boundary has " + std::to_string(ring.size()) + " corners; it needs at least three";
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (!is_finite(ring[i])) return "corner " + std::to_string(i) + " of a boundary is not a finite number";
        if (ring[i] == ring[(i + 1) % ring.size()])
            return "the boundary has the corner " + text_of(ring[i]) + " twice in a row";
    }
    std::vector<Edge> edges;
    add_edges(edges, ring, 0);
    if (auto fault = first_of_pairs(edges, self_contact)) return fault;
    if (signed_area(ring) == 0) return "the boundary that begins at " + text_of(ring[0]) + " encloses no area";
    return std::nullopt;
}

std::optional<std::string> fault_of(Polygon const& polygon) {
    if (auto fault = fault_of(polygon.outline)) return fault;
    std::vector<Edge> edges;
    add_edges(edges, polygon.outline, 0);
    for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
        if (auto fault = fault_of(polygon.holes[i])) return "in hole " + std::to_string(i) + " " + *fault;
        add_edges(edges, polygon.holes[i], i + 1);
    }
    if (auto fault = first_of_pairs(edges, ring_contact)) return fault;
    Polygon const outline{polygon.outline, {}};
    for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
        Ring const& hole = polygon.holes[i];
        // A hole may touch the outline with a corner, not with the middle of an edge as well.
        Point const middle = at({hole[0], hole[1]}, 0.5);
        if (!contains(outline, middle))
            return "hole " + std::to_string(i) + ", which begins at " + text_of(hole[0]) + ", lies outside the outline";
        for (std::size_t other = 0; other < i; ++other)
            if (contains(Polygon{polygon.holes[other], {}}, middle) ||
                contains(Polygon{hole, {}}, at({polygon.holes[other][0], polygon.holes[other][1]}, 0.5)))
                return "hole " + std::to_string(i) + ", which begins at " + text_of(hole[0]) + ", lies in hole " +
                       std::to_string(other) + " or around it";
    }
    return std::nullopt;
}

}  // namespace pedflux::engine
