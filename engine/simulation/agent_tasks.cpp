#include "engine/base/checks.h"
#include "engine/behaviour/actions/task_order.h"
#include "engine/simulation/present_agent.h"
#include "engine/simulation/tasks/agent_actions.h"

#include <pedflux/agents.h>

#include <algorithm>
#include <span>

/// The tasks that programs give to agents.
namespace pedflux {

namespace {

using engine::Here;
using engine::here;
using engine::no_place;

TaskType going_to(Here const& agent) {
    auto const goal = agent.info.goal;
    if (goal == no_place) return TaskType::NONE;
    if (agent.run->places[goal].is_server()) return TaskType::SEEK_PROCESS_START;
    return agent.run->places[goal].is_portal() ? TaskType::SEEK_PORTAL : TaskType::SEEK_AREA;
}

/// Waits are told apart by what they wait for.
TaskType type_of(Here const& agent, engine::ActionNode const& node) {
    if (node.type == AgentActionTypeId::FOLLOW_SIGN) return TaskType::FOLLOW_SIGN;
    auto const play = engine::play_of(node.type);
    if (play != engine::ActionPlay::WAIT && play != engine::ActionPlay::DO_UNTIL) return going_to(agent);
    if (node.test != engine::NONE) return TaskType::WAIT_WHILE_TEST_TRUE;
    if (node.time != engine::NONE) return TaskType::WAIT_UNTIL_TIME;
    return node.spec != engine::NONE ? TaskType::WAIT_FOR_DURATION : TaskType::WAIT_FOREVER;
}

}  // namespace

TaskType Agent::GetCurrentTaskType() {
    auto const agent = here(run_, id_);
    auto const& task = agent.info.tasks.task;
    if (task) return type_of(agent, agent.run->rules.plan.nodes[static_cast<std::size_t>(task->node)]);
    bool const waits = agent.info.goal != no_place && agent.motion.starts_at > agent.run->seconds();
    return waits ? TaskType::WAIT_FOR_DURATION : going_to(agent);
}

bool Agent::HasCurrentTaskGoalId() { return !GetCurrentTaskGoalIds().empty(); }

std::vector<GlobalId> Agent::GetCurrentTaskGoalIds() {
    auto const agent = here(run_, id_);
    if (agent.info.goal == no_place) return {};
    std::vector<GlobalId> goals{agent.run->places[agent.info.goal].id};
    auto const& task = agent.info.tasks.task;
    if (!task || task->goal != engine::ANY_GOAL) return goals;
    auto const& plan = agent.run->rules.plan;
    for (auto const& goal : plan.objects_of(plan.nodes[static_cast<std::size_t>(task->node)])) {
        if (!goal.InternalEquals(goals.front())) goals.push_back(goal);
    }
    return goals;
}

void Agent::AddTaskAsActive(std::shared_ptr<Task> const& task) {
    auto const agent = here(run_, id_);
    if (!task) engine::refuse("A task is needed, not an empty one; ClearTasks takes all tasks away");
    order(*agent.run, agent.motion, engine::order_of(*task), true);
}

void Agent::AddTaskAsLast(std::shared_ptr<Task> const& task) {
    auto const agent = here(run_, id_);
    if (!task) engine::refuse("A task is needed, not an empty one; ClearTasks takes all tasks away");
    order(*agent.run, agent.motion, engine::order_of(*task), false);
}

void Agent::ClearTasks() {
    auto const agent = here(run_, id_);
    clear_tasks(*agent.run, agent.motion);
}

}  // namespace pedflux
