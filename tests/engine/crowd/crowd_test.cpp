#include "engine/crowd/crowd.h"

#include "tests/engine/crowd/scenarios.h"

#include <pedflux/exception.h>

#include <gtest/gtest.h>

namespace pedflux::engine::crowd::scenarios {
namespace {

void expect_sound(Faults const& faults) {
    EXPECT_EQ(faults.walls_crossed, 0U);
    EXPECT_LE(faults.speed, 1 + 1e-9) << "as a part of the agent's own speed";
}

TEST(Crowd, WalksSlowerWhereItIsDenserAsWeidmannMeasured) {
    double last = 2;
    for (double const density : {0.5, 1.0, 2.0, 3.0}) {
        RingResult const result = walk_ring({}, density);
        EXPECT_NEAR(result.speed, weidmann_speed(density), 0.15 * weidmann_speed(density)) << density << " per m²";
        EXPECT_LT(result.speed, last) << density << " per m²";
        last = result.speed;
        expect_sound(result.faults);
    }
}

TEST(Crowd, LeavesThroughDoorsAtTheFlowOfGuidelinesAndNeverStops) {
    for (double const width : {0.8, 1.2, 2.0}) {
        DoorResult const result = leave_room({}, width);
        EXPECT_GT(result.flow / width, 1.0) << width << " m";
        EXPECT_LT(result.flow / width, 1.5) << width << " m";
        EXPECT_FALSE(result.deadlock) << width << " m";
        expect_sound(result.faults);
    }
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        Settings settings;
        settings.seed = seed;
        EXPECT_FALSE(leave_room(settings, 0.8).deadlock) << "seed " << seed;
    }
}

TEST(Crowd, PassesOncomingPeopleAndCorners) {
    CounterflowResult const alone = walk_against({}, 0);
    CounterflowResult const against_ten = walk_against({}, 10);
    EXPECT_LT(alone.seconds, 200);
    EXPECT_LT(against_ten.seconds, 300) << "no standstill";
    expect_sound(against_ten.faults);

    CornerResult const corner = round_corner({});
    EXPECT_TRUE(corner.all_arrived);
    expect_sound(corner.faults);
}

TEST(Crowd, IsTheSameForAnyNumberOfThreads) {
    Settings settings;
    DoorResult const one = leave_room(settings, 1.0);
    settings.threads = 2;
    EXPECT_EQ(one.hash, leave_room(settings, 1.0).hash);
    settings.seed = 2;
    EXPECT_NE(one.hash, leave_room(settings, 1.0).hash) << "another seed is another run";
}

TEST(Crowd, RefusesConstantsThatMakeNoSense) {
    for (double Locomotion::*constant : {&Locomotion::steepness, &Locomotion::jam_density, &Locomotion::sight}) {
        Locomotion locomotion;
        locomotion.*constant = -1;
        EXPECT_THROW(validate(locomotion), pedflux::Exception);
    }
}

}  // namespace
}  // namespace pedflux::engine::crowd::scenarios
