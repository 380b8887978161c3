#pragma once

#include "engine/crowd/crowd.h"
#include "engine/geometry/plane.h"
#include "engine/navigation/navigation.h"
#include "engine/simulation/agents/routing_preferences.h"

#include <cstdint>
#include <optional>

namespace pedflux::engine {

/// Where an agent walks across an opening or around a corner; see routing/local_targets.h.
struct LocalTarget {
    navigation::RouteStep::Kind of = navigation::RouteStep::Kind::ARRIVED;
    std::uint32_t number = navigation::none;  ///< of the corner, connection or destination
    bool straight = true;                     ///< over the nearest point, wherever that is
    Point aim;                                ///< if not
    double until = 0;                         ///< seconds of the simulation; then it is chosen anew
};

/// Another connection than that of the shortest route; see routing/congestion_rerouting.h.
struct Reroute {
    navigation::ConnectionIndex joint = navigation::none;  ///< over which it leaves the floor; none: the shortest route
    navigation::RegionIndex floor = 0;
    navigation::DestinationIndex instead_of = navigation::none;  ///< the destination that the agent then goes to
    navigation::DestinationIndex way = navigation::none;         ///< the destination that the joint is
};

/// An agent reaches its post within this distance (metres).
inline constexpr double at_post = 0.15;

/// What stepping needs of an agent that is in the simulation.
struct AgentMotion {
    std::uint32_t agent = 0;
    crowd::AgentIndex body = 0;
    navigation::RegionIndex region = 0;
    navigation::DestinationIndex destination = navigation::none;
    Point position;
    Point frame_start;  ///< the position at the start of the frame
    Point step_start;   ///< the position before the last step of the crowd
    Point direction;
    std::optional<Point> post;  ///< a point of its region to which it walks straight, and stands there
    double starts_at = 0;       ///< seconds; the agent waits until then
    double walked = 0;          ///< metres in this frame, along inclines
    enum class Way : std::uint8_t { WALKS, STANDS, LOST, ARRIVED };
    Way way = Way::STANDS;
    RouteClassIndex route_class = 0;                       ///< of its preferences
    navigation::ConnectionIndex ahead = navigation::none;  ///< the joint, in sight, that its route crosses next
    navigation::RouteHint hint;
    LocalTarget local_target;
    Reroute reroute;
};

}  // namespace pedflux::engine
