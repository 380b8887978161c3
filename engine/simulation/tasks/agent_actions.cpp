#include "engine/simulation/tasks/agent_actions.h"

#include "engine/simulation/tasks/action_scene.h"
#include "engine/simulation/tasks/circulation.h"
#include "engine/simulation/tasks/goals.h"
#include "engine/simulation/tasks/leaving.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

/// The action of agents that reach a portal on their way.
int waypoint_action(TaskContext const& context, PlaceIndex portal) {
    return portal == no_place ? NONE : context.program.doorways[context.world.places[portal].doorway].waypoint;
}

std::optional<ActionTask> advance_actions(TaskContext& context, AgentMotion const& motion, LiveScene& scene) {
    auto& actions = context.agents.tasks[motion.agent].actions;
    ActionDraws const draws{context.world.seed, context.agents.infos[motion.agent].origin.key};
    for (;;) {
        auto task = advance(context.program.actions.program, actions, draws, scene);
        int const waypoint = waypoint_action(context, scene.take_passed_portal());
        if (waypoint == NONE || scene.leaves()) return task;
        start(actions, waypoint);
    }
}

/// Sends an agent where its task leads, or lets it stand.
void do_task(TaskContext& context, AgentMotion& motion, ActionTask const& task) {
    auto const& tasks = context.agents.tasks[motion.agent];
    auto const type = node_of(context.program, task).type;
    bool const goes = is_seeking(type);
    head_for(context, motion, goes ? tasks.task_goal : no_place);
    if (tasks.sign.far_end != navigation::none && goes) motion.destination = tasks.sign.far_end;
}

}  // namespace

void act(TaskContext& context, AgentMotion& motion) {
    auto& tasks = context.agents.tasks[motion.agent];
    LiveScene scene(context, motion);
    tasks.task = advance_actions(context, motion, scene);
    if (scene.leaves()) return take_out(context, AgentInfo::Fate::ARRIVED, motion, false);
    if (tasks.task) return do_task(context, motion, *tasks.task);
    tasks.task_goal = no_place;
    double const now = context.clock.seconds();
    if (tasks.wait_after) {
        motion.starts_at = std::max(motion.starts_at, now + *tasks.wait_after);
        tasks.wait_after.reset();
    }
    if (tasks.circulation != no_place && motion.starts_at <= now) circulate(context, motion);
    if (tasks.circulation == no_place) head_for(context, motion, tasks.last_goal);
}

void act_all(TaskContext& context) {
    auto& agents = context.agents;
    bool has_left = false;
    for (auto& motion : agents.motions) {
        if (!agents.tasks[motion.agent].has_something_to_do()) continue;
        act(context, motion);
        has_left = has_left || !agents.is_here(motion.agent);
    }
    if (has_left) remove_gone(agents);
}

void instruct(TaskContext& context, AgentMotion& motion) {
    auto const& program = context.program;
    auto& info = context.agents.infos[motion.agent];
    auto& tasks = context.agents.tasks[motion.agent];
    auto const event = program.events.find(info.origin.event);
    auto const profile = program.profiles.find(info.origin.profile);
    auto const give = [&](int action) {
        if (action != NONE) start_last(tasks.actions, action);
    };
    tasks.last_goal = info.goal;
    auto const origin = info.origin.origin;
    bool const entered_by_portal = origin != no_place && context.world.places[origin].is_portal();
    if (entered_by_portal) give(program.doorways[context.world.places[origin].doorway].enter);
    if (profile != program.profiles.end()) give(profile->second);
    if (event != program.events.end()) {
        auto const& instructions = event->second;
        tasks.evacuates = instructions.is_evacuation;
        tasks.wait_style = instructions.wait_style;
        give(instructions.initial_action);
        begin_circulation(context, motion, instructions.circulation);
        auto const color = std::ranges::find_if(
            instructions.colors, [&](ColorChoice const& choice) { return put_test(context, motion, choice.test); });
        if (color != instructions.colors.end()) info.color = info.origin.color = color->color;
    }
    if (tasks.has_something_to_do() && info.origin.wait > 0) tasks.wait_after = info.origin.wait;
}

}  // namespace pedflux::engine
