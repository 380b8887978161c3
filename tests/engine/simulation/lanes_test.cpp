#include "tests/engine/simulation/scene.h"

#include <pedflux/agents.h>

#include <cmath>

// People who come to a stair from beside it.
namespace pedflux {
namespace {

/// A hall with a stair in its middle that rises to the east, and a way in at the north-west of the stair's foot.
struct StairHall : Scene {
    explicit StairHall(double width) {
        room("Hall", 0, 0, 30, 20);
        room("Gallery", 20, 6, 30, 14, 4);
        foot = stair("Stair", {13, 0, 10}, {21, 4, 10}, width)->GetId();
        way_in = portal("In", 8, 0, 12, 0)->GetId();
        way_out = portal("Out", 30, 8, 30, 12, 4)->GetId();
    }

    GlobalId foot, way_in, way_out;
};

/// Persons per second onto the stair, between 20 and 80 % of 200.
double flow_onto_stair(double width) {
    StairHall const hall(width);
    hall.journey("Up", hall.way_in, hall.way_out, 200);
    auto const simulation = hall.simulate();
    std::size_t on = 0;
    double first = 0;
    double last = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 3000) {
        on += simulation->Step().GetAgentsThatEntered(hall.foot).size();
        if (on < 40) first = simulation->GetClock()->GetCurrentSecond();
        if (on < 160) last = simulation->GetClock()->GetCurrentSecond();
    }
    EXPECT_GE(on, 200U);
    return 120 / (last - first);
}

TEST(Lanes, AThrongFromBesideSpreadsOverTheWidthOfAStair) {
    double const narrow = flow_onto_stair(1.2);
    double const wide = flow_onto_stair(2.4);
    double const widest = flow_onto_stair(4);
    RecordProperty("flow12", std::to_string(narrow));
    RecordProperty("flow24", std::to_string(wide));
    RecordProperty("flow40", std::to_string(widest));
    EXPECT_NEAR(wide / narrow, 2, 0.3);
    EXPECT_GT(widest, 1.1 * wide) << "as many as come";
}

TEST(Lanes, SomebodyAloneNeitherBrushesThePostNorGoesOutOfTheWay) {
    for (int seed = 1; seed <= 5; ++seed) {
        StairHall const hall(4);
        hall.journey("Up", hall.way_in, hall.way_out, 1, hall.walkers("Walker", 1.3)->GetId());
        auto const simulation = hall.simulate(seed);
        simulation->CreateAgents();
        auto const agent = simulation->GetAllAgents().at(0);
        Vec3d place = agent->GetPosition();
        double const straight = std::hypot(13 - place.GetX(), 8.2 - place.GetZ());
        double walked = 0;
        double from_post = straight;
        while (simulation->Step().GetAgentsThatEntered(hall.foot).empty()) {
            ASSERT_LT(simulation->GetCurrentFrame(), 200);
            Vec3d next = agent->GetPosition();
            walked += std::hypot(next.GetX() - place.GetX(), next.GetZ() - place.GetZ());
            from_post = std::min(from_post, std::hypot(next.GetX() - 13, next.GetZ() - 8));
            place = next;
        }
        EXPECT_GE(from_post, 0.25) << seed << ": the body and a hand's breadth";
        EXPECT_LE(walked, 1.1 * straight) << seed;
    }
}

}  // namespace
}  // namespace pedflux
