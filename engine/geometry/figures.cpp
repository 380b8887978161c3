#include "engine/geometry/affine_map.h"

#include <pedflux/vectors.h>

namespace pedflux {

namespace {

using engine::AffineMap;
using engine::vector_of;

Vec3d mapped(AffineMap const& map, Vec3d const& point) { return engine::value_of(map(vector_of(point))); }

LineSeg3d mapped(AffineMap const& map, LineSeg3d segment) {
    return {mapped(map, segment.GetStartPoint()), mapped(map, segment.GetEndPoint())};
}

Tri3d mapped(AffineMap const& map, Tri3d triangle) {
    return {mapped(map, triangle.GetFirstVertex()), mapped(map, triangle.GetSecondVertex()),
            mapped(map, triangle.GetThirdVertex())};
}

}  // namespace

LineSeg3d::LineSeg3d(Vec3d const& startPoint, Vec3d const& endPoint) : startPoint_(startPoint), endPoint_(endPoint) {}

double LineSeg3d::GetLength() { return engine::distance(vector_of(startPoint_), vector_of(endPoint_)); }

double LineSeg3d::GetSquaredLength() {
    auto const way = vector_of(endPoint_) - vector_of(startPoint_);
    return dot(way, way);
}

Vec3d LineSeg3d::GetStartPoint() { return startPoint_; }
Vec3d LineSeg3d::GetEndPoint() { return endPoint_; }
Vec3d LineSeg3d::GetMidpoint() { return engine::value_of(0.5 * vector_of(startPoint_) + 0.5 * vector_of(endPoint_)); }
BoundingBox3d LineSeg3d::GetBoundingBox() { return startPoint_.Hull(endPoint_); }
void LineSeg3d::SetStartPoint(Vec3d const& point) { startPoint_ = point; }
void LineSeg3d::SetEndPoint(Vec3d const& point) { endPoint_ = point; }

LineSeg3d LineSeg3d::TranslatedBy(Vec3d const& offset) { return mapped(engine::translation(offset), *this); }

LineSeg3d LineSeg3d::RotatedAbout(Axis3d const& axis, double angle) {
    return mapped(engine::rotation_about(axis, angle), *this);
}

LineSeg3d LineSeg3d::ScaledAbout(Vec3d const& point, double factor) {
    return mapped(engine::scaling_about(point, factor), *this);
}

LineSeg3d LineSeg3d::ScaledAlong(Axis3d const& axis, double factor) {
    return mapped(engine::scaling_along(axis, factor), *this);
}

Tri3d::Tri3d(Vec3d const& first, Vec3d const& second, Vec3d const& third)
    : first_(first), second_(second), third_(third) {}

double Tri3d::GetArea() {
    auto const a = vector_of(first_);
    return 0.5 * length(cross(vector_of(second_) - a, vector_of(third_) - a));
}

Vec3d Tri3d::GetFirstVertex() { return first_; }
Vec3d Tri3d::GetSecondVertex() { return second_; }
Vec3d Tri3d::GetThirdVertex() { return third_; }

Vec3d Tri3d::GetCentroid() {
    auto const a = vector_of(first_);
    return engine::value_of(a + (1.0 / 3) * ((vector_of(second_) - a) + (vector_of(third_) - a)));
}

Vec3d Tri3d::GetNormal() {
    auto const a = vector_of(first_);
    return engine::value_of(normalized(cross(vector_of(second_) - a, vector_of(third_) - a)));
}

BoundingBox3d Tri3d::GetBoundingBox() { return first_.Hull(second_).Hull(third_); }
void Tri3d::SetFirstVertex(Vec3d const& vertex) { first_ = vertex; }
void Tri3d::SetSecondVertex(Vec3d const& vertex) { second_ = vertex; }
void Tri3d::SetThirdVertex(Vec3d const& vertex) { third_ = vertex; }
Tri3d Tri3d::TranslatedBy(Vec3d const& offset) { return mapped(engine::translation(offset), *this); }

Tri3d Tri3d::RotatedAbout(Axis3d const& axis, double angle) {
    return mapped(engine::rotation_about(axis, angle), *this);
}

Tri3d Tri3d::ScaledAbout(Vec3d const& point, double factor) {
    return mapped(engine::scaling_about(point, factor), *this);
}

Tri3d Tri3d::ScaledAlong(Axis3d const& axis, double factor) {
    return mapped(engine::scaling_along(axis, factor), *this);
}

}  // namespace pedflux
