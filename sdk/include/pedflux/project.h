#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/vectors.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

class Project;

namespace engine {
class Document;
// NOLINTNEXTLINE(readability-redundant-declaration): the friend below needs it, and this header knows no other.
Document& document_of(Project const& project);
}  // namespace engine

class AgentActionObject;
class AgentAreaTimeTableQuery;
class AgentCountMapQuery;
class AgentDensityGraphQuery;
class AgentElevatorTripTimeTableQuery;
class AgentElevatorWaitTimeTableQuery;
class AgentFilterObject;
class AgentLevelOfServiceTimeTableQuery;
class AgentPathMapQuery;
class AgentProcessChainTimeTableQuery;
class AgentProximityTableQuery;
class AgentSocialCostTableQuery;
class AgentSpeedRatioGraphQuery;
class AgentSummaryTableQuery;
class AgentTestObject;
class AgentTimeToExitMapQuery;
class AgentTimetableSummaryTableQuery;
class AgentTokenTimeTableQuery;
class AgentTransitionTableQuery;
class AgentTripTimeTableQuery;
class AreaOriginDestinationCountTableQuery;
class Avatar;
class AvatarPreset;
class AverageDensityMapQuery;
class Barrier;
class Billboard;
class Bookmark;
class Broadcast;
class Circulate;
class Collection;
class ConnectionObject;
class Cordon;
class CumulativeFlowCountGraphQuery;
class Dispatch;
class DynamicPathMapQuery;
class Elevator;
class ElevatorBank;
class ElevatorTimeWithoutServiceTableQuery;
class Escalator;
class Evacuation;
class ExpectedDemandODCountTableQuery;
class ExperiencedDensityMapQuery;
class Floor;
class FlowCountGraphQuery;
class GateAccess;
class InstantaneousDensityMapQuery;
class InstantaneousProximityMapQuery;
class Issue;
class Journey;
class Link;
class MaxDensityMapQuery;
class MaximumProximityMapQuery;
class MeshGeometry;
class Network;
class NetworkObject;
class NonZeroAverageDensityMapQuery;
class Path;
class Perimeter;
class PolylineGeometry;
class PopulationCountGraphQuery;
class Portal;
class Profile;
class Ramp;
class RectangleGeometry;
class RouteBank;
class SceneObject;
class Selection;
class Server;
class ServerAccess;
class ServerSummaryTableQuery;
class SimObject;
class SimulationOriginDestinationCountTableQuery;
class SimulationOriginDestinationSocialCostTableQuery;
class SimulationOriginDestinationTimeTableQuery;
class SimulationRun;
class Stair;
class StaticCostMapQuery;
class StaticDistanceMapQuery;
class TallyChange;
class TallyGraphQuery;
class TallyObject;
class TimeAboveDensityMapQuery;
class TimeInProximityMapQuery;
class TimeObject;
class TimeOccupiedMapQuery;
class TimeUntilClearMapQuery;
class Timetable;
class Token;
class Transform;
class TriggerObject;
class Vehicle;
class VisionCountMapQuery;
class VisionTimeAboveCountMapQuery;
class VisionTimeMapQuery;
class Visual;
class Volume;
class VolumeDensityGraphQuery;
class WaitSpace;
class WalkableObject;
class Zone;

/// A model: its objects, the settings of its simulation, its selection, and its file.
///
/// One project may be the current one. Creating and opening a project makes it current; the one before stays open for
/// all that hold it. Closing the current project leaves none current.
///
/// Each object has a name of its own and an identifier; both find it. A factory refuses a name that is not valid (see
/// `SimObject::S_IsValidName`) or taken, and a mesh or list that its kind cannot have. A lookup finds objects of its
/// class and of the classes derived from it, and returns an empty pointer when there is none. Lists are in the order of
/// creation. The same object is always the same pointer.
class PEDFLUX_API Project {
  public:
    /// Used by the library; a project is created or opened.
    explicit Project(std::shared_ptr<engine::Document> document);
    Project(Project const&) = delete;
    Project& operator=(Project const&) = delete;
    ~Project();

    /// A project without objects, which becomes the current one.
    static std::shared_ptr<Project> Create();
    /// The project in a file, which becomes the current one. Its working directory is that of the file. Throws
    /// Exception, and opens nothing, when the file cannot be read, is not a project, is damaged, or was made by a newer
    /// release.
    static std::shared_ptr<Project> Open(std::string const& path);
    static bool HasCurrentProject();
    /// The current project; empty when there is none.
    static std::shared_ptr<Project> GetCurrentProject();

    /// Writes the project to a file, as JSON. The file has either its old contents or all of the new ones, whatever
    /// happens meanwhile. Throws Exception when it cannot be written.
    void Save(std::string const& path);
    /// Ends the use of the project: its objects belong to it no more, and whatever else is asked of it throws
    /// Exception. What was not saved is lost.
    void Close();
    /// What opening the file found strange without being misled by it, such as members of a newer release, which are
    /// kept when the project is saved again. Empty for a project that was created.
    std::vector<Issue> GetWarningsFromOpen() const;

    /// Where relative names of results start, an absolute path: the directory of the file that was opened, or that of
    /// the process. It is not saved.
    std::string GetWorkingDirectory();
    /// @param path an existing directory; a relative one starts at the directory of the process
    void SetWorkingDirectory(std::string const& path);

    /// Writes the geometry of objects in metres, in the format that the path's extension names; of all scene objects if
    /// the list is empty. An empty pointer in the list, an object of another project and another extension are refused.
    ///
    /// - `.obj`: Wavefront OBJ with y up, one group for each object
    /// - `.stl`: STL as text with y up, one solid for each mesh; lines are left out
    /// - `.wkt`: the plan as a well-known text geometry collection of x and z, one element for each object: areas, or
    ///   lines for what stands upright
    void ExportGeometry(std::string const& path, std::vector<std::shared_ptr<SimObject>> const& objects);

    /// The base itself if no object has it as its name; otherwise the base followed by a space and the lowest free
    /// number from 2 on. A base that ends in such a number counts on from there. An empty base counts as "Object".
    std::string FindNextUniqueName(std::string const& base);

    /// The selected objects.
    std::shared_ptr<Selection> GetSelection();

    /// When the simulation starts, in seconds after midnight. 0 unless set.
    int GetStartTimeInSeconds();
    /// @param seconds 0 or more
    void SetStartTimeInSeconds(int seconds);
    /// How long the simulation lasts at most. 3600 seconds unless set.
    int GetDurationInSeconds();
    /// @param seconds 1 or more
    void SetDurationInSeconds(int seconds);
    /// Frames per second. 5 unless set.
    int GetFrameRate();
    /// @param rate 1 to 1000
    void SetFrameRate(int rate);
    /// The seconds from frame to frame: 1 / frame rate.
    double GetFrameLength();
    /// What all chance of a simulation starts from; the same seed gives the same run. 1 unless set.
    int GetRandomSeed();
    void SetRandomSeed(int seed);
    /// By what the numbers of people in all events are multiplied. 1 unless set.
    double GetPopulationMultiplier() const;
    /// @param multiplier 0 or more
    void SetPopulationMultiplier(double multiplier);

    bool HasProjectOrigin() const;
    /// Where the project's zero point lies in the coordinates of the outer world, in metres.
    Vec3d GetProjectOrigin();
    void SetProjectOrigin(Vec3d const& origin);
    void ClearProjectOrigin();

    bool HasDefaultBookmark() const;
    GlobalId GetDefaultBookmark();
    /// @param bookmark a bookmark of the project
    void SetDefaultBookmark(GlobalId const& bookmark);
    void ClearDefaultBookmark();

    bool HasObject(std::string const& name);
    bool HasObject(GlobalId const& id);
    /// Takes an object out of the project. Refused while other objects refer to it; the message names them. Pointers to
    /// the object stay valid.
    void RemoveAndDeleteObject(GlobalId const& id);
    void RemoveAndDeleteObject(std::string const& name);
    void RemoveAndDeleteObject(std::shared_ptr<SimObject> const& object);

    std::shared_ptr<SimObject> GetObject(GlobalId const& id);
    std::shared_ptr<SimObject> GetObject(std::string const& name);
    std::vector<std::shared_ptr<SimObject>> GetObjects();

    std::shared_ptr<SceneObject> GetSceneObject(GlobalId const& id);
    std::shared_ptr<SceneObject> GetSceneObject(std::string const& name);
    std::vector<std::shared_ptr<SceneObject>> GetSceneObjects();

    std::shared_ptr<NetworkObject> GetNetworkObject(GlobalId const& id);
    std::shared_ptr<NetworkObject> GetNetworkObject(std::string const& name);
    std::vector<std::shared_ptr<NetworkObject>> GetNetworkObjects();

    std::shared_ptr<WalkableObject> GetWalkableObject(GlobalId const& id);
    std::shared_ptr<WalkableObject> GetWalkableObject(std::string const& name);
    std::vector<std::shared_ptr<WalkableObject>> GetWalkableObjects();

    std::shared_ptr<ConnectionObject> GetConnectionObject(GlobalId const& id);
    std::shared_ptr<ConnectionObject> GetConnectionObject(std::string const& name);
    std::vector<std::shared_ptr<ConnectionObject>> GetConnectionObjects();

    /// A level to walk on, where the mesh looks upwards.
    std::shared_ptr<Floor> CreateFloor(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Floor> GetFloor(GlobalId const& id);
    std::shared_ptr<Floor> GetFloor(std::string const& name);
    std::vector<std::shared_ptr<Floor>> GetFloors();

    /// A place where agents enter and leave, with a thin mesh across their way or flat on a floor.
    std::shared_ptr<Portal> CreatePortal(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Portal> GetPortal(GlobalId const& id);
    std::shared_ptr<Portal> GetPortal(std::string const& name);
    std::vector<std::shared_ptr<Portal>> GetPortals();

    /// A level connection between two spaces.
    std::shared_ptr<Link> CreateLink(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Link> GetLink(GlobalId const& id);
    std::shared_ptr<Link> GetLink(std::string const& name);
    std::vector<std::shared_ptr<Link>> GetLinks();

    /// A flight of stairs.
    std::shared_ptr<Stair> CreateStair(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Stair> GetStair(GlobalId const& id);
    std::shared_ptr<Stair> GetStair(std::string const& name);
    std::vector<std::shared_ptr<Stair>> GetStairs();

    /// A slope between two levels.
    std::shared_ptr<Ramp> CreateRamp(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Ramp> GetRamp(GlobalId const& id);
    std::shared_ptr<Ramp> GetRamp(std::string const& name);
    std::vector<std::shared_ptr<Ramp>> GetRamps();

    /// An obstacle.
    std::shared_ptr<Barrier> CreateBarrier(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Barrier> GetBarrier(GlobalId const& id);
    std::shared_ptr<Barrier> GetBarrier(std::string const& name);
    std::vector<std::shared_ptr<Barrier>> GetBarriers();

    /// An area made of walkable objects.
    std::shared_ptr<Zone> CreateZone(std::string const& name, std::vector<GlobalId> const& baseMembers);
    std::shared_ptr<Zone> GetZone(GlobalId const& id);
    std::shared_ptr<Zone> GetZone(std::string const& name);
    std::vector<std::shared_ptr<Zone>> GetZones();

    /// A group of objects with automatic weights.
    std::shared_ptr<Collection> CreateCollection(std::string const& name, std::vector<GlobalId> const& items);
    std::shared_ptr<Collection> GetCollection(GlobalId const& id);
    std::shared_ptr<Collection> GetCollection(std::string const& name);
    std::vector<std::shared_ptr<Collection>> GetCollections();

    /// An empty group of walkable objects.
    std::shared_ptr<Perimeter> CreatePerimeter(std::string const& name);
    std::shared_ptr<Perimeter> GetPerimeter(GlobalId const& id);
    std::shared_ptr<Perimeter> GetPerimeter(std::string const& name);
    std::vector<std::shared_ptr<Perimeter>> GetPerimeters();

    /// An empty group of connections.
    std::shared_ptr<RouteBank> CreateRouteBank(std::string const& name);
    std::shared_ptr<RouteBank> GetRouteBank(GlobalId const& id);
    std::shared_ptr<RouteBank> GetRouteBank(std::string const& name);
    std::vector<std::shared_ptr<RouteBank>> GetRouteBanks();

    /// An empty group of scene objects, placed where they are.
    std::shared_ptr<Transform> CreateTransform(std::string const& name);
    std::shared_ptr<Transform> GetTransform(GlobalId const& id);
    std::shared_ptr<Transform> GetTransform(std::string const& name);
    std::vector<std::shared_ptr<Transform>> GetTransforms();

    /// A kind of people, with the values of an average adult.
    std::shared_ptr<Profile> CreateProfile(std::string const& name);
    std::shared_ptr<Profile> GetProfile(GlobalId const& id);
    std::shared_ptr<Profile> GetProfile(std::string const& name);
    std::vector<std::shared_ptr<Profile>> GetProfiles();

    /// An event that brings people in and sends them to their destinations.
    std::shared_ptr<Journey> CreateJourney(std::string const& name);
    std::shared_ptr<Journey> GetJourney(GlobalId const& id);
    std::shared_ptr<Journey> GetJourney(std::string const& name);
    std::vector<std::shared_ptr<Journey>> GetJourneys();

    /// An event that clears areas through exits.
    std::shared_ptr<Evacuation> CreateEvacuation(std::string const& name);
    std::shared_ptr<Evacuation> GetEvacuation(GlobalId const& id);
    std::shared_ptr<Evacuation> GetEvacuation(std::string const& name);
    std::vector<std::shared_ptr<Evacuation>> GetEvacuations();

    /// A stored run that is not connected with a database yet.
    std::shared_ptr<SimulationRun> CreateSimulationRun(std::string const& name);
    std::shared_ptr<SimulationRun> GetSimulationRun(GlobalId const& id);
    std::shared_ptr<SimulationRun> GetSimulationRun(std::string const& name);
    std::vector<std::shared_ptr<SimulationRun>> GetSimulationRuns();

    /// A query of the average density of a run.
    std::shared_ptr<AverageDensityMapQuery> CreateAverageDensityMapQuery(std::string const& name,
                                                                         GlobalId const& simulationRun);
    std::shared_ptr<AverageDensityMapQuery> GetAverageDensityMapQuery(GlobalId const& id);
    std::shared_ptr<AverageDensityMapQuery> GetAverageDensityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<AverageDensityMapQuery>> GetAverageDensityMapQueries();

    /// A query of the greatest density of a run.
    std::shared_ptr<MaxDensityMapQuery> CreateMaxDensityMapQuery(std::string const& name,
                                                                 GlobalId const& simulationRun);
    std::shared_ptr<MaxDensityMapQuery> GetMaxDensityMapQuery(GlobalId const& id);
    std::shared_ptr<MaxDensityMapQuery> GetMaxDensityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<MaxDensityMapQuery>> GetMaxDensityMapQueries();

    /// A query of the density of a run at one time.
    std::shared_ptr<InstantaneousDensityMapQuery> CreateInstantaneousDensityMapQuery(std::string const& name,
                                                                                     GlobalId const& simulationRun);
    std::shared_ptr<InstantaneousDensityMapQuery> GetInstantaneousDensityMapQuery(GlobalId const& id);
    std::shared_ptr<InstantaneousDensityMapQuery> GetInstantaneousDensityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<InstantaneousDensityMapQuery>> GetInstantaneousDensityMapQueries();

    /// A query of the density that the people of a run met.
    std::shared_ptr<ExperiencedDensityMapQuery> CreateExperiencedDensityMapQuery(std::string const& name,
                                                                                 GlobalId const& simulationRun);
    std::shared_ptr<ExperiencedDensityMapQuery> GetExperiencedDensityMapQuery(GlobalId const& id);
    std::shared_ptr<ExperiencedDensityMapQuery> GetExperiencedDensityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<ExperiencedDensityMapQuery>> GetExperiencedDensityMapQueries();

    /// A query of the average density of a run while someone was there.
    std::shared_ptr<NonZeroAverageDensityMapQuery> CreateNonZeroAverageDensityMapQuery(std::string const& name,
                                                                                       GlobalId const& simulationRun);
    std::shared_ptr<NonZeroAverageDensityMapQuery> GetNonZeroAverageDensityMapQuery(GlobalId const& id);
    std::shared_ptr<NonZeroAverageDensityMapQuery> GetNonZeroAverageDensityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<NonZeroAverageDensityMapQuery>> GetNonZeroAverageDensityMapQueries();

    /// A query of how many people of a run passed.
    std::shared_ptr<AgentCountMapQuery> CreateAgentCountMapQuery(std::string const& name,
                                                                 GlobalId const& simulationRun);
    std::shared_ptr<AgentCountMapQuery> GetAgentCountMapQuery(GlobalId const& id);
    std::shared_ptr<AgentCountMapQuery> GetAgentCountMapQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentCountMapQuery>> GetAgentCountMapQueries();

    /// A query of how many people of a run were somewhere, over time.
    std::shared_ptr<PopulationCountGraphQuery> CreatePopulationCountGraphQuery(std::string const& name,
                                                                               GlobalId const& simulationRun);
    std::shared_ptr<PopulationCountGraphQuery> GetPopulationCountGraphQuery(GlobalId const& id);
    std::shared_ptr<PopulationCountGraphQuery> GetPopulationCountGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<PopulationCountGraphQuery>> GetPopulationCountGraphQueries();

    /// A moving stair between two levels, with a sloping mesh.
    std::shared_ptr<Escalator> CreateEscalator(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Escalator> GetEscalator(GlobalId const& id);
    std::shared_ptr<Escalator> GetEscalator(std::string const& name);
    std::vector<std::shared_ptr<Escalator>> GetEscalators();

    /// A line that people can follow on foot, given by its points.
    std::shared_ptr<Path> CreatePath(std::string const& name, std::shared_ptr<PolylineGeometry> const& line);
    std::shared_ptr<Path> GetPath(GlobalId const& id);
    std::shared_ptr<Path> GetPath(std::string const& name);
    std::vector<std::shared_ptr<Path>> GetPaths();

    /// A place where people are served one after the other: a desk, a gate, a machine. Its queue runs along the points,
    /// the first of which is where people are served.
    std::shared_ptr<Server> CreateServer(std::string const& name, std::vector<Vec3d> const& points);
    std::shared_ptr<Server> CreateServer(std::string const& name, std::shared_ptr<PolylineGeometry> const& line);
    std::shared_ptr<Server> GetServer(GlobalId const& id);
    std::shared_ptr<Server> GetServer(std::string const& name);
    std::vector<std::shared_ptr<Server>> GetServers();

    /// A line across a walkable surface that counts the agents that cross it.
    std::shared_ptr<Cordon> CreateCordon(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Cordon> GetCordon(GlobalId const& id);
    std::shared_ptr<Cordon> GetCordon(std::string const& name);
    std::vector<std::shared_ptr<Cordon>> GetCordons();

    /// A part of a walkable surface where people wait.
    std::shared_ptr<WaitSpace> CreateWaitSpace(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<WaitSpace> GetWaitSpace(GlobalId const& id);
    std::shared_ptr<WaitSpace> GetWaitSpace(std::string const& name);
    std::vector<std::shared_ptr<WaitSpace>> GetWaitSpaces();

    /// A closed volume of space that queries can refer to.
    std::shared_ptr<Volume> CreateVolume(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Volume> GetVolume(GlobalId const& id);
    std::shared_ptr<Volume> GetVolume(std::string const& name);
    std::vector<std::shared_ptr<Volume>> GetVolumes();

    /// A mesh that is only looked at.
    std::shared_ptr<Visual> CreateVisual(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Visual> GetVisual(GlobalId const& id);
    std::shared_ptr<Visual> GetVisual(std::string const& name);
    std::vector<std::shared_ptr<Visual>> GetVisuals();

    /// A rectangle with text.
    std::shared_ptr<Billboard> CreateBillboard(std::string const& name,
                                               std::shared_ptr<RectangleGeometry> const& rectangle);
    std::shared_ptr<Billboard> GetBillboard(GlobalId const& id);
    std::shared_ptr<Billboard> GetBillboard(std::string const& name);
    std::vector<std::shared_ptr<Billboard>> GetBillboards();

    /// An elevator, with the floor of its car as mesh.
    std::shared_ptr<Elevator> CreateElevator(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Elevator> GetElevator(GlobalId const& id);
    std::shared_ptr<Elevator> GetElevator(std::string const& name);
    std::vector<std::shared_ptr<Elevator>> GetElevators();

    /// A group of elevators that answer the same calls.
    std::shared_ptr<ElevatorBank> CreateElevatorBank(std::string const& name);
    std::shared_ptr<ElevatorBank> GetElevatorBank(GlobalId const& id);
    std::shared_ptr<ElevatorBank> GetElevatorBank(std::string const& name);
    std::vector<std::shared_ptr<ElevatorBank>> GetElevatorBanks();

    /// A selection of the ways through the building that some people know.
    std::shared_ptr<Network> CreateNetwork(std::string const& name);
    std::shared_ptr<Network> GetNetwork(GlobalId const& id);
    std::shared_ptr<Network> GetNetwork(std::string const& name);
    std::vector<std::shared_ptr<Network>> GetNetworks();

    /// What a person looks like, with a mesh of their own or one of the presets.
    std::shared_ptr<Avatar> CreateAvatar(std::string const& name, std::shared_ptr<MeshGeometry> const& mesh);
    std::shared_ptr<Avatar> CreateAvatarFromPreset(std::string const& name,
                                                   std::shared_ptr<AvatarPreset> const& preset);
    /// The presets, which are the same for every project.
    static std::vector<std::shared_ptr<AvatarPreset>> GetAvatarPresets();
    std::shared_ptr<Avatar> GetAvatar(GlobalId const& id);
    std::shared_ptr<Avatar> GetAvatar(std::string const& name);
    std::vector<std::shared_ptr<Avatar>> GetAvatars();

    /// A remembered view of the project.
    std::shared_ptr<Bookmark> CreateBookmark(std::string const& name);
    std::shared_ptr<Bookmark> GetBookmark(GlobalId const& id);
    std::shared_ptr<Bookmark> GetBookmark(std::string const& name);
    std::vector<std::shared_ptr<Bookmark>> GetBookmarks();

    /// An event that sends people around between destinations.
    std::shared_ptr<Circulate> CreateCirculate(std::string const& name);
    std::shared_ptr<Circulate> GetCirculate(GlobalId const& id);
    std::shared_ptr<Circulate> GetCirculate(std::string const& name);
    std::vector<std::shared_ptr<Circulate>> GetCirculates();

    /// A point that receives people and sends them on.
    std::shared_ptr<Dispatch> CreateDispatch(std::string const& name, Vec3d const& location);
    std::shared_ptr<Dispatch> GetDispatch(GlobalId const& id);
    std::shared_ptr<Dispatch> GetDispatch(std::string const& name);
    std::vector<std::shared_ptr<Dispatch>> GetDispatches();

    /// An event that gives an action to agents that are already in the simulation.
    std::shared_ptr<Broadcast> CreateBroadcast(std::string const& name);
    std::shared_ptr<Broadcast> GetBroadcast(GlobalId const& id);
    std::shared_ptr<Broadcast> GetBroadcast(std::string const& name);
    std::vector<std::shared_ptr<Broadcast>> GetBroadcasts();

    /// A trigger with a name.
    std::shared_ptr<TriggerObject> CreateTriggerObject(std::string const& name);
    std::shared_ptr<TriggerObject> GetTriggerObject(GlobalId const& id);
    std::shared_ptr<TriggerObject> GetTriggerObject(std::string const& name);
    std::vector<std::shared_ptr<TriggerObject>> GetTriggerObjects();

    /// A filter with a name.
    std::shared_ptr<AgentFilterObject> CreateAgentFilterObject(std::string const& name);
    std::shared_ptr<AgentFilterObject> GetAgentFilterObject(GlobalId const& id);
    std::shared_ptr<AgentFilterObject> GetAgentFilterObject(std::string const& name);
    std::vector<std::shared_ptr<AgentFilterObject>> GetAgentFilterObjects();

    /// A test with a name.
    std::shared_ptr<AgentTestObject> CreateAgentTestObject(std::string const& name);
    std::shared_ptr<AgentTestObject> GetAgentTestObject(GlobalId const& id);
    std::shared_ptr<AgentTestObject> GetAgentTestObject(std::string const& name);
    std::vector<std::shared_ptr<AgentTestObject>> GetAgentTestObjects();

    /// An action with a name.
    std::shared_ptr<AgentActionObject> CreateAgentActionObject(std::string const& name);
    std::shared_ptr<AgentActionObject> GetAgentActionObject(GlobalId const& id);
    std::shared_ptr<AgentActionObject> GetAgentActionObject(std::string const& name);
    std::vector<std::shared_ptr<AgentActionObject>> GetAgentActionObjects();

    /// A running value that triggers, tests and graphs can refer to.
    std::shared_ptr<TallyObject> CreateTallyObject(std::string const& name);
    std::shared_ptr<TallyObject> GetTallyObject(GlobalId const& id);
    std::shared_ptr<TallyObject> GetTallyObject(std::string const& name);
    std::vector<std::shared_ptr<TallyObject>> GetTallyObjects();

    /// A rule that changes tally objects at certain times.
    std::shared_ptr<TallyChange> CreateTallyChange(std::string const& name);
    std::shared_ptr<TallyChange> GetTallyChange(GlobalId const& id);
    std::shared_ptr<TallyChange> GetTallyChange(std::string const& name);
    std::vector<std::shared_ptr<TallyChange>> GetTallyChanges();

    /// A rule that opens or closes gates at certain times.
    std::shared_ptr<GateAccess> CreateGateAccess(std::string const& name);
    std::shared_ptr<GateAccess> GetGateAccess(GlobalId const& id);
    std::shared_ptr<GateAccess> GetGateAccess(std::string const& name);
    std::vector<std::shared_ptr<GateAccess>> GetGateAccesses();

    /// A rule that opens or closes servers at certain times.
    std::shared_ptr<ServerAccess> CreateServerAccess(std::string const& name);
    std::shared_ptr<ServerAccess> GetServerAccess(GlobalId const& id);
    std::shared_ptr<ServerAccess> GetServerAccess(std::string const& name);
    std::vector<std::shared_ptr<ServerAccess>> GetServerAccesses();

    /// A point in time with a name.
    std::shared_ptr<TimeObject> CreateTimeObject(std::string const& name);
    std::shared_ptr<TimeObject> GetTimeObject(GlobalId const& id);
    std::shared_ptr<TimeObject> GetTimeObject(std::string const& name);
    std::vector<std::shared_ptr<TimeObject>> GetTimeObjects();

    /// A token that people can hold.
    std::shared_ptr<Token> CreateToken(std::string const& name);
    std::shared_ptr<Token> GetToken(GlobalId const& id);
    std::shared_ptr<Token> GetToken(std::string const& name);
    std::vector<std::shared_ptr<Token>> GetTokens();

    /// A timetable of vehicles.
    std::shared_ptr<Timetable> CreateTimetable(std::string const& name);
    std::shared_ptr<Timetable> GetTimetable(GlobalId const& id);
    std::shared_ptr<Timetable> GetTimetable(std::string const& name);
    std::vector<std::shared_ptr<Timetable>> GetTimetables();

    /// A vehicle that stops, is left and boarded, and departs.
    std::shared_ptr<Vehicle> CreateVehicle(std::string const& name);
    std::shared_ptr<Vehicle> GetVehicle(GlobalId const& id);
    std::shared_ptr<Vehicle> GetVehicle(std::string const& name);
    std::vector<std::shared_ptr<Vehicle>> GetVehicles();

    /// A query of the ways that people of a run walked.
    std::shared_ptr<AgentPathMapQuery> CreateAgentPathMapQuery(std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AgentPathMapQuery> GetAgentPathMapQuery(GlobalId const& id);
    std::shared_ptr<AgentPathMapQuery> GetAgentPathMapQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentPathMapQuery>> GetAgentPathMapQueries();

    /// A query of the time that people of a run still needed to leave.
    std::shared_ptr<AgentTimeToExitMapQuery> CreateAgentTimeToExitMapQuery(std::string const& name,
                                                                           GlobalId const& simulationRun);
    std::shared_ptr<AgentTimeToExitMapQuery> GetAgentTimeToExitMapQuery(GlobalId const& id);
    std::shared_ptr<AgentTimeToExitMapQuery> GetAgentTimeToExitMapQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentTimeToExitMapQuery>> GetAgentTimeToExitMapQueries();

    /// A query of the ways that people of a run would choose at one time.
    std::shared_ptr<DynamicPathMapQuery> CreateDynamicPathMapQuery(std::string const& name,
                                                                   GlobalId const& simulationRun);
    std::shared_ptr<DynamicPathMapQuery> GetDynamicPathMapQuery(GlobalId const& id);
    std::shared_ptr<DynamicPathMapQuery> GetDynamicPathMapQuery(std::string const& name);
    std::vector<std::shared_ptr<DynamicPathMapQuery>> GetDynamicPathMapQueries();

    /// A query of how close people of a run were to each other at one time.
    std::shared_ptr<InstantaneousProximityMapQuery> CreateInstantaneousProximityMapQuery(std::string const& name,
                                                                                         GlobalId const& simulationRun);
    std::shared_ptr<InstantaneousProximityMapQuery> GetInstantaneousProximityMapQuery(GlobalId const& id);
    std::shared_ptr<InstantaneousProximityMapQuery> GetInstantaneousProximityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<InstantaneousProximityMapQuery>> GetInstantaneousProximityMapQueries();

    /// A query of how close people of a run came to each other at most.
    std::shared_ptr<MaximumProximityMapQuery> CreateMaximumProximityMapQuery(std::string const& name,
                                                                             GlobalId const& simulationRun);
    std::shared_ptr<MaximumProximityMapQuery> GetMaximumProximityMapQuery(GlobalId const& id);
    std::shared_ptr<MaximumProximityMapQuery> GetMaximumProximityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<MaximumProximityMapQuery>> GetMaximumProximityMapQueries();

    /// A query of the cost of the way to an object. The identifier is that of the object.
    std::shared_ptr<StaticCostMapQuery> CreateStaticCostMapQuery(std::string const& name, GlobalId const& object);
    std::shared_ptr<StaticCostMapQuery> GetStaticCostMapQuery(GlobalId const& id);
    std::shared_ptr<StaticCostMapQuery> GetStaticCostMapQuery(std::string const& name);
    std::vector<std::shared_ptr<StaticCostMapQuery>> GetStaticCostMapQueries();

    /// A query of the distance to an object. The identifier is that of the object.
    std::shared_ptr<StaticDistanceMapQuery> CreateStaticDistanceMapQuery(std::string const& name,
                                                                         GlobalId const& object);
    std::shared_ptr<StaticDistanceMapQuery> GetStaticDistanceMapQuery(GlobalId const& id);
    std::shared_ptr<StaticDistanceMapQuery> GetStaticDistanceMapQuery(std::string const& name);
    std::vector<std::shared_ptr<StaticDistanceMapQuery>> GetStaticDistanceMapQueries();

    /// A query of how long the density of a run was above a threshold.
    std::shared_ptr<TimeAboveDensityMapQuery> CreateTimeAboveDensityMapQuery(std::string const& name,
                                                                             GlobalId const& simulationRun);
    std::shared_ptr<TimeAboveDensityMapQuery> GetTimeAboveDensityMapQuery(GlobalId const& id);
    std::shared_ptr<TimeAboveDensityMapQuery> GetTimeAboveDensityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<TimeAboveDensityMapQuery>> GetTimeAboveDensityMapQueries();

    /// A query of how long people of a run were close to each other.
    std::shared_ptr<TimeInProximityMapQuery> CreateTimeInProximityMapQuery(std::string const& name,
                                                                           GlobalId const& simulationRun);
    std::shared_ptr<TimeInProximityMapQuery> GetTimeInProximityMapQuery(GlobalId const& id);
    std::shared_ptr<TimeInProximityMapQuery> GetTimeInProximityMapQuery(std::string const& name);
    std::vector<std::shared_ptr<TimeInProximityMapQuery>> GetTimeInProximityMapQueries();

    /// A query of how long places were occupied in a run.
    std::shared_ptr<TimeOccupiedMapQuery> CreateTimeOccupiedMapQuery(std::string const& name,
                                                                     GlobalId const& simulationRun);
    std::shared_ptr<TimeOccupiedMapQuery> GetTimeOccupiedMapQuery(GlobalId const& id);
    std::shared_ptr<TimeOccupiedMapQuery> GetTimeOccupiedMapQuery(std::string const& name);
    std::vector<std::shared_ptr<TimeOccupiedMapQuery>> GetTimeOccupiedMapQueries();

    /// A query of when the last people of a run had left each place.
    std::shared_ptr<TimeUntilClearMapQuery> CreateTimeUntilClearMapQuery(std::string const& name,
                                                                         GlobalId const& simulationRun);
    std::shared_ptr<TimeUntilClearMapQuery> GetTimeUntilClearMapQuery(GlobalId const& id);
    std::shared_ptr<TimeUntilClearMapQuery> GetTimeUntilClearMapQuery(std::string const& name);
    std::vector<std::shared_ptr<TimeUntilClearMapQuery>> GetTimeUntilClearMapQueries();

    /// A query of how many people of a run saw each place.
    std::shared_ptr<VisionCountMapQuery> CreateVisionCountMapQuery(std::string const& name,
                                                                   GlobalId const& simulationRun);
    std::shared_ptr<VisionCountMapQuery> GetVisionCountMapQuery(GlobalId const& id);
    std::shared_ptr<VisionCountMapQuery> GetVisionCountMapQuery(std::string const& name);
    std::vector<std::shared_ptr<VisionCountMapQuery>> GetVisionCountMapQueries();

    /// A query of how long more than some people of a run saw each place.
    std::shared_ptr<VisionTimeAboveCountMapQuery> CreateVisionTimeAboveCountMapQuery(std::string const& name,
                                                                                     GlobalId const& simulationRun);
    std::shared_ptr<VisionTimeAboveCountMapQuery> GetVisionTimeAboveCountMapQuery(GlobalId const& id);
    std::shared_ptr<VisionTimeAboveCountMapQuery> GetVisionTimeAboveCountMapQuery(std::string const& name);
    std::vector<std::shared_ptr<VisionTimeAboveCountMapQuery>> GetVisionTimeAboveCountMapQueries();

    /// A query of how long each place was seen in a run.
    std::shared_ptr<VisionTimeMapQuery> CreateVisionTimeMapQuery(std::string const& name,
                                                                 GlobalId const& simulationRun);
    std::shared_ptr<VisionTimeMapQuery> GetVisionTimeMapQuery(GlobalId const& id);
    std::shared_ptr<VisionTimeMapQuery> GetVisionTimeMapQuery(std::string const& name);
    std::vector<std::shared_ptr<VisionTimeMapQuery>> GetVisionTimeMapQueries();

    /// A query of the density that people of a run met, over time.
    std::shared_ptr<AgentDensityGraphQuery> CreateAgentDensityGraphQuery(std::string const& name,
                                                                         GlobalId const& simulationRun);
    std::shared_ptr<AgentDensityGraphQuery> GetAgentDensityGraphQuery(GlobalId const& id);
    std::shared_ptr<AgentDensityGraphQuery> GetAgentDensityGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentDensityGraphQuery>> GetAgentDensityGraphQueries();

    /// A query of how fast people of a run walked compared with their own speed, over time.
    std::shared_ptr<AgentSpeedRatioGraphQuery> CreateAgentSpeedRatioGraphQuery(std::string const& name,
                                                                               GlobalId const& simulationRun);
    std::shared_ptr<AgentSpeedRatioGraphQuery> GetAgentSpeedRatioGraphQuery(GlobalId const& id);
    std::shared_ptr<AgentSpeedRatioGraphQuery> GetAgentSpeedRatioGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentSpeedRatioGraphQuery>> GetAgentSpeedRatioGraphQueries();

    /// A query of how many people of a run have passed, over time.
    std::shared_ptr<CumulativeFlowCountGraphQuery> CreateCumulativeFlowCountGraphQuery(std::string const& name,
                                                                                       GlobalId const& simulationRun);
    std::shared_ptr<CumulativeFlowCountGraphQuery> GetCumulativeFlowCountGraphQuery(GlobalId const& id);
    std::shared_ptr<CumulativeFlowCountGraphQuery> GetCumulativeFlowCountGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<CumulativeFlowCountGraphQuery>> GetCumulativeFlowCountGraphQueries();

    /// A query of how many people of a run pass, over time.
    std::shared_ptr<FlowCountGraphQuery> CreateFlowCountGraphQuery(std::string const& name,
                                                                   GlobalId const& simulationRun);
    std::shared_ptr<FlowCountGraphQuery> GetFlowCountGraphQuery(GlobalId const& id);
    std::shared_ptr<FlowCountGraphQuery> GetFlowCountGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<FlowCountGraphQuery>> GetFlowCountGraphQueries();

    /// A query of the values of tally objects in a run, over time. The identifier is that of a run.
    std::shared_ptr<TallyGraphQuery> CreateTallyGraphQuery(std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<TallyGraphQuery> CreateTallyGraphQuery(std::string const& name,
                                                           std::vector<GlobalId> const& simulationRuns);
    std::shared_ptr<TallyGraphQuery> GetTallyGraphQuery(GlobalId const& id);
    std::shared_ptr<TallyGraphQuery> GetTallyGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<TallyGraphQuery>> GetTallyGraphQueries();

    /// A query of the density in volumes in a run, over time.
    std::shared_ptr<VolumeDensityGraphQuery> CreateVolumeDensityGraphQuery(std::string const& name,
                                                                           std::vector<GlobalId> const& simulationRuns);
    std::shared_ptr<VolumeDensityGraphQuery> CreateVolumeDensityGraphQuery(std::string const& name,
                                                                           GlobalId const& simulationRun);
    std::shared_ptr<VolumeDensityGraphQuery> GetVolumeDensityGraphQuery(GlobalId const& id);
    std::shared_ptr<VolumeDensityGraphQuery> GetVolumeDensityGraphQuery(std::string const& name);
    std::vector<std::shared_ptr<VolumeDensityGraphQuery>> GetVolumeDensityGraphQueries();

    /// A query of when people of a run were in an area.
    std::shared_ptr<AgentAreaTimeTableQuery> CreateAgentAreaTimeTableQuery(std::string const& name,
                                                                           GlobalId const& simulationRun);
    std::shared_ptr<AgentAreaTimeTableQuery> GetAgentAreaTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentAreaTimeTableQuery> GetAgentAreaTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentAreaTimeTableQuery>> GetAgentAreaTimeTableQueries();

    /// A query of how long people of a run rode in elevators.
    std::shared_ptr<AgentElevatorTripTimeTableQuery> CreateAgentElevatorTripTimeTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AgentElevatorTripTimeTableQuery> GetAgentElevatorTripTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentElevatorTripTimeTableQuery> GetAgentElevatorTripTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentElevatorTripTimeTableQuery>> GetAgentElevatorTripTimeTableQueries();

    /// A query of how long people of a run waited for elevators.
    std::shared_ptr<AgentElevatorWaitTimeTableQuery> CreateAgentElevatorWaitTimeTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AgentElevatorWaitTimeTableQuery> GetAgentElevatorWaitTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentElevatorWaitTimeTableQuery> GetAgentElevatorWaitTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentElevatorWaitTimeTableQuery>> GetAgentElevatorWaitTimeTableQueries();

    /// A query of how long people of a run had each level of service.
    std::shared_ptr<AgentLevelOfServiceTimeTableQuery> CreateAgentLevelOfServiceTimeTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AgentLevelOfServiceTimeTableQuery> GetAgentLevelOfServiceTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentLevelOfServiceTimeTableQuery> GetAgentLevelOfServiceTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentLevelOfServiceTimeTableQuery>> GetAgentLevelOfServiceTimeTableQueries();

    /// A query of how long people of a run took for chains of servers.
    std::shared_ptr<AgentProcessChainTimeTableQuery> CreateAgentProcessChainTimeTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AgentProcessChainTimeTableQuery> GetAgentProcessChainTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentProcessChainTimeTableQuery> GetAgentProcessChainTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentProcessChainTimeTableQuery>> GetAgentProcessChainTimeTableQueries();

    /// A query of which persons of a run were close to each other.
    std::shared_ptr<AgentProximityTableQuery> CreateAgentProximityTableQuery(std::string const& name,
                                                                             GlobalId const& simulationRun);
    std::shared_ptr<AgentProximityTableQuery> GetAgentProximityTableQuery(GlobalId const& id);
    std::shared_ptr<AgentProximityTableQuery> GetAgentProximityTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentProximityTableQuery>> GetAgentProximityTableQueries();

    /// A query of the social cost of the trips of a run.
    std::shared_ptr<AgentSocialCostTableQuery> CreateAgentSocialCostTableQuery(std::string const& name,
                                                                               GlobalId const& simulationRun);
    std::shared_ptr<AgentSocialCostTableQuery> GetAgentSocialCostTableQuery(GlobalId const& id);
    std::shared_ptr<AgentSocialCostTableQuery> GetAgentSocialCostTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentSocialCostTableQuery>> GetAgentSocialCostTableQueries();

    /// A query of the people of a run.
    std::shared_ptr<AgentSummaryTableQuery> CreateAgentSummaryTableQuery(std::string const& name,
                                                                         GlobalId const& simulationRun);
    std::shared_ptr<AgentSummaryTableQuery> GetAgentSummaryTableQuery(GlobalId const& id);
    std::shared_ptr<AgentSummaryTableQuery> GetAgentSummaryTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentSummaryTableQuery>> GetAgentSummaryTableQueries();

    /// A query of how people of a run used a timetable.
    std::shared_ptr<AgentTimetableSummaryTableQuery> CreateAgentTimetableSummaryTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AgentTimetableSummaryTableQuery> GetAgentTimetableSummaryTableQuery(GlobalId const& id);
    std::shared_ptr<AgentTimetableSummaryTableQuery> GetAgentTimetableSummaryTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentTimetableSummaryTableQuery>> GetAgentTimetableSummaryTableQueries();

    /// A query of how long people of a run held tokens.
    std::shared_ptr<AgentTokenTimeTableQuery> CreateAgentTokenTimeTableQuery(std::string const& name,
                                                                             GlobalId const& simulationRun);
    std::shared_ptr<AgentTokenTimeTableQuery> GetAgentTokenTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentTokenTimeTableQuery> GetAgentTokenTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentTokenTimeTableQuery>> GetAgentTokenTimeTableQueries();

    /// A query of when people of a run made transitions.
    std::shared_ptr<AgentTransitionTableQuery> CreateAgentTransitionTableQuery(std::string const& name,
                                                                               GlobalId const& simulationRun);
    std::shared_ptr<AgentTransitionTableQuery> GetAgentTransitionTableQuery(GlobalId const& id);
    std::shared_ptr<AgentTransitionTableQuery> GetAgentTransitionTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentTransitionTableQuery>> GetAgentTransitionTableQueries();

    /// A query of how long the trips of people of a run took.
    std::shared_ptr<AgentTripTimeTableQuery> CreateAgentTripTimeTableQuery(std::string const& name,
                                                                           GlobalId const& simulationRun);
    std::shared_ptr<AgentTripTimeTableQuery> GetAgentTripTimeTableQuery(GlobalId const& id);
    std::shared_ptr<AgentTripTimeTableQuery> GetAgentTripTimeTableQuery(std::string const& name);
    std::vector<std::shared_ptr<AgentTripTimeTableQuery>> GetAgentTripTimeTableQueries();

    /// A query of how many people of a run went from where to where through an area.
    std::shared_ptr<AreaOriginDestinationCountTableQuery> CreateAreaOriginDestinationCountTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<AreaOriginDestinationCountTableQuery> GetAreaOriginDestinationCountTableQuery(GlobalId const& id);
    std::shared_ptr<AreaOriginDestinationCountTableQuery> GetAreaOriginDestinationCountTableQuery(
        std::string const& name);
    std::vector<std::shared_ptr<AreaOriginDestinationCountTableQuery>> GetAreaOriginDestinationCountTableQueries();

    /// A query of how long floors had no elevator in a run.
    std::shared_ptr<ElevatorTimeWithoutServiceTableQuery> CreateElevatorTimeWithoutServiceTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<ElevatorTimeWithoutServiceTableQuery> GetElevatorTimeWithoutServiceTableQuery(GlobalId const& id);
    std::shared_ptr<ElevatorTimeWithoutServiceTableQuery> GetElevatorTimeWithoutServiceTableQuery(
        std::string const& name);
    std::vector<std::shared_ptr<ElevatorTimeWithoutServiceTableQuery>> GetElevatorTimeWithoutServiceTableQueries();

    /// A query of how many people the project's events will send from where to where.
    std::shared_ptr<ExpectedDemandODCountTableQuery> CreateExpectedDemandODCountTableQuery(std::string const& name);
    std::shared_ptr<ExpectedDemandODCountTableQuery> GetExpectedDemandODCountTableQuery(GlobalId const& id);
    std::shared_ptr<ExpectedDemandODCountTableQuery> GetExpectedDemandODCountTableQuery(std::string const& name);
    std::vector<std::shared_ptr<ExpectedDemandODCountTableQuery>> GetExpectedDemandODCountTableQueries();

    /// A query of how servers were used.
    std::shared_ptr<ServerSummaryTableQuery> CreateServerSummaryTableQuery(std::string const& name);
    std::shared_ptr<ServerSummaryTableQuery> GetServerSummaryTableQuery(GlobalId const& id);
    std::shared_ptr<ServerSummaryTableQuery> GetServerSummaryTableQuery(std::string const& name);
    std::vector<std::shared_ptr<ServerSummaryTableQuery>> GetServerSummaryTableQueries();

    /// A query of how many people of a run went from where to where.
    std::shared_ptr<SimulationOriginDestinationCountTableQuery> CreateSimulationOriginDestinationCountTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<SimulationOriginDestinationCountTableQuery> GetSimulationOriginDestinationCountTableQuery(
        GlobalId const& id);
    std::shared_ptr<SimulationOriginDestinationCountTableQuery> GetSimulationOriginDestinationCountTableQuery(
        std::string const& name);
    std::vector<std::shared_ptr<SimulationOriginDestinationCountTableQuery>>
    GetSimulationOriginDestinationCountTableQueries();

    /// A query of the social cost of a run from where to where.
    std::shared_ptr<SimulationOriginDestinationSocialCostTableQuery>
    CreateSimulationOriginDestinationSocialCostTableQuery(std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<SimulationOriginDestinationSocialCostTableQuery> GetSimulationOriginDestinationSocialCostTableQuery(
        GlobalId const& id);
    std::shared_ptr<SimulationOriginDestinationSocialCostTableQuery> GetSimulationOriginDestinationSocialCostTableQuery(
        std::string const& name);
    std::vector<std::shared_ptr<SimulationOriginDestinationSocialCostTableQuery>>
    GetSimulationOriginDestinationSocialCostTableQueries();

    /// A query of how long people of a run took from where to where.
    std::shared_ptr<SimulationOriginDestinationTimeTableQuery> CreateSimulationOriginDestinationTimeTableQuery(
        std::string const& name, GlobalId const& simulationRun);
    std::shared_ptr<SimulationOriginDestinationTimeTableQuery> GetSimulationOriginDestinationTimeTableQuery(
        GlobalId const& id);
    std::shared_ptr<SimulationOriginDestinationTimeTableQuery> GetSimulationOriginDestinationTimeTableQuery(
        std::string const& name);
    std::vector<std::shared_ptr<SimulationOriginDestinationTimeTableQuery>>
    GetSimulationOriginDestinationTimeTableQueries();

    /// The objects that can be reached directly from a walkable object or portal: those that it touches, where a
    /// connection's direction allows it.
    std::vector<GlobalId> GetNetworkObjectsConnectedFrom(GlobalId const& object);
    /// Those from which it can be reached directly.
    std::vector<GlobalId> GetNetworkObjectsConnectedTo(GlobalId const& object);
    /// Those of both, each once.
    std::vector<GlobalId> GetNetworkObjectsConnectedToOrFrom(GlobalId const& object);

  private:
    friend engine::Document& engine::document_of(Project const& project);

    std::shared_ptr<engine::Document> const document_;
};

}  // namespace pedflux
