#include "bindings/table.h"

#include <pedflux/agents.h>
#include <pedflux/aggregation.h>
#include <pedflux/elevators.h>
#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/project.h>
#include <pedflux/simulation.h>
#include <pedflux/vectors.h>

namespace pedflux::jni {

CLASS(Simulation)
OVERLOAD(Simulation, create, 0, Create, std::shared_ptr<Project> const&, GlobalId const&)
OVERLOAD(Simulation, create, 1, Create, std::shared_ptr<Project> const&, GlobalId const&, SimulationOptions const&)
OVERLOAD(Simulation, create, 2, Create, std::shared_ptr<Project> const&, std::string const&, std::string const&)
OVERLOAD(Simulation, create, 3, Create, std::shared_ptr<Project> const&, std::string const&, std::string const&,
         SimulationOptions const&)
METHOD(Simulation, step, Step)
METHOD(Simulation, moveAgents, MoveAgents)
CREATE(Simulation, Agents)
GET(Simulation, AllAgents)
METHOD(Simulation, chooseAgentTargets, ChooseAgentTargets)
METHOD(Simulation, stop, Stop)
CLEAR(Simulation, Issues)
IS(Simulation, Done)
IS(Simulation, Valid)
GET(Simulation, CurrentFrame)
GET(Simulation, FrameLength)
GET(Simulation, FrameRate)
GET(Simulation, Clock)
GET(Simulation, Issues)
GET(Simulation, Agent)
GET(Simulation, AgentsInBox)
GET(Simulation, AgentsNearPoint)
GET(Simulation, AgentsOn)
OVERLOAD(Simulation, requestNewAgent, 0, RequestNewAgent, GlobalId const&)
OVERLOAD(Simulation, requestNewAgent, 1, RequestNewAgent, AgentRequest const&)
GET(Simulation, Population)
GET(Simulation, TallyValue)
ADD(Simulation, ToTallyValue)
METHOD(Simulation, resetTallyValue, ResetTallyValue)
OVERLOAD(Simulation, openGate, 0, OpenGate, GlobalId const&)
OVERLOAD(Simulation, openGate, 1, OpenGate, GlobalId const&, ConnectionObjectDirection)
OVERLOAD(Simulation, closeGate, 0, CloseGate, GlobalId const&)
OVERLOAD(Simulation, closeGate, 1, CloseGate, GlobalId const&, ConnectionObjectDirection)
OVERLOAD(Simulation, resetGate, 0, ResetGate, GlobalId const&)
OVERLOAD(Simulation, resetGate, 1, ResetGate, GlobalId const&, ConnectionObjectDirection)
OVERLOAD(Simulation, isGateOpenToAll, 0, IsGateOpenToAll, GlobalId const&)
OVERLOAD(Simulation, isGateOpenToAll, 1, IsGateOpenToAll, GlobalId const&, ConnectionObjectDirection)
OVERLOAD(Simulation, isGateClosedToAll, 0, IsGateClosedToAll, GlobalId const&)
OVERLOAD(Simulation, isGateClosedToAll, 1, IsGateClosedToAll, GlobalId const&, ConnectionObjectDirection)
METHOD(Simulation, openServerEntrance, OpenServerEntrance)
METHOD(Simulation, closeServerEntrance, CloseServerEntrance)
METHOD(Simulation, resetServerEntrance, ResetServerEntrance)
IS(Simulation, ServerEntranceOpenToAll)
IS(Simulation, ServerEntranceClosedToAll)
METHOD(Simulation, openServerExit, OpenServerExit)
METHOD(Simulation, closeServerExit, CloseServerExit)
METHOD(Simulation, resetServerExit, ResetServerExit)
IS(Simulation, ServerExitOpenToAll)
IS(Simulation, ServerExitClosedToAll)
METHOD(Simulation, existsPathTo, ExistsPathTo)
GET(Simulation, DistanceAlongPathTo)
GET(Simulation, DirectionAlongPathTo)
GET(Simulation, ClosestPointWithPathTo)
OVERLOAD(Simulation, getElevatorCar, 0, GetElevatorCar, GlobalId const&)
OVERLOAD(Simulation, getElevatorCar, 1, GetElevatorCar, std::string const&)

CLASS(SimulationOptions)
CONSTRUCTOR(SimulationOptions)
SET(SimulationOptions, RandomSeed)
SET(SimulationOptions, ThreadCount)
ADD(SimulationOptions, ExtraGoal)
ADD(SimulationOptions, ExtraGoals)

CLASS(Clock)
GET(Clock, CurrentFrame)
GET(Clock, CurrentSecond)
GET(Clock, CurrentSecondAsInt)
GET(Clock, CurrentTimeString)

CLASS(FrameSummary)
GET(FrameSummary, CreatedAgents)
GET(FrameSummary, DeletedAgents)
GET(FrameSummary, AgentsThatEntered)
GET(FrameSummary, AgentsThatExited)
GET(FrameSummary, AgentsThatLost)
GET(FrameSummary, AgentsThatReceived)

}  // namespace pedflux::jni
