#pragma once

#include <pedflux/agents.h>
#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pedflux {

namespace engine {
struct FrameChanges;
struct SimulationState;
struct SimulationOptionsAccess;
}  // namespace engine

class ElevatorCar;
class Project;

/// How a simulation is to run. Results depend on the seed and never on the number of threads.
class PEDFLUX_API SimulationOptions {
  public:
    /// The project's seed, one thread, no extra goals.
    SimulationOptions();
    SimulationOptions(SimulationOptions const&);
    SimulationOptions(SimulationOptions&&) noexcept;
    SimulationOptions& operator=(SimulationOptions const&);
    SimulationOptions& operator=(SimulationOptions&&) noexcept;
    ~SimulationOptions();

    /// Takes the place of the project's seed.
    void SetRandomSeed(int seed);
    /// @param count 1 to 256
    void SetThreadCount(int count);
    /// An object that no event leads to, but that agents will be sent to or asked the way to: routes to it are found
    /// when the simulation is created.
    void AddExtraGoal(GlobalId const& goal);
    void AddExtraGoals(std::vector<GlobalId> const& goals);

  private:
    friend struct engine::SimulationOptionsAccess;

    std::optional<int> randomSeed_;
    int threadCount_ = 1;
    std::vector<GlobalId> extraGoals_;
};

/// The simulated time. A clock does not keep its simulation alive; it throws Exception when that is gone.
class PEDFLUX_API Clock {
  public:
    /// Used by the library.
    explicit Clock(std::weak_ptr<engine::SimulationState const> run);

    /// The frames taken so far.
    int GetCurrentFrame();
    /// Seconds since the start of the simulation.
    double GetCurrentSecond();
    /// The whole seconds of it.
    int GetCurrentSecondAsInt();
    /// The time of day, counted from the project's start time: "08:00:12.4".
    std::string GetCurrentTimeString();

  private:
    std::weak_ptr<engine::SimulationState const> run_;
};

/// What changed in one frame. Each list is in the order of the agents' numbers.
class PEDFLUX_API FrameSummary {
  public:
    FrameSummary();
    /// Used by the library.
    explicit FrameSummary(std::shared_ptr<engine::FrameChanges const> changes);
    FrameSummary(FrameSummary const&);
    FrameSummary(FrameSummary&&) noexcept;
    FrameSummary& operator=(FrameSummary const&);
    FrameSummary& operator=(FrameSummary&&) noexcept;
    ~FrameSummary();

    /// The agents that entered the simulation.
    std::vector<std::shared_ptr<Agent>> GetCreatedAgents();
    /// The agents that left it.
    std::vector<std::shared_ptr<Agent>> GetDeletedAgents();
    /// The agents that entered a walkable object, or the simulation through a portal.
    std::vector<std::shared_ptr<Agent>> GetAgentsThatEntered(GlobalId const& object);
    /// The agents that left a walkable object, or the simulation through a portal.
    std::vector<std::shared_ptr<Agent>> GetAgentsThatExited(GlobalId const& object);
    /// The agents that were given a token.
    std::vector<std::shared_ptr<Agent>> GetAgentsThatReceived(GlobalId const& token);
    /// The agents from whom a token was taken.
    std::vector<std::shared_ptr<Agent>> GetAgentsThatLost(GlobalId const& token);

  private:
    std::shared_ptr<engine::FrameChanges const> changes_;
};

/// A running simulation of a project.
///
/// Creating it turns the project into a world of its own; what is changed in the project later does not reach it.
/// Enabled objects take part: the walkable area of floors, links, stairs and ramps is where their faces look upwards,
/// less the barriers. Stairs, ramps and links join the floors that their ends come within 0.1 m of. The project's
/// events bring agents in at portals, on floors and in zones; they go to their destinations and leave there.
///
/// A frame lasts one frame length of the project. It can be taken whole with Step, or in its parts with CreateAgents,
/// ChooseAgentTargets and MoveAgents in this order, with the same result. Every frame is written to the run's database
/// of results, which is finished by Stop or, at the latest, when the simulation is released.
///
/// Identifiers that name nothing of the wanted kind throw Exception, and so do positions that are on no walkable
/// object.
class PEDFLUX_API Simulation {
  public:
    /// Used by the library.
    explicit Simulation(std::shared_ptr<engine::SimulationState> run);
    Simulation(Simulation const&) = delete;
    Simulation& operator=(Simulation const&) = delete;
    ~Simulation();

    /// A simulation that fills a simulation run of the project. Its results go to the run's database file or, when it
    /// has none, to the file of the run's name with the ending ".pfdb" in the project's working directory; the run is
    /// connected to it when the simulation ends. Throws Exception with one sentence when the project cannot be
    /// simulated.
    static std::shared_ptr<Simulation> Create(std::shared_ptr<Project> const& project, GlobalId const& simulationRun);
    static std::shared_ptr<Simulation> Create(std::shared_ptr<Project> const& project, GlobalId const& simulationRun,
                                              SimulationOptions const& options);
    /// The same for the run of a name, which is made if the project has none of it, and for results in a given file. A
    /// relative path starts at the working directory; an empty one stands for the default.
    static std::shared_ptr<Simulation> Create(std::shared_ptr<Project> const& project, std::string const& runName,
                                              std::string const& databasePath);
    static std::shared_ptr<Simulation> Create(std::shared_ptr<Project> const& project, std::string const& runName,
                                              std::string const& databasePath, SimulationOptions const& options);

    /// Takes one frame.
    FrameSummary Step();
    /// Lets agents enter that are due and for which there is room, and returns them.
    std::vector<std::shared_ptr<Agent>> CreateAgents();
    /// Gives every agent its goal and the next point of its way.
    void ChooseAgentTargets();
    /// Moves the agents, lets those leave that have arrived, and ends the frame.
    FrameSummary MoveAgents();
    /// Ends the simulation and finishes its database. Agents are not moved any more; everything can still be read.
    void Stop();
    /// Whether all agents that the events plan have entered and left, or the project's duration is over, or the
    /// simulation was stopped.
    bool IsDone();
    /// Whether frames can be taken: the simulation was not stopped.
    bool IsValid() const;

    /// The frames taken so far.
    int GetCurrentFrame();
    /// Seconds.
    double GetFrameLength();
    /// Frames per second.
    double GetFrameRate();
    std::shared_ptr<Clock> GetClock();
    /// What was found since the start or the last ClearIssues.
    std::vector<Issue> GetIssues();
    void ClearIssues();

    /// The agent of a number; empty for one that is not in the simulation now.
    std::shared_ptr<Agent> GetAgent(int agent);
    /// All agents in the simulation, in the order of their numbers; so are the lists that follow.
    std::vector<std::shared_ptr<Agent>> GetAllAgents();
    std::vector<std::shared_ptr<Agent>> GetAgentsInBox(BoundingBox3d const& box);
    /// The agents at most `distance` metres away in the plan and `height` metres above or below.
    std::vector<std::shared_ptr<Agent>> GetAgentsNearPoint(Vec3d const& point, double distance, double height);
    /// The agents on a walkable object or in a zone.
    std::vector<std::shared_ptr<Agent>> GetAgentsOn(GlobalId const& object);
    int GetPopulation(GlobalId const& object);

    /// An agent that starts at a portal, on a walkable object or in a zone, and stands there. It enters at once; empty
    /// when there is no room for it.
    std::shared_ptr<Agent> RequestNewAgent(GlobalId const& start);
    std::shared_ptr<Agent> RequestNewAgent(AgentRequest const& request);

    /// Opens a gate, a connection that is gated, to both of the directions that it has. It stays so, whatever the
    /// project's rules say, until it is closed or reset.
    void OpenGate(GlobalId const& gate);
    void OpenGate(GlobalId const& gate, ConnectionObjectDirection direction);
    void CloseGate(GlobalId const& gate);
    void CloseGate(GlobalId const& gate, ConnectionObjectDirection direction);
    /// Leaves the gate to the project's rules again: open where none says otherwise.
    void ResetGate(GlobalId const& gate);
    void ResetGate(GlobalId const& gate, ConnectionObjectDirection direction);
    bool IsGateOpenToAll(GlobalId const& gate);
    bool IsGateOpenToAll(GlobalId const& gate, ConnectionObjectDirection direction);
    bool IsGateClosedToAll(GlobalId const& gate);
    bool IsGateClosedToAll(GlobalId const& gate, ConnectionObjectDirection direction);

    /// Opens the entrance of a server: agents may be served. It stays so until it is closed or reset.
    void OpenServerEntrance(GlobalId const& server);
    /// No further agent is served; an agent that is being served is served to the end.
    void CloseServerEntrance(GlobalId const& server);
    /// Leaves the entrance to the project's rules again: open where none says otherwise.
    void ResetServerEntrance(GlobalId const& server);
    bool IsServerEntranceOpenToAll(GlobalId const& server);
    bool IsServerEntranceClosedToAll(GlobalId const& server);
    /// Opens the exit of a server: agents that have been served may go on.
    void OpenServerExit(GlobalId const& server);
    /// An agent that has been served stays until the exit is opened.
    void CloseServerExit(GlobalId const& server);
    /// Leaves the exit to the project's rules again: open where none says otherwise.
    void ResetServerExit(GlobalId const& server);
    bool IsServerExitOpenToAll(GlobalId const& server);
    bool IsServerExitClosedToAll(GlobalId const& server);

    /// The value of a tally object after the frames so far.
    double GetTallyValue(GlobalId const& tally) const;
    /// Adds to the value of a tally object, within its bounds.
    void AddToTallyValue(GlobalId const& tally, double value);
    /// Sets a tally object back to its default value.
    void ResetTallyValue(GlobalId const& tally);

    /// The car of an elevator, by its identifier or name. Throws Exception when the simulated project has none such
    /// that is enabled.
    std::shared_ptr<ElevatorCar> GetElevatorCar(GlobalId const& elevator);
    std::shared_ptr<ElevatorCar> GetElevatorCar(std::string const& elevator);

    /// Whether a way leads from a point of a walkable object to another object: a portal, a walkable object or a zone.
    bool ExistsPathTo(GlobalId const& start, Vec3d const& point, GlobalId const& goal);
    /// Metres to walk. Throws Exception when no way leads there.
    double GetDistanceAlongPathTo(GlobalId const& start, Vec3d const& point, GlobalId const& goal);
    /// The level direction in which the way starts, of length 1; ZERO at the goal. Throws Exception when no way leads
    /// there.
    Vec3d GetDirectionAlongPathTo(GlobalId const& start, Vec3d const& point, GlobalId const& goal);
    /// The point of the start object, at most `distance` metres from the given one in the plan, that is nearest to it
    /// among those from which a way leads to the goal; INVALID if there is none.
    Vec3d GetClosestPointWithPathTo(GlobalId const& start, Vec3d const& point, double distance, GlobalId const& goal);

  private:
    std::shared_ptr<engine::SimulationState> run_;
};

}  // namespace pedflux
