#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

/// Geometry of the horizontal plane, seen from above. Its axes are x and z, in metres; "left" and "counter-clockwise"
/// refer to a drawing with x to the right and z up.
namespace pedflux::engine {

struct Point {
    double x = 0;
    double z = 0;
};

constexpr bool operator==(Point a, Point b) { return a.x == b.x && a.z == b.z; }
constexpr Point operator+(Point a, Point b) { return {a.x + b.x, a.z + b.z}; }
constexpr Point operator-(Point a, Point b) { return {a.x - b.x, a.z - b.z}; }
constexpr Point operator*(double factor, Point a) { return {factor * a.x, factor * a.z}; }
constexpr double dot(Point a, Point b) { return a.x * b.x + a.z * b.z; }
/// Twice the area of the triangle (0, a, b), positive when b lies to the left of a.
constexpr double cross(Point a, Point b) { return a.x * b.z - a.z * b.x; }
/// Twice the area of the triangle, positive when it runs counter-clockwise.
constexpr double orientation(Point a, Point b, Point c) { return cross(b - a, c - a); }
constexpr double squared_length(Point a) { return dot(a, a); }
/// Coordinates stay within kilometres, so nothing overflows and std::hypot is not needed.
inline double length(Point a) { return std::sqrt(squared_length(a)); }
inline double distance(Point a, Point b) { return length(b - a); }
/// The vector turned to the left by 90 degrees.
constexpr Point turned_left(Point a) { return {-a.z, a.x}; }
/// The vector scaled to length 1; (0, 0) stays.
inline Point unit(Point a) {
    double const size = length(a);
    return size > 0 ? Point{a.x / size, a.z / size} : a;
}
inline bool is_finite(Point a) { return std::isfinite(a.x) && std::isfinite(a.z); }

/// The least rectangle along the axes around points.
struct Bounds {
    Point low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    constexpr void cover(Point point) {
        low = {std::min(low.x, point.x), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.z, point.z)};
    }
    constexpr bool empty() const { return low.x > high.x; }
};

struct Segment {
    Point from;
    Point to;
};

inline double length(Segment segment) { return distance(segment.from, segment.to); }
constexpr Point at(Segment segment, double fraction) { return segment.from + fraction * (segment.to - segment.from); }
/// The position of the nearest point of the segment, as a fraction of its length.
constexpr double nearest_fraction(Segment segment, Point point) {
    Point const along = segment.to - segment.from;
    double const size = squared_length(along);
    double const fraction = size > 0 ? dot(point - segment.from, along) / size : 0;
    return fraction < 0 ? 0 : fraction > 1 ? 1 : fraction;
}
constexpr Point nearest_point(Segment segment, Point point) { return at(segment, nearest_fraction(segment, point)); }
inline double distance(Segment segment, Point point) { return distance(nearest_point(segment, point), point); }

/// On which side of a segment's line a point lies: 1 on the left, -1 on the right, 0 on the line.
constexpr int side_of(Segment line, Point point) {
    double const turn = orientation(line.from, line.to, point);
    return (turn > 0) - (turn < 0);
}

/// Whether segments cross that only touch, with an end of one on the line of the other.
enum class Touching {
    COUNTS,       ///< Also where both lie on one line: for obstacles that nobody may pass.
    COUNTS_NOT,   ///< For obstacles that may be touched.
    COUNTS_ONCE,  ///< The line belongs to its right side, so a way that goes on from the line crosses it once.
};

/// Whether a segment reaches from one side of the other's line to the other side.
constexpr bool reaches_across(Segment segment, Segment line, Touching touching) {
    int const from = side_of(line, segment.from);
    int const to = side_of(line, segment.to);
    if (touching == Touching::COUNTS_ONCE) return (from > 0) != (to > 0);
    return touching == Touching::COUNTS ? from * to <= 0 : from * to < 0;
}

constexpr bool cross_each_other(Segment a, Segment b, Touching touching = Touching::COUNTS_ONCE) {
    return reaches_across(b, a, touching) && reaches_across(a, b, touching);
}

/// Where a ray's line meets a segment's.
struct LineCrossing {
    double on_ray = 0;      ///< in lengths of the ray's direction
    double on_segment = 0;  ///< as a fraction of the segment's length, 0 to 1 within it
};
/// Empty for parallel lines.
constexpr std::optional<LineCrossing> line_crossing(Point start, Point direction, Segment segment) {
    Point const along = segment.to - segment.from;
    double const turn = cross(direction, along);
    if (turn == 0) return std::nullopt;
    Point const offset = segment.from - start;
    return LineCrossing{cross(offset, along) / turn, cross(offset, direction) / turn};
}

/// The x at which an edge crosses the row of points with this z; empty when it does not. Of two edges that join on the
/// row, one counts where the boundary goes on to the other side of it, both or none where it turns back.
constexpr std::optional<double> crossing_of_row(Point from, Point to, double z) {
    if ((from.z > z) == (to.z > z)) return std::nullopt;
    return from.x + (z - from.z) / (to.z - from.z) * (to.x - from.x);
}

/// The corners of a closed boundary in order. The first one is not repeated.
using Ring = std::vector<Point>;

/// An area with holes. Rings may have either direction.
struct Polygon {
    Ring outline;
    std::vector<Ring> holes;
};

using Polygons = std::vector<Polygon>;

/// Area of the ring (square metres), positive when it runs counter-clockwise.
double signed_area(Ring const& ring);
/// Area without the holes (square metres).
double area(Polygon const& polygon);
double area(Polygons const& polygons);
/// Whether the polygon contains the point; undetermined for points on the boundary.
bool contains(Polygon const& polygon, Point point);
bool contains(Polygons const& polygons, Point point);

/// "(1.5, -2)", for messages.
std::string text_of(Point point);

}  // namespace pedflux::engine
