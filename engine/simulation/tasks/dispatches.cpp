#include "engine/simulation/tasks/dispatches.h"

#include "engine/simulation/tasks/agent_actions.h"
#include "engine/simulation/tasks/live_situation.h"

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
std::optional<Order> order_for(SimulationState& run, AgentMotion const& motion, IsDone const& is_done) {
    for (auto const& dispatch : run.rules.dispatches) {
        auto const source = std::ranges::find_if(dispatch.sources, is_done);
        if (source == dispatch.sources.end()) continue;
        if (auto const sink = sink_for(run, motion, dispatch, *source)) return Order{&dispatch, *sink};
    }
    return std::nullopt;
}

/// Who has come to a portal or through a server is done there alone, and not on the floor around it.
bool is_done_at(SimulationState const& run, AgentMotion const& motion, PlaceIndex source) {
    auto const goal = run.infos[motion.agent].goal;
    auto const is_spot = [&](PlaceIndex place) {
        return run.places[place].is_portal() || run.places[place].is_server();
    };
    bool const by_spot = goal != no_place && (is_spot(goal) || is_spot(source));
    return by_spot ? source == goal : is_at(run, motion, source);
}

}  // namespace

std::optional<PlaceIndex> sink_for(SimulationState& run, AgentMotion const& motion, DispatchRules const& dispatch,
                                   PlaceIndex from) {
    std::vector<PlaceIndex> sinks;
    std::ranges::copy_if(dispatch.sinks, std::back_inserter(sinks),
                         [&](PlaceIndex sink) { return sink != from && !is_at(run, motion, sink); });
    auto const best = best_stations(run, motion, sinks);
    if (best.empty()) return std::nullopt;
    auto const effort = [&](std::size_t candidate) {
        auto const sink = sinks[candidate];
        auto const way =
            run.navigation.distance(motion.region, motion.position, destination_at(run, sink, motion.route_class));
        return std::tuple(!way, visitors_of(run, sink), way.value_or(std::numeric_limits<double>::infinity()));
    };
    return sinks[*std::ranges::min_element(best, {}, effort)];
}

std::optional<PlaceIndex> next_station(SimulationState& run, AgentMotion const& motion, PlaceIndex passed) {
    auto const order = order_for(run, motion, [&](PlaceIndex source) { return source == passed; });
    return order ? std::optional(order->sink) : std::nullopt;
}

bool send_on(SimulationState& run, AgentMotion& motion) {
    auto const order = order_for(run, motion, [&](PlaceIndex source) { return is_done_at(run, motion, source); });
    if (!order) return false;
    auto& tasks = run.infos[motion.agent].tasks;
    if (run.places[order->sink].is_server()) {
        start(tasks.actions, order->dispatch->process);
        tasks.actions.frames.back().station = static_cast<int>(order->sink);
        tasks.last_goal = order->sink;
    } else {
        send_to(run, motion, order->sink);
    }
    return true;
}

void send_on_who_stand(SimulationState& run) {
    if (run.rules.dispatches.empty()) return;
    for (auto& motion : run.motions) {
        auto const& info = run.infos[motion.agent];
        bool const stands = info.goal == no_place && !info.controlled && motion.starts_at <= run.seconds();
        if (stands && !info.tasks.has_something_to_do()) send_on(run, motion);
    }
}

}  // namespace pedflux::engine
