#include "engine/simulation/tasks/leaving.h"

#include "engine/simulation/tasks/crossing_actions.h"
#include "engine/simulation/tasks/server_visits.h"
#include "engine/simulation/tasks/task_context.h"

namespace pedflux::engine {

void take_out(TaskContext& context, AgentInfo::Fate fate, AgentMotion& motion, bool through_portal) {
    act_on_leaving(context, motion);
    end_wait(context, motion);
    auto& journal = context.journal;
    auto const& world = context.world;
    auto& info = context.agents.infos[motion.agent];
    info.fate = fate;
    info.last_frame = context.clock.frame;
    journal.changes->deleted.push_back(info.object);
    journal.changes->exited.emplace_back(world.plan.surfaces[motion.region].id, info.object);
    if (through_portal) {
        journal.changes->exited.emplace_back(world.places[info.goal].id, info.object);
        context.crowd.depart(motion.body);
    } else {
        context.crowd.remove(motion.body);
    }
    leave_server(context, motion.agent);
    journal.left.push_back(
        {motion.agent, motion.region, motion.position, through_portal ? world.places[info.goal].doorway : no_place});
    if (info.origin.source != no_source) --context.spawning.sources[info.origin.source].here_or_coming;
    context.agents.motion_of[motion.agent] = gone;
}

}  // namespace pedflux::engine
