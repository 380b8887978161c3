#include "bindings/kinds.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_actions.h>
#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>
#include <pedflux/avatars.h>
#include <pedflux/elevators.h>
#include <pedflux/events.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/networks.h>
#include <pedflux/objects.h>
#include <pedflux/presentation.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/selection.h>
#include <pedflux/servers.h>
#include <pedflux/simulation_run.h>
#include <pedflux/tallies.h>
#include <pedflux/time_references.h>
#include <pedflux/timetables.h>
#include <pedflux/transform.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>
#include <pedflux/vectors.h>
#include <pedflux/vehicles.h>

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
GET(Project, NetworkObjectsConnectedFrom)
GET(Project, NetworkObjectsConnectedTo)
GET(Project, NetworkObjectsConnectedToOrFrom)

BASE_OF_KINDS(ConnectionObject, ConnectionObjects)
BASE_OF_KINDS(NetworkObject, NetworkObjects)
BASE_OF_KINDS(SceneObject, SceneObjects)
BASE_OF_KINDS(Server, Servers)
BASE_OF_KINDS(Object, Objects)
BASE_OF_KINDS(WalkableObject, WalkableObjects)

KIND(AgentActionObject, AgentActionObjects)
KIND(AgentFilterObject, AgentFilterObjects)
KIND(AgentTestObject, AgentTestObjects)
KIND(Avatar, Avatars)
KIND(Barrier, Barriers)
KIND(Billboard, Billboards)
KIND(Bookmark, Bookmarks)
KIND(Broadcast, Broadcasts)
KIND(Circulate, Circulates)
KIND(Collection, Collections)
KIND(Cordon, Cordons)
KIND(Dispatch, Dispatches)
KIND(Elevator, Elevators)
KIND(ElevatorBank, ElevatorBanks)
KIND(Escalator, Escalators)
KIND(Evacuation, Evacuations)
KIND(Floor, Floors)
KIND(GateAccess, GateAccesses)
KIND(Journey, Journeys)
KIND(Link, Links)
KIND(Network, Networks)
KIND(Path, Paths)
KIND(Perimeter, Perimeters)
KIND(Portal, Portals)
KIND(Profile, Profiles)
KIND(Ramp, Ramps)
KIND(RouteBank, RouteBanks)
KIND(ServerAccess, ServerAccesses)
KIND(SimulationRun, SimulationRuns)
KIND(Stair, Stairs)
KIND(TallyChange, TallyChanges)
KIND(TallyObject, TallyObjects)
KIND(TimeObject, TimeObjects)
KIND(Timetable, Timetables)
KIND(Token, Tokens)
KIND(Transform, Transforms)
KIND(TriggerObject, TriggerObjects)
KIND(Vehicle, Vehicles)
KIND(Visual, Visuals)
KIND(Volume, Volumes)
KIND(WaitSpace, WaitSpaces)
KIND(Zone, Zones)

}  // namespace pedflux::jni
