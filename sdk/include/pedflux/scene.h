#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#include <memory>
#include <vector>

/// The objects that a building is made of. A project makes them from a mesh, or from the objects that they group.
namespace pedflux {

class WaitStyle;

/// Where agents that enter at a portal first stand on its goal line.
enum class AgentInitialPlacement : int {
    RANDOM = 0,  ///< anywhere, by chance
    EVEN = 1,    ///< one after the other at even distances
    CENTER = 2,  ///< as near to the middle as the others allow
};

/// Which objects a zone covers.
enum class ZoneMembershipStrategy : int {
    BASE_MEMBERS = 0,                  ///< its base members
    BASE_MEMBERS_AND_CONNECTIONS = 1,  ///< also the connections that join two of its base members
};

/// How the distance between agents that queue on a path is determined.
enum class QueueSpacingType : int {
    DISTANCE = 0,                            ///< a distance of its own for each agent
    PERSONAL_SPACE = 1,                      ///< the personal space of agents
    MAX_OF_DISTANCE_AND_PERSONAL_SPACE = 2,  ///< the larger of both
    SUM_OF_DISTANCE_AND_PERSONAL_SPACE = 3,  ///< both together
};

/// The personal space that counts between two agents that queue one behind the other.
enum class PersonalSpaceSelection : int {
    BEHIND = 0,   ///< that of the agent who stands behind
    AHEAD = 1,    ///< that of the agent ahead
    LARGER = 2,   ///< the larger of both
    SMALLER = 3,  ///< the smaller of both
};

/// Which crossings a cordon counts.
enum class CordonDirection : int {
    BOTH_WAYS = 0,
    ONE_WAY = 1,  ///< crossings in the cordon's direction
};

/// A level to walk on. The faces of its mesh that look upwards are walkable, whatever their outline; barriers reduce
/// them.
class PEDFLUX_API Floor : public WalkableObject {
  public:
    using WalkableObject::WalkableObject;

    bool HasEnterAction();
    /// What agents do when they come onto the floor. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetEnterActionCopy();
    void SetEnterAction(std::shared_ptr<AgentAction> const& action);
    bool HasExitAction();
    /// What agents do when they leave the floor. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetExitActionCopy();
    void SetExitAction(std::shared_ptr<AgentAction> const& action);
};

/// An opening at the edge of a floor, or a place on it, where agents enter and leave the model.
class PEDFLUX_API Portal : public NetworkObject {
  public:
    using NetworkObject::NetworkObject;

    /// The line where agents enter and leave: the long centre line of the smallest rectangle that holds the mesh as
    /// seen from above, at the mesh's lowest elevation. For an upright rectangle that is its lower edge.
    LineSeg3d GetGoalLine();

    /// At random unless set.
    AgentInitialPlacement GetAgentInitialPlacement();
    void SetAgentInitialPlacement(AgentInitialPlacement placement);

    bool HasEnterAction();
    /// What agents do when they enter the model here. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetEnterActionCopy();
    void SetEnterAction(std::shared_ptr<AgentAction> const& action);
    bool HasWaypointAction();
    /// What agents do when they reach the portal on their way. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetWaypointActionCopy();
    void SetWaypointAction(std::shared_ptr<AgentAction> const& action);

    /// Whether an event of the project brings agents in here.
    bool IsEntrance();
    /// Whether an event of the project sends agents here.
    bool IsExit();
};

/// A level connection between two spaces, such as a door or a corridor. Its ball and box are the ends of its longer
/// side, so one that is wider than people walk on it must be drawn longer, into the floors on both sides: a link of 1 m
/// between two rooms that is 2 m wide may reach 0.6 m into each of them.
class PEDFLUX_API Link : public ConnectionObject {
  public:
    using ConnectionObject::ConnectionObject;

    /// The greatest speed of agents on the link, in metres per second.
    double GetLocalAgentMaxSpeed();
    /// @param speed greater than 0 and at most 20 m/s
    void SetLocalAgentMaxSpeed(double speed);
    void ClearLocalAgentMaxSpeed();
    void SetLocalDirectionBias(AgentDirectionBias bias);
    void ClearLocalDirectionBias();
    void SetLocalSpeedDensityStandard(SpeedDensityStandard standard);
    void ClearLocalSpeedDensityStandard();
};

/// A flight of stairs, drawn as steps or as a slope.
class PEDFLUX_API Stair : public ConnectionObject {
  public:
    using ConnectionObject::ConnectionObject;

    /// The greatest speed of agents who go up, in metres per second along the slope.
    double GetLocalAgentMaxSpeedUp();
    /// The greatest speed of agents who go down, in metres per second along the slope.
    double GetLocalAgentMaxSpeedDown();
    /// @param up,down greater than 0 and at most 20 m/s
    void SetLocalAgentMaxSpeedUpAndDown(double up, double down);
    void ClearLocalAgentMaxSpeed();
    void SetLocalDirectionBias(AgentDirectionBias bias);
    void ClearLocalDirectionBias();
    void SetLocalSpeedDensityStandard(SpeedDensityStandard standard);
    void ClearLocalSpeedDensityStandard();
};

/// A slope between two levels.
class PEDFLUX_API Ramp : public ConnectionObject {
  public:
    using ConnectionObject::ConnectionObject;

    /// The greatest speed of agents who go up, in metres per second along the slope.
    double GetLocalAgentMaxSpeedUp();
    /// The greatest speed of agents who go down, in metres per second along the slope.
    double GetLocalAgentMaxSpeedDown();
    /// @param up,down greater than 0 and at most 20 m/s
    void SetLocalAgentMaxSpeedUpAndDown(double up, double down);
    void ClearLocalAgentMaxSpeed();
    void SetLocalDirectionBias(AgentDirectionBias bias);
    void ClearLocalDirectionBias();
    void SetLocalSpeedDensityStandard(SpeedDensityStandard standard);
    void ClearLocalSpeedDensityStandard();
};

/// A moving stair between two levels. Its direction says which way it moves: up, from ball to box, unless set. With
/// both ways it stands still, and agents walk on it as on stairs.
class PEDFLUX_API Escalator : public ConnectionObject {
  public:
    using ConnectionObject::ConnectionObject;

    /// How fast the treads move along the slope, in metres per second; 0 while the escalator stands still. 0.5 unless
    /// the project's file says otherwise: the slowest of the usual speeds 0.5, 0.65 and 0.75 m/s (EN 115-1).
    double GetTreadSpeedAlongIncline();
    /// The share of that speed in the plan, in metres per second: it falls as the escalator gets steeper.
    double GetHorizontalTreadSpeed();
};

/// A line on walkable surfaces along which agents go one behind the other, such as a marked way or a waiting line. Its
/// shape is a polyline: its first point is the ball, its last one the box. The goal lines across its ends are 0.6 m
/// wide.
class PEDFLUX_API Path : public ConnectionObject {
  public:
    using ConnectionObject::ConnectionObject;

    /// The greatest speed of agents on the path, in metres per second.
    double GetLocalAgentMaxSpeed();
    /// @param speed greater than 0 and at most 20 m/s
    void SetLocalAgentMaxSpeed(double speed);
    void ClearLocalAgentMaxSpeed();
    void SetLocalSpeedDensityStandard(SpeedDensityStandard standard);
    void ClearLocalSpeedDensityStandard();

    /// Whether agents who queue on the path keep another distance than their profile says.
    bool HasLocalAgentQueueSpacing();
    QueueSpacingType GetLocalAgentQueueSpacingType();
    /// The distance in metres from one agent's body to the next. A copy. Throws Exception when the spacing is by
    /// personal space alone.
    std::shared_ptr<Distribution> GetLocalAgentQueueSpacingDistance();
    /// Throws Exception when the spacing is by distance alone.
    PersonalSpaceSelection GetLocalAgentQueueSpacingPersonalSpaceSelection();
    /// @param distance a valid distribution of 0 or more metres
    void SetLocalAgentQueueSpacingByDistance(std::shared_ptr<Distribution> const& distance);
    void SetLocalAgentQueueSpacingByPersonalSpace(PersonalSpaceSelection selection);
    /// @param distance a valid distribution of 0 or more metres
    void SetLocalAgentQueueSpacingByMaxOfDistanceAndPersonalSpace(std::shared_ptr<Distribution> const& distance,
                                                                  PersonalSpaceSelection selection);
    /// @param distance a valid distribution of 0 or more metres
    void SetLocalAgentQueueSpacingBySumOfDistanceAndPersonalSpace(std::shared_ptr<Distribution> const& distance,
                                                                  PersonalSpaceSelection selection);
    void ClearLocalAgentQueueSpacing();
};

/// An obstacle. Where its mesh reaches into the 2 m above a floor, what lies under it as seen from above cannot be
/// walked on.
class PEDFLUX_API Barrier : public SceneObject {
  public:
    using SceneObject::SceneObject;
};

/// A line across walkable surfaces that counts the agents that cross it: the long centre line of the smallest rectangle
/// that holds its mesh as seen from above.
class PEDFLUX_API Cordon : public SceneObject {
  public:
    using SceneObject::SceneObject;

    /// Both ways unless set.
    CordonDirection GetCordonDirection();
    void SetCordonDirection(CordonDirection direction);

    /// The level direction across the line, of length 1: the one towards larger z, or towards larger x where the line
    /// runs along z; the opposite one when inverted.
    Vec3d GetDirectionVector();
    bool IsDirectionInverted();
    void SetDirectionInverted(bool inverted);

    /// Whether the cordon counts an agent that crosses it in a direction. A movement along the line never crosses it.
    /// @param direction of any length; its finite x and z count
    bool WillCountInDirection(Vec3d const& direction);
};

/// A part of a walkable surface where agents wait.
class PEDFLUX_API WaitSpace : public SceneObject {
  public:
    using SceneObject::SceneObject;

    /// How agents wait in it: standing still unless set. A copy.
    std::shared_ptr<WaitStyle> GetWaitStyle();
    void SetSpreadOutWaitStyle();
    void SetStandStillWaitStyle();
};

/// A part of space, given by the mesh about it, that queries and actions refer to.
class PEDFLUX_API Volume : public SceneObject {
  public:
    using SceneObject::SceneObject;
};

/// An area made of walkable objects.
class PEDFLUX_API Zone : public SimObject {
  public:
    using SimObject::SimObject;

    /// The base members alone, unless set.
    ZoneMembershipStrategy GetMembershipType();
    void SetMembershipType(ZoneMembershipStrategy type);

    bool HasBaseMember(GlobalId const& member);
    std::vector<GlobalId> GetBaseMembers();
    /// Replaces the base members: walkable objects, each of them once.
    void SetBaseMembers(std::vector<GlobalId> const& members);
    /// Adds a walkable object; one that is a base member already is not added again.
    void AddBaseMember(GlobalId const& member);
    void AddBaseMembers(std::vector<GlobalId> const& members);

    bool HasEnterAction();
    /// What agents do when they come into the zone from outside. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetEnterActionCopy();
    void SetEnterAction(std::shared_ptr<AgentAction> const& action);
    bool HasExitAction();
    /// What agents do when they leave the zone. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetExitActionCopy();
    void SetExitAction(std::shared_ptr<AgentAction> const& action);
};

/// A group of any objects, each with a weight.
class PEDFLUX_API Collection : public Group {
  public:
    using Group::Group;

    /// Replaces the items, each of them once. Manual weights become 1 for each item.
    void SetItems(std::vector<GlobalId> const& items);
    /// Replaces the items and gives each the weight of the same index. Lists of different lengths are refused.
    void SetItemsWithWeights(std::vector<GlobalId> const& items, std::vector<double> const& weights);
    /// Adds an object, with the weight 1 where weights are manual; one that is in it already is not added again.
    void AddItem(GlobalId const& item);
    void AddItems(std::vector<GlobalId> const& items);
    /// Adds an object with a weight, or changes the weight of one that is in it already. Weights become manual.
    void AddItemWithWeight(GlobalId const& item, double weight);
    /// Takes an object out. Throws Exception when it is not in the collection.
    void RemoveItem(GlobalId const& item);

    /// Whether weights are manual; automatic weights are all 1.
    bool HasWeights();
    /// Throws Exception when the object is not in the collection.
    double GetItemWeight(GlobalId const& item);
    /// One weight for each item, in the items' order.
    std::vector<double> GetItemWeights();
    /// Makes weights manual. Throws Exception when the object is not in the collection.
    /// @param weight 0 or more
    void SetItemWeight(GlobalId const& item, double weight);
    /// Gives every item the same manual weight, 0 or more.
    void SetManualWeights(double weight);
    void SetAutomaticWeights();
};

/// A group of walkable objects that count as the surroundings of a connection.
class PEDFLUX_API Perimeter : public Group {
  public:
    using Group::Group;

    /// Replaces the items: walkable objects, each of them once.
    void SetItems(std::vector<GlobalId> const& items);
    /// Adds a walkable object; one that is in it already is not added again.
    void AddItem(GlobalId const& item);
    void AddItems(std::vector<GlobalId> const& items);
};

/// A group of connections between which agents choose, such as the stairs and ramps from one level to the next. A
/// connection belongs to one bank at most: adding it to another takes it out of the one before.
class PEDFLUX_API RouteBank : public Group {
  public:
    using Group::Group;

    /// Replaces the items: connections, each of them once.
    void SetItems(std::vector<GlobalId> const& items);
    /// Adds a connection; one that is in it already is not added again.
    void AddItem(GlobalId const& item);
    void AddItems(std::vector<GlobalId> const& items);
};

}  // namespace pedflux
