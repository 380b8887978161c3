#pragma once

#include "engine/simulation/agents/agent_info.h"
#include "engine/simulation/agents/agent_motion.h"

namespace pedflux::engine {

struct TaskContext;

/// Lets an agent leave. Its entry among the motions stays until remove_gone().
/// @param through_portal whether it leaves by the portal that is its goal
void take_out(TaskContext& context, AgentInfo::Fate fate, AgentMotion& motion, bool through_portal);

}  // namespace pedflux::engine
