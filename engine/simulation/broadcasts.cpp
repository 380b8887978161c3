#include "engine/simulation/broadcasts.h"

#include "engine/simulation/agent_situation_live.h"
#include "engine/simulation/rules_run.h"

namespace pedflux::engine {

namespace {

/// Tells the tests of broadcasts from those that are put to an agent one after the other.
constexpr std::uint64_t broadcast_tests = std::uint64_t{1} << 63;

void tell(LiveRun& run, BroadcastRules& broadcast, std::size_t span, std::uint64_t test) {
    broadcast.told_in.resize(run.persons.size());
    for (auto const& walker : run.walkers) {
        if (broadcast.told_in[walker.agent] == span) continue;
        if (broadcast.regions && !(*broadcast.regions)[walker.region]) continue;
        if (broadcast.test && !passes(*broadcast.test, LiveSituation(run, walker, test))) continue;
        broadcast.told_in[walker.agent] = span;
        start(run.persons[walker.agent].doings.actions, broadcast.action);
    }
}

}  // namespace

void tell_broadcasts(LiveRun& run) {
    auto& broadcasts = run.rules.broadcasts;
    // What is started last is done first.
    for (auto i = broadcasts.size(); i-- > 0;) {
        auto& broadcast = broadcasts[i];
        if (!run.timed->is_active(broadcast.event)) continue;
        auto const span = run.timed->start_count(broadcast.event);
        tell(run, broadcast, span, broadcast_tests + (std::uint64_t{i} << 32) + span);
    }
}

}  // namespace pedflux::engine
