#pragma once

#include "engine/simulation/tasks/task_context.h"

/// Agents that do what actions and tasks tell them.
namespace pedflux::engine {

/// Gives an agent that enters what its portal, event and profile tell it, and its colour.
void instruct(TaskContext& context, AgentMotion& motion);

/// Lets all agents do what they have to; those that an action lets leave are gone afterwards.
void act_all(TaskContext& context);
/// Lets one agent do so at once; it may have left afterwards.
void act(TaskContext& context, AgentMotion& motion);

/// Makes a place an agent's goal, or lets the agent stand.
void head_for(TaskContext& context, AgentMotion& motion, PlaceIndex goal);
/// Makes a place an agent's last goal, and sends it there.
void send_to(TaskContext& context, AgentMotion& motion, PlaceIndex goal);

/// Whether an agent that arrives stays, as it has something else to do.
inline bool stays_on_arrival(TaskState const& tasks) { return tasks.task || tasks.circulation != no_place; }

}  // namespace pedflux::engine
