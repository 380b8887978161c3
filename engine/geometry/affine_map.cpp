#include "engine/geometry/affine_map.h"

#include "engine/geometry/checks.h"

#include <numbers>

namespace pedflux::engine {

namespace {

/// Stretches along the direction by the factor, which may be negative.
AffineMap stretching(Axis3d axis, double factor) {
    Vector const d = vector_of(axis.GetDirection());
    double const growth = factor - 1;
    return {.x = Vector{1, 0, 0} + growth * d.x * d,
            .y = Vector{0, 1, 0} + growth * d.y * d,
            .z = Vector{0, 0, 1} + growth * d.z * d,
            .center = vector_of(axis.GetOriginPoint()),
            .offset = {}};
}

/// Rodrigues' formula.
Vector rotated(Vector v, Vector axis, SineCosine turn) {
    return turn.cosine * v + turn.sine * cross(axis, v) + (1 - turn.cosine) * dot(axis, v) * axis;
}

}  // namespace

SineCosine sine_cosine(double angle) {
    int quarter = 0;
    double const rest = std::remquo(require_finite("angle", angle), 90.0, &quarter) * std::numbers::pi / 180;
    double const sine = std::sin(rest);
    double const cosine = std::cos(rest);
    switch (quarter & 3) {
        case 0:
            return {sine, cosine};
        case 1:
            return {cosine, -sine};
        case 2:
            return {-sine, -cosine};
        default:
            return {-cosine, sine};
    }
}

AffineMap translation(Vec3d const& offset) { return {.center = {}, .offset = require_point("offset", offset)}; }

AffineMap scaling_about(Vec3d const& point, double factor) {
    require_positive("scale factor", factor);
    return {.x = {factor, 0, 0},
            .y = {0, factor, 0},
            .z = {0, 0, factor},
            .center = require_point("fixed point", point),
            .offset = {}};
}

AffineMap scaling_along(Axis3d axis, double factor) {
    return stretching(axis, require_positive("scale factor", factor));
}

AffineMap rotation_about(Axis3d axis, double angle) {
    SineCosine const turn = sine_cosine(angle);
    Vector const d = vector_of(axis.GetDirection());
    return {.x = rotated({1, 0, 0}, d, turn),
            .y = rotated({0, 1, 0}, d, turn),
            .z = rotated({0, 0, 1}, d, turn),
            .center = vector_of(axis.GetOriginPoint()),
            .offset = {}};
}

AffineMap mirroring_across(Axis3d axis) { return stretching(axis, -1); }

}  // namespace pedflux::engine
