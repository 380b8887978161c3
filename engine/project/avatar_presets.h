#pragma once

#include <pedflux/avatars.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/vectors.h>

#include <memory>
#include <span>
#include <vector>

/// The looks that come with the library: standing or sitting figures made of boxes and cylinders.
namespace pedflux::engine {

/// A box along the axes between two corners or, with a radius, a cylinder between the centres of its ends. Metres.
struct FigurePart {
    Vec3d from;
    Vec3d to;
    double radius = 0;
};

/// An entry of the catalogue. The person stands at the zero point and looks towards -z.
struct Figure {
    char const* id;
    char const* name;
    char const* description;
    std::span<FigurePart const> person;
    std::span<FigurePart const> things;  ///< what the person carries
};

struct FigureAccess {
    static Figure const& figure(AvatarPreset const& preset) { return *preset.figure_; }
};

/// All presets, always in the same order and the same objects.
std::vector<std::shared_ptr<AvatarPreset>> const& avatar_presets();

/// The preset of an identifier; empty when there is none.
std::shared_ptr<AvatarPreset> avatar_preset(GlobalId const& id);

/// The figure's surface: each part is closed by itself. Always the same object.
std::shared_ptr<MeshGeometry> figure_mesh_of(AvatarPreset const& preset);

}  // namespace pedflux::engine
