#include "tests/engine/simulation/scene.h"

#include <pedflux/agent_actions.h>
#include <pedflux/scene.h>
#include <pedflux/tasks.h>
#include <pedflux/wait_styles.h>

#include <algorithm>
#include <cmath>

namespace pedflux {
namespace {

using testing::HasSubstr;

using Style = std::shared_ptr<WaitStyle>;

struct Rectangle {
    double x1, z1, x2, z2;

    bool has(Vec3d position) const {
        double const reach = 0.2;  // who stands near its place stands on it
        return x1 - reach < position.GetX() && position.GetX() < x2 + reach && z1 - reach < position.GetZ() &&
               position.GetZ() < z2 + reach;
    }
};

/// A hall of 24 by 12 m with an exit in the east. Two wait spaces: a bench of 2 by 1.5 m in the middle and a lounge of
/// 6 by 5 m in the west.
struct Hall : Scene {
    Hall() {
        hall = room("Hall", 0, 0, 24, 12)->GetId();
        east = portal("East", 24, 5, 24, 7)->GetId();
        steady = walkers("Steady", 1.25)->GetId();
        bench_id = space("Bench", bench)->GetId();
        lounge_id = space("Lounge", lounge)->GetId();
    }
    std::shared_ptr<WaitSpace> space(std::string const& name, Rectangle const& at, double y = 0) const {
        std::vector<Vec2d> const outline{{at.x1, at.z1}, {at.x2, at.z1}, {at.x2, at.z2}, {at.x1, at.z2}};
        return project->CreateWaitSpace(name, MeshGeometry::CreateFlatPolygon(y, outline));
    }
    std::shared_ptr<Simulation> simulate_empty() const {
        SimulationOptions options;
        options.AddExtraGoal(east);
        return Simulation::Create(project, "Run", database, options);
    }
    std::shared_ptr<Agent> person(Simulation& simulation, double x, double z) const {
        AgentRequest request(hall);
        request.SetPosition({x, 0, z});
        request.SetGoal(east);
        request.SetProfile(steady);
        return simulation.RequestNewAgent(request);
    }
    /// So many people close together at (16, 6), who wait from now on.
    std::vector<std::shared_ptr<Agent>> crowd(Simulation& simulation, int count, Style const& style) const {
        std::vector<std::shared_ptr<Agent>> people;
        for (int i = 0; i < count; ++i) people.push_back(person(simulation, 16 + 0.6 * (i % 4), 5 + 0.6 * (i / 4)));
        for (auto const& one : people) one->AddTaskAsActive(std::make_shared<WaitForeverTask>(style));
        return people;
    }
    Rectangle const bench{11, 5, 13, 6.5};
    Rectangle const lounge{1, 4, 7, 9};
    GlobalId hall, east, steady, bench_id, lounge_id;
};

double distance(Vec3d a, Vec3d b) { return std::hypot(a.GetX() - b.GetX(), a.GetZ() - b.GetZ()); }

/// Metres between the two who are the closest.
double closest(std::vector<std::shared_ptr<Agent>> const& people) {
    double least = 1e9;
    for (std::size_t i = 0; i < people.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            least = std::min(least, distance(people[i]->GetPosition(), people[j]->GetPosition()));
        }
    }
    return least;
}

int count_in(Rectangle const& area, std::vector<std::shared_ptr<Agent>> const& people) {
    return static_cast<int>(
        std::ranges::count_if(people, [&](auto const& one) { return area.has(one->GetPosition()); }));
}

TEST(Waits, PeopleStandStillOrSpreadOutNearby) {
    struct Case {
        Style style;
        double least_apart;
        double most_apart;
        double farthest;
    };
    for (Case const& each : {Case{WaitStyle::StandStill(), 0.5, 0.7, 0.2}, Case{WaitStyle::SpreadOut(), 0.9, 2, 5.3}}) {
        auto const places = [&] {
            Hall const hall;
            auto const simulation = hall.simulate_empty();
            auto const people = hall.crowd(*simulation, 12, each.style);
            std::vector<Vec3d> found;
            for (auto const& one : people) found.push_back(one->GetPosition());
            step_for(*simulation, 25);
            EXPECT_GT(closest(people), each.least_apart);
            EXPECT_LT(closest(people), each.most_apart);
            for (std::size_t i = 0; i < people.size(); ++i) {
                EXPECT_LT(distance(found[i], people[i]->GetPosition()), each.farthest);
                EXPECT_LT(people[i]->GetSpeed(), 0.05) << "and stays there";
                found[i] = people[i]->GetPosition();
            }
            return found;
        };
        auto const first = places();
        auto const second = places();
        for (std::size_t i = 0; i < first.size(); ++i) EXPECT_EQ(distance(first[i], second[i]), 0) << "every time";
    }
}

TEST(Waits, WhoHasRoomStaysWhenSpreadingOut) {
    Hall const hall;
    auto const simulation = hall.simulate_empty();
    auto const one = hall.person(*simulation, 5, 5);
    auto const other = hall.person(*simulation, 5, 7);
    for (auto const& each : {one, other})
        each->AddTaskAsActive(std::make_shared<WaitForeverTask>(WaitStyle::SpreadOut()));
    step_for(*simulation, 5);
    EXPECT_NEAR(distance(one->GetPosition(), other->GetPosition()), 2, 0.05);
}

TEST(Waits, SpreadingOutStaysInsideANarrowPlace) {
    Hall const hall;
    auto const corridor = hall.room("Corridor", 30, 0, 31, 6)->GetId();
    auto const simulation = hall.simulate_empty();
    std::vector<std::shared_ptr<Agent>> people;
    for (int i = 0; i < 4; ++i) {
        AgentRequest request(corridor);
        request.SetPosition({30.5, 0, 2 + 0.6 * i});
        request.SetProfile(hall.steady);
        people.push_back(simulation->RequestNewAgent(request));
    }
    for (auto const& one : people) one->AddTaskAsActive(std::make_shared<WaitForeverTask>(WaitStyle::SpreadOut()));
    step_for(*simulation, 20);
    EXPECT_GT(closest(people), 0.9);
    EXPECT_EQ(count_in({30, 0, 31, 6}, people), 4);
}

TEST(WaitSpaces, AreAssignedByWeightOncePerWait) {
    struct Case {
        std::vector<double> weights;
        double share_in_lounge;
    };
    for (auto const& [weights, share] : {Case{{1, 0}, 0}, Case{{0, 1}, 1}, Case{{1, 3}, 0.75}, Case{{}, 0.5}}) {
        Hall hall;
        auto const big = hall.space("Big bench", {9, 1, 15, 4})->GetId();
        std::vector const spaces{big, hall.lounge_id};
        auto const style =
            weights.empty() ? WaitStyle::AssignedWaitSpace(spaces) : WaitStyle::AssignedWaitSpace(spaces, weights);
        auto const simulation = hall.simulate_empty();
        int constexpr count = 24;
        auto const people = hall.crowd(*simulation, count, style);
        step_for(*simulation, 40);
        int const in_lounge = count_in(hall.lounge, people);
        EXPECT_EQ(in_lounge + count_in({9, 1, 15, 4}, people), count);
        EXPECT_NEAR(in_lounge, share * count, 3 * std::sqrt(share * (1 - share) * count));
    }
}

TEST(WaitSpaces, OfLowestCostFillOneAfterTheOther) {
    Hall const hall;
    auto const simulation = hall.simulate_empty();
    auto const people = hall.crowd(*simulation, 16, WaitStyle::LowestCostWaitSpace({hall.lounge_id, hall.bench_id}));
    step_for(*simulation, 40);
    int const on_bench = count_in(hall.bench, people);
    EXPECT_GE(on_bench, 4) << "3 square metres have room for some";
    EXPECT_LE(on_bench, 12) << "but not for more than four on each";
    EXPECT_EQ(count_in(hall.lounge, people), 16 - on_bench);
    EXPECT_GT(closest(people), 0.39) << "nobody stands on another's feet";
}

TEST(WaitSpaces, WithoutRoomLeaveTheFallback) {
    for (bool const spreads : {false, true}) {
        for (bool const assigned : {false, true}) {
            Hall const hall;
            auto const lowest = std::make_shared<LowestCostWaitSpaceWaitStyle>(std::vector{hall.bench_id});
            auto const drawn = std::make_shared<AssignedWaitSpaceWaitStyle>(std::vector{hall.bench_id});
            if (spreads) lowest->SetFallbackWaitStyleSpreadOut();
            if (spreads) drawn->SetFallbackWaitStyleSpreadOut();
            auto const simulation = hall.simulate_empty();
            auto const people = hall.crowd(*simulation, 16, assigned ? Style(drawn) : Style(lowest));
            step_for(*simulation, 30);
            int const on_bench = count_in(hall.bench, people);
            EXPECT_GE(on_bench, 4);
            std::vector<std::shared_ptr<Agent>> others;
            for (auto const& one : people) {
                if (!hall.bench.has(one->GetPosition())) others.push_back(one);
            }
            EXPECT_GE(others.size(), 4U);
            if (spreads) {
                EXPECT_GT(closest(others), 0.9);
            } else {
                EXPECT_LT(closest(others), 0.7);
            }
        }
    }
}

TEST(WaitSpaces, ThatNobodyCanGetToLeaveTheFallback) {
    Hall const hall;
    hall.room("Island", 30, 0, 36, 6);
    auto const island = hall.space("Far", {31, 1, 35, 5})->GetId();
    auto const simulation = hall.simulate_empty();
    auto const people = hall.crowd(*simulation, 3, WaitStyle::LowestCostWaitSpace({island}));
    step_for(*simulation, 10);
    EXPECT_NEAR(people.front()->GetPosition().GetX(), 16, 0.1);
}

TEST(WaitSpaces, HaveAStyleOfTheirOwn) {
    auto const closest_in_lounge = [](bool spreads) {
        Hall const hall;
        auto const space = hall.project->GetWaitSpace("Lounge");
        if (spreads) space->SetSpreadOutWaitStyle();
        if (!spreads) space->SetStandStillWaitStyle();
        auto const simulation = hall.simulate_empty();
        auto const people = hall.crowd(*simulation, 6, WaitStyle::LowestCostWaitSpace({hall.lounge_id}));
        step_for(*simulation, 40);
        EXPECT_EQ(count_in(hall.lounge, people), 6);
        return closest(people);
    };
    EXPECT_LT(closest_in_lounge(false), 1.0) << "around the middle";
    EXPECT_GT(closest_in_lounge(true), 1.7) << "all over the space";
}

TEST(WaitSpaces, AreLeftWhenTheWaitIsOver) {
    Hall const hall;
    auto const west = hall.portal("West", 0, 5, 0, 7)->GetId();
    auto const wait = std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(20),
                                                              WaitStyle::AssignedWaitSpace({hall.bench_id}));
    hall.journey("Journey", west, hall.east, 1, hall.steady)->SetInitialAction(wait);
    auto const simulation = hall.simulate();
    simulation->Step();
    auto const people = simulation->GetAllAgents();
    step_for(*simulation, 15);
    EXPECT_EQ(count_in(hall.bench, people), 1);
    step_for(*simulation, 4);
    EXPECT_EQ(count_in(hall.bench, people), 1);
    double const left = 11.0 / 1.25;
    EXPECT_NEAR(hall.run_until_empty(*simulation, 60), 20 + left, 2);

    Hall const again;
    auto const style = WaitStyle::AssignedWaitSpace({again.bench_id});
    auto const other = again.simulate_empty();
    auto first = again.crowd(*other, 9, style);
    step_for(*other, 15);
    int const full = count_in(again.bench, first);
    for (auto const& one : first) one->ExitSimulation();
    auto const second = again.crowd(*other, 9, style);
    step_for(*other, 15);
    EXPECT_EQ(count_in(again.bench, second), full) << "places of those who left are free";
}

TEST(WaitSpaces, TakeThoseWhoWaitBeforeTheyMove) {
    for (int const kind : {0, 1}) {
        Hall const hall;
        auto const alarm = hall.project->CreateEvacuation("Alarm");
        alarm->SetPopulationSource(
            std::make_shared<CountPopulationSource>(std::vector{hall.hall}, std::vector{hall.east}, 12.0));
        alarm->SetProfile(hall.steady);
        alarm->SetPreMovementWaitDistribution(Distribution::CreateConstant(30));
        alarm->SetPreMovementWaitStyle(kind == 0 ? WaitStyle::LowestCostWaitSpace({hall.lounge_id})
                                                 : WaitStyle::SpreadOut());
        auto const simulation = hall.simulate();
        step_for(*simulation, 28);
        auto const people = simulation->GetAllAgents();
        ASSERT_EQ(people.size(), 12U);
        if (kind == 0) {
            EXPECT_EQ(count_in(hall.lounge, people), 12);
        } else {
            EXPECT_GT(closest(people), 0.9);
        }
        EXPECT_LT(hall.run_until_empty(*simulation, 80), 60);
    }
}

TEST(WaitSpaces, ThatTakeNoPartAreRefused) {
    struct Case {
        std::function<GlobalId(Hall const&)> space;
        std::string message;
    };
    for (auto const& [space, message] : std::vector<Case>{
             {[](Hall const& hall) {
                  auto const away = hall.space("Away", {100, 1, 103, 4});
                  return away->GetId();
              },
              "'Away' lies on no floor"},
             {[](Hall const& hall) {
                  return hall.space("Above", {1, 1, 3, 3}, 3)->GetId();
              },
              "'Above' lies on no floor"},
             {[](Hall const& hall) {
                  auto const closed = hall.space("Closed", {1, 1, 3, 3});
                  closed->SetEnabled(false);
                  return closed->GetId();
              },
              "is no enabled wait space"},
         }) {
        Hall const hall;
        auto const style = WaitStyle::AssignedWaitSpace({space(hall)});
        auto const simulation = hall.simulate_empty();
        auto const one = hall.person(*simulation, 5, 5);
        EXPECT_THAT(refusal_of([&] { one->AddTaskAsActive(std::make_shared<WaitForeverTask>(style)); }),
                    HasSubstr(message));
        hall.journey("Journey", hall.hall, hall.east, 1)->SetInitialAction(std::make_shared<WaitForeverAction>(style));
        std::string refusal;
        try {
            hall.simulate();
        } catch (std::runtime_error const& error) {
            refusal = error.what();
        }
        EXPECT_THAT(refusal, HasSubstr(message));
    }
}

}  // namespace
}  // namespace pedflux
