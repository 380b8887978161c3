#include "engine/simulation/tasks/server_choice.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace pedflux::engine {

namespace {

using Candidates = std::vector<std::size_t>;

/// Keeps those for which the condition holds, unless there are none.
void narrow(Candidates& candidates, std::function<bool(std::size_t)> const& holds) {
    Candidates kept;
    std::ranges::copy_if(candidates, std::back_inserter(kept), holds);
    if (!kept.empty()) candidates = std::move(kept);
}

/// Whether a station takes agents at once, as far as it is known from afar.
bool has_room(TaskContext const& context, PlaceIndex station) {
    auto const& place = context.world.places[station];
    if (place.is_dispatch()) {
        return std::ranges::any_of(context.program.dispatches[place.dispatch].sinks,
                                   [&](PlaceIndex sink) { return has_room(context, sink); });
    }
    if (!place.is_server()) return true;
    auto const& queue = context.servers.queues[place.server];
    auto const& capacity = context.world.plan.servers[place.server].capacity;
    return queue.open[entrance_side] && (!capacity || queue.visitors < *capacity);
}

}  // namespace

Candidates choose_best_stations(TaskContext& context, AgentMotion const& motion, std::span<PlaceIndex const> stations) {
    using Test = std::optional<TestProgram> ServerProgram::*;
    auto const passes_test = [&](PlaceIndex station, Test kind, bool without_test) {
        auto const& place = context.world.places[station];
        if (!place.is_server()) return without_test;
        auto const& test = context.program.servers[place.server].*kind;
        return test ? put_test(context, motion, *test) : without_test;
    };
    Candidates best;
    for (std::size_t i = 0; i < stations.size(); ++i) {
        if (passes_test(stations[i], &ServerProgram::required, true)) best.push_back(i);
    }
    narrow(best, [&](std::size_t i) { return has_room(context, stations[i]); });
    narrow(best, [&](std::size_t i) { return passes_test(stations[i], &ServerProgram::preferred, false); });
    return best;
}

std::optional<PlaceIndex> choose_start(TaskContext& context, AgentMotion const& motion,
                                       std::span<PlaceIndex const> starts, std::size_t drawn,
                                       std::span<double const> weights) {
    auto const candidates = choose_best_stations(context, motion, starts);
    if (candidates.empty()) return std::nullopt;
    // What was drawn among all keeps its chance; otherwise the others share it.
    if (std::ranges::find(candidates, drawn) != candidates.end()) return starts[drawn];
    std::vector<double> chances;
    for (auto const candidate : candidates) chances.push_back(weights.empty() ? 1 : weights[candidate]);
    if (std::ranges::none_of(chances, [](double chance) { return chance > 0; })) return starts[candidates.front()];
    auto const draw = context.agents.tasks[motion.agent].visit.draws++;
    Random random(context.world.seed,
                  streams::of_server_choices + (draw << 32) + context.agents.infos[motion.agent].origin.key);
    return starts[candidates[draw_weighted(chances, random)]];
}

}  // namespace pedflux::engine
