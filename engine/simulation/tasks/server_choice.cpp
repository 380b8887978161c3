#include "engine/simulation/tasks/servers.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace pedflux::engine {

namespace {

/// How many stand behind the end of a line at most.
constexpr std::size_t most_behind = 100;

std::vector<Point> points_along(std::vector<Point> const& line, double spacing) {
    std::vector<Point> points;
    double passed = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        Segment const part{line[i - 1], line[i]};
        for (;;) {
            double const along = static_cast<double>(points.size()) * spacing - passed;
            constexpr double rounding = 1e-6;
            if (along > length(part) + rounding) break;
            points.push_back(at(part, along / length(part)));
        }
        passed += length(part);
    }
    return points;
}

std::vector<Point> places_of(navigation::Navigation const& navigation, ServerLayout const& server) {
    std::vector<Point> places;
    for (auto const point : points_along(server.line, server.spacing)) {
        if (!places.empty() && !navigation.contains(server.region, point)) return places;
        places.push_back(navigation.nearest_clear(server.region, point));
    }
    Point const onwards = server.spacing * unit(server.line.back() - server.line[server.line.size() - 2]);
    for (std::size_t i = 0; i < most_behind; ++i) {
        Point const next = places.back() + onwards;
        if (!navigation.in_sight(server.region, places.back(), next)) break;
        places.push_back(next);
    }
    return places;
}

using Candidates = std::vector<std::size_t>;

/// Leaves only those of whom something is true, unless there are none.
void narrow(Candidates& candidates, std::function<bool(std::size_t)> const& is_true) {
    Candidates left;
    std::ranges::copy_if(candidates, std::back_inserter(left), is_true);
    if (!left.empty()) candidates = std::move(left);
}

/// Whether a station takes people at once, as far as it is known from afar.
bool has_room(SimulationState const& run, PlaceIndex station) {
    auto const& place = run.places[station];
    if (place.is_dispatch()) {
        return std::ranges::any_of(run.rules.dispatches[place.dispatch].sinks,
                                   [&](PlaceIndex sink) { return has_room(run, sink); });
    }
    if (!place.is_server()) return true;
    auto const& server = run.servers[place.server];
    auto const& capacity = run.plan.servers[place.server].capacity;
    return server.open[entrance_side] && (!capacity || server.visitors < *capacity);
}

}  // namespace

std::vector<ServerQueue> server_queues_of(SimulationState const& run) {
    std::vector<ServerQueue> servers;
    for (auto const& plan : run.plan.servers) {
        auto& server = servers.emplace_back();
        if (plan.problem.empty()) server.places = places_of(run.navigation, plan);
    }
    return servers;
}

double server_number(SimulationState const& run, std::uint32_t number, TallyType kind) {
    auto const& server = run.servers[number];
    auto const& capacity = run.plan.servers[number].capacity;
    auto const at_server = capacity ? std::min(server.line.size(), *capacity) : server.line.size();
    std::size_t const served = server.serves ? 1 : 0;
    switch (kind) {
        case TallyType::SERVER_QUEUE:
            return static_cast<double>(at_server - served);
        case TallyType::SERVER_QUEUE_AND_APPROACH:
            return static_cast<double>(server.visitors - served);
        default:
            return capacity ? static_cast<double>(*capacity - at_server) : std::numeric_limits<double>::max();
    }
}

std::size_t visitors_of(SimulationState const& run, PlaceIndex place) {
    return run.places[place].is_server() ? run.servers[run.places[place].server].visitors : 0;
}

Candidates best_stations(SimulationState& run, AgentMotion const& motion, std::span<PlaceIndex const> stations) {
    auto& info = run.infos[motion.agent];
    using Test = std::optional<TestProgram> ServerRules::*;
    auto const passes_test = [&](PlaceIndex station, Test kind, bool otherwise) {
        if (!run.places[station].is_server()) return otherwise;
        auto const& test = run.rules.servers[run.places[station].server].*kind;
        return test ? passes(*test, LiveSituation(run, motion, info.tasks.tests++)) : otherwise;
    };
    Candidates best;
    for (std::size_t i = 0; i < stations.size(); ++i) {
        if (passes_test(stations[i], &ServerRules::required, true)) best.push_back(i);
    }
    narrow(best, [&](std::size_t i) { return has_room(run, stations[i]); });
    narrow(best, [&](std::size_t i) { return passes_test(stations[i], &ServerRules::preferred, false); });
    return best;
}

std::optional<PlaceIndex> choose_start(SimulationState& run, AgentMotion const& motion,
                                       std::span<PlaceIndex const> starts, std::size_t drawn,
                                       std::span<double const> weights) {
    auto const candidates = best_stations(run, motion, starts);
    if (candidates.empty()) return std::nullopt;
    // What was drawn among all keeps its chance; otherwise the others share it.
    if (std::ranges::find(candidates, drawn) != candidates.end()) return starts[drawn];
    std::vector<double> chances;
    for (auto const candidate : candidates) chances.push_back(weights.empty() ? 1 : weights[candidate]);
    if (std::ranges::none_of(chances, [](double chance) { return chance > 0; })) return starts[candidates.front()];
    auto& info = run.infos[motion.agent];
    Random random(run.seed, streams::of_server_choices + (info.tasks.visit.draws++ << 32) + info.origin.key);
    return starts[candidates[draw_weighted(chances, random)]];
}

}  // namespace pedflux::engine
