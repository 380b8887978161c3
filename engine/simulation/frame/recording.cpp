#include "engine/simulation/frame/recording.h"

#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/model/document.h"
#include "engine/model/saving.h"
#include "engine/scene/scene_states.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace pedflux::engine {

static_assert(frame_value_count == 13 && agent_value_count == 7, "each value of recorded_values.h needs its source");

namespace {

/// The last frame of an episode that goes on.
constexpr int open_end = std::numeric_limits<int>::max();

bool waits(AgentActionTypeId type) {
    return type >= AgentActionTypeId::WAIT_FOR_DURATION && type <= AgentActionTypeId::WAIT_WHILE_TEST_TRUE;
}

bool is_same(Episode const& episode, EpisodeKind kind, GlobalId const& object) {
    return episode.kind == kind && episode.object.InternalEquals(object);
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

AgentActivity activity_of(SimulationState const& run, AgentMotion const& motion) {
    auto const& info = run.infos[motion.agent];
    auto const& tasks = info.tasks;
    if (tasks.visit.stage == Visit::Stage::QUEUES) return AgentActivity::QUEUING;
    if (tasks.visit.stage == Visit::Stage::IS_SERVED) return AgentActivity::SERVED;
    if (tasks.task) {
        auto const& node = run.rules.plan.nodes[static_cast<std::size_t>(tasks.task->node)];
        if (waits(node.type) || node.style != NONE) return AgentActivity::WAITING;
    } else if (info.goal != no_place && motion.starts_at > run.seconds()) {
        return AgentActivity::WAITING;
    }
    bool const goes = motion.way == AgentMotion::Way::WALKS || motion.way == AgentMotion::Way::ARRIVED;
    if (!goes) return AgentActivity::STANDING;
    bool const evacuates = tasks.evacuates && !tasks.task;
    return evacuates ? AgentActivity::EVACUATING : AgentActivity::WALKING;
}

void begin_episode(SimulationState& run, std::uint32_t agent, EpisodeKind kind, GlobalId const& object) {
    auto& open = run.infos[agent].open_episodes;
    auto const is_it = [&](std::size_t number) { return is_same(run.episodes[number], kind, object); };
    if (std::ranges::any_of(open, is_it)) return;
    open.push_back(run.episodes.size());
    run.episodes.push_back({agent, kind, object, run.frame + 1, open_end});
}

void end_episode(SimulationState& run, std::uint32_t agent, EpisodeKind kind, GlobalId const& object) {
    auto& open = run.infos[agent].open_episodes;
    auto const is_it = [&](std::size_t number) { return is_same(run.episodes[number], kind, object); };
    auto const ended = std::ranges::find_if(open, is_it);
    if (ended == open.end()) return;
    run.episodes[*ended].last_frame = run.frame;
    open.erase(ended);
}

std::vector<Episode> recorded_episodes(SimulationState const& run) {
    auto episodes = run.episodes;
    for (auto& episode : episodes) {
        auto const& info = run.infos[episode.agent];
        int const last = info.fate == AgentInfo::Fate::HERE ? run.frame : info.last_frame;
        episode.last_frame = std::min(episode.last_frame, last);
    }
    std::erase_if(episodes, [](Episode const& episode) { return episode.first_frame > episode.last_frame; });
    return episodes;
}

}  // namespace pedflux::engine
