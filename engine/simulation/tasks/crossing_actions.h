#pragma once

#include "engine/simulation/agents/agents.h"
#include "engine/simulation/tasks/behaviour_program.h"

/// What floors, connections and zones tell agents that enter and leave them.
namespace pedflux::engine {

struct TaskContext;

/// An agent came from one surface onto another.
void act_on_crossing(BehaviourProgram const& program, FloorPlan const& plan, Agents& agents, AgentMotion const& motion,
                     navigation::RegionIndex from);

/// An agent leaves the simulation: it does what the floor and the zones where it is tell those who go out of them, as
/// far as it happens at once. What takes time is dropped.
void act_on_leaving(TaskContext& context, AgentMotion& motion);

}  // namespace pedflux::engine
