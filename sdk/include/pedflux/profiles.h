#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>

namespace pedflux {

class AgentAction;
class Distribution;

/// A kind of people: their speed, their size, and the costs by which they choose their route. Distributions are copied
/// both when set and when read; a setter refuses an empty or invalid one, and one that leaves the range given.
class PEDFLUX_API Profile : public SimObject {
  public:
    using SimObject::SimObject;

    /// The free walking speed on level ground. Unless set, normal with mean 1.34 m/s and standard deviation 0.26 m/s
    /// between 0.65 and 2.05 m/s: the adults of U. Weidmann, Transporttechnik der Fussgänger (1993).
    std::shared_ptr<Distribution> GetSpeedDistribution();
    /// @param speed more than 0 and at most 20 m/s
    void SetSpeedDistribution(std::shared_ptr<Distribution> const& speed);

    /// The radius of the body. 0.2 m unless set.
    std::shared_ptr<Distribution> GetRadiusDistribution();
    /// @param radius more than 0 and at most 2 m
    void SetRadiusDistribution(std::shared_ptr<Distribution> const& radius);
    /// The same radius for everyone.
    void SetRadius(double radius);

    /// Whether people keep a distance to others beyond their body; not unless set.
    bool IsPersonalSpaceEnabled();
    /// The distance from body to body that people keep where there is room. Throws Exception when it is not enabled.
    std::shared_ptr<Distribution> GetPersonalSpaceDistribution();
    /// @param distance 0 to 10 m
    void SetPersonalSpaceDistribution(std::shared_ptr<Distribution> const& distance);
    /// The same distance for everyone.
    void SetPersonalSpace(double distance);
    void ClearPersonalSpace();

    /// The cost of a second of walking on the level, and so the unit of the other costs. 1 unless set.
    std::shared_ptr<Distribution> GetHorizontalCostDistribution();
    /// @param cost 0 or more
    void SetHorizontalCostDistribution(std::shared_ptr<Distribution> const& cost);
    /// The cost of a second of walking on stairs and slopes. 1 unless set. Routes weigh metres: one on stairs and
    /// slopes counts as much as this cost over the horizontal one, from 0.01 to 100.
    std::shared_ptr<Distribution> GetVerticalCostDistribution();
    /// @param cost 0 or more
    void SetVerticalCostDistribution(std::shared_ptr<Distribution> const& cost);
    /// The cost of a second of waiting in a queue, before a connection that leads on from a floor. 1 unless set.
    std::shared_ptr<Distribution> GetQueueCostDistribution();
    /// @param cost 0 or more
    void SetQueueCostDistribution(std::shared_ptr<Distribution> const& cost);
    /// The cost of a second of being served. 1 unless set.
    std::shared_ptr<Distribution> GetProcessingCostDistribution();
    /// @param cost 0 or more
    void SetProcessingCostDistribution(std::shared_ptr<Distribution> const& cost);

    /// The side to which people tend in counterflow. None unless set.
    AgentDirectionBias GetAgentDirectionBias();
    void SetAgentDirectionBias(AgentDirectionBias bias);

    /// The greatest acceleration forwards, in m/s2. 2 unless set.
    double GetAccelerationForwardMax();
    /// @param acceleration greater than 0 and at most 100 m/s2
    void SetAccelerationForwardMax(double acceleration);

    /// By how much, as a share from 0 to 1, people vary their speed to let others mix. 0 unless set.
    double GetSpeedShuffleFactor();
    void SetSpeedShuffleFactor(double factor);

    /// How fast people turn at their greatest speed, in degrees per second. 360 unless set.
    double GetTurnRateCapInDegreesAtMaxSpeed();
    /// @param rate greater than 0 and at most 3600 degrees per second
    void SetTurnRateCapInDegreesAtMaxSpeed(double rate);

    /// Whether people of the profile have an initial action, done before they start to walk; none unless set.
    bool HasInitialAction();
    /// A copy of what they do first; empty when there is none.
    std::shared_ptr<AgentAction> GetInitialActionCopy();
    /// Keeps a copy of the action; an empty one takes it away.
    void SetInitialAction(std::shared_ptr<AgentAction> const& action);

    /// Whether people of the profile have an avatar of their own.
    bool HasAvatar();
    GlobalId GetAvatar();
    /// @param avatar an avatar of the project
    void SetAvatar(GlobalId const& avatar);
    void ClearAvatar();

    /// Whether people of the profile keep to a network; otherwise they use every walkable object.
    bool HasNetwork();
    GlobalId GetNetwork();
    /// @param network a network of the project
    void SetNetwork(GlobalId const& network);
    void ClearNetwork();
};

}  // namespace pedflux
