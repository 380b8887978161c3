#include "engine/simulation/frame/arrivals.h"

#include "engine/simulation/routing/positions.h"
#include "engine/simulation/tasks/dispatches.h"
#include "engine/simulation/tasks/goals.h"
#include "engine/simulation/tasks/leaving.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

/// An agent within this distance (metres) of a portal's line has reached it.
constexpr double at_line = 0.05;

/// Whether the agent is at the line of the portal that it goes to, or crossed it in this step.
bool has_reached_portal(World const& world, Agents const& agents, AgentMotion const& motion) {
    auto const goal = agents.infos[motion.agent].goal;
    if (goal == no_place || !world.places[goal].is_portal() || agents.tasks[motion.agent].waiting.walks) return false;
    auto const& line = world.plan.doorways[world.places[goal].doorway].line;
    if (line.region != motion.region || motion.way != AgentMotion::Way::WALKS) return false;
    return distance(line.line, motion.position) < at_line ||
           cross_each_other(line.line, {motion.step_start, motion.position});
}

/// Whether a server is the last goal, and nothing is left to do there. Who goes there has to be served until then.
bool was_served_at_the_end(Places const& places, AgentInfo const& info, TaskState const& tasks) {
    return info.goal != no_place && places[info.goal].is_server() && !tasks.has_something_to_do();
}

bool has_arrived(World const& world, Agents const& agents, AgentMotion const& motion) {
    return motion.way == AgentMotion::Way::ARRIVED || has_reached_portal(world, agents, motion) ||
           was_served_at_the_end(world.places, agents.infos[motion.agent], agents.tasks[motion.agent]);
}

/// Whether the agent was pushed out through an exit. The line of an exit is open to all, as the crowd does not know
/// who is to leave there.
bool is_outside(FloorPlan const& plan, Exits const& exits, AgentMotion const& motion) {
    return std::ranges::any_of(exits.of[motion.region], [&](std::uint32_t doorway) {
        return cross_each_other(plan.doorways[doorway].line.line, {motion.step_start, motion.position});
    });
}

}  // namespace

void finish_arrivals(TaskContext& context) {
    auto& agents = context.agents;
    bool has_left = false;
    for (auto& motion : agents.motions) {
        bool const stays = !has_arrived(context.world, agents, motion) ||
                           stays_on_arrival(agents.tasks[motion.agent]) || send_on(context, motion);
        if (stays) {
            if (is_outside(context.world.plan, context.exits, motion)) put_back(motion, context.crowd);
            continue;
        }
        auto const goal = agents.infos[motion.agent].goal;
        take_out(context, AgentInfo::Fate::ARRIVED, motion, goal != no_place && context.world.places[goal].is_portal());
        has_left = true;
    }
    if (has_left) remove_gone(agents);
}

}  // namespace pedflux::engine
