#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <string>

namespace pedflux {

namespace engine {
struct Figure;
struct FigureAccess;
}  // namespace engine

class MeshGeometry;

/// A look that comes with the library: an entry of the list that `Project::GetAvatarPresets` gives. It never changes.
class PEDFLUX_API AvatarPreset {
  public:
    /// Used by the library.
    explicit AvatarPreset(engine::Figure const& figure);

    /// The same in every process and release.
    GlobalId GetId();
    std::string GetName();
    /// What the preset looks like, with its height, in one sentence.
    std::string GetDescription();
    /// Whether the figure moves its limbs as it walks. No preset of this version does.
    bool IsAnimated();

  private:
    friend engine::FigureAccess;

    engine::Figure const* figure_;
};

/// How people are shown: a mesh of its own, or that of a preset. The mesh is in metres about a person who stands at the
/// zero point on the plane y = 0 and looks forward, towards -z.
class PEDFLUX_API Avatar : public SimObject {
  public:
    using SimObject::SimObject;

    /// The mesh, whether it is the avatar's own or the preset's.
    std::shared_ptr<MeshGeometry> GetGeometry();
    /// Gives the avatar a mesh of its own. If it was that of a preset, it is no longer.
    void SetGeometry(std::shared_ptr<MeshGeometry> const& mesh);

    bool HasSourcePreset();
    /// The preset that the avatar looks like; empty for one with a mesh of its own.
    std::shared_ptr<AvatarPreset> GetSourcePreset();
    /// Whether the preset is animated; a mesh of one's own is not.
    bool IsAnimated();
};

}  // namespace pedflux
