#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"
#include "engine/scene/avatar_state.h"
#include "engine/scene/profile_state.h"

#include <pedflux/avatars.h>
#include <pedflux/exception.h>
#include <pedflux/profiles.h>

#include <fmt/format.h>

namespace pedflux {

using engine::AvatarState;
using engine::Look;

PEDFLUX_PEOPLE_KINDS(OBJECT_KIND)

std::shared_ptr<Avatar> Project::CreateAvatar(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh) {
    return engine::create<AvatarState>(*this, name, std::pair(&AvatarState::look, Look(engine::OwnLook{mesh})));
}

std::shared_ptr<Avatar> Project::CreateAvatarFromPreset(std::string const& name,
                                                        std::shared_ptr<AvatarPreset> const& preset) {
    if (!preset) throw Exception(fmt::format("Avatar '{}': the preset must be given, not empty", name));
    return engine::create<AvatarState>(*this, name, std::pair(&AvatarState::look, Look(engine::PresetLook{preset})));
}

}  // namespace pedflux
