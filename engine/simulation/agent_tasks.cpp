#include "engine/base/checks.h"
#include "engine/behaviour/actions/task_order.h"
#include "engine/simulation/present_agent.h"
#include "engine/simulation/tasks/task_orders.h"

#include <pedflux/agents.h>

#include <algorithm>
#include <span>

/// The tasks that programs give to agents.
namespace pedflux {

namespace {

using engine::no_place;
using engine::present_agent;
using engine::PresentAgent;

TaskType going_to(PresentAgent const& agent) {
    auto const goal = agent.info.goal;
    if (goal == no_place) return TaskType::NONE;
    if (agent.state->world.places[goal].is_server()) return TaskType::SEEK_PROCESS_START;
    return agent.state->world.places[goal].is_portal() ? TaskType::SEEK_PORTAL : TaskType::SEEK_AREA;
}

/// Waits are told apart by what they wait for.
TaskType type_of(PresentAgent const& agent, engine::ActionNode const& node) {
    if (node.type == AgentActionTypeId::FOLLOW_SIGN) return TaskType::FOLLOW_SIGN;
    auto const play = engine::play_of(node.type);
    if (play != engine::ActionPlay::WAIT && play != engine::ActionPlay::DO_UNTIL) return going_to(agent);
    if (node.test != engine::NONE) return TaskType::WAIT_WHILE_TEST_TRUE;
    if (node.time != engine::NONE) return TaskType::WAIT_UNTIL_TIME;
    return node.spec != engine::NONE ? TaskType::WAIT_FOR_DURATION : TaskType::WAIT_FOREVER;
}

}  // namespace

TaskType Agent::GetCurrentTaskType() {
    auto const agent = present_agent(run_, id_);
    auto const& task = agent.tasks.task;
    if (task) return type_of(agent, node_of(agent.state->program, *task));
    bool const waits = agent.info.goal != no_place && agent.motion.starts_at > agent.state->clock.seconds();
    return waits ? TaskType::WAIT_FOR_DURATION : going_to(agent);
}

bool Agent::HasCurrentTaskGoalId() { return !GetCurrentTaskGoalIds().empty(); }

std::vector<GlobalId> Agent::GetCurrentTaskGoalIds() {
    auto const agent = present_agent(run_, id_);
    if (agent.info.goal == no_place) return {};
    std::vector<GlobalId> goals{agent.state->world.places[agent.info.goal].id};
    auto const& task = agent.tasks.task;
    if (!task || task->goal != engine::ANY_GOAL) return goals;
    for (auto const& goal : objects_of(agent.state->program, *task)) {
        if (!goal.InternalEquals(goals.front())) goals.push_back(goal);
    }
    return goals;
}

void Agent::AddTaskAsActive(std::shared_ptr<Task> const& task) {
    auto const agent = present_agent(run_, id_);
    if (!task) engine::refuse("A task is needed, not an empty one; ClearTasks takes all tasks away");
    auto context = task_context(*agent.state);
    order(context, agent.motion, engine::order_of(*task), true);
}

void Agent::AddTaskAsLast(std::shared_ptr<Task> const& task) {
    auto const agent = present_agent(run_, id_);
    if (!task) engine::refuse("A task is needed, not an empty one; ClearTasks takes all tasks away");
    auto context = task_context(*agent.state);
    order(context, agent.motion, engine::order_of(*task), false);
}

void Agent::ClearTasks() {
    auto const agent = present_agent(run_, id_);
    auto context = task_context(*agent.state);
    clear_tasks(context, agent.motion);
}

}  // namespace pedflux
