#include "engine/simulation/tasks/crossing_actions.h"

#include "engine/simulation/tasks/action_scene.h"
#include "engine/simulation/tasks/signs.h"

namespace pedflux::engine {

namespace {

void start_if_any(ActionStack& actions, int action) {
    if (action != NONE) start(actions, action);
}

}  // namespace

void act_on_crossing(BehaviourProgram const& program, FloorPlan const& plan, Agents& agents, AgentMotion const& motion,
                     navigation::RegionIndex from) {
    if (!program.any_at_surfaces) return;
    auto& actions = agents.tasks[motion.agent].actions;
    auto const to = motion.region;
    auto const end_at = [&](navigation::RegionIndex region) {
        bool const at_box = region >= plan.floor_count && !is_nearer_to_ball(plan, region, motion.position);
        auto const& surface = program.surfaces[region];
        return at_box ? surface.box : surface.ball;
    };
    // What is started last is done first.
    for (auto const& zone : program.zones) {
        if (zone.has[to] && !zone.has[from]) start_if_any(actions, zone.actions.enter);
    }
    start_if_any(actions, end_at(to).enter);
    for (auto const& zone : program.zones) {
        if (zone.has[from] && !zone.has[to]) start_if_any(actions, zone.actions.exit);
    }
    start_if_any(actions, end_at(from).exit);
}

void act_on_leaving(TaskContext& context, AgentMotion& motion) {
    auto const& program = context.program;
    if (!program.any_at_surfaces) return;
    auto& actions = context.agents.tasks[motion.agent].actions;
    actions.frames.clear();
    for (auto const& zone : program.zones) {
        if (zone.has[motion.region]) start_if_any(actions, zone.actions.exit);
    }
    // An agent that leaves on a connection passes none of its ends.
    bool const is_on_floor = motion.region < context.world.plan.floor_count;
    if (is_on_floor) start_if_any(actions, program.surfaces[motion.region].ball.exit);
    LiveScene scene(context, motion);
    advance(program.actions.program, actions, {context.world.seed, context.agents.infos[motion.agent].origin.key},
            scene);
    actions.frames.clear();
}

}  // namespace pedflux::engine
