#include "engine/simulation/tasks/broadcasts.h"

#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/tasks/live_situation.h"

namespace pedflux::engine {

namespace {

/// Tells the tests of broadcasts from those that are put to an agent one after the other.
constexpr std::uint64_t broadcast_tests = std::uint64_t{1} << 63;

void tell(SimulationState& run, BroadcastRules& broadcast, std::size_t span, std::uint64_t test) {
    broadcast.told_in.resize(run.infos.size());
    for (auto const& motion : run.motions) {
        if (broadcast.told_in[motion.agent] == span) continue;
        if (broadcast.regions && !(*broadcast.regions)[motion.region]) continue;
        if (broadcast.test && !passes(*broadcast.test, LiveSituation(run, motion, test))) continue;
        broadcast.told_in[motion.agent] = span;
        start(run.infos[motion.agent].tasks.actions, broadcast.action);
    }
}

}  // namespace

void tell_broadcasts(SimulationState& run) {
    auto& broadcasts = run.rules.broadcasts;
    // What is started last is done first.
    for (auto i = broadcasts.size(); i-- > 0;) {
        auto& broadcast = broadcasts[i];
        if (!run.events->is_active(broadcast.event)) continue;
        auto const span = run.events->start_count(broadcast.event);
        tell(run, broadcast, span, broadcast_tests + (std::uint64_t{i} << 32) + span);
    }
}

}  // namespace pedflux::engine
