#include "engine/simulation/live_run.h"

#include "engine/model/simulation_run_state.h"
#include "engine/simulation/agent_actions.h"
#include "engine/simulation/recording.h"
#include "engine/simulation/rules_run.h"
#include "engine/simulation/waits.h"

#include <pedflux/database.h>

#include <algorithm>

namespace pedflux::engine {

navigation::DestinationIndex destination_at(LiveRun& run, PlaceIndex place) {
    auto& destination = run.places[place].destination;
    if (destination == navigation::none) {
        destination = run.navigation.add_destination(destination_of(run.places[place], run.plan));
    }
    return destination;
}

void give_token(LiveRun& run, std::uint32_t agent, GlobalId const& token) {
    Person& person = run.persons[agent];
    auto const is_same = [&](GlobalId const& held) { return held.InternalEquals(token); };
    if (std::ranges::any_of(person.tokens, is_same)) return;
    person.tokens.push_back(token);
    begin_episode(run, agent, EpisodeKind::HELD_TOKEN, token);
    run.changes->received.emplace_back(token, person.face);
}

void take_token(LiveRun& run, std::uint32_t agent, GlobalId const& token) {
    Person& person = run.persons[agent];
    auto const is_same = [&](GlobalId const& held) { return held.InternalEquals(token); };
    if (std::erase_if(person.tokens, is_same) == 0) return;
    run.changes->lost.emplace_back(token, person.face);
    end_episode(run, agent, EpisodeKind::HELD_TOKEN, token);
}

navigation::Passage passage_of(LiveRun const& run, std::size_t joint_number) {
    Joint const& joint = run.plan.joints[joint_number];
    auto const number = joint.connection - run.plan.floor_count;
    Passageway const& passageway = run.plan.passageways[number];
    GateState const& gate = run.gates[number];
    // A closed gate keeps people from going in; those inside go on to where the direction lets them.
    bool const may_leave = joint.at_ball ? passageway.box_to_ball : passageway.ball_to_box;
    bool const may_enter = joint.at_ball ? gate.ball_to_box : gate.box_to_ball;
    return {may_leave, may_enter, passageway.cost / 2};
}

void set_gate(LiveRun& run, std::size_t passageway, GateState const& state) {
    run.gates[passageway] = state;
    auto const region = run.plan.passageways[passageway].region;
    for (std::size_t joint = 0; joint < run.plan.joints.size(); ++joint) {
        if (run.plan.joints[joint].connection != region) continue;
        auto const passage = passage_of(run, joint);
        run.navigation.set_passage(static_cast<navigation::ConnectionIndex>(joint), passage);
        for (auto const& shutter : run.joint_shutters[joint]) {
            bool const is_inside = shutter.region == region;
            run.crowd.set_wall_open(shutter.region, shutter.wall,
                                    is_inside ? passage.open_forward : passage.open_backward);
        }
    }
}

void open_exit(LiveRun& run, PlaceIndex place) {
    auto const doorway = run.places[place].doorway;
    if (doorway == no_place || run.doorway_is_exit[doorway]) return;
    run.doorway_is_exit[doorway] = true;
    if (run.doorway_shutters[doorway].empty()) return;
    run.exits_of[run.plan.doorways[doorway].line.region].push_back(doorway);
    for (auto const& shutter : run.doorway_shutters[doorway]) {
        run.crowd.set_wall_open(shutter.region, shutter.wall, true);
    }
}

void take_out(LiveRun& run, Person::Fate fate, Walker& walker, bool through_portal) {
    act_on_leaving(run, walker);
    auto& person = run.persons[walker.agent];
    end_wait(run, walker);
    person.fate = fate;
    person.last_frame = run.frame;
    run.changes->deleted.push_back(person.face);
    run.changes->exited.emplace_back(run.plan.surfaces[walker.region].id, person.face);
    if (through_portal) {
        run.changes->exited.emplace_back(run.places[person.goal].id, person.face);
        run.crowd.depart(walker.body);
    } else {
        run.crowd.remove(walker.body);
    }
    leave_server(run, walker.agent);
    run.timed->is_at(walker);
    run.timed->went_out(walker.agent, through_portal ? run.places[person.goal].doorway : no_place);
    run.walker_of[walker.agent] = gone;
}

void forget_those_who_left(LiveRun& run) {
    std::erase_if(run.walkers, [&](Walker const& walker) { return run.walker_of[walker.agent] == gone; });
    for (std::uint32_t i = 0; i < run.walkers.size(); ++i) run.walker_of[run.walkers[i].agent] = i;
}

void stop(LiveRun& run) {
    if (run.stopped) return;
    run.stopped = true;
    if (!run.writer) return;
    std::vector<AgentRecord> agents;
    for (auto const& person : run.persons) {
        auto const id_of = [&](PlaceIndex place) { return place == no_place ? GlobalId() : run.places[place].id; };
        bool const is_here = person.fate == Person::Fate::HERE;
        agents.push_back({person.origin.profile, id_of(person.origin.origin), id_of(person.doings.last_goal),
                          person.first_frame, is_here ? run.frame : person.last_frame,
                          person.fate == Person::Fate::ARRIVED, person.origin.event});
    }
    run.writer->finish(agents, recorded_episodes(run));
    run.writer.reset();
    if (run.run->document) {
        run.run->database_file_name = run.database_name;
        run.run->database = Database::Open(run.database_path);
    }
}

}  // namespace pedflux::engine
