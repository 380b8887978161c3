#include "bindings/table.h"

#include <pedflux/events.h>
#include <pedflux/geometry.h>
#include <pedflux/graph_queries.h>
#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/map_queries.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/selection.h>
#include <pedflux/simulation_run.h>
#include <pedflux/transform.h>
#include <pedflux/vectors.h>

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

BASE_OF_KINDS(ConnectionObject, ConnectionObjects)
BASE_OF_KINDS(NetworkObject, NetworkObjects)
BASE_OF_KINDS(Object, Objects)
BASE_OF_KINDS(SceneObject, SceneObjects)
BASE_OF_KINDS(WalkableObject, WalkableObjects)
KIND(AgentCountMapQuery, AgentCountMapQueries)
KIND(AverageDensityMapQuery, AverageDensityMapQueries)
KIND(Barrier, Barriers)
KIND(Collection, Collections)
KIND(Evacuation, Evacuations)
KIND(ExperiencedDensityMapQuery, ExperiencedDensityMapQueries)
KIND(Floor, Floors)
KIND(InstantaneousDensityMapQuery, InstantaneousDensityMapQueries)
KIND(Journey, Journeys)
KIND(Link, Links)
KIND(MaxDensityMapQuery, MaxDensityMapQueries)
KIND(NonZeroAverageDensityMapQuery, NonZeroAverageDensityMapQueries)
KIND(Perimeter, Perimeters)
KIND(PopulationCountGraphQuery, PopulationCountGraphQueries)
KIND(Portal, Portals)
KIND(Profile, Profiles)
KIND(Ramp, Ramps)
KIND(RouteBank, RouteBanks)
KIND(SimulationRun, SimulationRuns)
KIND(Stair, Stairs)
KIND(Transform, Transforms)
KIND(Zone, Zones)

}  // namespace pedflux::jni
