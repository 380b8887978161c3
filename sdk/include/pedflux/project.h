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
Document& document_of(Project const& project);
}  // namespace engine

class AgentCountMapQuery;
class AverageDensityMapQuery;
class Barrier;
class Collection;
class ConnectionObject;
class Evacuation;
class ExperiencedDensityMapQuery;
class Floor;
class InstantaneousDensityMapQuery;
class Issue;
class Journey;
class Link;
class MaxDensityMapQuery;
class MeshGeometry;
class NetworkObject;
class NonZeroAverageDensityMapQuery;
class Perimeter;
class PopulationCountGraphQuery;
class Portal;
class Profile;
class Ramp;
class RouteBank;
class SceneObject;
class Selection;
class SimObject;
class SimulationRun;
class Stair;
class Transform;
class WalkableObject;
class Zone;

/// A model: its objects, the settings of its simulation, its selection, and its file.
///
/// One project may be the current one. Creating and opening a project makes it current; the one before stays open for
/// whoever holds it. Closing the current project leaves none current.
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

    /// Writes the geometry of objects to a Wavefront OBJ file, one group for each object with a geometry, in metres
    /// with y up; of all scene objects if the list is empty. An empty pointer in the list, and an object of another
    /// project, are refused.
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
    double GetPopulationMultiplier();
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

  private:
    friend engine::Document& engine::document_of(Project const& project);

    std::shared_ptr<engine::Document> const document_;
};

}  // namespace pedflux
