#include "engine/model/properties.h"
#include "engine/scene/scene_states.h"

#include <pedflux/geometry.h>
#include <pedflux/objects.h>

namespace pedflux {

using engine::get;
using engine::has;
using engine::NetworkObjectState;
using engine::SceneState;
using engine::set;

std::shared_ptr<Geometry> SceneObject::GetGeometry() { return get(*this, &SceneState::geometry); }
void SceneObject::SetGeometry(std::shared_ptr<Geometry> const& geometry) {
    set(*this, &SceneState::geometry, geometry);
}

void SceneObject::Translate(Vec3d const& offset) { SetGeometry(GetGeometry()->TranslatedBy(offset)); }
void SceneObject::RotateAbout(Axis3d const& axis, double angle) {
    SetGeometry(GetGeometry()->RotatedAbout(axis, angle));
}
void SceneObject::ScaleAbout(Vec3d const& point, double factor) {
    SetGeometry(GetGeometry()->ScaledAbout(point, factor));
}
void SceneObject::ScaleAlong(Axis3d const& axis, double factor) {
    SetGeometry(GetGeometry()->ScaledAlong(axis, factor));
}
void SceneObject::MirrorAcross(Axis3d const& axis) { SetGeometry(GetGeometry()->MirroredAcross(axis)); }

bool NetworkObject::HasDistanceAdded() { return has(*this, &NetworkObjectState::distance_added); }
double NetworkObject::GetDistanceAdded() { return get(*this, &NetworkObjectState::distance_added); }
void NetworkObject::SetDistanceAdded(double distance) { set(*this, &NetworkObjectState::distance_added, distance); }

}  // namespace pedflux
