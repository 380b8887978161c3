#include "engine/simulation/frame/simulation_state.h"

#include "engine/scene/simulation_run_state.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/frame/recording.h"
#include "engine/simulation/tasks/agent_actions.h"
#include "engine/simulation/tasks/waits.h"

#include <pedflux/database.h>

#include <algorithm>

namespace pedflux::engine {

navigation::DestinationIndex destination_at(SimulationState& run, PlaceIndex place) {
    auto& destination = run.places[place].destination;
    if (destination == navigation::none) {
        destination = run.navigation.add_destination(destination_of(run.places[place], run.plan));
    }
    return destination;
}

void give_token(SimulationState& run, std::uint32_t agent, GlobalId const& token) {
    AgentInfo& info = run.infos[agent];
    auto const is_same = [&](GlobalId const& held) { return held.InternalEquals(token); };
    if (std::ranges::any_of(info.tokens, is_same)) return;
    info.tokens.push_back(token);
    begin_episode(run, agent, EpisodeKind::HELD_TOKEN, token);
    run.changes->received.emplace_back(token, info.object);
}

void take_token(SimulationState& run, std::uint32_t agent, GlobalId const& token) {
    AgentInfo& info = run.infos[agent];
    auto const is_same = [&](GlobalId const& held) { return held.InternalEquals(token); };
    if (std::erase_if(info.tokens, is_same) == 0) return;
    run.changes->lost.emplace_back(token, info.object);
    end_episode(run, agent, EpisodeKind::HELD_TOKEN, token);
}

navigation::Passage passage_of(SimulationState const& run, std::size_t joint_number) {
    Joint const& joint = run.plan.joints[joint_number];
    auto const number = joint.connection - run.plan.floor_count;
    Passageway const& passageway = run.plan.passageways[number];
    GateState const& gate = run.gates[number];
    // A closed gate keeps people from going in; those inside go on to where the direction lets them.
    bool const may_leave = joint.at_ball ? passageway.box_to_ball : passageway.ball_to_box;
    bool const may_enter = joint.at_ball ? gate.ball_to_box : gate.box_to_ball;
    return {may_leave, may_enter, passageway.cost / 2};
}

void set_gate(SimulationState& run, std::size_t passageway, GateState const& state) {
    run.gates[passageway] = state;
    auto const region = run.plan.passageways[passageway].region;
    for (std::size_t joint = 0; joint < run.plan.joints.size(); ++joint) {
        if (run.plan.joints[joint].connection != region) continue;
        auto const passage = passage_of(run, joint);
        run.navigation.set_passage(static_cast<navigation::ConnectionIndex>(joint), passage);
        for (auto const& wall : run.joint_walls[joint]) {
            bool const is_inside = wall.region == region;
            run.crowd.set_wall_open(wall.region, wall.wall, is_inside ? passage.open_forward : passage.open_backward);
        }
    }
}

void open_exit(SimulationState& run, PlaceIndex place) {
    auto const doorway = run.places[place].doorway;
    if (doorway == no_place || run.doorway_is_exit[doorway]) return;
    run.doorway_is_exit[doorway] = true;
    if (run.doorway_walls[doorway].empty()) return;
    run.exits_of[run.plan.doorways[doorway].line.region].push_back(doorway);
    for (auto const& wall : run.doorway_walls[doorway]) {
        run.crowd.set_wall_open(wall.region, wall.wall, true);
    }
}

void take_out(SimulationState& run, AgentInfo::Fate fate, AgentMotion& motion, bool through_portal) {
    act_on_leaving(run, motion);
    auto& info = run.infos[motion.agent];
    end_wait(run, motion);
    info.fate = fate;
    info.last_frame = run.frame;
    run.changes->deleted.push_back(info.object);
    run.changes->exited.emplace_back(run.plan.surfaces[motion.region].id, info.object);
    if (through_portal) {
        run.changes->exited.emplace_back(run.places[info.goal].id, info.object);
        run.crowd.depart(motion.body);
    } else {
        run.crowd.remove(motion.body);
    }
    leave_server(run, motion.agent);
    run.events->is_at(motion);
    run.events->went_out(motion.agent, through_portal ? run.places[info.goal].doorway : no_place);
    run.motion_of[motion.agent] = gone;
}

void forget_those_who_left(SimulationState& run) {
    std::erase_if(run.motions, [&](AgentMotion const& motion) { return run.motion_of[motion.agent] == gone; });
    for (std::uint32_t i = 0; i < run.motions.size(); ++i) run.motion_of[run.motions[i].agent] = i;
}

void stop(SimulationState& run) {
    if (run.stopped) return;
    run.stopped = true;
    if (!run.writer) return;
    std::vector<AgentRecord> agents;
    for (auto const& info : run.infos) {
        auto const id_of = [&](PlaceIndex place) { return place == no_place ? GlobalId() : run.places[place].id; };
        bool const is_here = info.fate == AgentInfo::Fate::HERE;
        agents.push_back({info.origin.profile, id_of(info.origin.origin), id_of(info.tasks.last_goal), info.first_frame,
                          is_here ? run.frame : info.last_frame, info.fate == AgentInfo::Fate::ARRIVED,
                          info.origin.event});
    }
    run.writer->finish(agents, recorded_episodes(run));
    run.writer.reset();
    if (run.run->document) {
        run.run->database_file_name = run.database_name;
        run.run->database = Database::Open(run.database_path);
    }
}

}  // namespace pedflux::engine
