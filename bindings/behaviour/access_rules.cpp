#include "bindings/table.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_tests.h>
#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/triggers.h>

namespace pedflux::jni {

CLASS(GateAccess, SimObject)
GET(GateAccess, TypeId)
PROPERTY(GateAccess, GatedObjects)
PROPERTY(GateAccess, TriggerRange)
FLAG(GateAccess, CommandToOpen)
FLAG(GateAccess, CommandToClose)
GET(GateAccess, CommandDirection)
HAS(GateAccess, Cycle)
CLEAR(GateAccess, Cycle)
PROPERTY(GateAccess, CycleOnDurationInSeconds)
PROPERTY(GateAccess, CycleOffDurationInSeconds)
OPTIONAL(GateAccess, AgentTest)

CLASS(ServerAccess, SimObject)
GET(ServerAccess, TypeId)
PROPERTY(ServerAccess, Servers)
PROPERTY(ServerAccess, TriggerRange)
FLAG(ServerAccess, CommandToOpen)
FLAG(ServerAccess, CommandToClose)
GET(ServerAccess, CommandAccessPoint)
HAS(ServerAccess, Cycle)
CLEAR(ServerAccess, Cycle)
PROPERTY(ServerAccess, CycleOnDurationInSeconds)
PROPERTY(ServerAccess, CycleOffDurationInSeconds)

CLASS(Token, SimObject)
GET(Token, TypeId)

}  // namespace pedflux::jni
