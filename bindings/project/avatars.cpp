#include "bindings/table.h"

#include <pedflux/avatars.h>
#include <pedflux/color.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>

namespace pedflux::jni {

CLASS(Avatar, SimObject)
PROPERTY(Avatar, Geometry)
GET(Avatar, SourcePreset)
GET(Avatar, TypeId)
HAS(Avatar, SourcePreset)
IS(Avatar, Animated)

CLASS(AvatarPreset)
GET(AvatarPreset, Description)
GET(AvatarPreset, Id)
GET(AvatarPreset, Name)
IS(AvatarPreset, Animated)

}  // namespace pedflux::jni
