#pragma once

#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/places.h"

namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;

/// Whether a point is nearer to the ball end of a connection than to its box end.
bool is_nearer_to_ball(FloorPlan const& plan, navigation::RegionIndex connection, Point point);

/// Lets an agent follow a sign to a place, and returns whether it has. It passes connections from one end to the other.
bool follow_sign(TaskContext& context, AgentMotion const& motion, PlaceIndex goal);

}  // namespace pedflux::engine
