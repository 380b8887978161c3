#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/vectors.h>

#include <memory>
#include <string>
#include <vector>

/// The bases of all project objects. An object is made by its project and belongs to it until it is removed or the
/// project closes; after that its properties can still be read, but what needs the project throws Exception.
///
/// A setter checks its value. A refusal throws Exception, names the object, the property, the value and what would be
/// right, and changes nothing. The getter of an optional property that is not set throws Exception and says which.
///
/// Actions, tests and distributions are copied when they are set and when they are read: what is done with the one that
/// was given, or with the one that was read, does not change the object until it is set again. The copy of an action
/// that is not set is empty, and setting an empty action takes the action away.
namespace pedflux {

namespace engine {
struct ObjectAccess;
struct ObjectState;
}  // namespace engine

class AgentAction;
class Distribution;
class Geometry;

/// What `SimObject::GetTypeId` returns: the kind of the object itself, whatever class it was looked up as.
enum class ObjectType : int {
    FLOOR = 1,
    PORTAL = 2,
    LINK = 3,
    STAIR = 4,
    ESCALATOR = 5,
    RAMP = 6,
    PATH = 7,
    BARRIER = 8,
    SERVER = 9,
    CORDON = 10,
    WAIT_SPACE = 11,
    VOLUME = 12,
    VISUAL = 13,
    BILLBOARD = 14,
    ELEVATOR = 15,

    ZONE = 101,
    PERIMETER = 102,
    ROUTE_BANK = 103,
    ELEVATOR_BANK = 104,
    COLLECTION = 105,
    TRANSFORM = 106,
    NETWORK = 107,

    PROFILE = 201,
    AVATAR = 202,
    BOOKMARK = 203,

    JOURNEY = 301,
    EVACUATION = 302,
    CIRCULATE = 303,
    DISPATCH = 304,
    BROADCAST = 305,
    TRIGGER_OBJECT = 306,
    AGENT_FILTER_OBJECT = 307,
    AGENT_TEST_OBJECT = 308,
    AGENT_ACTION_OBJECT = 309,
    TALLY_OBJECT = 310,
    TALLY_CHANGE = 311,
    GATE_ACCESS = 312,
    SERVER_ACCESS = 313,
    TIME_OBJECT = 314,
    TOKEN = 315,
    TIMETABLE = 316,
    VEHICLE = 317,

    SIMULATION_RUN = 401,
    MAP_QUERY = 402,    ///< every kind of map query; `MapQuery::GetMapQueryTypeId` tells which
    GRAPH_QUERY = 403,  ///< every kind of graph query
    TABLE_QUERY = 404,  ///< every kind of table query
};

/// How agents cross a connection.
enum class AgentTraversalType : int {
    FREE = 0,         ///< side by side, each avoiding the others
    SINGLE_FILE = 1,  ///< one behind the other along the middle
};

/// The ways through a connection. Its two ends are called ball and box, see `ConnectionObject`.
enum class ConnectionObjectDirection : int {
    BOTH_WAYS = 0,
    BALL_TO_BOX = 1,
    BOX_TO_BALL = 2,
};

/// The unit of a flow. Per metre means per metre of the width of the end where agents enter.
enum class FlowRateType : int {
    PERSONS_PER_SECOND = 0,
    PERSONS_PER_MINUTE = 1,
    PERSONS_PER_METER_AND_SECOND = 2,
    PERSONS_PER_METER_AND_MINUTE = 3,
};

/// The side to which agents tend when others come towards them, as they see it.
enum class AgentDirectionBias : int {
    NONE = 0,
    LEFT = 1,
    RIGHT = 2,
};

/// The relation that lowers the walking speed as the crowd becomes denser.
enum class SpeedDensityStandard : int {
    NONE = 0,     ///< no relation: people slow down only where others are in the way
    WALKWAY = 1,  ///< people on level ground
    STAIR = 2,    ///< people on stairs
};

/// Anything that a project holds: it has an identifier, a name, a colour, and is visible and enabled or not.
class PEDFLUX_API SimObject {
  public:
    /// Used by the library; objects are made by a project.
    explicit SimObject(std::shared_ptr<engine::ObjectState> state);
    SimObject(SimObject const&) = delete;
    SimObject& operator=(SimObject const&) = delete;
    virtual ~SimObject();

    /// The kind of the object, an `ObjectType`.
    virtual int GetTypeId();

    GlobalId GetId();
    std::string GetName();
    /// Renames the object. The name must be valid and no other object of the project may have it.
    void SetName(std::string const& name);
    /// Whether a text can be a name: 1 to 255 bytes of UTF-8 with at least one character that is not a space, and no
    /// control characters.
    static bool S_IsValidName(std::string const& name);

    /// Light grey unless set.
    Color GetColor();
    void SetColor(Color color);

    /// Whether the object is shown; it takes part in simulations either way.
    bool IsVisible();
    void SetVisible(bool visible);
    void Show();
    void Hide();

    /// Whether simulations take the object into account.
    bool IsEnabled();
    void SetEnabled(bool enabled);
    void Enable();
    void Disable();

  protected:
    std::shared_ptr<engine::ObjectState> const state_;

  private:
    friend engine::ObjectAccess;
};

/// An object with a place and a shape.
class PEDFLUX_API SceneObject : public SimObject {
  public:
    using SimObject::SimObject;

    /// Replaces the shape. Each kind says which geometry it takes; an empty one is refused.
    virtual void SetGeometry(std::shared_ptr<Geometry> const& geometry);
    std::shared_ptr<Geometry> GetGeometry();

    /// Moves the object by a vector in metres.
    void Translate(Vec3d const& offset);
    /// Turns the object right-handed about an axis, by an angle in degrees.
    void RotateAbout(Axis3d const& axis, double angle);
    /// Scales the object in all directions; the point stays. The factor is greater than 0.
    void ScaleAbout(Vec3d const& point, double factor);
    /// Stretches the object along an axis; the plane across the axis at its origin stays. The factor is greater than 0.
    void ScaleAlong(Axis3d const& axis, double factor);
    /// Mirrors the object across the plane that stands across the axis at its origin.
    void MirrorAcross(Axis3d const& axis);
};

/// A scene object that routes lead over.
class PEDFLUX_API NetworkObject : public SceneObject {
  public:
    using SceneObject::SceneObject;

    bool HasDistanceAdded();
    /// The distance that is added to the length of routes over this object, in metres, so that people avoid it.
    double GetDistanceAdded();
    /// @param distance 0 or more metres
    void SetDistanceAdded(double distance);
};

/// A network object that agents walk on: a floor or a connection.
class PEDFLUX_API WalkableObject : public NetworkObject {
  public:
    using NetworkObject::NetworkObject;
};

/// A walkable object through which agents pass from one space to another. Agents enter and leave it at its two ends,
/// the ball end and the box end, where a goal line spans the width. Of a shape that rises, the ball is the lower end
/// and the box the upper one. Of a level shape, they are the ends of its longer side, and the ball is the one with the
/// smaller x, or the smaller z where both have the same x. A path runs from its ball to its box.
class PEDFLUX_API ConnectionObject : public WalkableObject {
  public:
    using WalkableObject::WalkableObject;

    AgentTraversalType GetAgentTraversalType();
    void SetAgentTraversalType(AgentTraversalType type);

    /// The line at the ball end, at the height of the surface there.
    LineSeg3d GetBallGoalLine();
    /// The line at the box end, at the height of the surface there.
    LineSeg3d GetBoxGoalLine();

    /// The ways in which agents may pass; both unless set, and up on an escalator.
    ConnectionObjectDirection GetDirection();
    void SetDirection(ConnectionObjectDirection direction);

    bool HasBallEnterAction();
    /// What agents do when they enter at the ball end. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetBallEnterActionCopy();
    void SetBallEnterAction(std::shared_ptr<AgentAction> const& action);
    bool HasBallExitAction();
    /// What agents do when they leave at the ball end. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetBallExitActionCopy();
    void SetBallExitAction(std::shared_ptr<AgentAction> const& action);
    bool HasBoxEnterAction();
    /// What agents do when they enter at the box end. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetBoxEnterActionCopy();
    void SetBoxEnterAction(std::shared_ptr<AgentAction> const& action);
    bool HasBoxExitAction();
    /// What agents do when they leave at the box end. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetBoxExitActionCopy();
    void SetBoxExitAction(std::shared_ptr<AgentAction> const& action);

    /// Whether the flow into the connection is limited; not unless set.
    bool IsEnteringFlowCapped();
    FlowRateType GetEnteringFlowRateType();
    double GetEnteringFlowRateValue();
    /// @param value greater than 0, in the unit of the type
    void SetEnteringFlowCap(FlowRateType type, double value);
    void ClearEnteringFlowCap();

    bool HasEntranceDelayDistribution();
    /// How long each agent waits before it enters, in seconds. A copy.
    std::shared_ptr<Distribution> GetEntranceDelayDistribution();
    /// @param delay a valid distribution of 0 or more seconds
    void SetEntranceDelayDistribution(std::shared_ptr<Distribution> const& delay);
    void ClearEntranceDelayDistribution();

    bool HasExitDelayDistribution();
    /// How long each agent waits before it leaves, in seconds. A copy.
    std::shared_ptr<Distribution> GetExitDelayDistribution();
    /// @param delay a valid distribution of 0 or more seconds
    void SetExitDelayDistribution(std::shared_ptr<Distribution> const& delay);
    void ClearExitDelayDistribution();

    /// Whether the connection is a gate, which opens and closes during the simulation; not unless set.
    bool IsGated();
    void SetGated(bool gated);

    /// Whether agents on the connection walk through barriers; not unless set.
    bool IsIgnoreBarriers();
    void SetIgnoreBarriers(bool ignore);
    /// Whether agents on the connection ignore each other; not unless set.
    bool IsIgnoreNeighbors();
    void SetIgnoreNeighbors(bool ignore);
    /// Whether agents who approach the connection press forward as in a queue; not unless set.
    bool HasQueuingForceOnApproach();
    void SetQueuingForceOnApproach(bool queuing);

    /// Whether agents in one direction have priority; not unless a priority direction is set.
    bool HasPriority();
    ConnectionObjectDirection GetPriorityDirection();
    /// Gives priority to one direction. Both ways is refused, as it prefers none.
    void SetPriorityDirection(ConnectionObjectDirection direction);
    void DisablePriority();
    /// The cost in seconds that routes against the priority count. 0 unless the project's file says otherwise.
    double GetPriorityCost();
    /// How close to the entrance, in metres, agents count for the priority. 2 unless the project's file says otherwise.
    double GetPriorityDistance();
    /// Whether agents who wait to enter keep their turn.
    bool IsPriorityCommitWhenWaiting();
    /// Whether agents with priority still let agents pass that are already inside.
    bool IsPriorityPrimaryYieldToSecondary();

    /// Whether the connection belongs to a route bank.
    bool HasBank();
    /// The route bank that has the connection among its items.
    GlobalId GetBank();
    /// Moves the connection to a route bank, or out of its bank with an invalid identifier.
    void SetBank(GlobalId const& bank);

    int GetPerimeterCount();
    std::vector<GlobalId> GetPerimeters();
    /// Replaces the list of perimeters, each of them once.
    void SetPerimeters(std::vector<GlobalId> const& perimeters);
    /// Adds a perimeter; one that is there already is not added again.
    void AddPerimeter(GlobalId const& perimeter);
    void RemovePerimeter(GlobalId const& perimeter);
    void ClearPerimeters();

    bool HasLocalAgentBodyRadius();
    /// The radius in metres that agents have on the connection instead of their own.
    double GetLocalAgentBodyRadius();
    /// @param radius greater than 0 and at most 2 metres
    void SetLocalAgentBodyRadius(double radius);
    void ClearLocalAgentBodyRadius();

    /// Whether agents on the connection have a greatest speed that is not their own; links, paths, stairs and ramps set
    /// it.
    bool HasLocalAgentMaxSpeed();
    /// Whether agents on the connection tend to another side than their profile says.
    bool HasLocalDirectionBias();
    AgentDirectionBias GetLocalDirectionBias();
    /// Whether another relation of speed and density holds on the connection.
    bool HasLocalSpeedDensityStandard();
    SpeedDensityStandard GetLocalSpeedDensityStandard();
};

/// A list of objects of the project, each of them once.
class PEDFLUX_API Group : public SimObject {
  public:
    using SimObject::SimObject;

    virtual bool HasItem(GlobalId const& item);
    /// The items in the order in which they were added.
    virtual std::vector<GlobalId> GetItems();

    void ShowItems();
    void HideItems();
    void EnableItems();
    void DisableItems();
};

}  // namespace pedflux
