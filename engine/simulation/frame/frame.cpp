#include "engine/simulation/frame/frame.h"

#include "engine/simulation/events/gate_access.h"
#include "engine/simulation/events/server_access.h"
#include "engine/simulation/frame/arrivals.h"
#include "engine/simulation/frame/entering.h"
#include "engine/simulation/routing/direction_choice.h"
#include "engine/simulation/routing/positions.h"
#include "engine/simulation/tasks/agent_actions.h"
#include "engine/simulation/tasks/broadcasts.h"
#include "engine/simulation/tasks/crossing_actions.h"
#include "engine/simulation/tasks/dispatches.h"
#include "engine/simulation/tasks/evacuation.h"
#include "engine/simulation/tasks/server_visits.h"

#include <pedflux/agents.h>

#include <utility>

namespace pedflux::engine {

namespace {

/// How many agents one thread takes at a time.
constexpr std::size_t grain = 256;

void choose_directions(SimulationState& state) {
    auto& motions = state.agents.motions;
    state.workers.for_ranges(motions.size(), grain, [&](std::size_t first, std::size_t last) {
        for (auto i = first; i < last; ++i) {
            choose_direction(state.world, state.clock, state.routes, state.density, state.agents, motions[i]);
        }
    });
}

void warn_of_lost(SimulationState& state) {
    for (auto const& motion : state.agents.motions) {
        if (motion.way != AgentMotion::Way::LOST) continue;
        warn_of_lost(state.warnings, state.journal, state.world, state.clock, state.routes, state.agents, motion);
    }
}

}  // namespace

void advance_frame(SimulationState& state, Phase until) {
    require_running(state);
    auto& world = state.world;
    auto& clock = state.clock;
    auto& agents = state.agents;
    auto& crowd = state.crowd;
    auto context = task_context(state);

    if (state.phase == Phase::BEGUN) {
        enter_due_agents(state);
        state.phase = Phase::CREATED;
    }
    if (until == Phase::CREATED) return;

    for (int step = 0; step < clock.substeps; ++step) {
        if (state.phase == Phase::CREATED) {
            if (step == 0) {
                tell_broadcasts(context, state.broadcasts);
                send_on_who_stand(context);
            }
            clear_zones(context, state.clearances);
            act_all(context);
            close_gates_by_tests(state.events->gates, context);
            step_servers(context);
            attend_waits(context);
            state.density.count(agents.motions);
            review_reroutes(state.rerouting, state.routes, world, agents, crowd, clock);
            choose_directions(state);
            hold_at_entrances(state.entrances, world, agents, clock);
            steer_bodies(world.plan, agents, crowd);
            warn_of_lost(state);
            state.phase = Phase::CHOSEN;
        }
        if (until == Phase::CHOSEN) return;

        crowd.step(clock.frame_length() / clock.substeps);
        auto const changes = read_positions(world, state.routes, state.entrances, agents, crowd, state.rerouting,
                                            *state.journal.changes);
        state.events->transitions.count(world, agents, state.journal);
        for (auto const& change : changes) {
            act_on_crossing(state.program, world.plan, agents, agents.motion(change.agent), change.from);
        }
        finish_arrivals(context);
        state.phase = Phase::CREATED;
    }

    ++clock.frame;
    measure_motion(clock, agents);
    record_frame(state.recording, state.program, clock, world.plan, agents, crowd);
    evaluate_events(state);
    state.phase = Phase::BEGUN;
}

void evaluate_events(SimulationState& state) {
    auto& events = *state.events;
    events.transitions.end_frame(state.world, state.journal);
    events.triggers.step(*state.facts);
    start_events(events, state.spawning, state.world, state.clock);
    obey_gate_rules(events.gates, events.triggers, state.clock, state.world.plan, state.gates, state.routes.navigation,
                    state.crowd);
    obey_server_rules(events.servers, events.triggers, state.clock, state.servers);
    step_tallies(events, state.world, state.agents, state.servers);
}

std::vector<std::shared_ptr<Agent>> create_agents(SimulationState& state) {
    auto const before = state.agents.infos.size();
    advance_frame(state, Phase::CREATED);
    std::vector<std::shared_ptr<Agent>> created;
    for (auto agent = before; agent < state.agents.infos.size(); ++agent) {
        created.push_back(state.agents.infos[agent].object);
    }
    return created;
}

void choose_targets(SimulationState& state) { advance_frame(state, Phase::CHOSEN); }

std::shared_ptr<FrameChanges const> move_agents(SimulationState& state) {
    advance_frame(state, Phase::BEGUN);
    return std::exchange(state.journal.changes, std::make_shared<FrameChanges>());
}

}  // namespace pedflux::engine
