#pragma once

#include "engine/geometry/vector.h"

#include <vector>

namespace pedflux::engine {

struct Sphere {
    Vector center;
    double radius = 0;
};

/// The smallest sphere that contains all points, at least one (Welzl, "Smallest enclosing disks (balls and
/// ellipsoids)", 1991). Every point is inside exactly; the radius exceeds the smallest possible one by rounding only.
Sphere smallest_sphere(std::vector<Vector> points);

}  // namespace pedflux::engine
