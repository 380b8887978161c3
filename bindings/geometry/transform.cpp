#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/transform.h>
#include <pedflux/vectors.h>

namespace pedflux::jni {

CLASS(Transform, Group)
PROPERTY(Transform, Scale)
PROPERTY(Transform, Translation)
PROPERTY(Transform, Rotation)
GET(Transform, TypeId)
ADD(Transform, Item)
ADD(Transform, Items)
SET(Transform, Items)
METHOD(Transform, resetTransformWithoutChangingMembers, ResetTransformWithoutChangingMembers)

}  // namespace pedflux::jni
