#pragma once

#include <pedflux/vectors.h>

#include <algorithm>
#include <cmath>

/// A vector of space as plain data, behind the SDK class `Vec3d`.
namespace pedflux::engine {

struct Vector {
    double x = 0;
    double y = 0;
    double z = 0;
};

inline constexpr Vector up{0, 1, 0};

constexpr bool operator==(Vector a, Vector b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
constexpr Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vector operator-(Vector a, Vector b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vector operator-(Vector a) { return {-a.x, -a.y, -a.z}; }
constexpr Vector operator*(double factor, Vector a) { return {factor * a.x, factor * a.y, factor * a.z}; }
constexpr double dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
constexpr Vector cross(Vector a, Vector b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Vector a) { return std::hypot(a.x, a.y, a.z); }
inline double distance(Vector a, Vector b) { return length(b - a); }
/// The vector scaled to length 1; NaN when it has no direction. The largest component is divided out first, since the
/// length of tiny or huge vectors is not known to full precision.
inline Vector normalized(Vector a) {
    double const largest = std::max({std::abs(a.x), std::abs(a.y), std::abs(a.z)});
    Vector const scaled{a.x / largest, a.y / largest, a.z / largest};
    double const divisor = length(scaled);
    return {scaled.x / divisor, scaled.y / divisor, scaled.z / divisor};
}
inline Vector smaller(Vector a, Vector b) { return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)}; }
inline Vector larger(Vector a, Vector b) { return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)}; }
inline bool is_finite(Vector a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

inline Vector vector_of(Vec3d const& vector) { return {vector.GetX(), vector.GetY(), vector.GetZ()}; }
inline Vec3d value_of(Vector vector) { return {vector.x, vector.y, vector.z}; }

}  // namespace pedflux::engine
