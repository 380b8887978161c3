#pragma once

#include "engine/simulation/agents/routing_preferences.h"
#include "engine/simulation/agents/spawn_requests.h"
#include "engine/simulation/world/places.h"

#include <pedflux/agents.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace pedflux::engine {

/// Everything about an agent that walking does not need. Stays when the agent has left.
struct AgentInfo {
    enum class Fate : std::uint8_t { HERE, ARRIVED, FAILED };

    SpawnRequest origin;  ///< as the agent entered
    PlaceIndex goal = no_place;
    Color color;
    double height = 1.75;          ///< metres
    std::vector<GlobalId> tokens;  ///< in the order in which they were given
    std::optional<GlobalId> avatar;
    Fate fate = Fate::HERE;
    int first_frame = 0;
    int last_frame = 0;
    double heading = 0;      ///< degrees
    double speed = 0;        ///< metres per second over the last frame, along inclines
    Point velocity;          ///< metres per second over the last frame, in the plan
    double distance = 0;     ///< metres walked
    double moving_time = 0;  ///< seconds
    navigation::RegionIndex previous_connection = navigation::none;
    AgentMovement movement = AgentMovement::STAND;
    std::optional<AgentMovement> next_movement;
    std::optional<double> shown_speed;  ///< of a controlled agent in this frame
    bool controlled = false;
    bool adjustable = true;
    std::optional<Point> direction_override;
    RoutingPreferences preferences;
    std::shared_ptr<Agent> object;  ///< the SDK's object
};

}  // namespace pedflux::engine
