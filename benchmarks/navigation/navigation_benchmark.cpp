#include "benchmarks/navigation/concourse.h"

#include <cmath>
#include <random>

#include <benchmark/benchmark.h>

namespace pedflux::engine::navigation {
namespace {

Navigation const& navigation() {
    static Navigation const built(concourse_input());
    return built;
}

std::size_t corners(Polygons const& polygons) {
    std::size_t count = 0;
    for (Polygon const& polygon : polygons) {
        count += polygon.outline.size();
        for (Ring const& hole : polygon.holes) count += hole.size();
    }
    return count;
}

/// From polygons to answers.
void build(benchmark::State& state) {
    NavigationInput input = concourse_input();
    input.destinations.resize(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(Navigation(input));
    state.counters["corners"] = static_cast<double>(corners(input.regions[0].walkable));
    state.counters["square_metres"] = area(input.regions[0].walkable);
}
BENCHMARK(build)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);

struct Walker {
    Point point;
    DestinationIndex destination = 0;
    RouteHint hint;
};

std::vector<Walker> walkers(std::size_t count) {
    std::mt19937 random(1);
    auto const below = [&random](double limit) { return limit * static_cast<double>(random()) / 4294967296.0; };
    std::vector<Walker> result;
    while (result.size() < count) {
        Point const point{below(252), below(250)};
        auto const destination = static_cast<DestinationIndex>(below(100));
        if (navigation().contains(0, point) && navigation().reachable(0, point, destination))
            result.push_back({point, destination, {}});
    }
    return result;
}

/// A crowd that walks to its goals in steps of 0.13 m: what routing costs per agent and step. Who arrives starts again.
void walk(benchmark::State& state) {
    std::vector<Walker> crowd = walkers(static_cast<std::size_t>(state.range(0)));
    std::vector<Walker> const start = crowd;
    for (auto _ : state)
        for (std::size_t i = 0; i < crowd.size(); ++i) {
            Walker& walker = crowd[i];
            RouteStep const step = navigation().next(0, walker.point, walker.destination, walker.hint);
            Point const aim = nearest_point(step.target, walker.point);
            if (step.kind == RouteStep::Kind::GOAL && distance(aim, walker.point) < 0.13)
                walker = start[i];
            else
                walker.point = walker.point + 0.13 * unit(aim - walker.point);
        }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(crowd.size()));
}
BENCHMARK(walk)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// The same question without a hint.
void ask_afresh(benchmark::State& state) {
    std::vector<Walker> const crowd = walkers(1000);
    for (auto _ : state)
        for (Walker const& walker : crowd) {
            RouteHint hint;
            benchmark::DoNotOptimize(navigation().next(0, walker.point, walker.destination, hint));
        }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(crowd.size()));
}
BENCHMARK(ask_afresh)->Unit(benchmark::kMicrosecond);

/// A portal edge that closes and opens again, with a hundred destinations on both sides of it.
void close_and_open(benchmark::State& state) {
    NavigationInput input = concourse_input();
    input.regions.push_back({"annex", {{box(252, 0, 100, 250), {}}}, 1});
    for (double const z : {20.0, 120.0}) {
        Segment const portal_edge{{252, z}, {252, z + 4}};
        input.connections.push_back({"", {0, portal_edge}, {1, portal_edge}, {}});
    }
    for (std::size_t i = 0; i < input.destinations.size(); i += 2)
        input.destinations[i].lines = {
            {1, {{300, 2.0 * static_cast<double>(i) + 1}, {302, 2.0 * static_cast<double>(i) + 1}}}};
    Navigation built(input);
    for (auto _ : state) {
        built.set_passage(0, {false, false, 0});
        built.set_passage(0, {true, true, 0});
    }
}
BENCHMARK(close_and_open)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pedflux::engine::navigation
