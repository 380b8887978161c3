#pragma once

#include <pedflux/agent_data.h>
#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/level_of_service.h>
#include <pedflux/vectors.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

namespace engine {
struct AgentRequestAccess;
struct SimulationState;
struct FreeSpace;
}  // namespace engine

class Avatar;
class ElevatorStop;
class Task;

/// What an agent is doing.
enum class TaskType : int {
    NONE = 0,                ///< nothing: it stands where it is
    EXIT = 1,                ///< leaving the simulation
    SEEK_PORTAL = 2,         ///< going to a portal
    SEEK_AREA = 3,           ///< going to a floor, connection or zone
    SEEK_PROCESS_START = 4,  ///< going to a server
    FOLLOW_SIGN = 5,         ///< passing a route object
    WAIT_FOR_DURATION = 6,
    WAIT_UNTIL_TIME = 7,
    WAIT_FOREVER = 8,
    WAIT_WHILE_TEST_TRUE = 9,
};

/// A point of a wall or of the edge of a surface.
class PEDFLUX_API ObstaclePoint {
  public:
    /// Both vectors INVALID.
    ObstaclePoint();
    /// Used by the library.
    ObstaclePoint(Vec3d const& position, Vec3d const& normal) : position_(position), normal_(normal) {}

    Vec3d GetPosition();
    /// The level direction away from the obstacle, of length 1.
    Vec3d GetNormal();

  private:
    Vec3d position_ = Vec3d::INVALID;
    Vec3d normal_ = Vec3d::INVALID;
};

/// The free space around a place, in 16 equal segments of a circle. Segment 0 is centred on forward (-z), the others
/// follow clockwise as seen from above. A segment reaches to the nearest wall or person in it.
class PEDFLUX_API AvailableSpace {
  public:
    /// No space in any segment.
    AvailableSpace();
    /// Used by the library.
    explicit AvailableSpace(std::shared_ptr<engine::FreeSpace const> space);

    /// Square metres of all segments.
    double GetArea() const;
    /// The segment with the shortest radius; the first of several.
    int GetMinSegmentIndex() const;
    /// Metres.
    double GetMinSegmentRadius() const;
    /// Square metres.
    double GetSegmentArea(int segment) const;
    /// Metres.
    double GetSegmentRadius(int segment) const;
    /// The level direction through the middle of the segment, of length 1.
    Vec3d GetSegmentDirection(int segment);
    /// The segment in a direction that is not vertical.
    int GetSegmentIndex(Vec3d const& direction) const;

  private:
    std::shared_ptr<engine::FreeSpace const> space_;
};

/// The properties of an agent that a program requests. The simulation chooses those that are not set.
class PEDFLUX_API AgentRequest {
  public:
    /// An agent that starts at a portal, at a walkable object or in a zone.
    explicit AgentRequest(GlobalId const& start);
    AgentRequest(AgentRequest const&);
    AgentRequest(AgentRequest&&) noexcept;
    AgentRequest& operator=(AgentRequest const&);
    AgentRequest& operator=(AgentRequest&&) noexcept;
    ~AgentRequest();

    void SetColor(Color const& color);
    /// Where the agent goes: a portal, a walkable object or a zone. Without a goal it stands where it starts.
    void SetGoal(GlobalId const& goal);
    /// The profile that its speed and radius are drawn from, as it was when the simulation was created. Otherwise a
    /// profile of default values.
    void SetProfile(GlobalId const& profile);
    /// The point where it starts, on the start object.
    void SetPosition(Vec3d const& position);
    /// Degrees clockwise from forward.
    void SetHeading(double heading);

  private:
    friend struct engine::AgentRequestAccess;

    GlobalId start_;
    GlobalId goal_;
    GlobalId profile_;
    Vec3d position_ = Vec3d::INVALID;
    Color color_;
    bool hasColor_ = false;
    double heading_ = 0;
    bool hasHeading_ = false;
};

/// A person in a running simulation. Agents have numbers from 0 in the order in which they were created.
///
/// An agent stays valid after its person has left: then GetId, the Exists and HasExited… questions and the comparisons
/// still answer, everything else throws Exception and says so. The same holds when the simulation is gone.
///
/// A waypoint is a connection (link, stair, ramp) that the agent's way leads through, or the goal itself.
class PEDFLUX_API Agent {
  public:
    /// Used by the library.
    Agent(std::weak_ptr<engine::SimulationState> run, int id) : run_(std::move(run)), id_(id) {}

    int GetId();
    bool Exists();
    bool HasExitedWithError();
    /// Whether the person has reached its goal and left, or was told to leave.
    bool HasExitedWithSuccess();

    /// The point of the walkable surface on which the agent stands.
    Vec3d GetPosition();
    /// Metres per second, over the last frame.
    Vec3d GetVelocity();
    /// Metres per second.
    double GetSpeed();
    /// Degrees clockwise from forward, in [0, 360).
    double GetHeading();
    /// Metres; half the width of the body.
    double GetRadius();
    /// @param radius 0.05 to 1 m
    void SetRadius(double radius);
    /// Metres.
    double GetHeight();
    /// @param height greater than 0 and at most 3 m
    void SetHeight(double height);
    /// The speed that the agent walks at where nothing hinders it, in metres per second on level ground.
    double GetDesiredUnconstrainedSpeed();
    /// @param speed greater than 0 and at most 20 m/s
    void SetDesiredUnconstrainedSpeed(double speed);
    /// The greatest speed at the agent's position, in metres per second: on stairs it is lower.
    double GetCurrentMaxSpeed();
    /// Metres walked since the agent entered, along inclines.
    double GetDistanceTraveled();

    AgentMovement GetAgentMovement();
    /// How the agent is shown in the next frame, whatever its speed.
    void SetNextAgentMovement(AgentMovement movement);

    Color GetColor();
    void SetColor(Color color);
    /// The colour is that of the agent's profile or event again.
    void ClearColor();
    LevelOfService GetLevelOfService();

    /// Whether the agent looks like an avatar of the project.
    bool HasAvatar();
    /// Empty for an agent without one.
    std::shared_ptr<Avatar> GetAvatar();
    /// @param avatar an avatar of the simulated project
    void SetAvatar(std::shared_ptr<Avatar> avatar);
    /// The avatar is that of the agent's profile again.
    void ResetAvatar();

    /// The tokens that the agent holds, in the order in which it got them.
    std::vector<GlobalId> GetTokenIds();
    /// Gives a token of the project. An agent holds each once.
    void GiveToken(GlobalId const& token);
    /// Takes a token away; one that the agent does not hold changes nothing.
    void RemoveToken(GlobalId const& token);

    /// Whether the agent is restricted to a network of the project.
    bool HasNetwork();
    GlobalId GetNetwork();
    void SetNetwork(GlobalId const& network);
    /// Lifts the restriction to a network.
    void SetNetworkToGlobal();
    /// The network is that of the agent's profile again.
    void ResetNetwork();

    /// What the agent is doing now.
    TaskType GetCurrentTaskType();
    bool HasCurrentTaskGoalId();
    /// The objects that the current task leads to; of several, the agent goes to the first of them.
    std::vector<GlobalId> GetCurrentTaskGoalIds();
    /// Gives a task that comes before all others; they continue when it is done.
    void AddTaskAsActive(std::shared_ptr<Task> const& task);
    /// Gives a task that comes after all others.
    void AddTaskAsLast(std::shared_ptr<Task> const& task);
    /// Drops all tasks; the agent stands.
    void ClearTasks();

    /// Whether the agent rides, or waits for, an elevator.
    bool HasElevatorTripDestinationStop();
    ElevatorStop GetElevatorTripDestinationStop();

    /// The profile; invalid for an agent without one.
    GlobalId GetProfileId();
    bool HasStartObject();
    GlobalId GetStartObjectId();
    bool HasInitialGoal();
    GlobalId GetInitialGoalId();
    bool HasCurrentGoal();
    GlobalId GetCurrentGoalId();
    /// Whether the agent is on a floor, and not on a connection.
    bool HasCurrentFloor();
    GlobalId GetCurrentFloorId();

    bool HasPreviousWaypoint();
    GlobalId GetPreviousWaypointId();
    bool HasTargetWaypoint();
    GlobalId GetTargetWaypointId();
    /// The line to cross at the target waypoint.
    LineSeg3d GetTargetWaypointGoalLine();
    bool HasPathToTargetWaypoint();
    bool HasPathToTargetWaypoint(Vec3d const& position);
    /// Metres to walk.
    double GetDistanceToTargetWaypoint();
    double GetDistanceToTargetWaypointFrom(Vec3d const& position);
    /// The level direction in which the path to the waypoint starts, of length 1; ZERO at the waypoint.
    Vec3d GetDirectionToTargetWaypoint();
    Vec3d GetDirectionToTargetWaypointFrom(Vec3d const& position);
    /// The nearest point at most `distance` metres away from which a way leads to the target waypoint; INVALID if there
    /// is none.
    Vec3d GetClosestPointWithPathToTargetWaypoint(double distance);
    Vec3d GetPointWithPathToTargetWaypointClosestTo(Vec3d const& position, double distance);

    /// Whether the agent's body touches neither a wall nor another agent.
    bool IsInOpenSpace();
    /// The same for its body at another position on its surface.
    bool IsInOpenSpace(Vec3d const& position);
    /// The nearest position of that kind at most `distance` metres away; INVALID if there is none.
    Vec3d GetClosestOpenPoint(double distance);
    Vec3d GetOpenPointClosestTo(Vec3d const& position, double distance);
    /// The nearest point of a wall at most `distance` metres away; empty if there is none.
    std::shared_ptr<ObstaclePoint> GetClosestObstaclePoint(double distance);
    std::shared_ptr<ObstaclePoint> GetObstaclePointClosestTo(Vec3d const& position, double distance);
    /// The first wall that a level ray from the agent meets.
    std::shared_ptr<ObstaclePoint> GetObstaclePointInDirection(Vec3d const& direction, double distance);
    /// @param distance how far to look, greater than 0 and at most 100 m
    AvailableSpace GetAvailableSpace(double distance);
    AvailableSpace GetAvailableSpaceAround(Vec3d const& position, double distance);

    /// Gives the program control of the agent: it stands, and moves only by MoveTo.
    void AssumeControl();
    void ReleaseControl();
    /// Puts a controlled agent to a point of its surface, or of one that joins it. Throws Exception when the agent is
    /// not controlled and when the point is on no such surface.
    void MoveTo(Vec3d const& position);
    /// The same, and turns the agent.
    void MoveTo(Vec3d const& position, Vec3d const& direction);
    /// The same, shown at a speed in metres per second.
    void MoveTo(Vec3d const& position, Vec3d const& direction, double speed);
    /// Whether others may push a controlled agent aside; they may unless told otherwise.
    void AllowAdjustment();
    void DisallowAdjustment();
    /// Makes the agent walk in a level direction instead of towards its goal.
    void SetGoalDirectionOverride(Vec3d const& direction);
    void ClearGoalDirectionOverride();
    /// Takes the agent out as if it had reached its goal.
    void ExitSimulation();
    /// Takes the agent out and adds an issue to the simulation with this text.
    void ExitSimulationWithError(std::string const& message);

    /// Whether both are the same person of the same simulation.
    bool InternalEquals(std::shared_ptr<Agent> const& other);
    int InternalHashCode();
    /// The order of the agents' numbers.
    int InternalCompare(std::shared_ptr<Agent> const& other);

  private:
    std::weak_ptr<engine::SimulationState> run_;
    int id_;
};

}  // namespace pedflux
