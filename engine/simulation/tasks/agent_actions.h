#pragma once

#include "engine/simulation/tasks/task_context.h"

/// Agents that do what actions and tasks tell them.
namespace pedflux::engine {

/// Gives an agent that enters what its portal, event and profile tell it, and its colour.
void instruct(TaskContext& context, AgentMotion& motion);

/// Lets all agents do what they have to; those that an action lets leave are gone afterwards.
void act_all(TaskContext& context);
/// Lets one agent do so at once. It may have left afterwards; its entry among the motions stays until remove_gone().
void act(TaskContext& context, AgentMotion& motion);

}  // namespace pedflux::engine
