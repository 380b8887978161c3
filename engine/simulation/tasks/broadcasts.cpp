#include "engine/simulation/tasks/broadcasts.h"

#include "engine/simulation/tasks/live_situation.h"

namespace pedflux::engine {

namespace {

/// Tells the tests of broadcasts from those that are put to an agent one after the other.
constexpr std::uint64_t broadcast_tests = std::uint64_t{1} << 63;

/// @param told_in of each agent
/// @param draw of the test
void tell(TaskContext& context, BroadcastProgram const& broadcast, std::vector<std::size_t>& told_in, std::size_t span,
          std::uint64_t draw) {
    told_in.resize(context.agents.infos.size());
    for (auto const& motion : context.agents.motions) {
        if (told_in[motion.agent] == span) continue;
        if (broadcast.regions && !(*broadcast.regions)[motion.region]) continue;
        if (broadcast.test && !passes(*broadcast.test, LiveSituation(context, motion, draw))) continue;
        told_in[motion.agent] = span;
        start(context.agents.tasks[motion.agent].actions, broadcast.action);
    }
}

}  // namespace

void tell_broadcasts(TaskContext& context, BroadcastsTold& told) {
    auto const& broadcasts = context.program.broadcasts;
    told.told_in.resize(broadcasts.size());
    // What is started last is done first.
    for (auto i = broadcasts.size(); i-- > 0;) {
        auto const& event = broadcasts[i].event;
        if (!context.events.is_active(event)) continue;
        auto const span = context.events.start_count(event);
        tell(context, broadcasts[i], told.told_in[i], span, broadcast_tests + (std::uint64_t{i} << 32) + span);
    }
}

}  // namespace pedflux::engine
