#include "engine/base/hashing.h"
#include "engine/geometry/affine_map.h"
#include "engine/geometry/checks.h"

#include <pedflux/vectors.h>

#include <limits>
#include <numbers>

namespace pedflux {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

double heading(double x, double z) {
    if (x == 0 && z == 0) return nan;
    double const degrees = std::atan2(x, -z) * 180 / std::numbers::pi;
    double const positive = degrees < 0 ? degrees + 360 : degrees;
    return positive < 360 ? positive : 0;
}

}  // namespace

constinit Vec2d const Vec2d::ZERO{0, 0};
constinit Vec2d const Vec2d::INVALID{nan, nan};
constinit Vec2d const Vec2d::X_DIRECTION{1, 0};
constinit Vec2d const Vec2d::Z_DIRECTION{0, 1};
constinit Vec2d const Vec2d::FORWARD_DIRECTION{0, -1};
constinit Vec2d const Vec2d::LEFT_DIRECTION{-1, 0};
constinit Vec2d const Vec2d::RIGHT_DIRECTION{1, 0};

double Vec2d::GetX() const { return x_; }
double Vec2d::GetZ() const { return z_; }
void Vec2d::SetX(double x) { x_ = x; }
void Vec2d::SetZ(double z) { z_ = z; }

double Vec2d::GetLength() { return std::hypot(x_, z_); }
double Vec2d::GetSquaredLength() { return x_ * x_ + z_ * z_; }
double Vec2d::GetHeading() { return heading(x_, z_); }

Vec2d Vec2d::GetNormalized() {
    auto const direction = engine::normalized({x_, 0, z_});
    return {direction.x, direction.z};
}

bool Vec2d::IsValid() { return std::isfinite(x_) && std::isfinite(z_); }
double Vec2d::Dot(Vec2d const& other) { return x_ * other.x_ + z_ * other.z_; }

Vec2d Vec2d::RotatedBy(double angle) {
    auto const [sine, cosine] = engine::sine_cosine(angle);
    return {cosine * x_ + sine * z_, cosine * z_ - sine * x_};
}

BoundingBox3d Vec2d::Hull(Vec2d const& other) { return Vec3d(x_, 0, z_).Hull({other.x_, 0, other.z_}); }

bool Vec2d::InternalEquals(Vec2d const& other) {
    return engine::same_component(x_, other.x_) && engine::same_component(z_, other.z_);
}

int Vec2d::InternalHashCode() { return engine::hash_of_words({engine::hashed_bits(x_), engine::hashed_bits(z_)}); }

constinit Vec3d const Vec3d::ZERO{0, 0, 0};
constinit Vec3d const Vec3d::INVALID{nan, nan, nan};
constinit Vec3d const Vec3d::X_DIRECTION{1, 0, 0};
constinit Vec3d const Vec3d::Y_DIRECTION{0, 1, 0};
constinit Vec3d const Vec3d::Z_DIRECTION{0, 0, 1};
constinit Vec3d const Vec3d::UP_DIRECTION{0, 1, 0};
constinit Vec3d const Vec3d::FORWARD_DIRECTION{0, 0, -1};
constinit Vec3d const Vec3d::LEFT_DIRECTION{-1, 0, 0};
constinit Vec3d const Vec3d::RIGHT_DIRECTION{1, 0, 0};

double Vec3d::GetX() const { return x_; }
double Vec3d::GetY() const { return y_; }
double Vec3d::GetZ() const { return z_; }
void Vec3d::SetX(double x) { x_ = x; }
void Vec3d::SetY(double y) { y_ = y; }
void Vec3d::SetZ(double z) { z_ = z; }

double Vec3d::GetLength() { return std::hypot(x_, y_, z_); }
double Vec3d::GetSquaredLength() { return Dot(*this); }
double Vec3d::GetHeading() { return heading(x_, z_); }
Vec3d Vec3d::GetNormalized() { return engine::value_of(engine::normalized({x_, y_, z_})); }
bool Vec3d::IsValid() { return engine::is_finite({x_, y_, z_}); }
double Vec3d::Dot(Vec3d const& other) { return x_ * other.x_ + y_ * other.y_ + z_ * other.z_; }

Vec3d Vec3d::Cross(Vec3d const& other) {
    return engine::value_of(engine::cross({x_, y_, z_}, engine::vector_of(other)));
}

Vec3d Vec3d::RotatedBy(double angle) {
    Vec2d const plan = Vec2d(x_, z_).RotatedBy(angle);
    return {plan.GetX(), y_, plan.GetZ()};
}

BoundingBox3d Vec3d::Hull(Vec3d const& other) { return BoundingBox3d().Hull(*this).Hull(other); }

bool Vec3d::InternalEquals(Vec3d const& other) {
    return engine::same_component(x_, other.x_) && engine::same_component(y_, other.y_) &&
           engine::same_component(z_, other.z_);
}

int Vec3d::InternalHashCode() {
    return engine::hash_of_words({engine::hashed_bits(x_), engine::hashed_bits(y_), engine::hashed_bits(z_)});
}

Axis3d::Axis3d(Vec3d const& originPoint, Vec3d const& direction)
    : originPoint_(engine::value_of(engine::require_point("axis origin", originPoint))),
      direction_(engine::value_of(engine::require_direction("axis direction", engine::vector_of(direction)))) {}

Vec3d Axis3d::GetOriginPoint() { return originPoint_; }
Vec3d Axis3d::GetDirection() { return direction_; }

}  // namespace pedflux
