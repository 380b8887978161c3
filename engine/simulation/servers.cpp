#include "engine/simulation/servers.h"

#include "engine/behaviour/random.h"
#include "engine/simulation/agent_situation_live.h"
#include "engine/simulation/random_streams.h"
#include "engine/simulation/rules_run.h"

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

std::vector<Point> places_of(navigation::Navigation const& navigation, ServerPlan const& server) {
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

}  // namespace

std::vector<LiveServer> live_servers_of(LiveRun const& run) {
    std::vector<LiveServer> servers;
    for (auto const& plan : run.plan.servers) {
        auto& server = servers.emplace_back();
        if (plan.problem.empty()) server.places = places_of(run.navigation, plan);
    }
    return servers;
}

double server_number(LiveRun const& run, std::uint32_t number, TallyType kind) {
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

std::optional<std::uint32_t> choose_server(LiveRun& run, Walker const& walker, std::span<PlaceIndex const> places,
                                           std::size_t drawn, std::span<double const> weights) {
    auto& person = run.persons[walker.agent];
    auto const server_at = [&](std::size_t candidate) { return run.places[places[candidate]].server; };
    auto const passes_test = [&](std::optional<TestPlan> const& test) {
        return test && passes(*test, LiveSituation(run, walker, person.doings.tests++));
    };
    Candidates candidates;
    for (std::size_t i = 0; i < places.size(); ++i) {
        auto const& required = run.rules.servers[server_at(i)].required;
        if (!required || passes_test(required)) candidates.push_back(i);
    }
    if (candidates.empty()) return std::nullopt;
    narrow(candidates, [&](std::size_t candidate) {
        auto const& server = run.servers[server_at(candidate)];
        auto const& capacity = run.plan.servers[server_at(candidate)].capacity;
        return server.open[entrance_side] && (!capacity || server.visitors < *capacity);
    });
    narrow(candidates,
           [&](std::size_t candidate) { return passes_test(run.rules.servers[server_at(candidate)].preferred); });
    // What was drawn among all keeps its chance; otherwise the others share it.
    if (std::ranges::find(candidates, drawn) != candidates.end()) return server_at(drawn);
    std::vector<double> chances;
    for (auto const candidate : candidates) chances.push_back(weights.empty() ? 1 : weights[candidate]);
    if (std::ranges::none_of(chances, [](double chance) { return chance > 0; })) return server_at(candidates.front());
    Random random(run.seed, streams::of_server_choices + (person.doings.visit.draws++ << 32) + person.origin.key);
    return server_at(candidates[draw_weighted(chances, random)]);
}

}  // namespace pedflux::engine
