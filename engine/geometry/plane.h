#pragma once

#include <cmath>
#include <string>
#include <vector>

/// Geometry seen from above. The plan's axes are x and z, in metres; "left" and "counter-clockwise" mean a drawing with
/// x to the right and z up the page.
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
/// Plans stay within kilometres, so nothing overflows and the careful std::hypot is not needed.
inline double length(Point a) { return std::sqrt(squared_length(a)); }
inline double distance(Point a, Point b) { return length(b - a); }
/// Quarter turn to the left.
constexpr Point turned_left(Point a) { return {-a.z, a.x}; }
/// The point's direction at length 1; (0, 0) stays.
inline Point unit(Point a) {
    double const size = length(a);
    return size > 0 ? Point{a.x / size, a.z / size} : a;
}
inline bool is_finite(Point a) { return std::isfinite(a.x) && std::isfinite(a.z); }

struct Segment {
    Point from;
    Point to;
};

inline double length(Segment segment) { return distance(segment.from, segment.to); }
constexpr Point at(Segment segment, double fraction) { return segment.from + fraction * (segment.to - segment.from); }
/// How far along the segment its point nearest to `point` lies, from 0 to 1.
constexpr double nearest_fraction(Segment segment, Point point) {
    Point const along = segment.to - segment.from;
    double const size = squared_length(along);
    double const fraction = size > 0 ? dot(point - segment.from, along) / size : 0;
    return fraction < 0 ? 0 : fraction > 1 ? 1 : fraction;
}
constexpr Point nearest_point(Segment segment, Point point) { return at(segment, nearest_fraction(segment, point)); }
inline double distance(Segment segment, Point point) { return distance(nearest_point(segment, point), point); }

/// Corners in order, the last joined to the first; the first is not repeated.
using Ring = std::vector<Point>;

/// An area with holes. Rings may run in either direction.
struct Polygon {
    Ring outline;
    std::vector<Ring> holes;
};

using Polygons = std::vector<Polygon>;

/// Square metres that the ring encloses, positive when it runs counter-clockwise.
double signed_area(Ring const& ring);
/// Square metres, holes taken off.
double area(Polygon const& polygon);
double area(Polygons const& polygons);
/// Whether the point lies in the polygon; on its boundary either answer may come.
bool contains(Polygon const& polygon, Point point);
bool contains(Polygons const& polygons, Point point);

/// "(1.5, -2)", for messages.
std::string text_of(Point point);

}  // namespace pedflux::engine
