#pragma once

#include "engine/simulation/agents/task_state.h"

namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;

/// Whether an agent that arrives stays, as it has something else to do.
inline bool stays_on_arrival(TaskState const& tasks) { return tasks.task || tasks.circulation != no_place; }

/// Makes a place an agent's goal, or lets the agent stand for no_place. A portal becomes an exit when the agent is to
/// leave there.
void head_for(TaskContext& context, AgentMotion& motion, PlaceIndex goal);
/// Makes a place an agent's last goal, and sends it there.
void send_to(TaskContext& context, AgentMotion& motion, PlaceIndex goal);

}  // namespace pedflux::engine
