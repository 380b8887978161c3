#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#include <vector>

namespace pedflux {

/// A group of scene objects that are placed together: scaled about the zero point, then turned about the x, y and z
/// axes in this order, then moved. Changing it moves its items from where the old placement had put them to where the
/// new one puts them; an object that is added is placed, one that is removed is put back.
class PEDFLUX_API Transform : public Group {
  public:
    using Group::Group;

    /// Metres.
    Vec3d GetTranslation();
    void SetTranslation(Vec3d const& translation);
    /// The angles about the x, y and z axes, right-handed, in degrees.
    Vec3d GetRotation();
    void SetRotation(Vec3d const& rotation);
    double GetScale();
    /// @param scale greater than 0
    void SetScale(double scale);

    /// Replaces the items: scene objects, each of them once.
    void SetItems(std::vector<GlobalId> const& items);
    /// Adds a scene object; one that is in it already is not added again.
    void AddItem(GlobalId const& item);
    void AddItems(std::vector<GlobalId> const& items);

    /// Makes the present places of the items those of the placement that changes nothing.
    void ResetTransformWithoutChangingMembers();
};

}  // namespace pedflux
