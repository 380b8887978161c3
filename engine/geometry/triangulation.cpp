#include "engine/geometry/triangulation.h"

#include "engine/geometry/exact.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <numeric>
#include <optional>
#include <utility>

namespace pedflux::engine {

namespace {

constexpr std::uint32_t none = no_triangle;

/// 1 when a, b and c run counter-clockwise, -1 when they run clockwise, 0 when they are collinear; exact.
int side_of(Point a, Point b, Point c) { return exact_orientation(a, b, c); }
int side_of(LatticePoint a, LatticePoint b, LatticePoint c) {
    std::int64_t const turn = (b.x - a.x) * (c.z - a.z) - (b.z - a.z) * (c.x - a.x);
    return (turn > 0) - (turn < 0);
}

/// Whether b and c lie in the same direction from a; the three are collinear.
template <class Vertex>
bool towards(Vertex a, Vertex b, Vertex c) {
    return (b.x - a.x) * (c.x - a.x) + (b.z - a.z) * (c.z - a.z) > 0;
}

/// Whether d lies inside the circle through a, b and c by more than rounding. Keeping an edge for want of a bit does no
/// harm, flipping one to and fro would.
template <class Vertex>
bool in_circle(Vertex a, Vertex b, Vertex c, Vertex d) {
    auto const row = [d](Vertex p) {
        double const x = static_cast<double>(p.x - d.x);
        double const z = static_cast<double>(p.z - d.z);
        return std::array<double, 3>{x, z, x * x + z * z};
    };
    auto const [ax, az, aa] = row(a);
    auto const [bx, bz, bb] = row(b);
    auto const [cx, cz, cc] = row(c);
    double const value = aa * (bx * cz - bz * cx) - bb * (ax * cz - az * cx) + cc * (ax * bz - az * bx);
    double const size = aa * (std::abs(bx * cz) + std::abs(bz * cx)) + bb * (std::abs(ax * cz) + std::abs(az * cx)) +
                        cc * (std::abs(ax * bz) + std::abs(az * bx));
    return value > 1e-12 * size;
}

struct EdgeOf {
    std::uint32_t triangle = none;
    std::size_t edge = 0;
};

template <class Vertex>
class Triangulator {
  public:
    explicit Triangulator(std::vector<Vertex> const& vertices)
        : vertices_(vertices), triangle_at_(vertices.size(), none), hull_(vertices.size()) {
        add_points();
    }

    void force(std::uint32_t from, std::uint32_t to) {
        while (from != to) from = force_first_part(from, to);
    }

    /// The triangles inside of the forced rings.
    std::vector<ConnectedTriangle> inside() const;

  private:
    struct Work {
        ConnectedTriangle is;
        std::array<bool, 3> fixed{};
        /// Forced an odd number of times: the inside begins or ends here.
        std::array<bool, 3> boundary{};
    };
    struct HullEdge {
        std::uint32_t next = none;
        std::uint32_t previous = none;
        std::uint32_t triangle = none;
    };

    std::uint32_t corner(EdgeOf at, std::size_t (*which)(std::size_t)) const {
        return work_[at.triangle].is.corner[which(at.edge)];
    }
    int side(std::uint32_t a, std::uint32_t b, std::uint32_t c) const {
        return side_of(vertices_[a], vertices_[b], vertices_[c]);
    }

    EdgeOf opposite(EdgeOf edge) const;
    void join(EdgeOf edge, EdgeOf other);
    std::uint32_t add_triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void note(std::uint32_t triangle);
    void add_points();
    std::size_t add_first_triangles();
    void add_outside(std::uint32_t vertex, std::uint32_t last);
    void cover(std::uint32_t from, std::uint32_t vertex);
    void flip(EdgeOf edge);
    bool flippable(EdgeOf edge) const;
    void flip_to_delaunay();

    template <class Visit>
    std::optional<EdgeOf> around(std::uint32_t vertex, Visit visit) const;
    std::optional<EdgeOf> edge_between(std::uint32_t a, std::uint32_t b) const;
    void fix(EdgeOf edge);
    std::uint32_t force_first_part(std::uint32_t from, std::uint32_t to);
    std::uint32_t clear_way(std::uint32_t from, std::uint32_t to, EdgeOf first);

    std::vector<Vertex> const& vertices_;
    std::vector<Work> work_;
    /// Some triangle that has the vertex.
    std::vector<std::uint32_t> triangle_at_;
    std::vector<HullEdge> hull_;
    /// Edges that may have to be flipped, by their triangle.
    std::vector<EdgeOf> doubtful_;
};

template <class Vertex>
EdgeOf Triangulator<Vertex>::opposite(EdgeOf edge) const {
    std::uint32_t const neighbour = work_[edge.triangle].is.neighbour[edge.edge];
    if (neighbour == none) return {};
    for (std::size_t i = 0; i < 3; ++i)
        if (work_[neighbour].is.neighbour[i] == edge.triangle &&
            work_[neighbour].is.corner[after(i)] == corner(edge, before))
            return {neighbour, i};
    return {};
}

template <class Vertex>
void Triangulator<Vertex>::join(EdgeOf edge, EdgeOf other) {
    work_[edge.triangle].is.neighbour[edge.edge] = other.triangle;
    if (other.triangle != none)
        work_[other.triangle].is.neighbour[other.edge] = edge.triangle;
    else
        hull_[corner(edge, after)].triangle = edge.triangle;
}

template <class Vertex>
void Triangulator<Vertex>::note(std::uint32_t triangle) {
    for (std::uint32_t const vertex : work_[triangle].is.corner) triangle_at_[vertex] = triangle;
}

template <class Vertex>
std::uint32_t Triangulator<Vertex>::add_triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    auto const triangle = static_cast<std::uint32_t>(work_.size());
    work_.push_back({{{a, b, c}, {none, none, none}}, {}, {}});
    note(triangle);
    return triangle;
}

template <class Vertex>
void Triangulator<Vertex>::add_points() {
    std::size_t const begun = add_first_triangles();
    for (std::size_t i = begun; i < vertices_.size(); ++i) {
        auto const vertex = static_cast<std::uint32_t>(i);
        add_outside(vertex, vertex - 1);
        flip_to_delaunay();
    }
}

/// A fan from the first point that is not in line with those before it. Returns how many points it took.
template <class Vertex>
std::size_t Triangulator<Vertex>::add_first_triangles() {
    std::size_t apex = 2;
    while (apex < vertices_.size() && side_of(vertices_[0], vertices_[1], vertices_[apex]) == 0) ++apex;
    if (apex >= vertices_.size()) return vertices_.size();
    auto const top = static_cast<std::uint32_t>(apex);
    bool const left = side(0, 1, top) > 0;
    std::vector<std::uint32_t> hull;
    for (std::uint32_t i = 0; i < top; ++i) hull.push_back(left ? i : top - 1 - i);
    hull.push_back(top);
    for (std::size_t i = 0; i < hull.size(); ++i) {
        std::uint32_t const next = hull[(i + 1) % hull.size()];
        hull_[hull[i]].next = next;
        hull_[next].previous = hull[i];
    }
    for (std::size_t i = 0; i + 2 < hull.size(); ++i) {
        std::uint32_t const triangle = add_triangle(hull[i], hull[i + 1], top);
        join({triangle, 0}, {});
        join({triangle, 1}, i == 0 ? EdgeOf{} : EdgeOf{triangle - 1, 0});
        join({triangle, 2}, {});
    }
    return apex + 1;
}

/// Joins a point to the right of all before it to every hull edge that it sees. The last point is an end of one.
template <class Vertex>
void Triangulator<Vertex>::add_outside(std::uint32_t vertex, std::uint32_t last) {
    std::uint32_t first = last;
    while (side(hull_[first].previous, first, vertex) < 0) first = hull_[first].previous;
    std::uint32_t end = last;
    while (side(end, hull_[end].next, vertex) < 0) end = hull_[end].next;
    std::uint32_t below = none;
    for (std::uint32_t from = first; from != end; from = hull_[from].next) {
        std::uint32_t const inner = hull_[from].triangle;
        std::uint32_t const to = hull_[from].next;
        std::uint32_t const triangle = add_triangle(to, from, vertex);
        for (std::size_t edge = 0; edge < 3; ++edge)
            if (work_[inner].is.corner[after(edge)] == from && work_[inner].is.corner[before(edge)] == to)
                join({triangle, 2}, {inner, edge});
        if (below == none)
            join({triangle, 0}, {});
        else
            join({triangle, 0}, {below, 1});
        below = triangle;
        doubtful_.push_back({triangle, 2});
    }
    hull_[first].next = hull_[vertex].previous = vertex;
    hull_[vertex].previous = first;
    hull_[vertex].next = end;
    hull_[end].previous = vertex;
    join({below, 1}, {});
}

/// Turns the edge of two triangles into the other diagonal of their quadrangle. Both keep their numbers.
template <class Vertex>
void Triangulator<Vertex>::flip(EdgeOf edge) {
    EdgeOf const other = opposite(edge);
    std::uint32_t const t = edge.triangle;
    std::uint32_t const u = other.triangle;
    Work const old_t = work_[t];
    Work const old_u = work_[u];
    std::uint32_t const top = old_t.is.corner[edge.edge];
    std::uint32_t const right = old_t.is.corner[after(edge.edge)];
    std::uint32_t const left = old_t.is.corner[before(edge.edge)];
    std::uint32_t const bottom = old_u.is.corner[other.edge];

    struct Side {
        EdgeOf beyond;
        bool fixed;
        bool boundary;
    };
    auto const side_of = [this](Work const& work, EdgeOf at) {
        return Side{opposite(at), work.fixed[at.edge], work.boundary[at.edge]};
    };
    Side const top_left = side_of(old_t, {t, after(edge.edge)});
    Side const top_right = side_of(old_t, {t, before(edge.edge)});
    Side const bottom_right = side_of(old_u, {u, after(other.edge)});
    Side const bottom_left = side_of(old_u, {u, before(other.edge)});

    work_[t] = {{{top, bottom, left}, {none, none, none}}, {}, {}};
    work_[u] = {{{bottom, top, right}, {none, none, none}}, {}, {}};
    auto const put = [this](EdgeOf at, Side const& old) {
        join(at, old.beyond);
        work_[at.triangle].fixed[at.edge] = old.fixed;
        work_[at.triangle].boundary[at.edge] = old.boundary;
    };
    put({t, 0}, bottom_left);
    put({t, 1}, top_left);
    put({u, 0}, top_right);
    put({u, 1}, bottom_right);
    join({t, 2}, {u, 2});
    note(t);
    note(u);
}

template <class Vertex>
bool Triangulator<Vertex>::flippable(EdgeOf edge) const {
    EdgeOf const other = opposite(edge);
    std::uint32_t const top = work_[edge.triangle].is.corner[edge.edge];
    std::uint32_t const bottom = work_[other.triangle].is.corner[other.edge];
    return side(top, bottom, corner(edge, before)) > 0 && side(bottom, top, corner(edge, after)) > 0;
}

template <class Vertex>
void Triangulator<Vertex>::flip_to_delaunay() {
    while (!doubtful_.empty()) {
        EdgeOf const edge = doubtful_.back();
        doubtful_.pop_back();
        EdgeOf const other = opposite(edge);
        if (other.triangle == none || work_[edge.triangle].fixed[edge.edge]) continue;
        auto const& corners = work_[edge.triangle].is.corner;
        if (!in_circle(vertices_[corners[0]], vertices_[corners[1]], vertices_[corners[2]],
                       vertices_[work_[other.triangle].is.corner[other.edge]]) ||
            !flippable(edge))
            continue;
        flip(edge);
        for (std::uint32_t const triangle : {edge.triangle, other.triangle})
            for (std::size_t i = 0; i < 2; ++i) doubtful_.push_back({triangle, i});
    }
}

/// Calls `visit` with the edge opposite to the vertex in each triangle around it, until it returns true.
template <class Vertex>
template <class Visit>
std::optional<EdgeOf> Triangulator<Vertex>::around(std::uint32_t vertex, Visit visit) const {
    std::uint32_t const start = triangle_at_[vertex];
    for (bool const leftwards : {true, false}) {
        std::uint32_t triangle = start;
        do {
            auto const& corners = work_[triangle].is.corner;
            auto const index =
                static_cast<std::size_t>(std::find(corners.begin(), corners.end(), vertex) - corners.begin());
            EdgeOf const edge{triangle, index};
            if ((leftwards || triangle != start) && visit(edge)) return edge;
            triangle = work_[triangle].is.neighbour[leftwards ? after(index) : before(index)];
        } while (triangle != none && triangle != start);
        if (triangle == start) break;
    }
    return std::nullopt;
}

template <class Vertex>
std::optional<EdgeOf> Triangulator<Vertex>::edge_between(std::uint32_t a, std::uint32_t b) const {
    auto const edge = around(a, [&](EdgeOf at) { return corner(at, after) == b || corner(at, before) == b; });
    if (!edge) return std::nullopt;
    return EdgeOf{edge->triangle, corner(*edge, after) == b ? before(edge->edge) : after(edge->edge)};
}

template <class Vertex>
void Triangulator<Vertex>::fix(EdgeOf edge) {
    for (EdgeOf const at : {edge, opposite(edge)}) {
        if (at.triangle == none) continue;
        work_[at.triangle].fixed[at.edge] = true;
        work_[at.triangle].boundary[at.edge] = !work_[at.triangle].boundary[at.edge];
    }
}

/// Makes an edge of the way up to the first vertex on it, and returns this vertex.
template <class Vertex>
std::uint32_t Triangulator<Vertex>::force_first_part(std::uint32_t from, std::uint32_t to) {
    std::uint32_t reached = none;
    auto const ahead = [&](std::uint32_t vertex) {
        return vertex == to ||
               (side(from, to, vertex) == 0 && towards(vertices_[from], vertices_[to], vertices_[vertex]));
    };
    auto const first = around(from, [&](EdgeOf at) {
        std::uint32_t const right = corner(at, after);
        std::uint32_t const left = corner(at, before);
        for (std::uint32_t const vertex : {right, left})
            if (ahead(vertex)) reached = vertex;
        return reached != none || (side(from, right, to) > 0 && side(from, left, to) < 0);
    });
    if (!first) throw BoundaryCrossing{from};
    if (reached == none) reached = clear_way(from, to, *first);
    auto const edge = edge_between(from, reached);
    if (!edge) throw BoundaryCrossing{from};
    fix(*edge);
    return reached;
}

template <class Vertex>
std::uint32_t Triangulator<Vertex>::clear_way(std::uint32_t from, std::uint32_t to, EdgeOf first) {
    std::deque<std::pair<std::uint32_t, std::uint32_t>> crossing;
    std::uint32_t end = none;
    for (EdgeOf edge = first; end == none;) {
        if (work_[edge.triangle].fixed[edge.edge]) throw BoundaryCrossing{corner(edge, after)};
        crossing.emplace_back(corner(edge, after), corner(edge, before));
        EdgeOf const other = opposite(edge);
        std::uint32_t const apex = work_[other.triangle].is.corner[other.edge];
        int const turn = side(from, to, apex);
        if (turn == 0)
            end = apex;
        else
            edge = {other.triangle, turn > 0 ? after(other.edge) : before(other.edge)};
    }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> made;
    while (!crossing.empty()) {
        auto const [a, b] = crossing.front();
        crossing.pop_front();
        EdgeOf const edge = *edge_between(a, b);
        if (!flippable(edge)) {
            crossing.emplace_back(a, b);
            continue;
        }
        EdgeOf const other = opposite(edge);
        std::uint32_t const top = work_[edge.triangle].is.corner[edge.edge];
        std::uint32_t const bottom = work_[other.triangle].is.corner[other.edge];
        flip(edge);
        bool const still_crosses = top != from && top != end && bottom != from && bottom != end &&
                                   (side(from, end, top) > 0) != (side(from, end, bottom) > 0);
        (still_crosses ? static_cast<void>(crossing.emplace_back(top, bottom))
                       : static_cast<void>(made.emplace_back(top, bottom)));
    }
    for (auto const& [a, b] : made) {
        bool const is_the_way = (a == from && b == end) || (a == end && b == from);
        if (!is_the_way) doubtful_.push_back(*edge_between(a, b));
    }
    EdgeOf const way = *edge_between(from, end);
    for (EdgeOf const at : {way, opposite(way)}) work_[at.triangle].fixed[at.edge] = true;
    flip_to_delaunay();
    return end;
}

template <class Vertex>
std::vector<ConnectedTriangle> Triangulator<Vertex>::inside() const {
    enum class Place : std::uint8_t { UNKNOWN, OUTSIDE, INSIDE };
    std::vector<Place> place(work_.size(), Place::UNKNOWN);
    std::vector<std::uint32_t> open;
    auto const settle = [&](std::uint32_t triangle, bool inner) {
        if (place[triangle] != Place::UNKNOWN) return;
        place[triangle] = inner ? Place::INSIDE : Place::OUTSIDE;
        open.push_back(triangle);
    };
    for (std::size_t t = 0; t < work_.size(); ++t)
        for (std::size_t edge = 0; edge < 3; ++edge)
            if (work_[t].is.neighbour[edge] == none) settle(static_cast<std::uint32_t>(t), work_[t].boundary[edge]);
    while (!open.empty()) {
        std::uint32_t const t = open.back();
        open.pop_back();
        for (std::size_t edge = 0; edge < 3; ++edge)
            if (std::uint32_t const beyond = work_[t].is.neighbour[edge]; beyond != none)
                settle(beyond, (place[t] == Place::INSIDE) != work_[t].boundary[edge]);
    }
    std::vector<std::uint32_t> number(work_.size(), none);
    std::uint32_t count = 0;
    for (std::size_t t = 0; t < work_.size(); ++t)
        if (place[t] == Place::INSIDE) number[t] = count++;
    std::vector<ConnectedTriangle> triangles;
    for (std::size_t t = 0; t < work_.size(); ++t) {
        if (place[t] != Place::INSIDE) continue;
        ConnectedTriangle triangle = work_[t].is;
        for (std::uint32_t& neighbour : triangle.neighbour)
            if (neighbour != none) neighbour = number[neighbour];
        triangles.push_back(triangle);
    }
    return triangles;
}

/// 1 when a simple polygon runs counter-clockwise, -1 when it runs clockwise.
int direction_of(Ring const& ring) {
    // No edge goes around the least corner.
    auto const least =
        std::min_element(ring.begin(), ring.end(), [](Point a, Point b) { return a.x != b.x ? a.x < b.x : a.z < b.z; });
    auto const corner = static_cast<std::size_t>(least - ring.begin());
    return exact_orientation(ring[(corner + ring.size() - 1) % ring.size()], *least, ring[(corner + 1) % ring.size()]);
}

}  // namespace

template <class Vertex>
std::vector<ConnectedTriangle> constrained_delaunay(std::vector<Vertex> const& vertices,
                                                    std::vector<BoundaryEdge> const& boundary) {
    Triangulator<Vertex> triangulator(vertices);
    for (auto const& [from, to] : boundary) triangulator.force(from, to);
    return triangulator.inside();
}

template std::vector<ConnectedTriangle> constrained_delaunay(std::vector<Point> const&,
                                                             std::vector<BoundaryEdge> const&);
template std::vector<ConnectedTriangle> constrained_delaunay(std::vector<LatticePoint> const&,
                                                             std::vector<BoundaryEdge> const&);

std::vector<std::array<int, 3>> triangulate(Ring const& ring) {
    std::vector<std::uint32_t> corner_of(ring.size());
    std::iota(corner_of.begin(), corner_of.end(), 0);
    std::sort(corner_of.begin(), corner_of.end(), [&ring](std::uint32_t i, std::uint32_t j) {
        return ring[i].x != ring[j].x ? ring[i].x < ring[j].x : ring[i].z < ring[j].z;
    });
    std::vector<Point> vertices;
    std::vector<std::uint32_t> vertex_of(ring.size());
    for (std::uint32_t const corner : corner_of) {
        vertex_of[corner] = static_cast<std::uint32_t>(vertices.size());
        vertices.push_back(ring[corner]);
    }
    std::vector<BoundaryEdge> boundary;
    for (std::size_t i = 0; i < ring.size(); ++i) boundary.push_back({vertex_of[i], vertex_of[(i + 1) % ring.size()]});
    bool const clockwise = direction_of(ring) < 0;
    std::vector<std::array<int, 3>> triangles;
    for (ConnectedTriangle const& triangle : constrained_delaunay(vertices, boundary)) {
        auto const corner = [&](std::size_t i) { return static_cast<int>(corner_of[triangle.corner[i]]); };
        triangles.push_back({corner(0), corner(clockwise ? 2 : 1), corner(clockwise ? 1 : 2)});
    }
    return triangles;
}

}  // namespace pedflux::engine
