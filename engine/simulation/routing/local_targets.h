#pragma once

#include "engine/geometry/plane.h"
#include "engine/navigation/navigation.h"

#include <cstdint>

/// Where agents walk across an opening or around a corner.
namespace pedflux::engine {

class DensityGrid;
struct AgentMotion;

/// The point to walk to on the target of a route's step, kept in the agent's LocalTarget.
///
/// An agent in front of an opening walks straight on. Those who come from the side would all aim at its near post, so
/// they spread over it. An agent that would walk into a crowd there takes the point of the opening that it passes
/// soonest, as people do who come to a stair from the side.
/// @param key of the agent's random numbers
/// @param now seconds of the simulation
Point aim_on(navigation::RouteStep const& step, AgentMotion& motion, std::uint32_t key, DensityGrid const& density_grid,
             double now);

}  // namespace pedflux::engine
