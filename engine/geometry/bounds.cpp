#include "engine/geometry/checks.h"

#include <pedflux/vectors.h>

#include <limits>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::value_of;
using engine::Vector;
using engine::vector_of;

constexpr double infinity = std::numeric_limits<double>::infinity();

Vector finite(char const* what, Vector point) {
    if (!is_finite(point)) engine::refuse(fmt::format("{} is {}; it must be finite", what, text_of(point)));
    return point;
}

bool at_most(Vector a, Vector b) { return a.x <= b.x && a.y <= b.y && a.z <= b.z; }

}  // namespace

BoundingBox3d::BoundingBox3d() : min_(infinity, infinity, infinity), max_(-infinity, -infinity, -infinity) {}

BoundingBox3d::BoundingBox3d(Vec3d const& min, Vec3d const& max) : min_(min), max_(max) {
    Vector const low = finite("minimum of the bounding box", vector_of(min));
    Vector const high = finite("maximum of the bounding box", vector_of(max));
    if (!at_most(low, high))
        engine::refuse(
            fmt::format("minimum of the bounding box is {}; it must not exceed the maximum {} in any component",
                        text_of(low), text_of(high)));
}

double BoundingBox3d::GetXMin() { return min_.GetX(); }
double BoundingBox3d::GetXMax() { return max_.GetX(); }
double BoundingBox3d::GetYMin() { return min_.GetY(); }
double BoundingBox3d::GetYMax() { return max_.GetY(); }
double BoundingBox3d::GetZMin() { return min_.GetZ(); }
double BoundingBox3d::GetZMax() { return max_.GetZ(); }
Vec3d BoundingBox3d::GetMin() { return min_; }
Vec3d BoundingBox3d::GetMax() { return max_; }
Vec3d BoundingBox3d::GetCenter() { return value_of(0.5 * vector_of(min_) + 0.5 * vector_of(max_)); }

bool BoundingBox3d::Contains(Vec3d const& point) { return Contains(point, 0); }

bool BoundingBox3d::Contains(Vec3d const& point, double tolerance) {
    Vector const reach{tolerance, tolerance, tolerance};
    return at_most(vector_of(min_) - reach, vector_of(point)) && at_most(vector_of(point), vector_of(max_) + reach);
}

bool BoundingBox3d::Contains(BoundingBox3d const& other) { return Contains(other, 0); }

bool BoundingBox3d::Contains(BoundingBox3d const& other, double tolerance) {
    bool const other_is_empty = !at_most(vector_of(other.min_), vector_of(other.max_));
    return other_is_empty || (Contains(other.min_, tolerance) && Contains(other.max_, tolerance));
}

bool BoundingBox3d::Overlaps(BoundingBox3d const& other) { return Overlaps(other, 0); }

bool BoundingBox3d::Overlaps(BoundingBox3d const& other, double tolerance) {
    Vector const reach{tolerance, tolerance, tolerance};
    Vector const low = vector_of(min_) - reach;
    Vector const high = vector_of(max_) + reach;
    return at_most(low, high) && at_most(low, vector_of(other.max_)) && at_most(vector_of(other.min_), high);
}

BoundingBox3d BoundingBox3d::Hull(Vec3d const& point) {
    Vector const added = finite("point of the hull", vector_of(point));
    return {value_of(smaller(vector_of(min_), added)), value_of(larger(vector_of(max_), added))};
}

BoundingBox3d BoundingBox3d::Hull(BoundingBox3d const& other) {
    BoundingBox3d hull;
    hull.min_ = value_of(smaller(vector_of(min_), vector_of(other.min_)));
    hull.max_ = value_of(larger(vector_of(max_), vector_of(other.max_)));
    return hull;
}

BoundingSphere3d::BoundingSphere3d() : center_(Vec3d::INVALID) {}

BoundingSphere3d::BoundingSphere3d(Vec3d const& center, double radius) : center_(center), radius_(radius) {
    finite("centre of the bounding sphere", vector_of(center));
    engine::require_not_negative("radius of the bounding sphere", radius);
}

double BoundingSphere3d::GetRadius() { return radius_; }
Vec3d BoundingSphere3d::GetCenter() { return center_; }

bool BoundingSphere3d::Contains(Vec3d const& point) {
    return engine::distance(vector_of(center_), vector_of(point)) <= radius_;
}

bool BoundingSphere3d::Intersects(BoundingSphere3d const& other) {
    return engine::distance(vector_of(center_), vector_of(other.center_)) <= radius_ + other.radius_;
}

}  // namespace pedflux
