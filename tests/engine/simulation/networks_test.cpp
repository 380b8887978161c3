#include "tests/engine/simulation/scene.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/agents.h>
#include <pedflux/networks.h>

#include <array>
#include <map>
#include <set>

namespace pedflux {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// Two rooms and two ways between them: a ramp straight ahead of those who go from west to east, and a link 12 m aside.
struct TwoWays : Scene {
    TwoWays() {
        left = room("Left", 0, 0, 10, 20);
        right = room("Right", 14, 0, 24, 20);
        near = project->CreateRamp("Near", MeshGeometry::CreateRamp({10, 0, 4}, {14, 0, 4}, 2));
        far = project->CreateLink("Far", MeshGeometry::CreateRamp({10, 0, 16}, {14, 0, 16}, 2));
        west = portal("West", 0, 3, 0, 5);
        east = portal("East", 24, 3, 24, 5);
        profile = walkers("Walkers", 1.4);
        network = project->CreateNetwork("Own");
        project->SetDurationInSeconds(200);
    }

    std::shared_ptr<Journey> walk(double count) const {
        return journey("Walk", west->GetId(), east->GetId(), count, profile->GetId());
    }

    /// More a second than the ramp lets in.
    std::shared_ptr<Journey> rush(double count) const {
        auto const in = portal("Wide in", 0, 1, 0, 9)->GetId();
        auto const out = portal("Wide out", 24, 1, 24, 19)->GetId();
        return journey("Rush", in, out, count, profile->GetId());
    }

    std::shared_ptr<Floor> left;
    std::shared_ptr<Floor> right;
    std::shared_ptr<Ramp> near;
    std::shared_ptr<Link> far;
    std::shared_ptr<Portal> west;
    std::shared_ptr<Portal> east;
    std::shared_ptr<Profile> profile;
    std::shared_ptr<Network> network;
};

/// The agents that are ever on an object, in a run to its end.
template <std::size_t count>
std::array<std::set<int>, count> users_of(Simulation& simulation, std::array<GlobalId, count> const& objects) {
    std::array<std::set<int>, count> users;
    while (!simulation.IsDone()) {
        simulation.Step();
        for (std::size_t i = 0; i < count; ++i) {
            for (auto const& agent : simulation.GetAgentsOn(objects[i])) users[i].insert(agent->GetId());
        }
    }
    return users;
}

TEST(Networks, PeopleTakeTheMembersOfTheirNetworkAlone) {
    struct Case {
        char const* name;
        std::function<void(TwoWays&)> draw;
        bool by_near;
    };
    auto const excluding_near = [](TwoWays& scene) { scene.network->SetByExcludingObjects({scene.near->GetId()}); };
    auto const of_profile = [](TwoWays& scene) { scene.profile->SetNetwork(scene.network->GetId()); };
    auto const defined = [=](TwoWays& scene, std::vector<GlobalId> const& included) {
        auto const definition = std::make_shared<NetworkDefinition>();
        definition->SetIncludeAllRamps(false);
        definition->SetIncludeObjects(included);
        scene.network->SetByNetworkDefinition(definition);
        of_profile(scene);
    };
    auto const begin_with = [](TwoWays& scene, std::shared_ptr<AgentAction> const& action) {
        scene.project->GetJourneys().front()->SetInitialAction(action);
    };
    std::vector<Case> const cases{
        {"no network", [](TwoWays&) {}, true},
        {"all objects", of_profile, true},
        {"excluded", [=](TwoWays& scene) { excluding_near(scene), of_profile(scene); }, false},
        {"included connections",
         [=](TwoWays& scene) { scene.network->SetByIncludingObjects({scene.far->GetId()}), of_profile(scene); }, false},
        {"included floors and a connection",
         [=](TwoWays& scene) {
             scene.network->SetByIncludingObjects({scene.left->GetId(), scene.right->GetId(), scene.near->GetId()});
             of_profile(scene);
         },
         true},
        {"defined without ramps", [=](TwoWays& scene) { defined(scene, {}); }, false},
        {"defined without ramps but one", [=](TwoWays& scene) { defined(scene, {scene.near->GetId()}); }, true},
        {"set by an action",
         [=](TwoWays& scene) {
             excluding_near(scene);
             begin_with(scene, std::make_shared<SetNetworkAction>(scene.network->GetId()));
         },
         false},
        {"set to all by an action",
         [=](TwoWays& scene) {
             excluding_near(scene);
             of_profile(scene);
             begin_with(scene, std::make_shared<SetNetworkAction>());
         },
         true},
        {"set to all and cleared",
         [=](TwoWays& scene) {
             excluding_near(scene);
             of_profile(scene);
             std::vector<std::shared_ptr<AgentAction>> const actions{std::make_shared<SetNetworkAction>(),
                                                                     std::make_shared<ClearNetworkAction>()};
             begin_with(scene, std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER));
         },
         false},
    };
    for (auto const& each : cases) {
        TwoWays scene;
        scene.walk(3);
        each.draw(scene);
        auto const simulation = scene.simulate();
        auto const [near, far] = users_of(*simulation, std::array{scene.near->GetId(), scene.far->GetId()});
        EXPECT_EQ(near.size(), each.by_near ? 3 : 0) << each.name;
        EXPECT_EQ(far.size(), each.by_near ? 0 : 3) << each.name;
    }
}

TEST(Networks, WhoHasNoWayInTheirNetworkIsToldBeforehand) {
    TwoWays scene;
    scene.walk(1);
    scene.profile->SetNetwork(scene.network->GetId());
    scene.network->SetByExcludingObjects({scene.right->GetId()});
    EXPECT_THAT(refusal_of([&] { Simulation::Create(scene.project, "Run", scene.database); }),
                HasSubstr("No way in Network 'Own' leads from Portal 'West' to Portal 'East'"));
}

TEST(Networks, TheProgramGivesAndTakesNetworks) {
    TwoWays scene;
    scene.walk(1);
    auto const closed = scene.project->CreateNetwork("Closed");
    closed->SetByExcludingObjects({scene.near->GetId(), scene.far->GetId()});
    scene.network->SetByExcludingObjects({scene.near->GetId()});
    scene.profile->SetNetwork(scene.network->GetId());
    auto const simulation = scene.simulate();
    step_to(*simulation, 1);
    auto const agent = simulation->GetAllAgents().front();
    EXPECT_TRUE(agent->GetNetwork().InternalEquals(scene.network->GetId()));
    agent->SetNetworkToGlobal();
    EXPECT_FALSE(agent->HasNetwork());
    EXPECT_THAT(refusal_of([&] { agent->GetNetwork(); }), HasSubstr("has no network"));
    EXPECT_THAT(refusal_of([&] { agent->SetNetwork(scene.far->GetId()); }), HasSubstr("is no network"));
    double const by_near = agent->GetDistanceToTargetWaypoint();
    agent->ResetNetwork();
    EXPECT_GT(agent->GetDistanceToTargetWaypoint(), by_near + 4);

    agent->SetNetwork(closed->GetId());
    EXPECT_FALSE(agent->HasPathToTargetWaypoint());
    step_to(*simulation, 3);
    auto const waiting = agent->GetPosition();
    step_to(*simulation, 6);
    EXPECT_EQ(Vec3d(waiting).GetX(), agent->GetPosition().GetX()) << "it waits";
    ASSERT_EQ(simulation->GetIssues().size(), 1);
    EXPECT_THAT(simulation->GetIssues().front().GetSummary(),
                HasSubstr("No way in Network 'Closed' leads from Left to Portal 'East' at 1 s"));
    agent->ResetNetwork();
    auto const [near, far] = users_of(*simulation, std::array{scene.near->GetId(), scene.far->GetId()});
    EXPECT_THAT(near, IsEmpty());
    EXPECT_EQ(far.size(), 1);
    EXPECT_TRUE(agent->HasExitedWithSuccess());
}

TEST(Networks, ACrowdPushesNobodyOntoWhatIsNoMember) {
    TwoWays scene;
    scene.network->SetByExcludingObjects({scene.near->GetId()});
    scene.walk(60);
    auto const strangers = scene.walkers("Strangers", 1.4);
    strangers->SetNetwork(scene.network->GetId());
    scene.journey("Others", scene.west->GetId(), scene.east->GetId(), 20, strangers->GetId());
    auto const simulation = scene.simulate();
    while (!simulation->IsDone()) {
        simulation->Step();
        for (auto const& agent : simulation->GetAgentsOn(scene.near->GetId())) ASSERT_FALSE(agent->HasNetwork());
    }
}

/// Two levels, a long ramp straight ahead and short stairs aside.
TEST(Networks, RoutesCountStairsAndSlopesByTheCostsOfTheProfile) {
    struct Case {
        double horizontal;
        double vertical;
        std::size_t by_ramp;
        std::size_t by_stair;
    };
    for (auto const& [horizontal, vertical, by_ramp, by_stair] :
         {Case{1, 1, 4, 0}, {1, 3, 0, 4}, {2, 2, 4, 0}, {2, 6, 0, 4}, {1, 0.2, 4, 0}, {0.3, 1, 0, 4}}) {
        Scene scene;
        scene.floor("Below", {{0, 0}, {20, 0}, {20, 14}, {35, 14}, {35, 18}, {20, 18}, {20, 20}, {0, 20}});
        scene.room("Above", 40, 0, 60, 20, 3);
        auto const ramp = scene.project->CreateRamp("Ramp", MeshGeometry::CreateRamp({20, 0, 4}, {40, 3, 4}, 2));
        auto const stair = scene.stair("Stair", {35, 0, 16}, {40, 3, 16}, 2);
        auto const profile = scene.walkers("Walkers", 1.4);
        profile->SetHorizontalCostDistribution(Distribution::CreateConstant(horizontal));
        profile->SetVerticalCostDistribution(Distribution::CreateConstant(vertical));
        scene.journey("Walk", scene.portal("West", 0, 3, 0, 5)->GetId(), scene.portal("East", 60, 3, 60, 5, 3)->GetId(),
                      4, profile->GetId());
        auto const simulation = scene.simulate();
        auto const users = users_of(*simulation, std::array{ramp->GetId(), stair->GetId()});
        EXPECT_EQ(users[0].size(), by_ramp) << horizontal << " " << vertical;
        EXPECT_EQ(users[1].size(), by_stair) << horizontal << " " << vertical;
    }
}

TEST(Networks, PeopleGoRoundAQueueAsFarAsWaitingCostsThem) {
    struct Case {
        char const* name;
        double queue_cost;
        double count;
        std::size_t least;  ///< who take the farther way
        std::size_t most;
    };
    std::vector<Case> const cases{
        {"few", 1, 10, 0, 0},
        {"waiting counts as walking", 1, 200, 30, 100},
        {"waiting counts double", 2, 200, 60, 110},
        {"waiting costs nothing", 0, 200, 0, 0},
    };
    std::map<std::string, double> seconds;
    for (auto const& each : cases) {
        SCOPED_TRACE(each.name);
        TwoWays scene;
        scene.profile->SetQueueCostDistribution(Distribution::CreateConstant(each.queue_cost));
        scene.rush(each.count);
        auto const simulation = scene.simulate();
        auto const users = users_of<2>(*simulation, {scene.near->GetId(), scene.far->GetId()});
        seconds[each.name] = simulation->GetClock()->GetCurrentSecond();
        RecordProperty(each.name, std::to_string(users[1].size()) + " in " + std::to_string(seconds[each.name]));
        EXPECT_GE(users[1].size(), each.least);
        EXPECT_LE(users[1].size(), each.most);
        EXPECT_EQ(users[0].size() + users[1].size(), static_cast<std::size_t>(each.count)) << "nobody takes both";
    }
    EXPECT_LT(seconds["waiting counts as walking"], 0.85 * seconds["waiting costs nothing"]);
}

TEST(Networks, WhoGoesRoundAQueueComesBackWhenThatWayCloses) {
    TwoWays scene;
    scene.far->SetGated(true);
    scene.project->SetDurationInSeconds(400);
    scene.rush(200);
    auto const simulation = scene.simulate();
    std::size_t by_far = 0;
    while (by_far < 5) {
        by_far += simulation->Step().GetAgentsThatEntered(scene.far->GetId()).size();
        ASSERT_FALSE(simulation->IsDone());
    }
    simulation->CloseGate(scene.far->GetId());
    scene.run_until_empty(*simulation, 400);
    EXPECT_THAT(simulation->GetIssues(), IsEmpty());
}

TEST(Networks, AGateThatClosesLetsThoseInsideWalkOff) {
    for (double const length : {1.0, 2.0, 4.0}) {
        for (bool const one_way : {false, true}) {
            Scene scene;
            scene.room("Left", 0, 0, 6, 4);
            scene.room("Right", 6 + length, 0, 12, 4);
            auto const link = scene.project->CreateLink(
                "Link", MeshGeometry::CreateRamp({6, 0, 2}, {6 + length, 0, 2}, 0.8 * length));
            link->SetGated(true);
            if (one_way) link->SetDirection(ConnectionObjectDirection::BALL_TO_BOX);
            auto const journey = scene.journey("Walk", scene.portal("West", 0, 1, 0, 3)->GetId(),
                                               scene.portal("East", 12, 1, 12, 3)->GetId(), 6);
            journey->SetProfile(scene.walkers("Slow", 1)->GetId());
            auto const simulation = scene.simulate();
            while (simulation->GetPopulation(link->GetId()) == 0) simulation->Step();
            auto const inside = simulation->GetAgentsOn(link->GetId());
            auto const others = simulation->GetAllAgents().size() - inside.size();
            simulation->CloseGate(link->GetId());
            step_to(*simulation, simulation->GetClock()->GetCurrentSecond() + 15);
            for (auto const& agent : inside) EXPECT_TRUE(agent->HasExitedWithSuccess()) << length << " " << one_way;
            EXPECT_EQ(simulation->GetAllAgents().size(), others) << "the others wait";
            simulation->OpenGate(link->GetId());
            scene.run_until_empty(*simulation, 100);
        }
    }
}

TEST(Networks, GatesAreOpenToThoseWhomTheirRulesConcern) {
    struct Case {
        char const* name;
        std::function<std::shared_ptr<AgentTest>(TwoWays&, GlobalId const& staff)> test;
        bool opens;  ///< after a rule that closes the gate to all; otherwise it is the only rule, and closes
        std::size_t least_staff;
        std::size_t most_staff;  ///< on the near way; the others go the other way about
        bool guests;
    };
    auto const created_by_staff = [](TwoWays&, GlobalId const& staff) {
        return std::make_shared<CreatedByTest>(staff);
    };
    std::vector<Case> const cases{
        {"opened to some", created_by_staff, true, 20, 20, false},
        {"closed to some", created_by_staff, false, 0, 0, true},
        {"opened to holders of a token",
         [](TwoWays& scene, GlobalId const&) {
             auto const badge = scene.project->CreateToken("Badge");
             scene.project->GetJourneys().front()->SetInitialAction(
                 std::make_shared<AddTokensAction>(std::vector{badge->GetId()}));
             return std::make_shared<TokenTest>(badge->GetId());
         },
         true, 20, 20, false},
        {"by chance", [](TwoWays&, GlobalId const&) { return std::make_shared<RandomChanceTest>(0.5); }, true, 4, 16,
         true},
    };
    for (auto const& each : cases) {
        TwoWays scene;
        scene.near->SetGated(true);
        auto const staff = scene.walk(20);
        scene.journey("Guests", scene.west->GetId(), scene.east->GetId(), 5, scene.profile->GetId());
        auto const rule = [&](char const* name) {
            auto access = scene.project->CreateGateAccess(name);
            access->SetGatedObjects({scene.near->GetId()});
            return access;
        };
        if (each.opens) rule("Closed")->SetCommandToClose(ConnectionObjectDirection::BOTH_WAYS);
        auto const for_some = rule("For some");
        for_some->SetAgentTest(each.test(scene, staff->GetId()));
        if (!each.opens) for_some->SetCommandToClose(ConnectionObjectDirection::BALL_TO_BOX);
        auto const simulation = scene.simulate();
        EXPECT_FALSE(simulation->IsGateOpenToAll(scene.near->GetId())) << each.name;
        EXPECT_FALSE(simulation->IsGateClosedToAll(scene.near->GetId())) << each.name;
        auto const [near, far] = users_of(*simulation, std::array{scene.near->GetId(), scene.far->GetId()});
        std::set<int> both;
        std::ranges::set_intersection(near, far, std::inserter(both, both.end()));
        EXPECT_THAT(both, IsEmpty()) << each.name << ": who goes one way keeps to it";
        EXPECT_EQ(near.size() + far.size(), 25) << each.name;
        std::size_t const guests = each.guests && each.most_staff == 0 ? 5 : 0;
        EXPECT_GE(near.size(), each.least_staff + guests) << each.name;
        EXPECT_LE(near.size(), each.most_staff + (each.guests ? 5 : 0)) << each.name;
    }
}

TEST(Networks, WhoFindsTheOnlyGateClosedWaitsUntilTheTestIsPassed) {
    TwoWays scene;
    scene.near->SetGated(true);
    scene.far->SetEnabled(false);
    scene.walk(2);
    auto const badge = scene.project->CreateToken("Badge");
    auto const closed = scene.project->CreateGateAccess("Closed");
    closed->SetGatedObjects({scene.near->GetId()});
    closed->SetAgentTest(std::make_shared<NotTest>(std::make_shared<TokenTest>(badge->GetId())));
    closed->SetCommandToClose(ConnectionObjectDirection::BOTH_WAYS);
    auto const simulation = scene.simulate();
    step_to(*simulation, 20);
    auto const agents = simulation->GetAllAgents();
    ASSERT_EQ(agents.size(), 2);
    agents.front()->GiveToken(badge->GetId());
    step_to(*simulation, 50);
    EXPECT_TRUE(agents.front()->HasExitedWithSuccess());
    EXPECT_TRUE(agents.back()->Exists());
    simulation->OpenGate(scene.near->GetId());
    scene.run_until_empty(*simulation, 100);
}

/// Two rooms with a link of 4 m by 2 m between them, gone through from both sides.
struct Passage : Scene {
    Passage() {
        room("Left", 0, 0, 10, 6);
        room("Right", 14, 0, 24, 6);
        link = project->CreateLink("Link", MeshGeometry::CreateRamp({10, 0, 3}, {14, 0, 3}, 2));
        west = portal("West", 0, 2, 0, 4);
        east = portal("East", 24, 2, 24, 4);
        profile = walkers("Walkers", 1.4);
        project->SetDurationInSeconds(300);
    }

    std::shared_ptr<Journey> walk(double count, bool back = false) const {
        auto const from = back ? east : west;
        auto const to = back ? west : east;
        return journey(back ? "Back" : "There", from->GetId(), to->GetId(), count, profile->GetId());
    }
    /// When each person is first seen on the link, by where it comes from.
    std::map<GlobalId, std::vector<double>, bool (*)(GlobalId const&, GlobalId const&)> entries() const {
        auto const less = +[](GlobalId const& a, GlobalId const& b) { return a.InternalCompare(b) < 0; };
        std::map<GlobalId, std::vector<double>, bool (*)(GlobalId const&, GlobalId const&)> times(less);
        std::set<int> seen;
        auto const simulation = simulate();
        while (!simulation->IsDone()) {
            simulation->Step();
            for (auto const& agent : simulation->GetAgentsOn(link->GetId())) {
                if (!seen.insert(agent->GetId()).second) continue;
                times[agent->GetStartObjectId()].push_back(simulation->GetClock()->GetCurrentSecond());
            }
        }
        return times;
    }

    std::shared_ptr<Link> link;
    std::shared_ptr<Portal> west;
    std::shared_ptr<Portal> east;
    std::shared_ptr<Profile> profile;
};

TEST(Networks, ConnectionsLetInNoMoreThanTheirFlowCap) {
    for (auto const& [type, value] : {std::pair{FlowRateType::PERSONS_PER_SECOND, 0.6},
                                      {FlowRateType::PERSONS_PER_MINUTE, 36.0},
                                      {FlowRateType::PERSONS_PER_METER_AND_SECOND, 0.3},
                                      {FlowRateType::PERSONS_PER_METER_AND_MINUTE, 18.0}}) {
        Passage scene;
        scene.walk(31);
        scene.link->SetEnteringFlowCap(type, value);
        auto const times = scene.entries()[scene.west->GetId()];
        ASSERT_EQ(times.size(), 31);
        EXPECT_NEAR(30 / (times.back() - times.front()), 0.6, 0.02);
    }
    Passage scene;
    scene.walk(31);
    auto const times = scene.entries()[scene.west->GetId()];
    EXPECT_GT(30 / (times.back() - times.front()), 1);
}

TEST(Networks, DelaysHoldEachPersonAtTheEnds) {
    struct Case {
        double entrance;
        double exit;
    };
    auto const seconds = [](Case const& each) {
        Passage scene;
        scene.walk(1);
        if (each.entrance > 0) scene.link->SetEntranceDelayDistribution(Distribution::CreateConstant(each.entrance));
        if (each.exit > 0) scene.link->SetExitDelayDistribution(Distribution::CreateConstant(each.exit));
        auto const simulation = scene.simulate();
        return scene.run_until_empty(*simulation, 100);
    };
    double const without = seconds({0, 0});
    for (auto const& each : {Case{5, 0}, {0, 4}, {3, 6}}) {
        // They stop and start again, too.
        EXPECT_NEAR(seconds(each) - without, each.entrance + each.exit + 0.5, 1) << each.entrance << " " << each.exit;
    }
}

TEST(Networks, WhoGoesInThePriorityDirectionGoesFirst) {
    for (auto const direction : {ConnectionObjectDirection::BALL_TO_BOX, ConnectionObjectDirection::BOX_TO_BALL}) {
        Passage scene;
        scene.link->SetPriorityDirection(direction);
        scene.walk(12);
        scene.walk(12, true);
        auto times = scene.entries();
        bool const there_first = direction == ConnectionObjectDirection::BALL_TO_BOX;
        auto const& first = times[(there_first ? scene.west : scene.east)->GetId()];
        auto const& second = times[(there_first ? scene.east : scene.west)->GetId()];
        ASSERT_EQ(first.size(), 12);
        ASSERT_EQ(second.size(), 12);
        EXPECT_GT(second.front(), first.back()) << "who yields waits until nobody comes or is inside";
    }
    Passage scene;
    scene.walk(12);
    scene.walk(12, true);
    auto times = scene.entries();
    EXPECT_LT(times[scene.east->GetId()].front(), times[scene.west->GetId()].back());
}

TEST(Networks, WideLinksAreDrawnLongerThanWide) {
    auto const draw = [](double from, double to) {
        auto scene = std::make_unique<Scene>();
        scene->room("Left", 0, 0, 6, 4);
        scene->room("Right", 7, 0, 12, 4);
        scene->project->CreateLink("Wide", MeshGeometry::CreateRamp({from, 0, 2}, {to, 0, 2}, 2));
        scene->journey("Walk", scene->portal("West", 0, 1, 0, 3)->GetId(), scene->portal("East", 12, 1, 12, 3)->GetId(),
                       2);
        return scene;
    };
    auto const wider = draw(6, 7);
    EXPECT_THAT(
        refusal_of([&] { Simulation::Create(wider->project, "Run", wider->database); }),
        HasSubstr("Link 'Wide' touches no floor at its ball end, at (6.5, 0, 1); the ends of a level connection "
                  "are those of its longer side"));
    auto const longer = draw(5.4, 7.6);
    auto const simulation = longer->simulate();
    longer->run_until_empty(*simulation, 60);
}

}  // namespace
}  // namespace pedflux
