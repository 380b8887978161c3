#include "tests/engine/crowd/scenarios.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

/// The cases that the whole tables of benchmarks/crowd show at length, each tried once.
namespace pedflux::engine::crowd::scenarios {

namespace {

/// A run in which nobody was seen where, or as fast, as nobody can be.
void expect_bodily(Faults const& faults, double overlap) {
    EXPECT_EQ(faults.walls_crossed, 0U);
    EXPECT_LE(faults.speed, 1.0001);
    EXPECT_LE(faults.overlap, overlap) << "of a radius";
}

}  // namespace

TEST(PublishedCases, SpeedFallsWithDensityAsWeidmannMeasured) {
    for (double const density : {0.5, 1.0, 1.5, 2.0, 3.0, 4.0}) {
        SCOPED_TRACE(std::to_string(density) + " persons per square metre");
        RingResult const result = walk_ring({}, density, 3, 8);
        double const expected = weidmann_speed(density);
        // The ring is small and has slow walkers whom nobody can pass at the lowest density.
        EXPECT_NEAR(result.speed, expected, (density < 1 ? 0.2 : 0.15) * expected);
        expect_bodily(result.faults, 0.1);
    }
}

TEST(PublishedCases, FastWalkersOvertakeInANarrowCorridor) {
    // Where they do not look for room beside slow ones, the speed is 18 % below Weidmann's.
    double sum = 0;
    Settings settings;
    for (settings.seed = 1; settings.seed <= 10; ++settings.seed) sum += walk_ring(settings, 0.5, 2).speed;
    EXPECT_GT(sum / 10, 0.84 * weidmann_speed(0.5));
}

TEST(PublishedCases, DoorsPassPeopleInProportionToTheirWidth) {
    Settings keen;
    keen.locomotion = Locomotion::young_adults();
    keen.speed = 1.55;
    keen.speed_deviation = 0.18;
    struct Case {
        char const* name;
        Settings settings;
        Beyond beyond;
        double least;
        double most;
    };
    // Single seeds scatter by a tenth around their mean.
    for (Case const& it : {Case{"Weidmann's capacity", {}, Beyond::OPEN_SPACE, 1.05, 1.4},
                           Case{"an exit passes what a door passes", {}, Beyond::NOTHING, 1.0, 1.33},
                           Case{"Seyfried's young adults", keen, Beyond::OPEN_SPACE, 1.62, 2.18}})
        for (double const width : {0.8, 1.2, 2.0}) {
            SCOPED_TRACE(it.name + (", door of " + std::to_string(width) + " m"));
            DoorResult const result = leave_room(it.settings, width, 150, it.beyond);
            EXPECT_FALSE(result.deadlock);
            EXPECT_GE(result.flow / width, it.least);
            EXPECT_LE(result.flow / width, it.most);
            expect_bodily(result.faults, 0.1);
        }
}

TEST(PublishedCases, ArchesBeforeANarrowDoorDissolve) {
    Settings settings;
    for (settings.seed = 100; settings.seed < 115; ++settings.seed)
        EXPECT_FALSE(leave_room(settings, 0.8).deadlock) << "seed " << settings.seed;
}

TEST(PublishedCases, GroupsPassEachOtherInACorridor) {
    double before = 0;
    for (int const against : {0, 10, 50, 100}) {
        CounterflowResult const result = walk_against({}, against);
        EXPECT_LT(result.seconds, 200) << against << " against 100";
        EXPECT_GT(result.seconds, 0.9 * before) << "more people in the way do not make it faster";
        before = result.seconds;
        expect_bodily(result.faults, 0.1);
    }
}

TEST(PublishedCases, TwentyPeopleRoundACornerStayInside) {
    CornerResult const result = round_corner({});
    EXPECT_TRUE(result.all_arrived);
    expect_bodily(result.faults, 0.1);
}

TEST(PublishedCases, ResultsDoNotDependOnTheNumberOfThreads) {
    Settings settings;
    std::uint64_t const alone = leave_room(settings, 1.2, 300).hash;
    for (unsigned const threads : {2U, 5U}) {
        settings.threads = threads;
        EXPECT_EQ(leave_room(settings, 1.2, 300).hash, alone) << threads << " threads";
    }
}

}  // namespace pedflux::engine::crowd::scenarios
