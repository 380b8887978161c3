#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#include <vector>

/// What a building is made of. Made by a project with a mesh, or with the objects that they gather.
namespace pedflux {

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

/// A level to walk on. The faces of its mesh that look upwards are walkable, whatever their outline; barriers take away
/// from them.
class PEDFLUX_API Floor : public WalkableObject {
  public:
    using WalkableObject::WalkableObject;
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

    /// Whether an event of the project brings agents in here.
    bool IsEntrance();
    /// Whether an event of the project sends agents here.
    bool IsExit();
};

/// A level connection between two spaces, such as a door or a corridor.
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

/// An obstacle. Where its mesh reaches into the 2 m above a floor, what lies under it as seen from above cannot be
/// walked on.
class PEDFLUX_API Barrier : public SceneObject {
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
