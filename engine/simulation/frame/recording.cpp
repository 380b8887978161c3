#include "engine/simulation/frame/recording.h"

#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/model/document.h"
#include "engine/model/saving.h"
#include "engine/results/agent_data.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/simulation_run_state.h"

#include <pedflux/database.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

namespace pedflux::engine {

static_assert(frame_value_count == 13 && agent_value_count == 7, "each value of recorded_values.h needs its source");

namespace {

/// An agent stands below the first of these speeds and runs above the second (metres per second).
constexpr double walking_speed = 0.1;
constexpr double running_speed = 2.5;

/// Degrees from north (-z) to east (x).
double heading_of(Point direction) {
    double const degrees = std::atan2(direction.x, -direction.z) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

AgentMovement movement_at(double speed) {
    if (speed > running_speed) return AgentMovement::RUN;
    return speed > walking_speed ? AgentMovement::WALK : AgentMovement::STAND;
}

/// The last frame in which an agent is recorded.
int last_frame_of(AgentInfo const& info, Clock const& clock) {
    return info.fate == AgentInfo::Fate::HERE ? clock.frame : info.last_frame;
}

/// The episodes that a frame shows, each up to its agent's last frame.
std::vector<Episode> recorded_episodes(Clock const& clock, Agents const& agents, Episodes const& episodes) {
    auto recorded = episodes.all;
    for (auto& episode : recorded) {
        episode.last_frame = std::min(episode.last_frame, last_frame_of(agents.infos[episode.agent], clock));
    }
    std::erase_if(recorded, [](Episode const& episode) { return episode.first_frame > episode.last_frame; });
    return recorded;
}

}  // namespace

RecordedProject recorded_project_of(Document const& document, FloorPlan const& plan) {
    RecordedProject project;
    std::set<std::pair<std::uint16_t, std::uint16_t>> joined;
    for (auto const& joint : plan.joints) {
        joined.emplace(static_cast<std::uint16_t>(joint.connection), static_cast<std::uint16_t>(joint.floor));
    }
    for (auto const& [connection, floor] : joined) project.joins.push_back({connection, floor});
    for (auto const* const zone : document.objects<ZoneState>()) project.objects.push_back(to_text(*zone));
    for (auto const* const filter : document.objects<AgentFilterObjectState>()) {
        project.objects.push_back(to_text(*filter));
    }
    return project;
}

AgentActivity activity_of(BehaviourProgram const& program, Clock const& clock, Agents const& agents,
                          AgentMotion const& motion) {
    auto const& info = agents.infos[motion.agent];
    auto const& tasks = agents.tasks[motion.agent];
    if (tasks.visit.stage == Visit::Stage::QUEUES) return AgentActivity::QUEUING;
    if (tasks.visit.stage == Visit::Stage::IS_SERVED) return AgentActivity::SERVED;
    if (tasks.task) {
        auto const& node = node_of(program, *tasks.task);
        if (play_of(node.type) == ActionPlay::WAIT || node.style != NONE) return AgentActivity::WAITING;
    } else if (info.goal != no_place && motion.starts_at > clock.seconds()) {
        return AgentActivity::WAITING;
    }
    bool const goes = motion.way == AgentMotion::Way::WALKS || motion.way == AgentMotion::Way::ARRIVED;
    if (!goes) return AgentActivity::STANDING;
    bool const evacuates = tasks.evacuates && !tasks.task;
    return evacuates ? AgentActivity::EVACUATING : AgentActivity::WALKING;
}

void measure_motion(Clock const& clock, Agents& agents) {
    for (auto& motion : agents.motions) {
        auto& info = agents.infos[motion.agent];
        info.velocity = clock.frame_rate * (motion.position - motion.frame_start);
        info.speed = info.shown_speed.value_or(motion.walked * clock.frame_rate);
        info.shown_speed.reset();
        bool const moves = info.speed > walking_speed;
        if (!info.controlled && moves) info.heading = heading_of(info.velocity);
        info.distance += motion.walked;
        if (moves) info.moving_time += clock.frame_length();
        info.movement = info.next_movement.value_or(movement_at(info.speed));
        info.next_movement.reset();
        motion.walked = 0;
        motion.frame_start = motion.position;
    }
}

void record_frame(Recording& recording, BehaviourProgram const& program, Clock const& clock, FloorPlan const& plan,
                  Agents const& agents, crowd::Crowd const& crowd) {
    recording.frame.clear();
    for (auto const& motion : agents.motions) {
        auto const& info = agents.infos[motion.agent];
        AgentFrame& state = recording.frame.emplace_back();
        state.agent = motion.agent;
        state.surface = static_cast<std::uint16_t>(motion.region);
        state.movement = static_cast<std::uint8_t>(info.movement);
        state.activity = static_cast<std::uint8_t>(activity_of(program, clock, agents, motion));
        state.color = color_bytes(info.color);
        state.x = static_cast<float>(motion.position.x);
        state.y = static_cast<float>(height_at(plan, motion.region, motion.position));
        state.z = static_cast<float>(motion.position.z);
        state.heading = static_cast<float>(info.heading);
        state.speed = static_cast<float>(info.speed);
        state.radius = static_cast<float>(crowd.radius(motion.body));
        state.density = static_cast<float>(crowd.local_density(motion.body));
        state.animation_time = static_cast<float>(info.moving_time);
    }
    recording.writer->write_frame(recording.frame);
}

void finish_recording(Recording& recording, Clock const& clock, Places const& places, Agents const& agents,
                      Episodes const& episodes) {
    if (!recording.writer) return;
    auto const id_of = [&](PlaceIndex place) { return place == no_place ? GlobalId() : places[place].id; };
    std::vector<AgentRecord> records;
    for (std::size_t agent = 0; agent < agents.infos.size(); ++agent) {
        auto const& info = agents.infos[agent];
        records.push_back({info.origin.profile, id_of(info.origin.origin), id_of(agents.tasks[agent].last_goal),
                           info.first_frame, last_frame_of(info, clock), info.fate == AgentInfo::Fate::ARRIVED,
                           info.origin.event});
    }
    recording.writer->finish(records, recorded_episodes(clock, agents, episodes));
    recording.writer.reset();
    if (recording.run->document) {
        recording.run->database_file_name = recording.database_name;
        recording.run->database = Database::Open(recording.database_path);
    }
}

}  // namespace pedflux::engine
