#include "engine/behaviour/population/schedule.h"

#include <pedflux/distributions.h>
#include <pedflux/exception.h>
#include <pedflux/population_sources.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <set>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

using Ids = std::vector<GlobalId>;
using Numbers = std::vector<double>;
using Counts = std::map<std::pair<int, int>, int>;

Ids places(int count) {
    Ids ids(static_cast<std::size_t>(count));
    std::generate(ids.begin(), ids.end(), GlobalId::Generate);
    return ids;
}

Schedule compiled(PopulationSource const& source, double multiplier = 1, std::uint64_t seed = 1) {
    return compile_schedule(source, multiplier, Random(seed, 0));
}

Counts by_pair(Schedule const& schedule) {
    Counts counts;
    for (auto const& arrival : schedule.arrivals) ++counts[{arrival.origin, arrival.destination}];
    return counts;
}

std::vector<int> by_origin(Schedule const& schedule) {
    std::vector<int> counts(schedule.origins.size(), 0);
    for (auto const& arrival : schedule.arrivals) ++counts[static_cast<std::size_t>(arrival.origin)];
    return counts;
}

std::vector<int> by_destination(Schedule const& schedule) {
    std::vector<int> counts(schedule.destinations.size(), 0);
    for (auto const& arrival : schedule.arrivals) ++counts.at(static_cast<std::size_t>(arrival.destination));
    return counts;
}

Numbers times(Schedule const& schedule) {
    Numbers list;
    std::ranges::transform(schedule.arrivals, std::back_inserter(list), &PlannedArrival::time);
    return list;
}

TEST(Schedule, RemaindersGoToTheLargest) {
    struct Case {
        Numbers amounts;
        int total;
        std::vector<int> expected;
    };
    for (auto const& each : {Case{{1, 1, 1}, 2, {1, 1, 0}}, Case{{2.5, 2.5}, 5, {3, 2}}, Case{{1, 2, 7}, 10, {1, 2, 7}},
                             Case{{0, 0.1, 0.9}, 3, {0, 0, 3}}, Case{{1e-300, 1e300}, 4, {0, 4}}, Case{{}, 0, {}}})
        EXPECT_EQ(apportion(each.amounts, each.total), each.expected);
    Random random(1, 1);
    for (int round = 0; round < 200; ++round) {
        Numbers amounts(1 + random.below(50));
        std::generate(amounts.begin(), amounts.end(), [&] { return random.uniform() * 100; });
        auto const total = static_cast<int>(random.below(10000));
        auto const sum = std::accumulate(amounts.begin(), amounts.end(), 0.0);
        auto const counts = apportion(amounts, total);
        EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0), total);
        for (std::size_t k = 0; k < amounts.size(); ++k)
            EXPECT_LT(std::abs(counts[k] - amounts[k] / sum * total), 1) << "quota rule";
    }
}

TEST(Schedule, MeetsTheCountsOfEachKind) {
    auto const from = places(2);
    auto const to = places(3);
    CountPopulationSource weighted(from, to, 101);
    weighted.SetOriginsWeighted(from, Numbers{1, 3});
    EXPECT_EQ(by_origin(compiled(weighted)), (std::vector<int>{25, 76}));

    EXPECT_EQ(by_origin(compiled(CountPerOriginPopulationSource(from, 30, to))), (std::vector<int>{30, 30}));
    EXPECT_EQ(by_origin(compiled(OriginTablePopulationSource({{from[0], 0.4}, {from[1], 11.6}}, to))),
              (std::vector<int>{0, 12}));

    auto const per_destination = compiled(CountPerDestinationPopulationSource(from, to, 10));
    EXPECT_EQ(by_destination(per_destination), (std::vector<int>{10, 10, 10}));
    EXPECT_EQ(by_origin(per_destination), (std::vector<int>{15, 15}));

    // Both margins hold even where each destination has a single person.
    auto const many = places(100);
    std::vector<IdValuePair> one_each;
    for (auto const& place : many) one_each.emplace_back(place, 1);
    auto const table = compiled(DestinationTablePopulationSource(from, one_each));
    EXPECT_EQ(by_destination(table), std::vector<int>(100, 1));
    EXPECT_EQ(by_origin(table), (std::vector<int>{50, 50}));

    ODMatrixPopulationSource const matrix(from, to, {1, 0, 2, 0, 5.4, 1.6});
    EXPECT_EQ(by_pair(compiled(matrix)), (Counts{{{0, 0}, 1}, {{0, 2}, 2}, {{1, 1}, 5}, {{1, 2}, 2}}));

    SchedulePopulationSource const schedule(from, to, {{60, 10}, {60, 30}});
    EXPECT_EQ(compiled(schedule).arrivals.size(), 40U);
}

TEST(Schedule, MultipliesAndRoundsTheTotalOnce) {
    auto const from = places(3);
    for (auto const& [count, multiplier, expected] :
         {std::tuple(10.0, 1.0, 10U), std::tuple(10.0, 0.25, 3U), std::tuple(0.4, 1.0, 0U), std::tuple(7.0, 2.0, 14U),
          std::tuple(5.0, 0.0, 0U)})
        EXPECT_EQ(compiled(CountPopulationSource(from, count), multiplier).arrivals.size(), expected);
}

TEST(Schedule, TimesFollowTheArrival) {
    auto const from = places(2);
    CountPopulationSource source(from, 4);
    EXPECT_EQ(times(compiled(source)), (Numbers{0, 0, 0, 0}));
    source.SetPopulationArrival(PopulationArrival::CreateEvenlySpaced(10));
    EXPECT_EQ(times(compiled(source)), (Numbers{0, 2.5, 5, 7.5}));
    source.SetPopulationArrival(PopulationArrival::CreateWeightedCurve({{10, 1}, {5, 0}, {20, 3}}));
    EXPECT_EQ(times(compiled(source)), (Numbers{0, 15, 15 + 20.0 / 3, 15 + 40.0 / 3}));
    EXPECT_EQ(times(compiled(SchedulePopulationSource(from, {{10, 1}, {0, 2}, {4, 2}}))), (Numbers{0, 10, 10, 10, 12}));

    source.SetPopulationCount(5000);
    source.SetPopulationArrival(PopulationArrival::CreateRandomDistribution(Distribution::CreateUniform(100, 200)));
    auto const random = times(compiled(source));
    EXPECT_TRUE(std::is_sorted(random.begin(), random.end()));
    EXPECT_TRUE(random.front() >= 100 && random.back() <= 200);
    auto const mean = std::accumulate(random.begin(), random.end(), 0.0) / 5000;
    EXPECT_NEAR(mean, 150, 4 * 100 / std::sqrt(12 * 5000.0));
}

// Every origin gets its people all along, not one origin after the other.
TEST(Schedule, SpreadsThePeopleOfAnOriginOverTheWhole) {
    auto const from = places(2);
    CountPopulationSource source(from, 40);
    source.SetOriginsWeighted(from, Numbers{3, 1});
    source.SetPopulationArrival(PopulationArrival::CreateEvenlySpaced(400));
    auto const schedule = compiled(source);
    for (std::size_t start = 0; start < 40; start += 4) {
        auto const rare = std::count_if(schedule.arrivals.begin() + static_cast<std::ptrdiff_t>(start),
                                        schedule.arrivals.begin() + static_cast<std::ptrdiff_t>(start + 4),
                                        [](PlannedArrival const& arrival) { return arrival.origin == 1; });
        EXPECT_EQ(rare, 1);
    }
}

TEST(Schedule, DestinationsFollowTheAssignment) {
    auto const from = places(1);
    auto const to = places(2);
    constexpr int persons = 4000;
    CountPopulationSource source(from, persons);
    EXPECT_EQ(by_pair(compiled(source)), (Counts{{{0, NO_DESTINATION}, persons}}));
    source.SetDestinationsByLowestCost(to);
    EXPECT_EQ(by_pair(compiled(source)), (Counts{{{0, LOWEST_COST_DESTINATION}, persons}}));
    source.SetDestinationsByChance(to);
    EXPECT_NEAR(by_destination(compiled(source))[0], persons / 2, 4 * std::sqrt(persons / 4.0));
    source.SetDestinationsWeightedByChance(to, {1, 9});
    EXPECT_NEAR(by_destination(compiled(source))[0], persons / 10, 4 * std::sqrt(persons * 0.09));
}

TEST(Schedule, DependsOnTheSeedAlone) {
    auto const from = places(3);
    auto const to = places(3);
    CountPopulationSource source(from, to, 200);
    source.SetPopulationArrival(PopulationArrival::CreateRandomDistribution(Distribution::CreateNormal(50, 20, 0, 90)));
    auto const first = compiled(source, 1, 5);
    EXPECT_EQ(times(first), times(compiled(source, 1, 5)));
    EXPECT_EQ(by_pair(first), by_pair(compiled(source, 1, 5)));
    EXPECT_NE(times(first), times(compiled(source, 1, 6)));
    EXPECT_NE(by_pair(first), by_pair(compiled(source, 1, 6)));
}

TEST(Schedule, RefusesPeopleWithoutAPlaceAndTooMany) {
    auto const place = places(1);
    EXPECT_THROW(compiled(CountPopulationSource({}, 3)), Exception);
    EXPECT_THROW(compiled(DestinationTablePopulationSource({}, {{place[0], 1}})), Exception);
    EXPECT_THROW(compiled(CountPopulationSource(place, 1.1e7)), Exception);
    EXPECT_THROW(compiled(CountPopulationSource(place, 1), -1), Exception);
    EXPECT_TRUE(compiled(CountPopulationSource()).arrivals.empty());
    EXPECT_TRUE(compiled(CountPerDestinationPopulationSource(place, {}, 5)).arrivals.empty());
}

}  // namespace
}  // namespace pedflux::engine
