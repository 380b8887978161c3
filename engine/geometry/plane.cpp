#include "engine/geometry/plane.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace pedflux::engine {

namespace {

/// Whether a ray from the point towards greater x meets the ring an odd number of times.
bool encloses(Ring const& ring, Point point) {
    bool inside = false;
    for (std::size_t i = 0, previous = ring.size() - 1; i < ring.size(); previous = i++) {
        auto const crossing = crossing_of_row(ring[previous], ring[i], point.z);
        if (crossing && point.x < *crossing) inside = !inside;
    }
    return inside;
}

}  // namespace

double signed_area(Ring const& ring) {
    double doubled = 0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) doubled += orientation(ring[0], ring[i], ring[i + 1]);
    return doubled / 2;
}

double area(Polygon const& polygon) {
    double sum = std::abs(signed_area(polygon.outline));
    for (Ring const& hole : polygon.holes) sum -= std::abs(signed_area(hole));
    return sum;
}

double area(Polygons const& polygons) {
    double sum = 0;
    for (Polygon const& polygon : polygons) sum += area(polygon);
    return sum;
}

bool contains(Polygon const& polygon, Point point) {
    return encloses(polygon.outline, point) &&
           std::none_of(polygon.holes.begin(), polygon.holes.end(),
                        [point](Ring const& hole) { return encloses(hole, point); });
}

bool contains(Polygons const& polygons, Point point) {
    return std::any_of(polygons.begin(), polygons.end(),
                       [point](Polygon const& polygon) { return contains(polygon, point); });
}

std::string text_of(Point point) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "(%.6g, %.6g)", point.x, point.z);
    return text.data();
}

}  // namespace pedflux::engine
