#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/level_of_service.h>
#include <pedflux/vectors.h>

#include <string>

namespace pedflux {

namespace engine {
struct AgentDataAccess;
}

/// How an agent is seen to move.
enum class AgentMovement : int {
    STAND = 0,
    WALK = 1,
    RUN = 2,
};

/// One agent in one frame of a stored run.
class PEDFLUX_API AgentData {
  public:
    /// No agent: identifier -1, everything else zero.
    AgentData();
    AgentData(AgentData const&);
    AgentData(AgentData&&) noexcept;
    AgentData& operator=(AgentData const&);
    AgentData& operator=(AgentData&&) noexcept;
    ~AgentData();

    int GetAgentId();
    AgentMovement GetAgentMovement();
    /// Seconds that the agent has moved since it entered, for the pace of its picture.
    double GetAnimationTime();
    /// Persons per square metre as the agent feels them ahead.
    double GetDensity();
    /// Degrees clockwise from forward (-z), in [0, 360).
    double GetHeading();
    /// Metres.
    double GetRadius();
    /// Metres per second.
    double GetSpeed();
    /// Empty for an agent without an avatar.
    std::string GetAvatarName();
    Color GetColor();
    /// The level by the standard of the place: stairways on stairs, walkways elsewhere.
    LevelOfService GetLevelOfService();
    /// The point of the walkable surface on which the agent stands.
    Vec3d GetPosition();

  private:
    friend struct engine::AgentDataAccess;

    int agentId_ = -1;
    AgentMovement movement_ = AgentMovement::STAND;
    double animationTime_ = 0;
    double density_ = 0;
    double heading_ = 0;
    double radius_ = 0;
    double speed_ = 0;
    Color color_;
    LevelOfService levelOfService_;
    Vec3d position_;
};

}  // namespace pedflux
