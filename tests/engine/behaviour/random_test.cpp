#include "engine/base/random.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

// The first numbers of the generator's published demonstration.
TEST(Random, GivesThePublishedNumbers) {
    Random random(42, 54);
    for (std::uint32_t const expected : {0xa15c02b7U, 0x7b47f409U, 0xba1d3330U, 0x83d2f293U, 0xbfa4784bU, 0xcbed606eU})
        EXPECT_EQ(random.bits(), expected);
}

TEST(Random, StreamsOfOneSeedDiffer) {
    Random first(1, 0);
    Random second(1, 1);
    int equal = 0;
    for (int k = 0; k < 1000; ++k) equal += first.bits() == second.bits() ? 1 : 0;
    EXPECT_LE(equal, 1);
}

TEST(Random, BelowHitsEachNumberEquallyOften) {
    Random random(3, 0);
    std::array<int, 7> counts{};
    constexpr int draws = 70000;
    for (int k = 0; k < draws; ++k) ++counts[random.below(7)];
    for (auto const count : counts) EXPECT_NEAR(count, draws / 7, 4 * std::sqrt(draws / 7.0));
}

TEST(Random, WeightedDrawsFollowTheWeightsAndNeverTakeZero) {
    Random random(4, 0);
    std::vector<double> const weights{0, 1, 3, 0};
    std::array<int, 4> counts{};
    constexpr int draws = 40000;
    for (int k = 0; k < draws; ++k) ++counts[draw_weighted(weights, random)];
    EXPECT_EQ(counts[0] + counts[3], 0);
    EXPECT_NEAR(counts[1], draws / 4, 4 * std::sqrt(draws * 3.0 / 16));
}

TEST(Random, ShuffleKeepsAllAndPutsEachAnywhere) {
    Random random(5, 0);
    std::array<int, 5> places_of_first{};
    for (int k = 0; k < 10000; ++k) {
        std::vector<int> values(5);
        std::iota(values.begin(), values.end(), 0);
        shuffle(values, random);
        auto const place = std::find(values.begin(), values.end(), 0) - values.begin();
        ++places_of_first[static_cast<std::size_t>(place)];
        std::sort(values.begin(), values.end());
        ASSERT_EQ(values, (std::vector<int>{0, 1, 2, 3, 4}));
    }
    for (auto const count : places_of_first) EXPECT_NEAR(count, 2000, 160);
}

}  // namespace
}  // namespace pedflux::engine
