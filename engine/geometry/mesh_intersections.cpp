#include "engine/geometry/mesh.h"

#include <algorithm>
#include <optional>

namespace pedflux::engine {

namespace {

/// Distance from a face at which a segment still meets it (metres). Faces share their vertices exactly, so this only
/// covers rounding and is independent of the weld tolerance.
constexpr double tolerance = 1e-6;

/// A part of the segment, as fractions of its length.
struct Part {
    double from = 0;
    double to = 1;
};

/// The sub-range of a part in which a linear quantity with the given values at the segment's ends is at least `limit`.
std::optional<Part> where_at_least(double limit, double at_start, double at_end, Part part) {
    double const growth = at_end - at_start;
    if (growth == 0) return at_start >= limit ? std::optional(part) : std::nullopt;
    double const fraction = (limit - at_start) / growth;
    if (growth > 0) part.from = std::max(part.from, fraction);
    if (growth < 0) part.to = std::min(part.to, fraction);
    return part.from <= part.to ? std::optional(part) : std::nullopt;
}

/// The sub-range of a part that projects onto the face along its normal, within the tolerance.
std::optional<Part> part_over_face(std::array<Vector, 3> const& corners, Vector normal, Vector from, Vector to,
                                   Part part) {
    std::optional<Part> left = part;
    for (std::size_t i = 0; i < 3 && left; ++i) {
        Vector const corner = corners[i];
        Vector const inward = normalized(cross(normal, corners[(i + 1) % 3] - corner));
        left = where_at_least(-tolerance, dot(from - corner, inward), dot(to - corner, inward), *left);
    }
    return left;
}

bool may_meet(std::array<Vector, 3> const& corners, Vector low, Vector high) {
    Vector const least = smaller(smaller(corners[0], corners[1]), corners[2]);
    Vector const most = larger(larger(corners[0], corners[1]), corners[2]);
    return least.x <= high.x && least.y <= high.y && least.z <= high.z && most.x >= low.x && most.y >= low.y &&
           most.z >= low.z;
}

}  // namespace

std::vector<Vector> intersections(Mesh const& mesh, Vector from, Vector to) {
    Vector const reach{tolerance, tolerance, tolerance};
    Vector const low = smaller(from, to) - reach;
    Vector const high = larger(from, to) + reach;

    std::vector<double> fractions;
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
        auto const corners = corners_of(mesh, face);
        if (!may_meet(corners, low, high)) continue;
        Vector const normal = normal_of(mesh, face);
        double const start = dot(from - corners[0], normal);
        double const end = dot(to - corners[0], normal);
        if (std::min(start, end) > tolerance || std::max(start, end) < -tolerance) continue;
        bool const runs_along = std::abs(start) <= tolerance && std::abs(end) <= tolerance;
        double const crossing = runs_along ? 0 : std::clamp(start / (start - end), 0.0, 1.0);
        auto const part = part_over_face(corners, normal, from, to, runs_along ? Part{0, 1} : Part{crossing, crossing});
        if (!part) continue;
        fractions.push_back(part->from);
        if (runs_along) fractions.push_back(part->to);
    }

    std::sort(fractions.begin(), fractions.end());
    double const way = distance(from, to);
    std::vector<Vector> points;
    double last = 0;
    for (double const fraction : fractions) {
        if (!points.empty() && (fraction - last) * way <= 4 * tolerance) continue;
        points.push_back(from + fraction * (to - from));
        last = fraction;
    }
    return points;
}

}  // namespace pedflux::engine
