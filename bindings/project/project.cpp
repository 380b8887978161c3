#include "bindings/table.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_actions.h>
#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>
#include <pedflux/avatars.h>
#include <pedflux/elevators.h>
#include <pedflux/events.h>
#include <pedflux/geometry.h>
#include <pedflux/graph_queries.h>
#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/map_queries.h>
#include <pedflux/networks.h>
#include <pedflux/objects.h>
#include <pedflux/presentation.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/selection.h>
#include <pedflux/servers.h>
#include <pedflux/simulation_run.h>
#include <pedflux/table_queries.h>
#include <pedflux/tallies.h>
#include <pedflux/time_references.h>
#include <pedflux/timetables.h>
#include <pedflux/transform.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>
#include <pedflux/vectors.h>
#include <pedflux/vehicles.h>

/// The lookups of a kind of object, by identifier and by name, and the list of all.
#define BASE_OF_KINDS(Kind, Kinds)                                 \
    OVERLOAD(Project, get##Kind, 0, Get##Kind, GlobalId const&)    \
    OVERLOAD(Project, get##Kind, 1, Get##Kind, std::string const&) \
    GET(Project, Kinds)
/// The same and the factory.
#define KIND(Kind, Kinds) \
    CREATE(Project, Kind) \
    BASE_OF_KINDS(Kind, Kinds)

namespace pedflux::jni {

CLASS(Project)
METHOD(Project, create, Create)
METHOD(Project, open, Open)
GET(Project, CurrentProject)
HAS(Project, CurrentProject)
METHOD(Project, save, Save)
METHOD(Project, close, Close)
GET(Project, WarningsFromOpen)
PROPERTY(Project, WorkingDirectory)
METHOD(Project, exportGeometry, ExportGeometry)
METHOD(Project, findNextUniqueName, FindNextUniqueName)
GET(Project, Selection)
PROPERTY(Project, StartTimeInSeconds)
PROPERTY(Project, DurationInSeconds)
PROPERTY(Project, FrameRate)
PROPERTY(Project, RandomSeed)
GET(Project, FrameLength)
PROPERTY(Project, PopulationMultiplier)
HAS(Project, ProjectOrigin)
PROPERTY(Project, ProjectOrigin)
CLEAR(Project, ProjectOrigin)
HAS(Project, DefaultBookmark)
PROPERTY(Project, DefaultBookmark)
CLEAR(Project, DefaultBookmark)
OVERLOAD(Project, hasObject, 0, HasObject, std::string const&)
OVERLOAD(Project, hasObject, 1, HasObject, GlobalId const&)
OVERLOAD(Project, removeAndDeleteObject, 0, RemoveAndDeleteObject, GlobalId const&)
OVERLOAD(Project, removeAndDeleteObject, 1, RemoveAndDeleteObject, std::string const&)
OVERLOAD(Project, removeAndDeleteObject, 2, RemoveAndDeleteObject, std::shared_ptr<SimObject> const&)

// Kinds with more than one factory, and what is made in another way.
CREATE(Project, AvatarFromPreset)
GET(Project, AvatarPresets)
OVERLOAD(Project, createServer, 0, CreateServer, std::string const&, std::vector<Vec3d> const&)
OVERLOAD(Project, createServer, 1, CreateServer, std::string const&, std::shared_ptr<PolylineGeometry> const&)
OVERLOAD(Project, createTallyGraphQuery, 0, CreateTallyGraphQuery, std::string const&, GlobalId const&)
OVERLOAD(Project, createTallyGraphQuery, 1, CreateTallyGraphQuery, std::string const&, std::vector<GlobalId> const&)
OVERLOAD(Project, createVolumeDensityGraphQuery, 0, CreateVolumeDensityGraphQuery, std::string const&,
         std::vector<GlobalId> const&)
OVERLOAD(Project, createVolumeDensityGraphQuery, 1, CreateVolumeDensityGraphQuery, std::string const&, GlobalId const&)
GET(Project, NetworkObjectsConnectedFrom)
GET(Project, NetworkObjectsConnectedTo)
GET(Project, NetworkObjectsConnectedToOrFrom)

BASE_OF_KINDS(ConnectionObject, ConnectionObjects)
BASE_OF_KINDS(NetworkObject, NetworkObjects)
BASE_OF_KINDS(SceneObject, SceneObjects)
BASE_OF_KINDS(Server, Servers)
BASE_OF_KINDS(Object, Objects)
BASE_OF_KINDS(TallyGraphQuery, TallyGraphQueries)
BASE_OF_KINDS(VolumeDensityGraphQuery, VolumeDensityGraphQueries)
BASE_OF_KINDS(WalkableObject, WalkableObjects)

KIND(AgentActionObject, AgentActionObjects)
KIND(AgentAreaTimeTableQuery, AgentAreaTimeTableQueries)
KIND(AgentCountMapQuery, AgentCountMapQueries)
KIND(AgentDensityGraphQuery, AgentDensityGraphQueries)
KIND(AgentElevatorTripTimeTableQuery, AgentElevatorTripTimeTableQueries)
KIND(AgentElevatorWaitTimeTableQuery, AgentElevatorWaitTimeTableQueries)
KIND(AgentFilterObject, AgentFilterObjects)
KIND(AgentLevelOfServiceTimeTableQuery, AgentLevelOfServiceTimeTableQueries)
KIND(AgentPathMapQuery, AgentPathMapQueries)
KIND(AgentProcessChainTimeTableQuery, AgentProcessChainTimeTableQueries)
KIND(AgentProximityTableQuery, AgentProximityTableQueries)
KIND(AgentSocialCostTableQuery, AgentSocialCostTableQueries)
KIND(AgentSpeedRatioGraphQuery, AgentSpeedRatioGraphQueries)
KIND(AgentSummaryTableQuery, AgentSummaryTableQueries)
KIND(AgentTestObject, AgentTestObjects)
KIND(AgentTimeToExitMapQuery, AgentTimeToExitMapQueries)
KIND(AgentTimetableSummaryTableQuery, AgentTimetableSummaryTableQueries)
KIND(AgentTokenTimeTableQuery, AgentTokenTimeTableQueries)
KIND(AgentTransitionTableQuery, AgentTransitionTableQueries)
KIND(AgentTripTimeTableQuery, AgentTripTimeTableQueries)
KIND(AreaOriginDestinationCountTableQuery, AreaOriginDestinationCountTableQueries)
KIND(Avatar, Avatars)
KIND(AverageDensityMapQuery, AverageDensityMapQueries)
KIND(Barrier, Barriers)
KIND(Billboard, Billboards)
KIND(Bookmark, Bookmarks)
KIND(Broadcast, Broadcasts)
KIND(Circulate, Circulates)
KIND(Collection, Collections)
KIND(Cordon, Cordons)
KIND(CumulativeFlowCountGraphQuery, CumulativeFlowCountGraphQueries)
KIND(Dispatch, Dispatches)
KIND(DynamicPathMapQuery, DynamicPathMapQueries)
KIND(Elevator, Elevators)
KIND(ElevatorBank, ElevatorBanks)
KIND(ElevatorTimeWithoutServiceTableQuery, ElevatorTimeWithoutServiceTableQueries)
KIND(Escalator, Escalators)
KIND(Evacuation, Evacuations)
KIND(ExpectedDemandODCountTableQuery, ExpectedDemandODCountTableQueries)
KIND(ExperiencedDensityMapQuery, ExperiencedDensityMapQueries)
KIND(Floor, Floors)
KIND(FlowCountGraphQuery, FlowCountGraphQueries)
KIND(GateAccess, GateAccesses)
KIND(InstantaneousDensityMapQuery, InstantaneousDensityMapQueries)
KIND(InstantaneousProximityMapQuery, InstantaneousProximityMapQueries)
KIND(Journey, Journeys)
KIND(Link, Links)
KIND(MaxDensityMapQuery, MaxDensityMapQueries)
KIND(MaximumProximityMapQuery, MaximumProximityMapQueries)
KIND(Network, Networks)
KIND(NonZeroAverageDensityMapQuery, NonZeroAverageDensityMapQueries)
KIND(Path, Paths)
KIND(Perimeter, Perimeters)
KIND(PopulationCountGraphQuery, PopulationCountGraphQueries)
KIND(Portal, Portals)
KIND(Profile, Profiles)
KIND(Ramp, Ramps)
KIND(RouteBank, RouteBanks)
KIND(ServerAccess, ServerAccesses)
KIND(ServerSummaryTableQuery, ServerSummaryTableQueries)
KIND(SimulationOriginDestinationCountTableQuery, SimulationOriginDestinationCountTableQueries)
KIND(SimulationOriginDestinationSocialCostTableQuery, SimulationOriginDestinationSocialCostTableQueries)
KIND(SimulationOriginDestinationTimeTableQuery, SimulationOriginDestinationTimeTableQueries)
KIND(SimulationRun, SimulationRuns)
KIND(Stair, Stairs)
KIND(StaticCostMapQuery, StaticCostMapQueries)
KIND(StaticDistanceMapQuery, StaticDistanceMapQueries)
KIND(TallyChange, TallyChanges)
KIND(TallyObject, TallyObjects)
KIND(TimeAboveDensityMapQuery, TimeAboveDensityMapQueries)
KIND(TimeInProximityMapQuery, TimeInProximityMapQueries)
KIND(TimeObject, TimeObjects)
KIND(TimeOccupiedMapQuery, TimeOccupiedMapQueries)
KIND(TimeUntilClearMapQuery, TimeUntilClearMapQueries)
KIND(Timetable, Timetables)
KIND(Token, Tokens)
KIND(Transform, Transforms)
KIND(TriggerObject, TriggerObjects)
KIND(Vehicle, Vehicles)
KIND(VisionCountMapQuery, VisionCountMapQueries)
KIND(VisionTimeAboveCountMapQuery, VisionTimeAboveCountMapQueries)
KIND(VisionTimeMapQuery, VisionTimeMapQueries)
KIND(Visual, Visuals)
KIND(Volume, Volumes)
KIND(WaitSpace, WaitSpaces)
KIND(Zone, Zones)

}  // namespace pedflux::jni
