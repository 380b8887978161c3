#pragma once

#include "engine/behaviour/actions/action_stack.h"

namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;

/// Lets an agent go on in a process, from station to station: portals, areas and servers, which see to their visitors.
/// The task's frame is the innermost of its actions. Returns whether the agent has come through all stations, or may
/// use none of the servers.
bool advance_process(TaskContext& context, AgentMotion const& motion, ActionTask const& task);

}  // namespace pedflux::engine
