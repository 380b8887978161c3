#include "tests/engine/simulation/rooms.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_tests.h>
#include <pedflux/avatars.h>
#include <pedflux/time_references.h>

namespace pedflux {
namespace {

using Action = std::shared_ptr<AgentAction>;
using Ids = std::vector<GlobalId>;

Action in_order(std::vector<Action> const& actions) {
    return std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER);
}
std::shared_ptr<Distribution> number(double value) { return Distribution::CreateConstant(value); }
Action wait(int seconds) { return std::make_shared<WaitForDurationAction>(number(seconds), WaitStyle::StandStill()); }
Action forever() { return std::make_shared<WaitForeverAction>(WaitStyle::StandStill()); }
/// Does something, and leaves where that has led to.
Action and_leave(Action const& action) { return in_order({action, std::make_shared<ExitSimulationAction>()}); }
std::shared_ptr<AgentTest> before(int seconds) {
    return std::make_shared<TimeTest>(TimeReference::AfterSimulationStart(seconds), TimeComparison::BEFORE);
}

TEST(Actions, OfEveryKindTakeTheirTimeAndWay) {
    // One walks from the west to the east in 22 s, at 1 m/s; the second room begins at 12 m, the north is at 17 m. Who
    // is to be at a portal stops up to half a metre before it.
    double const way = 22;
    auto const all = std::make_shared<AlwaysTrueTest>();
    auto const nobody = std::make_shared<NotTest>(all);
    auto const clock = [](int seconds) { return TimeReference::AfterSimulationStart(seconds); };
    struct Case {
        char const* name;
        std::function<Action(Rooms&)> action;
        double seconds;
        double counted = 0;
    };
    std::vector<Case> const cases{
        {"nothing", [](Rooms&) { return std::make_shared<DoNothingAction>(); }, way},
        {"seek zone",
         [](Rooms& r) {
             auto const zone = r.project->CreateZone("Zone", {r.right})->GetId();
             return and_leave(std::make_shared<SeekZoneAction>(zone));
         },
         12.4},
        {"evacuate zone",
         [](Rooms& r) {
             auto const zone = r.project->CreateZone("Zone", {r.left, r.link})->GetId();
             return and_leave(std::make_shared<EvacuateZoneAction>(zone));
         },
         12.4},
        {"seek area by weight",
         [](Rooms& r) {
             return and_leave(std::make_shared<SeekAreaAction>(Ids{r.right, r.link}, std::vector{0.0, 1.0}, false));
         },
         10},
        {"seek the nearest area",
         [](Rooms& r) {
             auto const seek = std::make_shared<SeekAreaAction>(Ids{r.right}, false);
             seek->SetLowestCostAreas({r.right, r.link});
             return and_leave(seek);
         },
         10},
        {"seek portal by weight",
         [](Rooms& r) {
             return and_leave(std::make_shared<SeekPortalAction>(Ids{r.east, r.north}, std::vector{1.0, 0.0}, false));
         },
         way - 0.4},
        {"seek the nearest portal",
         [](Rooms& r) {
             auto const seek = std::make_shared<SeekPortalAction>(Ids{r.east}, false);
             seek->SetLowestCostPortals({r.east, r.north});
             return and_leave(seek);
         },
         16.8},
        {"seek origin",
         [](Rooms& r) {
             return in_order(
                 {std::make_shared<SeekAreaAction>(Ids{r.link}, false), std::make_shared<SeekOriginAction>(false)});
         },
         10 + 10 + way - 1},
        {"follow sign", [](Rooms& r) { return and_leave(std::make_shared<FollowSignAction>(Ids{r.link})); }, 12.4},
        {"follow sign by weight",
         [](Rooms& r) {
             return and_leave(std::make_shared<FollowSignAction>(Ids{r.link, r.north}, std::vector{0.0, 1.0}));
         },
         16.8},
        {"follow the nearest sign",
         [](Rooms& r) {
             auto const follow = std::make_shared<FollowSignAction>(Ids{r.link});
             follow->SetLowestCostRouteObjects({r.north, r.link});
             return and_leave(follow);
         },
         12.4},
        {"follow signs",
         [](Rooms& r) {
             auto const follow = std::make_shared<FollowSignAction>(Ids{r.link});
             follow->SetRouteObjectSequence({r.north, r.link});
             return and_leave(follow);
         },
         16.8 + 7.2},
        {"wait", [](Rooms&) { return wait(4); }, way + 4},
        {"wait for ever", [](Rooms&) { return forever(); }, 60},
        {"wait until", [&](Rooms&) { return std::make_shared<WaitUntilTimeAction>(clock(5), WaitStyle::StandStill()); },
         way + 5},
        {"wait until a time of day",
         [](Rooms& r) {
             auto const time = TimeReference::Absolute(r.project->GetStartTimeInSeconds() + 6);
             return std::make_shared<WaitUntilTimeAction>(time, WaitStyle::StandStill());
         },
         way + 6},
        {"wait until before the end",
         [](Rooms&) {
             return std::make_shared<WaitUntilTimeAction>(TimeReference::BeforeSimulationEnd(53),
                                                          WaitStyle::StandStill());
         },
         way + 7},
        {"wait while",
         [](Rooms&) { return std::make_shared<WaitWhileTestTrueAction>(before(6), WaitStyle::StandStill()); }, way + 6},
        {"named",
         [](Rooms& r) {
             auto const named = r.project->CreateAgentActionObject("Named");
             named->SetAgentAction(wait(3));
             return std::make_shared<NamedAction>(named->GetId());
         },
         way + 3},
        {"applied", [](Rooms&) { return std::make_shared<ApplyActionAction>(wait(3)); }, way + 3},
        {"if", [&](Rooms&) { return std::make_shared<IfThenAction>(all, wait(3)); }, way + 3},
        {"if not", [&](Rooms&) { return std::make_shared<IfThenAction>(nobody, wait(9)); }, way},
        {"else", [&](Rooms&) { return std::make_shared<IfThenElseAction>(nobody, wait(9), wait(3)); }, way + 3},
        {"choice",
         [](Rooms& r) {
             return std::make_shared<ChooseFromSetAction>(std::vector{wait(9), r.count_one()}, std::vector{0.0, 1.0});
         },
         way, 1},
        {"list in random order",
         [](Rooms& r) {
             return std::make_shared<ListAction>(std::vector{wait(1), r.count_one(), wait(2)},
                                                 ListActionAssignment::IN_RANDOM_ORDER);
         },
         way + 3, 1},
        {"until a duration ends",
         [](Rooms&) { return std::make_shared<DoUntilDurationEndsAction>(forever(), number(6)); }, way + 6},
        {"until a duration ends, done early",
         [](Rooms& r) {
             return std::make_shared<DoUntilDurationEndsAction>(r.count_one(), number(6), WaitStyle::StandStill());
         },
         way + 6, 1},
        {"until a time", [&](Rooms&) { return std::make_shared<DoUntilTimeAction>(forever(), clock(7)); }, way + 7},
        {"until a test fails", [](Rooms&) { return std::make_shared<DoUntilTestFailsAction>(forever(), before(5)); },
         way + 5},
        {"repeat for a count",
         [](Rooms& r) { return std::make_shared<RepeatForCountAction>(r.count_one(), number(3)); }, way, 3},
        {"repeat for a duration", [](Rooms&) { return std::make_shared<RepeatForDurationAction>(wait(2), number(5)); },
         way + 6},
        {"repeat until a time", [&](Rooms&) { return std::make_shared<RepeatUntilTimeAction>(wait(2), clock(5)); },
         way + 6},
        {"repeat while", [](Rooms&) { return std::make_shared<RepeatWhileTestTrueAction>(wait(2), before(3)); },
         way + 4},
        {"repeat for ever",
         [](Rooms& r) {
             auto const turns = std::make_shared<RepeatForeverAction>(in_order({r.count_one(), wait(2)}));
             return std::make_shared<DoUntilDurationEndsAction>(turns, number(7));
         },
         way + 7, 4},
        {"tokens",
         [&](Rooms& r) {
             auto const token = r.project->CreateToken("Token")->GetId();
             auto const holds = std::make_shared<TokenTest>(token);
             return in_order({std::make_shared<AddTokensAction>(token), std::make_shared<IfThenAction>(holds, wait(3)),
                              std::make_shared<ClearTokensAction>(token),
                              std::make_shared<IfThenAction>(holds, r.count_one())});
         },
         way + 3},
        {"clear tasks",
         [](Rooms& r) {
             return in_order({std::make_shared<ClearTasksAction>(), r.count_one()});
         },
         60},
        {"leave",
         [](Rooms& r) {
             return in_order({wait(3), std::make_shared<ExitSimulationAction>(), r.count_one()});
         },
         3},
    };
    for (auto const& each : cases) {
        Rooms rooms;
        rooms.project->SetDurationInSeconds(60);
        rooms.walk()->SetInitialAction(each.action(rooms));
        auto const simulation = rooms.simulate();
        EXPECT_NEAR(rooms.run_until_empty(*simulation, 60), each.seconds, 0.9) << each.name;
        EXPECT_EQ(rooms.counted(*simulation), each.counted) << each.name;
    }
}

TEST(Actions, GiveBackTheInitialGoal) {
    Rooms const rooms;
    rooms.walk();
    auto const call = [&](int second, Action const& action) {
        auto const made = rooms.project->CreateBroadcast(rooms.numbered("Call"));
        made->SetTriggerRange(span(second, 1));
        made->SetAgentAction(action);
    };
    call(5, std::make_shared<ClearTasksAction>());
    call(15, std::make_shared<SeekInitialGoalAction>(false));
    auto const simulation = rooms.simulate();
    step_to(*simulation, 14);
    EXPECT_NEAR(simulation->GetAllAgents().front()->GetPosition().GetX(), 5, 0.7);
    EXPECT_NEAR(rooms.run_until_empty(*simulation, 60), 22 + 10, 1.5);
}

TEST(Actions, ChangeLooksAndGiveThemBack) {
    Rooms rooms;
    auto const avatar = [&](std::string const& name) {
        return rooms.project->CreateAvatar(name, MeshGeometry::CreateBox({0, 0, 0}, {1, 2, 1}))->GetId();
    };
    auto const own = avatar("Own");
    auto const other = avatar("Other");
    rooms.project->GetProfile(rooms.steady)->SetAvatar(own);
    struct {
        Action action;
        bool is_red;
        bool is_other;
    } const cases[] = {
        {std::make_shared<DoNothingAction>(), false, false},
        {std::make_shared<SetColorAction>(Color::RED), true, false},
        {in_order({std::make_shared<SetColorAction>(Color::RED), std::make_shared<ClearColorAction>()}), false, false},
        {std::make_shared<SetAvatarAction>(other), false, true},
        {in_order({std::make_shared<SetAvatarAction>(other), std::make_shared<ClearAvatarAction>()}), false, false},
    };
    for (auto const& [action, is_red, is_other] : cases) {
        auto const walk = rooms.walk();
        walk->SetColorSchemeSpecified(Color::GREEN);
        walk->SetInitialAction(action);
        auto const simulation = rooms.simulate();
        simulation->Step();
        auto const agent = simulation->GetAllAgents().front();
        EXPECT_TRUE(agent->GetColor().InternalEquals(is_red ? Color::RED : Color::GREEN));
        EXPECT_TRUE(agent->GetAvatar()->GetId().InternalEquals(is_other ? other : own));
        rooms.project->RemoveAndDeleteObject(walk->GetId());
    }
}

TEST(AgentTests, AskWhoSomebodyIs) {
    Rooms rooms;
    auto const walk = rooms.walk()->GetId();
    auto const stay = rooms.stay(rooms.right, 2)->GetId();
    rooms.journey("Back", rooms.east, rooms.west, 3, rooms.steady);
    auto const token = rooms.project->CreateToken("Token")->GetId();
    rooms.project->GetJourney(walk)->SetInitialAction(std::make_shared<AddTokensAction>(token));
    auto const from_west = std::make_shared<EnteredAtTest>(rooms.west);
    auto const named = rooms.project->CreateAgentTestObject("Named");
    named->SetAgentTest(from_west);
    using Tests = std::vector<std::shared_ptr<AgentTest>>;
    auto const steady = std::make_shared<ProfileTest>(rooms.steady);
    struct {
        char const* name;
        std::shared_ptr<AgentTest> test;
        double told;  ///< of the one who walks, two who stay and three who walk back
        GlobalId tally{};
    } cases[] = {
        {"always", std::make_shared<AlwaysTrueTest>(), 6},
        {"event", std::make_shared<CreatedByTest>(stay), 2},
        {"entered at", from_west, 1},
        {"initial exit", std::make_shared<InitialExitTest>(rooms.west), 3},
        {"profile", steady, 4},
        {"area", std::make_shared<InAreaTest>(rooms.right), 5},
        {"token", std::make_shared<TokenTest>(token), 1},
        {"age", std::make_shared<AgeTest>(1.F, AgentAgeComparison::OLDER_THAN), 6},
        {"named", std::make_shared<NamedTest>(named->GetId()), 1},
        {"not", std::make_shared<NotTest>(steady), 2},
        {"all of", std::make_shared<AllOfTest>(Tests{steady, std::make_shared<InAreaTest>(rooms.right)}), 3},
        {"any of", std::make_shared<AnyOfTest>(Tests{from_west, std::make_shared<CreatedByTest>(stay)}), 3},
        {"none of", std::make_shared<NoneOfTest>(Tests{from_west, std::make_shared<CreatedByTest>(stay)}), 3},
    };
    for (auto& each : cases) {
        each.tally = rooms.project->CreateTallyObject(each.name)->GetId();
        auto const call = rooms.project->CreateBroadcast("Call " + std::string(each.name));
        call->SetAgentTest(each.test);
        call->SetAgentAction(std::make_shared<AddToTallyAction>(each.tally, 1.0));
        call->SetTriggerRange(span(4, 1));
    }
    auto const simulation = rooms.simulate();
    step_to(*simulation, 6);
    for (auto const& each : cases) EXPECT_EQ(simulation->GetTallyValue(each.tally), each.told) << each.name;
}

}  // namespace
}  // namespace pedflux
