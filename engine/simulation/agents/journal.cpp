#include "engine/simulation/agents/journal.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

namespace {

/// The last frame of an open episode.
constexpr int open_end = std::numeric_limits<int>::max();

/// The open episode of an agent, in its list; the list's end when there is none.
auto find_open(Episodes& episodes, std::uint32_t agent, EpisodeKind kind, GlobalId const& object) {
    return std::ranges::find_if(episodes.open[agent], [&](std::size_t number) {
        auto const& episode = episodes.all[number];
        return episode.kind == kind && episode.object.InternalEquals(object);
    });
}

}  // namespace

void begin_episode(Episodes& episodes, Clock const& clock, std::uint32_t agent, EpisodeKind kind,
                   GlobalId const& object) {
    if (episodes.open.size() <= agent) episodes.open.resize(agent + std::size_t{1});
    auto& open = episodes.open[agent];
    if (find_open(episodes, agent, kind, object) != open.end()) return;
    open.push_back(episodes.all.size());
    episodes.all.push_back({agent, kind, object, clock.frame + 1, open_end});
}

void end_episode(Episodes& episodes, Clock const& clock, std::uint32_t agent, EpisodeKind kind,
                 GlobalId const& object) {
    if (episodes.open.size() <= agent) return;
    auto const ended = find_open(episodes, agent, kind, object);
    if (ended == episodes.open[agent].end()) return;
    episodes.all[*ended].last_frame = clock.frame;
    episodes.open[agent].erase(ended);
}

}  // namespace pedflux::engine
