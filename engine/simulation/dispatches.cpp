#include "engine/simulation/dispatches.h"

#include "engine/simulation/agent_actions.h"
#include "engine/simulation/agent_situation_live.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <tuple>

namespace pedflux::engine {

namespace {

struct Order {
    DispatchRules const* dispatch;
    PlaceIndex sink;
};

/// What the first dispatch wants that has a source where somebody is done.
template <class IsDone>
std::optional<Order> order_for(LiveRun& run, Walker const& walker, IsDone const& is_done) {
    for (auto const& dispatch : run.rules.dispatches) {
        auto const source = std::ranges::find_if(dispatch.sources, is_done);
        if (source == dispatch.sources.end()) continue;
        if (auto const sink = sink_for(run, walker, dispatch, *source)) return Order{&dispatch, *sink};
    }
    return std::nullopt;
}

/// Who has come to a portal or through a server is done there alone, and not on the floor around it.
bool is_done_at(LiveRun const& run, Walker const& walker, PlaceIndex source) {
    auto const goal = run.persons[walker.agent].goal;
    auto const is_spot = [&](PlaceIndex place) {
        return run.places[place].is_portal() || run.places[place].is_server();
    };
    bool const by_spot = goal != no_place && (is_spot(goal) || is_spot(source));
    return by_spot ? source == goal : is_at(run, walker, source);
}

}  // namespace

std::optional<PlaceIndex> sink_for(LiveRun& run, Walker const& walker, DispatchRules const& dispatch, PlaceIndex from) {
    std::vector<PlaceIndex> sinks;
    std::ranges::copy_if(dispatch.sinks, std::back_inserter(sinks),
                         [&](PlaceIndex sink) { return sink != from && !is_at(run, walker, sink); });
    auto const best = best_stations(run, walker, sinks);
    if (best.empty()) return std::nullopt;
    auto const effort = [&](std::size_t candidate) {
        auto const sink = sinks[candidate];
        auto const way =
            run.navigation.distance(walker.region, walker.position, destination_at(run, sink, walker.route_class));
        return std::tuple(!way, visitors_of(run, sink), way.value_or(std::numeric_limits<double>::infinity()));
    };
    return sinks[*std::ranges::min_element(best, {}, effort)];
}

std::optional<PlaceIndex> next_station(LiveRun& run, Walker const& walker, PlaceIndex passed) {
    auto const order = order_for(run, walker, [&](PlaceIndex source) { return source == passed; });
    return order ? std::optional(order->sink) : std::nullopt;
}

bool send_on(LiveRun& run, Walker& walker) {
    auto const order = order_for(run, walker, [&](PlaceIndex source) { return is_done_at(run, walker, source); });
    if (!order) return false;
    auto& doings = run.persons[walker.agent].doings;
    if (run.places[order->sink].is_server()) {
        start(doings.actions, order->dispatch->process);
        doings.actions.frames.back().station = static_cast<int>(order->sink);
        doings.last_goal = order->sink;
    } else {
        send_to(run, walker, order->sink);
    }
    return true;
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
