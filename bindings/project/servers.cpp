#include "bindings/table.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/distributions.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/servers.h>
#include <pedflux/vectors.h>

namespace pedflux::jni {

CLASS(Server, NetworkObject)
CLEAR(Server, CapacityLimit)
OPTIONAL(Server, AccessPreferredTest)
OPTIONAL(Server, AccessRequiredTest)
GET(Server, CapacityLimit)
OPTIONAL(Server, ContactTime)
GET(Server, ContactTimeRuleDurations)
GET(Server, ContactTimeRuleTests)
GET(Server, ProcessedActionCopy)
GET(Server, ReleaseActionCopy)
GET(Server, TypeId)
HAS(Server, CapacityLimit)
HAS(Server, ProcessedAction)
HAS(Server, ReleaseAction)
FLAG(Server, AutoCapacityLimit)
SET(Server, ContactTimeRules)
SET(Server, FixedCapacityLimit)
SET(Server, Geometry)
SET(Server, ProcessedAction)
SET(Server, ReleaseAction)

}  // namespace pedflux::jni
