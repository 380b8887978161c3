#include "engine/simulation/dispatches.h"

#include "engine/simulation/agent_actions.h"
#include "engine/simulation/agent_situation_live.h"

#include <algorithm>
#include <iterator>

namespace pedflux::engine {

namespace {

/// Who has come to a portal is done there alone, and not on the floor before it.
bool is_done_at(LiveRun const& run, Walker const& walker, PlaceIndex source) {
    auto const goal = run.persons[walker.agent].goal;
    bool const by_portal = goal != no_place && (run.places[goal].is_portal() || run.places[source].is_portal());
    return by_portal ? source == goal : is_at(run, walker, source);
}

}  // namespace

bool send_on(LiveRun& run, Walker& walker) {
    for (auto const& dispatch : run.rules.dispatches) {
        auto const is_done = [&](PlaceIndex source) { return is_done_at(run, walker, source); };
        if (std::ranges::none_of(dispatch.sources, is_done)) continue;
        std::vector<PlaceIndex> sinks;
        std::ranges::copy_if(dispatch.sinks, std::back_inserter(sinks),
                             [&](PlaceIndex sink) { return !is_at(run, walker, sink); });
        if (sinks.empty()) continue;
        send_to_nearest(run, walker, sinks);
        return true;
    }
    return false;
}

void send_on_who_stand(LiveRun& run) {
    if (run.rules.dispatches.empty()) return;
    for (auto& walker : run.walkers) {
        auto const& person = run.persons[walker.agent];
        bool const stands = person.goal == no_place && !person.controlled && walker.starts_at <= run.seconds();
        if (stands && !person.doings.has_something_to_do()) send_on(run, walker);
    }
}

}  // namespace pedflux::engine
