#pragma once

#include "engine/model/field_type.h"
#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/scene_states.h"

#include <pedflux/avatars.h>
#include <pedflux/geometry.h>
#include <pedflux/objects.h>

#include <memory>
#include <string_view>
#include <variant>

namespace pedflux::engine {

template <>
FieldType const& field_type<std::shared_ptr<AvatarPreset>>();

/// An avatar with a mesh of its own.
struct OwnLook {
    static constexpr std::string_view NAME = "mesh";

    std::shared_ptr<Geometry> geometry;  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("geometry", self.geometry, mesh_rule);
    }
};

/// An avatar with the mesh of a preset.
struct PresetLook {
    static constexpr std::string_view NAME = "preset";

    std::shared_ptr<AvatarPreset> preset;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("preset", self.preset);
    }
};

using Look = std::variant<OwnLook, PresetLook>;

struct AvatarState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::AVATAR;
    static constexpr std::string_view NAME = "Avatar";
    using Handle = Avatar;

    Look look;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("look", self.look);
    }
    static void check(AvatarState const& self);
};

}  // namespace pedflux::engine
