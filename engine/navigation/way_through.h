#pragma once

#include "engine/geometry/plane.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine::navigation {

struct WayThrough {
    /// Length of the way.
    double distance = 0;
    /// The crossing with the line.
    Point point;
};

/// The shortest way from a point across a line when the remaining distance is `from_rest` at one end of the line and
/// `to_rest` at the other, linear in between. `factor` is the length of a metre of the plane. By Fermat's principle the
/// way meets the line at the angle whose cosine is the change of the remaining distance per length. The same update is
/// used by Sethian and Vladimirsky, "Fast methods for the Eikonal equation on unstructured meshes", 2000.
inline WayThrough way_through(Point point, Segment line, double from_rest, double to_rest, double factor) {
    double const size = length(line);
    if (size == 0) return {factor * distance(point, line.from) + std::min(from_rest, to_rest), line.from};
    Point const along = (1 / size) * (line.to - line.from);
    double const foot = dot(point - line.from, along);
    double const height = std::abs(cross(along, point - line.from));
    double const change = (to_rest - from_rest) / (size * factor);
    double offset = size;
    if (change >= 1)
        offset = 0;
    else if (change > -1)
        offset = std::clamp(foot - change * height / std::sqrt(1 - change * change), 0.0, size);
    Point const crossing = line.from + offset * along;
    return {factor * distance(point, crossing) + from_rest + offset / size * (to_rest - from_rest), crossing};
}

}  // namespace pedflux::engine::navigation
