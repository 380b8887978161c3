#include "tests/engine/simulation/scene.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>

namespace pedflux {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Two halls, one over the other, joined by a stair in the middle, with a pillar below; people walk both ways.
struct TwoLevels : Scene {
    TwoLevels() {
        lower = room("Lower hall", 0, 0, 20, 10);
        upper = room("Upper hall", 12, 0, 32, 10, 4);
        steps = stair("Stair", {12, 0, 5}, {19, 4, 5}, 2.4);
        // The upper hall has an opening over the stair.
        upper->SetGeometry(MeshGeometry::CreateFlatPolygon(4, {{19, 0}, {32, 0}, {32, 10}, {19, 10}}));
        wall("Pillar", 5, 4, 6, 6);
        west = portal("West", 0, 2, 0, 8);
        east = portal("East", 32, 2, 32, 8, 4);
    }
    void both_ways(double count) const {
        journey("Up", west->GetId(), east->GetId(), count);
        journey("Down", east->GetId(), west->GetId(), count);
    }

    std::shared_ptr<Floor> lower;
    std::shared_ptr<Floor> upper;
    std::shared_ptr<Stair> steps;
    std::shared_ptr<Portal> west;
    std::shared_ptr<Portal> east;
};

TEST(TwoLevelBuilding, EverybodyGetsOverTheStairAtTheRightHeights) {
    TwoLevels const scene;
    scene.both_ways(40);
    auto const simulation = scene.simulate();
    std::map<int, double> last_height;
    double highest_jump = 0;
    bool was_on_stair = false;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 3000) {
        simulation->Step();
        was_on_stair = was_on_stair || simulation->GetPopulation(scene.steps->GetId()) > 0;
        for (auto const& agent : simulation->GetAllAgents()) {
            double const height = agent->GetPosition().GetY();
            auto const [known, is_new] = last_height.try_emplace(agent->GetId(), height);
            if (!is_new) highest_jump = std::max(highest_jump, std::abs(height - known->second));
            known->second = height;
        }
    }
    EXPECT_THAT(simulation->GetAllAgents(), IsEmpty()) << "nobody stays behind";
    EXPECT_TRUE(was_on_stair);
    EXPECT_LT(highest_jump, 0.4) << "heights change no faster than people walk";
    EXPECT_EQ(last_height.size(), 80U);
}

TEST(TwoLevelBuilding, EqualSeedsGiveEqualRunsForAnyThreadCountAndForFramesTakenInParts) {
    std::vector<std::uint64_t> hashes;
    for (auto const& [seed, threads, in_parts] :
         {std::tuple{7, 1, false}, {7, 2, false}, {7, 3, false}, {7, 1, true}, {8, 1, false}}) {
        TwoLevels const scene;
        scene.both_ways(150);
        auto const simulation = scene.simulate(seed, threads);
        for (int i = 0; i < 80; ++i) {
            if (in_parts) {
                simulation->CreateAgents();
                simulation->ChooseAgentTargets();
                simulation->MoveAgents();
            } else {
                simulation->Step();
            }
        }
        simulation->Stop();
        hashes.push_back(hash_of(scene.database));
    }
    EXPECT_EQ(hashes[0], hashes[1]);
    EXPECT_EQ(hashes[0], hashes[2]);
    EXPECT_EQ(hashes[0], hashes[3]);
    EXPECT_NE(hashes[0], hashes[4]) << "another seed gives another run";
}

TEST(TwoLevelBuilding, WhatIsReadBackIsWhatWasSimulated) {
    TwoLevels const scene;
    scene.both_ways(20);
    auto const simulation = scene.simulate();
    struct Seen {
        Vec3d position;
        double speed;
        std::string place;
    };
    std::map<std::pair<int, int>, Seen> seen;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 3000) {
        simulation->Step();
        for (auto const& agent : simulation->GetAllAgents()) {
            auto const place = agent->HasCurrentFloor() ? agent->GetCurrentFloorId() : scene.steps->GetId();
            seen[{simulation->GetCurrentFrame(), agent->GetId()}] = {agent->GetPosition(), agent->GetSpeed(),
                                                                     GlobalId(place).GetString()};
        }
    }
    simulation->Stop();
    EXPECT_TRUE(scene.project->GetSimulationRun("Run")->IsConnected());
    auto const run = Database::Open(scene.database);
    EXPECT_EQ(run->GetAgentCount(), 40);
    EXPECT_EQ(run->GetLastFrame(), simulation->GetCurrentFrame());
    std::size_t read = 0;
    for (int frame = run->GetFirstFrame(); frame <= run->GetLastFrame(); ++frame) {
        for (auto& data : run->GetFrameData(frame)) {
            ++read;
            auto const found = seen.find({frame, data.GetAgentId()});
            ASSERT_NE(found, seen.end());
            Vec3d position = data.GetPosition();
            EXPECT_NEAR(position.GetX(), found->second.position.GetX(), 1e-5);
            EXPECT_NEAR(position.GetY(), found->second.position.GetY(), 1e-5);
            EXPECT_NEAR(position.GetZ(), found->second.position.GetZ(), 1e-5);
            EXPECT_NEAR(data.GetSpeed(), found->second.speed, 1e-5);
            EXPECT_EQ(run->GetAgentCurrentFloor(data.GetAgentId(), frame).GetString(), found->second.place);
            EXPECT_LE(run->GetAgentFirstFrame(data.GetAgentId()), frame);
            EXPECT_GE(run->GetAgentLastFrame(data.GetAgentId()), frame);
        }
    }
    EXPECT_EQ(read, seen.size());
}

TEST(TwoLevelBuilding, SummariesTellWhoCameAndWent) {
    TwoLevels const scene;
    scene.both_ways(15);
    auto const simulation = scene.simulate();
    std::map<std::string, int> counts;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 3000) {
        auto summary = simulation->Step();
        counts["created"] += static_cast<int>(summary.GetCreatedAgents().size());
        counts["deleted"] += static_cast<int>(summary.GetDeletedAgents().size());
        counts["in by west"] += static_cast<int>(summary.GetAgentsThatEntered(scene.west->GetId()).size());
        counts["out by west"] += static_cast<int>(summary.GetAgentsThatExited(scene.west->GetId()).size());
        counts["onto stair"] += static_cast<int>(summary.GetAgentsThatEntered(scene.steps->GetId()).size());
        counts["off stair"] += static_cast<int>(summary.GetAgentsThatExited(scene.steps->GetId()).size());
    }
    EXPECT_EQ(counts["created"], 30);
    EXPECT_EQ(counts["deleted"], 30);
    EXPECT_EQ(counts["in by west"], 15);
    EXPECT_EQ(counts["out by west"], 15);
    EXPECT_GE(counts["onto stair"], 30);
    EXPECT_EQ(counts["onto stair"], counts["off stair"]);
}

TEST(TwoLevelBuilding, AClosedGateMakesPeopleWaitUntilItOpens) {
    TwoLevels const scene;
    scene.steps->SetGated(true);
    scene.journey("Up", scene.west->GetId(), scene.east->GetId(), 5);
    auto const simulation = scene.simulate();
    auto const gate = scene.steps->GetId();
    EXPECT_TRUE(simulation->IsGateOpenToAll(gate));
    simulation->CloseGate(gate, ConnectionObjectDirection::BALL_TO_BOX);
    EXPECT_FALSE(simulation->IsGateOpenToAll(gate));
    EXPECT_FALSE(simulation->IsGateClosedToAll(gate));
    EXPECT_TRUE(simulation->IsGateClosedToAll(gate, ConnectionObjectDirection::BALL_TO_BOX));
    EXPECT_FALSE(simulation->ExistsPathTo(scene.lower->GetId(), {1, 0, 5}, scene.east->GetId()));
    EXPECT_TRUE(simulation->ExistsPathTo(scene.upper->GetId(), {25, 4, 5}, scene.west->GetId()));
    for (int i = 0; i < 300; ++i) simulation->Step();
    EXPECT_THAT(simulation->GetAgentsOn(scene.lower->GetId()), SizeIs(5));
    ASSERT_THAT(simulation->GetIssues(), SizeIs(1));
    EXPECT_THAT(simulation->GetIssues()[0].GetSummary(), HasSubstr("No way leads from Lower hall to Portal 'East'"));
    simulation->ResetGate(gate);
    EXPECT_LT(scene.run_until_empty(*simulation, 200), 200);
}

TEST(TwoLevelBuilding, WaysAreMeasuredAlongTheSlope) {
    TwoLevels const scene;
    scene.journey("Up", scene.west->GetId(), scene.east->GetId(), 1);
    auto const simulation = scene.simulate();
    double const slope = std::hypot(7, 4);
    auto const lower = scene.lower->GetId();
    double const length = simulation->GetDistanceAlongPathTo(lower, {10, 0, 5}, scene.east->GetId());
    EXPECT_NEAR(length, 2 + slope + 13, 0.1);
    Vec3d direction = simulation->GetDirectionAlongPathTo(lower, {10, 0, 5}, scene.east->GetId());
    EXPECT_NEAR(direction.GetX(), 1, 1e-6);
    Vec3d point = simulation->GetClosestPointWithPathTo(lower, {-1, 0, 5}, 2, scene.east->GetId());
    EXPECT_NEAR(point.GetX(), 0, 0.11);
    EXPECT_FALSE(simulation->GetClosestPointWithPathTo(lower, {-9, 0, 5}, 2, scene.east->GetId()).IsValid());
    EXPECT_THAT(refusal_of([&] {
                    simulation->ExistsPathTo(lower, {5.5, 0, 5}, scene.east->GetId());
                }),
                HasSubstr("does not lie on the walkable area of Lower hall"));
}

TEST(BadModels, AreRefusedInOneSentence) {
    struct Case {
        char const* message;
        std::function<void(Scene&)> draw;
    };
    auto const room = [](Scene& scene) { return scene.room("Hall", 0, 0, 10, 10)->GetId(); };
    std::vector<Case> const cases{
        {"no enabled floor", [](Scene&) {}},
        {"Portal 'Far' lies on no floor",
         [&](Scene& scene) {
             room(scene);
             scene.portal("Far", 20, 0, 20, 2);
         }},
        {"Portal 'High' lies on no floor",
         [&](Scene& scene) {
             room(scene);
             scene.portal("High", 0, 0, 0, 2, 3);
         }},
        {"Stair 'Lonely' touches no floor at its box end",
         [&](Scene& scene) {
             room(scene);
             scene.stair("Lonely", {10, 0, 5}, {15, 3, 5}, 2);
         }},
        {"No way leads from Floor 'Hall' to Portal 'Elsewhere'",
         [&](Scene& scene) {
             auto const hall = room(scene);
             scene.room("Annex", 20, 0, 25, 5);
             scene.journey("Go", hall, scene.portal("Elsewhere", 25, 0, 25, 5)->GetId(), 1);
         }},
        {"barriers cover all of it",
         [&](Scene& scene) {
             room(scene);
             scene.wall("Rock", -1, -1, 11, 11);
         }},
        {"is no enabled portal, walkable object or zone",
         [&](Scene& scene) {
             auto const hall = room(scene);
             auto const exit = scene.portal("Exit", 0, 0, 0, 2);
             exit->SetEnabled(false);
             scene.journey("Go", hall, exit->GetId(), 1);
         }},
    };
    for (auto const& [message, draw] : cases) {
        Scene scene;
        draw(scene);
        EXPECT_THAT(refusal_of([&] { Simulation::Create(scene.project, "Run", scene.database); }), HasSubstr(message));
        EXPECT_EQ(scene.project->GetSimulationRun("Run"), nullptr) << "the run was made for nothing";
        EXPECT_FALSE(std::filesystem::exists(scene.database));
    }
}

TEST(BadModels, AForeignFileIsNotOverwritten) {
    Scene const scene;
    scene.room("Hall", 0, 0, 10, 10);
    std::ofstream(scene.database) << "dear diary";
    EXPECT_THAT(refusal_of([&] { Simulation::Create(scene.project, "Run", scene.database); }),
                HasSubstr("is not a database of results"));
    EXPECT_EQ(std::filesystem::file_size(scene.database), 10U);
}

TEST(Runs, WithoutPeopleSaySoAndAreDone) {
    Scene const scene;
    scene.room("Hall", 0, 0, 10, 10);
    auto const simulation = scene.simulate();
    EXPECT_TRUE(simulation->IsDone());
    ASSERT_THAT(simulation->GetIssues(), SizeIs(1));
    EXPECT_EQ(simulation->GetIssues()[0].GetTitle(), "Nobody comes");
    simulation->ClearIssues();
    EXPECT_THAT(simulation->GetIssues(), IsEmpty());
}

TEST(Runs, EndWithTheProjectsDurationAndTakeNoFramesAfterStop) {
    Scene const scene;
    scene.project->SetDurationInSeconds(2);
    scene.project->SetStartTimeInSeconds(8 * 3600);
    auto const hall = scene.room("Hall", 0, 0, 100, 4)->GetId();
    scene.journey("Go", hall, scene.portal("Exit", 100, 0, 100, 4)->GetId(), 3);
    auto const simulation = scene.simulate();
    while (!simulation->IsDone()) simulation->Step();
    EXPECT_EQ(simulation->GetCurrentFrame(), 10);
    EXPECT_EQ(simulation->GetClock()->GetCurrentTimeString(), "08:00:02.0");
    EXPECT_THAT(simulation->GetAllAgents(), SizeIs(3));
    EXPECT_TRUE(simulation->IsValid());
    simulation->Stop();
    EXPECT_FALSE(simulation->IsValid());
    EXPECT_THAT(refusal_of([&] { simulation->Step(); }), HasSubstr("was stopped"));
    EXPECT_THAT(simulation->GetAllAgents(), SizeIs(3)) << "what was there can still be read";
}

TEST(Runs, PeopleWaitTheirPreMovementTime) {
    Scene const scene;
    auto const hall = scene.room("Hall", 0, 0, 20, 4)->GetId();
    auto const exit = scene.portal("Exit", 20, 0, 20, 4)->GetId();
    auto const evacuation = scene.project->CreateEvacuation("Fire");
    evacuation->SetPopulationSource(
        std::make_shared<CountPopulationSource>(std::vector{hall}, std::vector{exit}, 10.0));
    evacuation->SetPreMovementWaitDistribution(Distribution::CreateConstant(10));
    auto const simulation = scene.simulate();
    double walked = 0;
    while (simulation->GetClock()->GetCurrentSecond() < 9.9) simulation->Step();
    for (auto const& agent : simulation->GetAllAgents()) walked = std::max(walked, agent->GetDistanceTraveled());
    EXPECT_LT(walked, 0.2) << "they make room at most";
    EXPECT_GT(scene.run_until_empty(*simulation, 60), 10.2);
}

TEST(Runs, NobodyIsPushedOutThroughTheExitOfOthers) {
    Scene const scene;
    auto const hall = scene.room("Hall", 0, 0, 12, 3)->GetId();
    auto const side = scene.portal("Side", 4, 0, 9, 0)->GetId();
    auto const end = scene.portal("End", 12, 1, 12, 2)->GetId();
    scene.journey("Out by the end", hall, end, 120);
    scene.journey("Out by the side", hall, side, 1);
    auto const simulation = scene.simulate();
    int by_side = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 1500) {
        by_side += static_cast<int>(simulation->Step().GetAgentsThatExited(side).size());
        for (auto const& agent : simulation->GetAllAgents()) EXPECT_GE(agent->GetPosition().GetZ(), 0);
    }
    EXPECT_THAT(simulation->GetAllAgents(), IsEmpty());
    EXPECT_EQ(by_side, 1);
}

TEST(Runs, PortalsThatLieOnEachOtherAreWaysOutFullyEach) {
    Scene const scene;
    scene.room("Room", 0, 0, 10, 10);
    auto const in = scene.portal("In", 0, 0, 0, 10);
    auto const narrow = scene.portal("Narrow", 10, 4, 10, 6);
    auto const wide = scene.portal("Wide", 10, 0, 10, 10);
    scene.journey("By the wide one", in->GetId(), wide->GetId(), 20);
    auto const simulation = scene.simulate();
    std::size_t out = 0;
    while (!simulation->IsDone() && simulation->GetCurrentFrame() < 200) {
        auto summary = simulation->Step();
        out += summary.GetAgentsThatExited(wide->GetId()).size();
        EXPECT_THAT(summary.GetAgentsThatExited(narrow->GetId()), IsEmpty());
    }
    EXPECT_EQ(out, 20U);
}

TEST(Runs, PeopleComeInAsTheEntranceHasRoom) {
    Scene const scene;
    scene.room("Corridor", 0, 0, 20, 2);
    auto const from = scene.portal("From", 0, 0, 0, 2);
    auto const to = scene.portal("To", 20, 0, 20, 2);
    scene.journey("Go", from->GetId(), to->GetId(), 100);
    for (auto const placement :
         {AgentInitialPlacement::RANDOM, AgentInitialPlacement::EVEN, AgentInitialPlacement::CENTER}) {
        from->SetAgentInitialPlacement(placement);
        auto const simulation = scene.simulate();
        EXPECT_LE(simulation->CreateAgents().size(), 5U) << "no more fit beside each other";
        scene.run_until_empty(*simulation, 150);
    }
}

}  // namespace
}  // namespace pedflux
