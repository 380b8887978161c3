#include "engine/model/properties.h"
#include "engine/project/avatar_presets.h"
#include "engine/scene/avatar_state.h"

#include <pedflux/avatars.h>
#include <pedflux/geometry.h>

#include <variant>

namespace pedflux {

using engine::AvatarState;
using engine::get;
using engine::OwnLook;
using engine::PresetLook;

namespace engine {

void AvatarState::check(AvatarState const& self) {
    auto const* const look = std::get_if<PresetLook>(&self.look);
    if (look != nullptr && !look->preset) refuse_empty(Subject{owner_of(self), "look.preset"});
}

}  // namespace engine

std::shared_ptr<MeshGeometry> Avatar::GetGeometry() {
    if (auto const preset = GetSourcePreset()) return engine::figure_mesh_of(*preset);
    return std::get<OwnLook>(get(*this, &AvatarState::look)).geometry->AsMeshGeometry();
}
void Avatar::SetGeometry(std::shared_ptr<MeshGeometry> const& mesh) {
    engine::set(*this, &AvatarState::look, OwnLook{mesh});
}

bool Avatar::HasSourcePreset() { return GetSourcePreset() != nullptr; }
std::shared_ptr<AvatarPreset> Avatar::GetSourcePreset() {
    auto const* const look = std::get_if<PresetLook>(&get(*this, &AvatarState::look));
    return look == nullptr ? nullptr : look->preset;
}
bool Avatar::IsAnimated() {
    auto const preset = GetSourcePreset();
    return preset && preset->IsAnimated();
}

}  // namespace pedflux
