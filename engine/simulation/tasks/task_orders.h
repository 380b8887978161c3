#pragma once

/// The tasks that programs give to agents.
namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;
struct TaskOrder;

/// Gives an order, to be done at once or after all others. Throws Exception when it cannot be done in the simulated
/// project.
void order(TaskContext& context, AgentMotion& motion, TaskOrder const& task, bool at_once);
/// Forgets all orders and goals.
void clear_tasks(TaskContext& context, AgentMotion& motion);

}  // namespace pedflux::engine
