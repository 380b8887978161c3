#include "engine/simulation/agents/tokens.h"

#include <algorithm>

namespace pedflux::engine {

void give_token(Agents& agents, Journal& journal, Clock const& clock, std::uint32_t agent, GlobalId const& token) {
    auto& info = agents.infos[agent];
    auto const is_same = [&](GlobalId const& held) { return held.InternalEquals(token); };
    if (std::ranges::any_of(info.tokens, is_same)) return;
    info.tokens.push_back(token);
    begin_episode(journal.episodes, clock, agent, EpisodeKind::HELD_TOKEN, token);
    journal.changes->received.emplace_back(token, info.object);
}

void take_token(Agents& agents, Journal& journal, Clock const& clock, std::uint32_t agent, GlobalId const& token) {
    auto& info = agents.infos[agent];
    auto const is_same = [&](GlobalId const& held) { return held.InternalEquals(token); };
    if (std::erase_if(info.tokens, is_same) == 0) return;
    journal.changes->lost.emplace_back(token, info.object);
    end_episode(journal.episodes, clock, agent, EpisodeKind::HELD_TOKEN, token);
}

}  // namespace pedflux::engine
