#include "bindings/table.h"

#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/scene.h>
#include <pedflux/vectors.h>

namespace pedflux::jni {

CLASS(Floor, WalkableObject)
GET(Floor, TypeId)

CLASS(Portal, NetworkObject)
PROPERTY(Portal, AgentInitialPlacement)
GET(Portal, GoalLine)
GET(Portal, TypeId)
IS(Portal, Entrance)
IS(Portal, Exit)

CLASS(Link, ConnectionObject)
CLEAR(Link, LocalAgentMaxSpeed)
CLEAR(Link, LocalDirectionBias)
CLEAR(Link, LocalSpeedDensityStandard)
PROPERTY(Link, LocalAgentMaxSpeed)
GET(Link, TypeId)
SET(Link, Geometry)
SET(Link, LocalDirectionBias)
SET(Link, LocalSpeedDensityStandard)

CLASS(Stair, ConnectionObject)
CLEAR(Stair, LocalAgentMaxSpeed)
CLEAR(Stair, LocalDirectionBias)
CLEAR(Stair, LocalSpeedDensityStandard)
GET(Stair, LocalAgentMaxSpeedDown)
GET(Stair, LocalAgentMaxSpeedUp)
GET(Stair, TypeId)
SET(Stair, LocalAgentMaxSpeedUpAndDown)
SET(Stair, LocalDirectionBias)
SET(Stair, LocalSpeedDensityStandard)

CLASS(Ramp, ConnectionObject)
CLEAR(Ramp, LocalAgentMaxSpeed)
CLEAR(Ramp, LocalDirectionBias)
CLEAR(Ramp, LocalSpeedDensityStandard)
GET(Ramp, LocalAgentMaxSpeedDown)
GET(Ramp, LocalAgentMaxSpeedUp)
GET(Ramp, TypeId)
SET(Ramp, LocalAgentMaxSpeedUpAndDown)
SET(Ramp, LocalDirectionBias)
SET(Ramp, LocalSpeedDensityStandard)

CLASS(Barrier, SceneObject)
GET(Barrier, TypeId)

CLASS(Zone, SimObject)
ADD(Zone, BaseMember)
ADD(Zone, BaseMembers)
PROPERTY(Zone, BaseMembers)
PROPERTY(Zone, MembershipType)
GET(Zone, TypeId)
HAS(Zone, BaseMember)

CLASS(Collection, Group)
ADD(Collection, Item)
ADD(Collection, ItemWithWeight)
ADD(Collection, Items)
PROPERTY(Collection, ItemWeight)
GET(Collection, ItemWeights)
PROPERTY(Collection, Items)
GET(Collection, TypeId)
HAS(Collection, Item)
HAS(Collection, Weights)
METHOD(Collection, removeItem, RemoveItem)
SET(Collection, AutomaticWeights)
SET(Collection, ItemsWithWeights)
SET(Collection, ManualWeights)

CLASS(Perimeter, Group)
ADD(Perimeter, Item)
ADD(Perimeter, Items)
GET(Perimeter, TypeId)
SET(Perimeter, Items)

CLASS(RouteBank, Group)
ADD(RouteBank, Item)
ADD(RouteBank, Items)
GET(RouteBank, TypeId)
SET(RouteBank, Items)

}  // namespace pedflux::jni
