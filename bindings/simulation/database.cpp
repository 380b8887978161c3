#include "bindings/table.h"

#include <pedflux/agent_data.h>
#include <pedflux/agent_filters.h>
#include <pedflux/database.h>
#include <pedflux/identifiers.h>

namespace pedflux::jni {

CLASS(Database)
METHOD(Database, open, Open)
METHOD(Database, close, Close)
GET(Database, FirstFrame)
GET(Database, LastFrame)
GET(Database, FrameRate)
GET(Database, AgentCount)
GET(Database, FrameLength)
HAS(Database, Agent)
GET(Database, AgentFirstFrame)
GET(Database, AgentLastFrame)
GET(Database, AgentCurrentFloor)
GET(Database, AgentTokens)
GET(Database, AllAgents)
OVERLOAD(Database, getAgentsOnFloor, 0, GetAgentsOnFloor, GlobalId const&, int)
OVERLOAD(Database, getAgentsOnFloor, 1, GetAgentsOnFloor, GlobalId const&, int, std::shared_ptr<AgentFilter> const&)
OVERLOAD(Database, getFloorPopulation, 0, GetFloorPopulation, GlobalId const&, int)
OVERLOAD(Database, getFloorPopulation, 1, GetFloorPopulation, GlobalId const&, int, std::shared_ptr<AgentFilter> const&)
OVERLOAD(Database, getFrameData, 0, GetFrameData, int)
OVERLOAD(Database, getFrameData, 1, GetFrameData, double)

}  // namespace pedflux::jni
