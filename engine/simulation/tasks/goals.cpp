#include "engine/simulation/tasks/goals.h"

#include "engine/simulation/tasks/task_context.h"

namespace pedflux::engine {

void head_for(TaskContext& context, AgentMotion& motion, PlaceIndex goal) {
    context.agents.infos[motion.agent].goal = goal;
    if (goal == no_place) {
        motion.destination = navigation::none;
        return;
    }
    motion.destination = destination_at(context.routes, context.world, goal, motion.route_class);
    bool const leaves_there = !stays_on_arrival(context.agents.tasks[motion.agent]);
    if (leaves_there) open_exit(context.exits, context.world, context.crowd, goal);
}

void send_to(TaskContext& context, AgentMotion& motion, PlaceIndex goal) {
    context.agents.tasks[motion.agent].last_goal = goal;
    head_for(context, motion, goal);
}

}  // namespace pedflux::engine
