#include "engine/geometry/affine_map.h"

#include <pedflux/geometry.h>

namespace pedflux {

Geometry::~Geometry() = default;

std::shared_ptr<Geometry> Geometry::ScaledAbout(Vec3d const& point, double factor) {
    return Mapped(engine::scaling_about(point, factor));
}

std::shared_ptr<Geometry> Geometry::ScaledAlong(Axis3d const& axis, double factor) {
    return Mapped(engine::scaling_along(axis, factor));
}

std::shared_ptr<Geometry> Geometry::RotatedAbout(Axis3d const& axis, double angle) {
    return Mapped(engine::rotation_about(axis, angle));
}

std::shared_ptr<Geometry> Geometry::TranslatedBy(Vec3d const& offset) { return Mapped(engine::translation(offset)); }

std::shared_ptr<Geometry> Geometry::MirroredAcross(Axis3d const& axis) {
    return Mapped(engine::mirroring_across(axis));
}

std::shared_ptr<MeshGeometry> Geometry::AsMeshGeometry() { return nullptr; }
std::shared_ptr<RectangleGeometry> Geometry::AsRectangleGeometry() { return nullptr; }
std::shared_ptr<PolylineGeometry> Geometry::AsPolylineGeometry() { return nullptr; }

}  // namespace pedflux
