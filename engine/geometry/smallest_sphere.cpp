#include "engine/geometry/smallest_sphere.h"

#include "engine/base/hashing.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace pedflux::engine {

namespace {

/// Up to four points that lie on the surface.
struct Support {
    std::array<Vector, 4> points;
    std::size_t count = 0;

    Support with(Vector point) const {
        Support larger = *this;
        larger.points[larger.count++] = point;
        return larger;
    }
};

/// The smallest sphere through the points. Its centre is points[0] + sum of weight[i] * arm[i], with 2 * dot(arm[i],
/// centre - points[0]) = dot(arm[i], arm[i]), as it is equally far from all points. Making the arms orthogonal one by
/// one solves these equations; an arm that adds no direction belongs to a point that the others determine.
Sphere sphere_through(Support const& support) {
    Vector center = support.points[0];
    std::array<Vector, 3> directions;
    std::size_t direction_count = 0;
    for (std::size_t i = 1; i < support.count; ++i) {
        Vector const arm = support.points[i] - support.points[0];
        Vector direction = arm;
        for (std::size_t k = 0; k < direction_count; ++k)
            direction = direction - dot(direction, directions[k]) * directions[k];
        if (!(length(direction) > 1e-10 * length(arm))) continue;
        direction = normalized(direction);
        // The offset of the centre along the new direction; those along earlier ones are known.
        double const missing = 0.5 * dot(arm, arm) - dot(arm, center - support.points[0]);
        center = center + (missing / dot(arm, direction)) * direction;
        directions[direction_count++] = direction;
    }
    return {center, distance(center, support.points[0])};
}

bool is_outside(Sphere const& sphere, Vector point) {
    return distance(sphere.center, point) > sphere.radius * (1 + 1e-12);
}

/// The smallest sphere that contains the points and passes through the support. Points found outside move to the front
/// and are tried first from then on.
Sphere smallest_sphere_with(std::span<Vector> points, Support const& support) {
    Sphere sphere = support.count == 0 ? Sphere{points[0], 0} : sphere_through(support);
    if (support.count == 4) return sphere;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!is_outside(sphere, points[i])) continue;
        sphere = smallest_sphere_with(points.first(i), support.with(points[i]));
        std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(i),
                    points.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
    return sphere;
}

/// Linear expected time for points in random order. The order is the same at every call.
void shuffle(std::span<Vector> points) {
    for (std::size_t i = points.size(); i > 1; --i) std::swap(points[i - 1], points[mixed(i) % i]);
}

}  // namespace

Sphere smallest_sphere(std::vector<Vector> points) {
    shuffle(points);
    Sphere sphere = smallest_sphere_with(points, {});
    for (Vector const point : points) sphere.radius = std::max(sphere.radius, distance(sphere.center, point));
    return sphere;
}

}  // namespace pedflux::engine
