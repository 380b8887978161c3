#include "engine/simulation/tasks/dispatches.h"

#include "engine/simulation/tasks/goals.h"
#include "engine/simulation/tasks/live_situation.h"
#include "engine/simulation/tasks/server_choice.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <tuple>

namespace pedflux::engine {

namespace {

struct Onward {
    DispatchProgram const* dispatch;
    PlaceIndex sink;
};

/// What the first dispatch wants that has a source where an agent is done.
template <class IsDone>
std::optional<Onward> onward_from(TaskContext& context, AgentMotion const& motion, IsDone const& is_done) {
    for (auto const& dispatch : context.program.dispatches) {
        auto const source = std::ranges::find_if(dispatch.sources, is_done);
        if (source == dispatch.sources.end()) continue;
        if (auto const sink = sink_for(context, motion, dispatch, *source)) return Onward{&dispatch, *sink};
    }
    return std::nullopt;
}

/// An agent that has come to a portal or through a server is done there alone, and not on the floor around it.
bool is_done_at(World const& world, Agents const& agents, AgentMotion const& motion, PlaceIndex source) {
    auto const goal = agents.infos[motion.agent].goal;
    auto const is_spot = [&](PlaceIndex place) {
        return world.places[place].is_portal() || world.places[place].is_server();
    };
    bool const by_spot = goal != no_place && (is_spot(goal) || is_spot(source));
    return by_spot ? source == goal : is_at(world, agents, motion, source);
}

}  // namespace

std::optional<PlaceIndex> sink_for(TaskContext& context, AgentMotion const& motion, DispatchProgram const& dispatch,
                                   PlaceIndex from) {
    auto const& world = context.world;
    std::vector<PlaceIndex> sinks;
    std::ranges::copy_if(dispatch.sinks, std::back_inserter(sinks),
                         [&](PlaceIndex sink) { return sink != from && !is_at(world, context.agents, motion, sink); });
    auto const best = choose_best_stations(context, motion, sinks);
    if (best.empty()) return std::nullopt;
    auto const effort = [&](std::size_t candidate) {
        auto const sink = sinks[candidate];
        auto const destination = destination_at(context.routes, world, sink, motion.route_class);
        auto const way = context.routes.navigation.distance(motion.region, motion.position, destination);
        return std::tuple(!way, visitors_of(context.servers, world.places, sink),
                          way.value_or(std::numeric_limits<double>::infinity()));
    };
    return sinks[*std::ranges::min_element(best, {}, effort)];
}

std::optional<PlaceIndex> next_station(TaskContext& context, AgentMotion const& motion, PlaceIndex passed) {
    auto const onward = onward_from(context, motion, [&](PlaceIndex source) { return source == passed; });
    return onward ? std::optional(onward->sink) : std::nullopt;
}

bool send_on(TaskContext& context, AgentMotion& motion) {
    auto const onward = onward_from(
        context, motion, [&](PlaceIndex source) { return is_done_at(context.world, context.agents, motion, source); });
    if (!onward) return false;
    if (!context.world.places[onward->sink].is_server()) {
        send_to(context, motion, onward->sink);
        return true;
    }
    auto& tasks = context.agents.tasks[motion.agent];
    start(tasks.actions, onward->dispatch->process);
    tasks.actions.frames.back().station = static_cast<int>(onward->sink);
    tasks.last_goal = onward->sink;
    return true;
}

void send_on_who_stand(TaskContext& context) {
    if (context.program.dispatches.empty()) return;
    auto& agents = context.agents;
    for (auto& motion : agents.motions) {
        auto const& info = agents.infos[motion.agent];
        bool const stands = info.goal == no_place && !info.controlled && motion.starts_at <= context.clock.seconds();
        if (stands && !agents.tasks[motion.agent].has_something_to_do()) send_on(context, motion);
    }
}

}  // namespace pedflux::engine
