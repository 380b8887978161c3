#include "tests/engine/simulation/scene.h"

#include <cmath>

namespace pedflux {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A hall of 20 by 10 m with an exit in the east, and a person in the middle of it.
struct Hall : Scene {
    Hall() {
        floor_id = room("Hall", 0, 0, 20, 10)->GetId();
        exit_id = portal("Exit", 20, 4, 20, 6)->GetId();
        SimulationOptions options;
        options.AddExtraGoal(exit_id);
        simulation = Simulation::Create(project, "Run", database, options);
    }
    std::shared_ptr<Agent> person(Vec3d const& position, bool leaves = true) const {
        AgentRequest request(floor_id);
        request.SetPosition(position);
        if (leaves) request.SetGoal(exit_id);
        request.SetColor(Color::RED);
        request.SetHeading(90);
        return simulation->RequestNewAgent(request);
    }

    GlobalId floor_id;
    GlobalId exit_id;
    std::shared_ptr<Simulation> simulation;
};

TEST(Agents, RequestedOnesTellWhatTheyAreAndWalkOut) {
    Hall const hall;
    auto const agent = hall.person({10, 0, 5});
    ASSERT_NE(agent, nullptr);
    EXPECT_EQ(agent->GetId(), 0);
    EXPECT_TRUE(agent->Exists());
    EXPECT_EQ(agent->GetHeading(), 90);
    EXPECT_TRUE(agent->GetColor().InternalEquals(Color::RED));
    EXPECT_TRUE(agent->GetCurrentFloorId().InternalEquals(hall.floor_id));
    EXPECT_TRUE(agent->GetInitialGoalId().InternalEquals(hall.exit_id));
    EXPECT_TRUE(agent->GetTargetWaypointId().InternalEquals(hall.exit_id));
    EXPECT_TRUE(agent->GetStartObjectId().InternalEquals(hall.floor_id));
    EXPECT_FALSE(agent->HasPreviousWaypoint());
    EXPECT_NEAR(agent->GetDistanceToTargetWaypoint(), 10, 1e-6);
    EXPECT_NEAR(agent->GetDirectionToTargetWaypoint().GetX(), 1, 1e-9);
    EXPECT_NEAR(agent->GetDistanceToTargetWaypointFrom({15, 0, 5}), 5, 1e-6);
    EXPECT_NEAR(agent->GetTargetWaypointGoalLine().GetLength(), 2, 1e-6);
    EXPECT_FALSE(hall.simulation->IsDone());
    hall.simulation->Step();
    EXPECT_EQ(agent->GetAgentMovement(), AgentMovement::WALK);
    hall.run_until_empty(*hall.simulation, 30);
    EXPECT_TRUE(agent->HasExitedWithSuccess());
    EXPECT_FALSE(agent->HasExitedWithError());
}

TEST(Agents, ThoseWhoLeftAnswerWithClearRefusals) {
    auto hall = std::make_unique<Hall>();
    auto const gone = hall->person({10, 0, 5});
    auto const failed = hall->person({12, 0, 5});
    auto const left = hall->person({5, 0, 5});
    gone->ExitSimulation();
    failed->ExitSimulationWithError("fell asleep");
    EXPECT_TRUE(gone->HasExitedWithSuccess());
    EXPECT_TRUE(failed->HasExitedWithError());
    EXPECT_EQ(hall->simulation->GetAgent(0), nullptr);
    EXPECT_EQ(hall->simulation->GetAgent(-1), nullptr);
    EXPECT_EQ(hall->simulation->GetAgent(99), nullptr);
    ASSERT_NE(hall->simulation->GetAgent(2), nullptr);
    EXPECT_TRUE(hall->simulation->GetAgent(2)->InternalEquals(left));
    EXPECT_EQ(hall->simulation->GetIssues().back().GetSummary(), "fell asleep");
    for (auto const& action : std::vector<std::function<void()>>{
             [&] { gone->GetPosition(); }, [&] { gone->SetRadius(0.3); }, [&] { gone->GetTargetWaypointId(); },
             [&] { gone->GetAvailableSpace(1); }, [&] { gone->ExitSimulation(); }, [&] { gone->AssumeControl(); }}) {
        EXPECT_THAT(refusal_of(action), HasSubstr("Agent 0 has left the simulation"));
    }
    hall.reset();
    EXPECT_FALSE(left->Exists());
    EXPECT_EQ(left->GetId(), 2);
    EXPECT_THAT(refusal_of([&] { left->GetSpeed(); }), HasSubstr("a simulation that is gone"));
}

TEST(Agents, AreFoundByPlace) {
    Hall const hall;
    for (double const x : {2.0, 6.0, 10.0}) hall.person({x, 0, 5}, false);
    auto& simulation = *hall.simulation;
    EXPECT_THAT(simulation.GetAgentsInBox({{1, -1, 0}, {7, 1, 10}}), SizeIs(2));
    EXPECT_THAT(simulation.GetAgentsNearPoint({6, 0, 5}, 4.01, 0.5), SizeIs(3));
    EXPECT_THAT(simulation.GetAgentsNearPoint({6, 0, 5}, 3.9, 0.5), SizeIs(1));
    EXPECT_THAT(simulation.GetAgentsNearPoint({6, 3, 5}, 9, 0.5), IsEmpty());
    EXPECT_EQ(simulation.GetPopulation(hall.floor_id), 3);
    EXPECT_THAT(refusal_of([&] { simulation.GetAgentsOn(hall.exit_id); }), HasSubstr("is a portal"));
    EXPECT_THAT(refusal_of([&] { simulation.GetAgentsOn(GlobalId::Generate()); }), HasSubstr("no enabled portal"));
    EXPECT_EQ(hall.person({10.1, 0, 5}), nullptr) << "there is no room";
    EXPECT_THAT(refusal_of([&] { hall.person({50, 0, 5}); }), HasSubstr("on no walkable surface"));
}

TEST(Agents, ControlledOnesGoWhereTheProgramPutsThem) {
    Hall const hall;
    auto const agent = hall.person({10, 0, 5});
    EXPECT_THAT(refusal_of([&] { agent->MoveTo({11, 0, 5}); }), HasSubstr("is not controlled"));
    agent->AssumeControl();
    agent->DisallowAdjustment();
    hall.simulation->Step();
    EXPECT_EQ(agent->GetPosition().GetX(), 10);
    agent->MoveTo({3, 0, 2}, {0, 0, 1}, 1.5);
    hall.simulation->Step();
    EXPECT_TRUE(agent->GetPosition().InternalEquals(Vec3d(3, 0, 2)));
    EXPECT_EQ(agent->GetHeading(), 180);
    EXPECT_EQ(agent->GetSpeed(), 1.5);
    EXPECT_THAT(refusal_of([&] { agent->MoveTo({3, 0, 20}); }), HasSubstr("on no walkable surface"));
    agent->ReleaseControl();
    agent->SetGoalDirectionOverride({0, 0, 1});
    for (int i = 0; i < 10; ++i) hall.simulation->Step();
    EXPECT_NEAR(agent->GetPosition().GetX(), 3, 0.05);
    EXPECT_GT(agent->GetPosition().GetZ(), 3.5);
    agent->ClearGoalDirectionOverride();
    hall.run_until_empty(*hall.simulation, 60);
}

TEST(Agents, PropertiesChangeWithinTheirRanges) {
    Hall const hall;
    auto const agent = hall.person({10, 0, 5});
    agent->SetRadius(0.3);
    agent->SetDesiredUnconstrainedSpeed(2);
    agent->SetHeight(1.5);
    agent->SetColor(Color::GREEN);
    agent->SetNextAgentMovement(AgentMovement::STAND);
    for (int i = 0; i < 10; ++i) hall.simulation->Step();
    EXPECT_EQ(agent->GetRadius(), 0.3);
    EXPECT_NEAR(agent->GetSpeed(), 2, 0.2);
    EXPECT_NEAR(agent->GetVelocity().GetX(), agent->GetSpeed(), 0.01);
    EXPECT_EQ(agent->GetCurrentMaxSpeed(), 2);
    agent->ClearColor();
    EXPECT_TRUE(agent->GetColor().InternalEquals(Color::RED));
    for (auto const& [action, message] : std::vector<std::pair<std::function<void()>, char const*>>{
             {[&] { agent->SetRadius(0); }, "0.05 to 1 m, not 0"},
             {[&] { agent->SetRadius(std::nan("")); }, "0.05 to 1 m"},
             {[&] { agent->SetDesiredUnconstrainedSpeed(-1); }, "not -1"},
             {[&] { agent->SetHeight(4); }, "at most 3 m, not 4"},
             {[&] { agent->SetNextAgentMovement(static_cast<AgentMovement>(9)); }, "not 9"},
             {[&] { agent->GetAvailableSpace(0); }, "not 0"},
             {[&] {
                  agent->GetObstaclePointInDirection({0, 1, 0}, 5);
              },
              "vertical"},
             {[&] { agent->GetPreviousWaypointId(); }, "no waypoint yet"}}) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
    }
    EXPECT_EQ(agent->GetRadius(), 0.3) << "a refused value changes nothing";
}

TEST(Agents, KnowTheirSurroundings) {
    Hall const hall;
    auto const agent = hall.person({1, 0, 5});
    hall.person({3, 0, 5}, false);
    auto const obstacle = agent->GetClosestObstaclePoint(5);
    ASSERT_NE(obstacle, nullptr);
    EXPECT_NEAR(obstacle->GetPosition().GetX(), 0, 1e-6);
    EXPECT_NEAR(obstacle->GetNormal().GetX(), 1, 1e-6);
    EXPECT_EQ(agent->GetClosestObstaclePoint(0.5), nullptr);
    EXPECT_NEAR(agent->GetObstaclePointInDirection({0, 0, 1}, 20)->GetPosition().GetZ(), 10, 1e-6);
    EXPECT_TRUE(agent->IsInOpenSpace());
    EXPECT_FALSE(agent->IsInOpenSpace({3.1, 0, 5}));
    EXPECT_FALSE(agent->IsInOpenSpace({0.1, 0, 5}));
    Vec3d open = agent->GetOpenPointClosestTo({3, 0, 5}, 2);
    EXPECT_NEAR(std::hypot(open.GetX() - 3, open.GetZ() - 5), 0.4, 0.06);
    EXPECT_FALSE(agent->GetOpenPointClosestTo({3, 0, 5}, 0.2).IsValid());

    auto space = agent->GetAvailableSpace(4);
    int const east = space.GetSegmentIndex({1, 0, 0});
    int const west = space.GetSegmentIndex({-1, 0, 0});
    EXPECT_EQ(east, 4);
    EXPECT_EQ(west, 12);
    EXPECT_NEAR(space.GetSegmentRadius(east), 1.8, 0.01) << "up to the other person's body";
    EXPECT_NEAR(space.GetSegmentRadius(west), 1, 0.05) << "up to the wall";
    EXPECT_EQ(space.GetMinSegmentIndex(), west);
    EXPECT_NEAR(space.GetSegmentRadius(space.GetSegmentIndex({0, 0, 1})), 4, 1e-9);
    EXPECT_NEAR(space.GetSegmentDirection(east).GetX(), 1, 1e-9);
    EXPECT_GT(space.GetArea(), 10);
    EXPECT_EQ(AvailableSpace().GetArea(), 0);
    EXPECT_THAT(refusal_of([&] { space.GetSegmentRadius(16); }), HasSubstr("16"));
}

}  // namespace
}  // namespace pedflux
