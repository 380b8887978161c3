#include "engine/simulation/tasks/task_orders.h"

#include "engine/base/checks.h"
#include "engine/behaviour/actions/task_order.h"
#include "engine/simulation/tasks/agent_actions.h"

#include <memory>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Throws Exception unless the goal is of the kind that the order is about.
void require_goal(Places& places, TaskKind kind, GlobalId const& goal) {
    if (kind == TaskKind::SEEK_PROCESS_START) {
        places.process_start(goal);
        return;
    }
    auto const& place = places[places.of(goal)];
    if (kind == TaskKind::SEEK_PORTAL && !place.is_portal()) {
        refuse(fmt::format("{} is no portal to go to", place.title));
    }
    if (kind == TaskKind::SEEK_AREA && place.is_portal()) {
        refuse(fmt::format("{} is no floor, connection or zone to go to", place.title));
    }
}

std::shared_ptr<OrderProgram const> compile_order(TaskContext& context, TaskOrder const& task) {
    OrderProgram order;
    order.root = compile(order.actions.program, task);
    place_actions(order.actions, context.world.places, context.program.wait_spaces, 0);
    auto const before = context.program.actions.program.nodes.size() + context.agents.orders;
    order.first_node = static_cast<int>(before);
    context.agents.orders += order.actions.program.nodes.size();
    return std::make_shared<OrderProgram const>(std::move(order));
}

}  // namespace

void order(TaskContext& context, AgentMotion& motion, TaskOrder const& task, bool at_once) {
    for (auto const& goal : task.goals) require_goal(context.world.places, task.kind, goal);
    auto const program = compile_order(context, task);
    auto& actions = context.agents.tasks[motion.agent].actions;
    if (at_once) {
        start(actions, program->root, program);
    } else {
        start_last(actions, program->root, program);
    }
    act(context, motion);
    remove_gone(context.agents);
}

void clear_tasks(TaskContext& context, AgentMotion& motion) {
    auto& tasks = context.agents.tasks[motion.agent];
    tasks.actions.frames.clear();
    tasks.last_goal = no_place;
    tasks.circulation = no_place;
    tasks.wait_after.reset();
    act(context, motion);
}

}  // namespace pedflux::engine
