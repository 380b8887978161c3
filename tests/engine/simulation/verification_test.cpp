#include "tests/engine/simulation/scene.h"

#include <algorithm>
#include <cmath>

// Published cases: "RiMEA Guideline for Microscopic Evacuation Analysis", version 3.0 (2016), by their numbers there.
namespace pedflux {
namespace {

using testing::IsEmpty;

constexpr double frame = 0.2;

/// The seconds that one person takes from one portal to the other.
double walking_time(Scene const& scene) {
    auto const simulation = scene.simulate();
    return scene.run_until_empty(*simulation, 300);
}

TEST(Verification, RimeaTest1OnePersonKeepsItsSpeedAlongACorridor) {
    Scene const scene;
    scene.room("Corridor", 0, 0, 40, 2);
    auto const from = scene.portal("From", 0, 0, 0, 2);
    auto const to = scene.portal("To", 40, 0, 40, 2);
    scene.journey("Walk", from->GetId(), to->GetId(), 1, scene.walkers("Walker", 1.33)->GetId());
    double const seconds = walking_time(scene);
    RecordProperty("seconds", std::to_string(seconds));
    EXPECT_GE(seconds, 26);
    EXPECT_LE(seconds, 34);
    EXPECT_NEAR(seconds, 40 / 1.33, 1) << "nothing hinders the person, who only starts from rest";
}

/// A stair of 10 m along its slope, rising at 45 degrees, between two landings of 1 m.
double stair_time(bool up, double speed_up, double speed_down) {
    double const run = 10 / std::sqrt(2);
    Scene const scene;
    scene.room("Lower landing", -1, 0, 0, 2);
    scene.room("Upper landing", run, 0, run + 1, 2, run);
    auto const stair = scene.stair("Stair", {0, 0, 1}, {run, run, 1}, 2);
    stair->SetLocalAgentMaxSpeedUpAndDown(speed_up, speed_down);
    auto const bottom = scene.portal("Bottom", -1, 0, -1, 2);
    auto const top = scene.portal("Top", run + 1, 0, run + 1, 2, run);
    auto const profile = scene.walkers("Walker", 1.33)->GetId();
    if (up) scene.journey("Up", bottom->GetId(), top->GetId(), 1, profile);
    if (!up) scene.journey("Down", top->GetId(), bottom->GetId(), 1, profile);
    auto const simulation = scene.simulate();
    double on_stair = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 2000) {
        simulation->Step();
        on_stair += simulation->GetPopulation(stair->GetId()) * frame;
    }
    EXPECT_TRUE(simulation->GetAllAgents().empty());
    return on_stair;
}

TEST(Verification, RimeaTests2And3StairsAreWalkedAtTheirSpeeds) {
    double const up = stair_time(true, 0.61, 0.69);
    double const down = stair_time(false, 0.61, 0.69);
    RecordProperty("secondsUp", std::to_string(up));
    RecordProperty("secondsDown", std::to_string(down));
    EXPECT_NEAR(up, 10 / 0.61, 0.6);
    EXPECT_NEAR(down, 10 / 0.69, 0.6);
}

TEST(Verification, RimeaTest6TwentyPersonsRoundACornerStayInside) {
    Scene const scene;
    scene.floor("Corridor", {{0, 0}, {12, 0}, {12, 12}, {10, 12}, {10, 2}, {0, 2}});
    auto const to = scene.portal("To", 10, 12, 12, 12);
    auto const start = scene.portal("From", 0, 0, 0, 2);
    scene.journey("Walk", start->GetId(), to->GetId(), 20);
    auto const simulation = scene.simulate();
    double farthest_out = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 1000) {
        simulation->Step();
        for (auto const& agent : simulation->GetAllAgents()) {
            Vec3d position = agent->GetPosition();
            double const x = position.GetX();
            double const z = position.GetZ();
            double const out_of_first = std::max({-x, x - 12, -z, z - 2});
            double const out_of_second = std::max({10 - x, x - 12, -z, z - 12});
            farthest_out = std::max(farthest_out, std::min(out_of_first, out_of_second));
        }
    }
    RecordProperty("farthestOut", std::to_string(farthest_out));
    EXPECT_TRUE(simulation->GetAllAgents().empty());
    EXPECT_LE(farthest_out, 1e-6);
}

TEST(Verification, RimeaTest7SpeedsAreThoseOfTheProfile) {
    Scene const scene;
    scene.room("Hall", 0, 0, 40, 40);
    auto const to = scene.portal("To", 40, 0, 40, 40);
    auto const profile = scene.project->CreateProfile("People");
    profile->SetSpeedDistribution(Distribution::CreateNormal(1.34, 0.26, 0.65, 2.05));
    scene.journey("Walk", scene.project->GetFloor("Hall")->GetId(), to->GetId(), 400, profile->GetId());
    auto const simulation = scene.simulate();
    simulation->CreateAgents();
    double sum = 0;
    double squares = 0;
    auto const agents = simulation->GetAllAgents();
    ASSERT_EQ(agents.size(), 400U);
    for (auto const& agent : agents) {
        double const speed = agent->GetDesiredUnconstrainedSpeed();
        EXPECT_GE(speed, 0.65);
        EXPECT_LE(speed, 2.05);
        sum += speed;
        squares += speed * speed;
    }
    double const mean = sum / 400;
    double const deviation = std::sqrt(squares / 400 - mean * mean);
    RecordProperty("mean", std::to_string(mean));
    RecordProperty("deviation", std::to_string(deviation));
    EXPECT_NEAR(mean, 1.34, 4 * 0.26 / 20) << "four standard errors";
    EXPECT_NEAR(deviation, 0.25, 0.04);
    EXPECT_THAT(simulation->GetIssues(), IsEmpty());
}

/// 1,000 persons in a room of 30 by 20 m with exits of 1 m.
double egress_time(int exits) {
    Scene const scene;
    auto const room = scene.room("Room", 0, 0, 30, 20);
    std::vector<GlobalId> doors{scene.portal("A", 5, 0, 6, 0)->GetId(), scene.portal("B", 24, 0, 25, 0)->GetId()};
    if (exits == 4) {
        doors.push_back(scene.portal("C", 5, 20, 6, 20)->GetId());
        doors.push_back(scene.portal("D", 24, 20, 25, 20)->GetId());
    }
    CountPopulationSource source({room->GetId()}, 1000);
    source.SetDestinationsByLowestCost(doors);
    scene.journey("Leave", source);
    auto const simulation = scene.simulate();
    return scene.run_until_empty(*simulation, 1500);
}

TEST(Verification, RimeaTest9HalfTheDoorsTakeTwiceTheTime) {
    double const with_four = egress_time(4);
    double const with_two = egress_time(2);
    RecordProperty("secondsWithFour", std::to_string(with_four));
    RecordProperty("secondsWithTwo", std::to_string(with_two));
    EXPECT_NEAR(with_two / with_four, 2, 0.2);
}

/// Persons per metre and second through a passage of a wall, between 20 and 80 % of 150 persons.
double bottleneck_flow(double width, int seed) {
    Scene const scene;
    auto const room = scene.room("Room", 0, 0, 8, 8);
    auto const door = scene.portal("Door", 4 - width / 2, 0, 4 + width / 2, 0);
    scene.journey("Leave", room->GetId(), door->GetId(), 150);
    auto const simulation = scene.simulate(seed);
    double first = 0;
    double last = 0;
    int out = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 5000) {
        out += static_cast<int>(simulation->Step().GetDeletedAgents().size());
        if (out < 30) first = simulation->GetClock()->GetCurrentSecond();
        if (out < 120) last = simulation->GetClock()->GetCurrentSecond();
    }
    EXPECT_EQ(out, 150);
    return 90 / (last - first) / width;
}

TEST(Verification, FlowThroughADoorLiesInTheMeasuredBand) {
    for (double const width : {1.0, 1.2}) {
        double mean = 0;
        for (int seed = 1; seed <= 3; ++seed) mean += bottleneck_flow(width, seed) / 3;
        RecordProperty("flow" + std::to_string(static_cast<int>(width * 10)), std::to_string(mean));
        EXPECT_GE(mean, 1.1) << width;
        EXPECT_LE(mean, 2.0) << width;
    }
}

/// Persons per metre and second who come off a stair 1.6 m wide, between 20 and 80 % of 140 persons.
double stair_flow(bool up) {
    Scene const scene;
    double const rise = 3;
    auto const below = scene.room("Below", -8, 0, 0, 8);
    auto const above = scene.room("Above", 6, 0, 14, 8, rise);
    auto const stair = scene.stair("Stair", {0, 0, 4}, {6, rise, 4}, 1.6);
    if (up) scene.journey("Up", below->GetId(), scene.portal("Top", 14, 0, 14, 8, rise)->GetId(), 140);
    if (!up) scene.journey("Down", above->GetId(), scene.portal("Bottom", -8, 0, -8, 8)->GetId(), 140);
    auto const from = up ? below->GetId() : above->GetId();
    auto const simulation = scene.simulate();
    double first = 0;
    double last = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 2000) {
        simulation->Step();
        int const over = 140 - simulation->GetPopulation(from) - simulation->GetPopulation(stair->GetId());
        if (over < 28) first = simulation->GetClock()->GetCurrentSecond();
        if (over < 112) last = simulation->GetClock()->GetCurrentSecond();
    }
    EXPECT_TRUE(simulation->GetAllAgents().empty());
    return 84 / (last - first) / 1.6;
}

TEST(Verification, StairsPassWhatWeidmannFoundThatTheyCan) {
    struct Case {
        bool up;
        double capacity;
    };
    for (Case const& it : {Case{true, 0.85}, Case{false, 0.98}}) {
        double const flow = stair_flow(it.up);
        RecordProperty(it.up ? "flowUp" : "flowDown", std::to_string(flow));
        EXPECT_NEAR(flow, it.capacity, 0.15 * it.capacity) << (it.up ? "up" : "down");
    }
}

}  // namespace
}  // namespace pedflux
