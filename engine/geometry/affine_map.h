#pragma once

#include "engine/geometry/vector.h"

namespace pedflux::engine {

/// An affine map of space about a point: p becomes center + x * dp.x + y * dp.y + z * dp.z + offset, where dp is p -
/// center. A map about a point of the shape causes smaller rounding errors than one about a distant origin.
struct AffineMap {
    Vector x{1, 0, 0};
    Vector y{0, 1, 0};
    Vector z{0, 0, 1};
    Vector center;
    Vector offset;

    Vector operator()(Vector point) const { return center + direction(point - center) + offset; }
    Vector direction(Vector d) const { return d.x * x + d.y * y + d.z * z; }
    /// Whether the map reverses orientation.
    bool mirrors() const { return dot(cross(x, y), z) < 0; }
};

struct SineCosine {
    double sine;
    double cosine;
};

/// Sine and cosine of an angle in degrees, exact at quarter turns. Throws Exception when the angle is not finite.
SineCosine sine_cosine(double angle);

/// Each throws Exception for numbers that are not finite and for factors that are not positive.
AffineMap translation(Vec3d const& offset);
AffineMap scaling_about(Vec3d const& point, double factor);
AffineMap scaling_along(Axis3d axis, double factor);
AffineMap rotation_about(Axis3d axis, double angle);
AffineMap mirroring_across(Axis3d axis);

}  // namespace pedflux::engine
