#include "engine/project/avatar_presets.h"

#include "engine/model/codec.h"
#include "engine/scene/avatar_state.h"

#include <pedflux/project.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

namespace pedflux::engine {

namespace {

// Feet that point forwards and arms show which way a figure looks.

constexpr FigurePart ADULT[] = {
    {{-0.15, 0, -0.18}, {-0.03, 0.08, 0.09}},     // feet
    {{0.03, 0, -0.18}, {0.15, 0.08, 0.09}},       //
    {{-0.15, 0.08, -0.07}, {-0.03, 0.85, 0.08}},  // legs
    {{0.03, 0.08, -0.07}, {0.15, 0.85, 0.08}},    //
    {{-0.16, 0.85, -0.11}, {0.16, 1.45, 0.11}},   // trunk
    {{-0.23, 0.78, -0.05}, {-0.16, 1.42, 0.05}},  // arms
    {{0.16, 0.78, -0.05}, {0.23, 1.42, 0.05}},    //
    {{0, 1.45, 0}, {0, 1.52, 0}, 0.06},           // neck
    {{0, 1.52, -0.01}, {0, 1.75, -0.01}, 0.1},    // head
};

constexpr FigurePart CHILD[] = {
    {{-0.11, 0, -0.13}, {-0.02, 0.06, 0.06}},     // feet
    {{0.02, 0, -0.13}, {0.11, 0.06, 0.06}},       //
    {{-0.11, 0.06, -0.05}, {-0.02, 0.55, 0.06}},  // legs
    {{0.02, 0.06, -0.05}, {0.11, 0.55, 0.06}},    //
    {{-0.12, 0.55, -0.08}, {0.12, 0.95, 0.08}},   // trunk
    {{-0.17, 0.5, -0.04}, {-0.12, 0.93, 0.04}},   // arms
    {{0.12, 0.5, -0.04}, {0.17, 0.93, 0.04}},     //
    {{0, 0.95, 0}, {0, 1, 0}, 0.045},             // neck
    {{0, 1, -0.01}, {0, 1.2, -0.01}, 0.09},       // head
};

// A trolley case that the right hand pulls.
constexpr FigurePart TROLLEY[] = {
    {{0.02, 0.08, 0.32}, {0.42, 0.68, 0.56}},        // case
    {{0.1, 0.68, 0.33}, {0.12, 1, 0.35}},            // rods of the handle
    {{0.32, 0.68, 0.33}, {0.34, 1, 0.35}},           //
    {{0.1, 1, 0.32}, {0.34, 1.03, 0.36}},            // grip
    {{0.05, 0.04, 0.52}, {0.09, 0.04, 0.52}, 0.04},  // wheels
    {{0.35, 0.04, 0.52}, {0.39, 0.04, 0.52}, 0.04},  //
};

constexpr FigurePart SITTING[] = {
    {{-0.15, 0.12, -0.62}, {-0.03, 0.2, -0.36}},  // feet
    {{0.03, 0.12, -0.62}, {0.15, 0.2, -0.36}},    //
    {{-0.15, 0.2, -0.5}, {-0.03, 0.5, -0.36}},    // lower legs
    {{0.03, 0.2, -0.5}, {0.15, 0.5, -0.36}},      //
    {{-0.15, 0.5, -0.5}, {-0.03, 0.64, 0}},       // thighs
    {{0.03, 0.5, -0.5}, {0.15, 0.64, 0}},         //
    {{-0.16, 0.5, 0}, {0.16, 1.1, 0.22}},         // trunk
    {{-0.23, 0.7, 0.05}, {-0.16, 1.07, 0.15}},    // arms
    {{0.16, 0.7, 0.05}, {0.23, 1.07, 0.15}},      //
    {{0, 1.1, 0.11}, {0, 1.17, 0.11}, 0.06},      // neck
    {{0, 1.17, 0.1}, {0, 1.38, 0.1}, 0.1},        // head
};

constexpr FigurePart WHEELCHAIR[] = {
    {{-0.22, 0.44, -0.36}, {0.22, 0.5, 0.24}},           // seat
    {{-0.22, 0.5, 0.24}, {0.22, 0.92, 0.28}},            // back
    {{-0.2, 0.08, -0.62}, {0.2, 0.12, -0.38}},           // footrest
    {{-0.3, 0.3, 0.1}, {-0.26, 0.3, 0.1}, 0.3},          // driving wheels
    {{0.26, 0.3, 0.1}, {0.3, 0.3, 0.1}, 0.3},            //
    {{-0.24, 0.08, -0.34}, {-0.21, 0.08, -0.34}, 0.08},  // castors
    {{0.21, 0.08, -0.34}, {0.24, 0.08, -0.34}, 0.08},    //
};

constexpr Figure FIGURES[] = {
    {"97761029-0af4-45fb-bafe-5f0808729a2a", "Adult", "An adult of 1.75 m.", ADULT, {}},
    {"b07497de-d05c-48ae-9e25-fe90cce86510", "Child", "A child of 1.2 m.", CHILD, {}},
    {"4e950e7f-cad2-4446-914e-bb61ddb66668", "Adult with trolley case",
     "An adult of 1.75 m who pulls a trolley case along.", ADULT, TROLLEY},
    {"fe15866d-46db-4a65-8c8d-a5304fc815e4", "Wheelchair user", "An adult in a wheelchair, 1.38 m high.", SITTING,
     WHEELCHAIR},
};

void add_part(FigurePart const& part, std::vector<Tri3d>& triangles) {
    constexpr int sides = 12;
    auto const mesh = part.radius > 0 ? MeshGeometry::CreateCylinder(part.radius, part.from, part.to, sides)
                                      : MeshGeometry::CreateBox(part.from, part.to);
    std::ranges::copy(mesh->GetFaces(), std::back_inserter(triangles));
}

std::shared_ptr<MeshGeometry> mesh_of(Figure const& figure) {
    std::vector<Tri3d> triangles;
    for (auto const& part : figure.person) add_part(part, triangles);
    for (auto const& part : figure.things) add_part(part, triangles);
    return MeshGeometry::Create(triangles);
}

template <class Element, class Make>
std::vector<std::shared_ptr<Element>> one_for_each_figure(Make const& make) {
    std::vector<std::shared_ptr<Element>> made;
    std::ranges::transform(FIGURES, std::back_inserter(made), make);
    return made;
}

}  // namespace

std::vector<std::shared_ptr<AvatarPreset>> const& avatar_presets() {
    static auto const presets =
        one_for_each_figure<AvatarPreset>([](Figure const& figure) { return std::make_shared<AvatarPreset>(figure); });
    return presets;
}

std::shared_ptr<AvatarPreset> avatar_preset(GlobalId const& id) {
    auto const& presets = avatar_presets();
    auto const found =
        std::ranges::find_if(presets, [&](auto const& preset) { return preset->GetId().InternalEquals(id); });
    return found == presets.end() ? nullptr : *found;
}

std::shared_ptr<MeshGeometry> figure_mesh_of(AvatarPreset const& preset) {
    static auto const meshes = one_for_each_figure<MeshGeometry>(mesh_of);
    return meshes[static_cast<std::size_t>(&FigureAccess::figure(preset) - FIGURES)];
}

/// Presets are written by identifier.
template <>
FieldType const& field_type<std::shared_ptr<AvatarPreset>>() {
    using Preset = std::shared_ptr<AvatarPreset>;
    static constexpr FieldType type{&typeid(Preset),
                                    PlainType{[](void const* value) {
                                                  auto const& preset = *static_cast<Preset const*>(value);
                                                  return preset ? Json(preset->GetId().GetString()) : Json();
                                              },
                                              [](void* value, Json const& json, Reading& reading) {
                                                  GlobalId id;
                                                  read_json(id, json, reading);
                                                  auto const preset = avatar_preset(id);
                                                  if (!preset) {
                                                      reading.refuse("the identifier of an avatar preset", json);
                                                  }
                                                  *static_cast<Preset*>(value) = preset;
                                              },
                                              nullptr}};
    return type;
}

}  // namespace pedflux::engine

namespace pedflux {

AvatarPreset::AvatarPreset(engine::Figure const& figure) : figure_(&figure) {}

GlobalId AvatarPreset::GetId() { return GlobalId(figure_->id); }
std::string AvatarPreset::GetName() { return figure_->name; }
std::string AvatarPreset::GetDescription() { return figure_->description; }
bool AvatarPreset::IsAnimated() { return false; }

std::vector<std::shared_ptr<AvatarPreset>> Project::GetAvatarPresets() { return engine::avatar_presets(); }

}  // namespace pedflux
