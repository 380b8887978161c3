#include "engine/simulation/tasks/action_scene.h"

#include "engine/simulation/agents/tokens.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/tasks/live_situation.h"
#include "engine/simulation/tasks/processes.h"
#include "engine/simulation/tasks/signs.h"

namespace pedflux::engine {

bool LiveScene::put_test(int test) {
    return engine::put_test(context_, motion_, context_.program.tests[static_cast<std::size_t>(test)]);
}

bool LiveScene::pursue(ActionTask const& task) {
    auto const type = node_of(context_.program, task).type;
    if (type == AgentActionTypeId::SEEK_PROCESS_START) return advance_process(context_, motion_, task);
    auto const goal = choose_goal(task);
    tasks_.task_goal = goal;
    if (goal == no_place) return true;
    bool const arrived = type == AgentActionTypeId::FOLLOW_SIGN ? follow_sign(context_, motion_, goal)
                                                                : is_at(context_.world, context_.agents, motion_, goal);
    if (arrived) {
        if (context_.world.places[goal].is_portal()) passed_portal_ = goal;
        has_arrived_ = true;
    }
    return arrived;
}

/// Of goals of which the easiest counts, one is chosen when the task begins.
PlaceIndex LiveScene::choose_goal(ActionTask const& task) {
    auto const type = node_of(context_.program, task).type;
    if (type == AgentActionTypeId::SEEK_INITIAL_GOAL) {
        tasks_.last_goal = info_.origin.destination;
        return tasks_.last_goal;
    }
    if (type == AgentActionTypeId::SEEK_ORIGIN) return info_.origin.origin;
    auto const goals = places_of(context_.program, task);
    if (task.goal != ANY_GOAL) return goals[static_cast<std::size_t>(task.goal)];
    bool const is_chosen = !has_arrived_ && tasks_.task == task && tasks_.task_goal != no_place;
    has_arrived_ = false;
    if (is_chosen) return tasks_.task_goal;
    return nearest_place(context_.routes, context_.world, {motion_.region, motion_.position}, motion_.route_class,
                         goals);
}

void LiveScene::happen(ActionEffect effect, ActionNode const& node) {
    auto& agents = context_.agents;
    auto& routes = context_.routes;
    auto& journal = context_.journal;
    auto const& world = context_.world;
    auto const& clock = context_.clock;
    auto const objects = context_.program.actions.program.objects_of(node);
    switch (effect) {
        case ActionEffect::ADD_TOKENS:
            for (auto const& token : objects) give_token(agents, journal, clock, motion_.agent, token);
            break;
        case ActionEffect::CLEAR_TOKENS:
            for (auto const& token : objects) take_token(agents, journal, clock, motion_.agent, token);
            break;
        case ActionEffect::ADD_TO_TALLY:
            for (auto const& tally : objects) {
                if (auto const number = context_.tallies.find(tally)) context_.tallies.add(*number, node.value);
            }
            break;
        case ActionEffect::SET_AVATAR:
            info_.avatar = objects.front();
            break;
        case ActionEffect::CLEAR_AVATAR:
            info_.avatar = info_.origin.avatar;
            break;
        case ActionEffect::SET_COLOR:
            info_.color = node.color;
            break;
        case ActionEffect::CLEAR_COLOR:
            info_.color = info_.origin.color;
            break;
        case ActionEffect::SET_NETWORK:
            set_network(routes, world, agents, motion_,
                        objects.empty() ? no_network : require_network(routes, objects.front()));
            break;
        case ActionEffect::CLEAR_NETWORK:
            set_network(routes, world, agents, motion_, preferences_of(routes, info_.origin).network);
            break;
        case ActionEffect::EXIT_SIMULATION:
            leaves_ = true;
            break;
        case ActionEffect::CLEAR_TASKS:
            tasks_.last_goal = no_place;
            tasks_.circulation = no_place;
            break;
        case ActionEffect::CLEAR_HISTORY:
            // Routes are the shortest whatever an agent has passed: its history need not be cleared.
            break;
    }
}

}  // namespace pedflux::engine
