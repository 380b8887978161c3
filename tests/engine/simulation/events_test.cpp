#include "tests/engine/simulation/rooms.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_tests.h>
#include <pedflux/servers.h>
#include <pedflux/time_references.h>

#include <algorithm>

namespace pedflux {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

using Question = std::shared_ptr<AgentTest>;

TEST(Broadcasts, TellEachWhoIsMeantOnceInEachSpan) {
    struct Case {
        char const* name;
        double told;
        std::function<void(Rooms&, Broadcast&)> set;
    };
    auto const in_right = [](Rooms& rooms, Broadcast& call) {
        call.SetZone(rooms.project->CreateZone("Zone", {rooms.right})->GetId());
    };
    // Four stay in the left room and two in the right one; one walks through until 22 s, one comes at 30 s.
    std::vector<Case> const cases{
        {"always", 8, [](Rooms&, Broadcast&) {}},
        {"moment", 7,
         [](Rooms&, Broadcast& call) { call.SetTriggerRange(std::make_shared<WheneverTriggerRange>(after(5))); }},
        {"while it lasts", 7, [](Rooms&, Broadcast& call) { call.SetTriggerRange(span(25, 8)); }},
        {"two spans", 7 + 6,
         [](Rooms&, Broadcast& call) {
             call.SetTriggerRange(std::make_shared<ScheduledTriggerRange>(after(0), std::vector{5, 27},  //
                                                                          std::vector{2, 2}));
         }},
        {"zone before the walker comes", 2,
         [&](Rooms& rooms, Broadcast& call) {
             in_right(rooms, call);
             call.SetTriggerRange(span(5, 3));
         }},
        {"zone as the walker comes", 3,
         [&](Rooms& rooms, Broadcast& call) {
             in_right(rooms, call);
             call.SetTriggerRange(span(5, 15));
         }},
        {"test", 2,
         [](Rooms& rooms, Broadcast& call) { call.SetAgentTest(std::make_shared<ProfileTest>(rooms.steady)); }},
        {"test that is passed later", 6,
         [](Rooms&, Broadcast& call) {
             call.SetAgentTest(std::make_shared<AgeTest>(25.F, AgentAgeComparison::OLDER_THAN));
             call.SetTriggerRange(span(0, 40));
         }},
        {"disabled", 0, [](Rooms&, Broadcast& call) { call.SetEnabled(false); }},
        {"never", 0,
         [](Rooms&, Broadcast& call) {
             call.SetTriggerRange(std::make_shared<WheneverTriggerRange>(std::make_shared<NeverTrigger>()));
         }},
    };
    for (auto const& each : cases) {
        Rooms rooms;
        rooms.stay(rooms.left, 4);
        rooms.stay(rooms.right, 2);
        rooms.walk();
        rooms.walk(30);
        auto const call = rooms.project->CreateBroadcast("Call");
        call->SetAgentAction(rooms.count_one());
        each.set(rooms, *call);
        auto const simulation = rooms.simulate();
        step_to(*simulation, 42);
        EXPECT_EQ(rooms.counted(*simulation), each.told) << each.name;
    }
}

TEST(Broadcasts, DrawChanceOnceInEachSpan) {
    Rooms const rooms;
    rooms.stay(rooms.left, 40);
    auto const call = rooms.project->CreateBroadcast("Call");
    call->SetAgentAction(rooms.count_one());
    call->SetAgentTest(std::make_shared<RandomChanceTest>(0.5));
    auto const simulation = rooms.simulate();
    step_to(*simulation, 1);
    auto const told = rooms.counted(*simulation);
    EXPECT_NEAR(told, 20, 9);
    step_to(*simulation, 10);
    EXPECT_EQ(rooms.counted(*simulation), told);
}

TEST(Broadcasts, ComeBeforeAllElseAndTheProjectsFirstFirst) {
    Rooms const rooms;
    rooms.walk();
    auto const wait =
        std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(10), WaitStyle::StandStill());
    auto const call = [&](std::shared_ptr<AgentAction> const& action) {
        auto const created = rooms.project->CreateBroadcast(rooms.numbered("Call"));
        created->SetTriggerRange(span(5, 1));
        created->SetAgentAction(action);
    };
    call(wait);
    call(std::make_shared<SetColorAction>(Color::GREEN));
    auto const simulation = rooms.simulate();
    step_to(*simulation, 14);
    EXPECT_NEAR(simulation->GetAllAgents().front()->GetPosition().GetX(), 5, 0.7);
    EXPECT_FALSE(simulation->GetAllAgents().front()->GetColor().InternalEquals(Color::GREEN));
    step_to(*simulation, 16);
    EXPECT_TRUE(simulation->GetAllAgents().front()->GetColor().InternalEquals(Color::GREEN));
    EXPECT_NEAR(rooms.run_until_empty(*simulation, 60), 32, 1.5);
}

TEST(Dispatches, SendThoseOnWhoAreDone) {
    struct Case {
        char const* name;
        std::function<void(Rooms&)> set;
        char const* left_by;
        double seconds;  ///< in which people walk at 1 m/s, and turn round
    };
    auto const dispatch = [](Rooms& rooms, std::vector<GlobalId> const& sources, std::vector<GlobalId> const& sinks) {
        auto const created = rooms.project->CreateDispatch(rooms.numbered("Dispatch"), {0, 0, 0});
        created->SetSources(sources);
        created->SetSinks(sinks);
        return created;
    };
    double const way = 22;
    std::vector<Case> const cases{
        {"none", [](Rooms& rooms) { rooms.walk(); }, "East", way},
        {"from a portal to the nearest",
         [&](Rooms& rooms) {
             rooms.walk();
             dispatch(rooms, {rooms.east}, {rooms.west, rooms.north});
         },
         "North", way + 4.8},
        {"on and on",
         [&](Rooms& rooms) {
             rooms.walk();
             dispatch(rooms, {rooms.east}, {rooms.north});
             dispatch(rooms, {rooms.north}, {rooms.west});
         },
         "West", way + 4.8 + 17.2 + 2},
        {"from an area",
         [&](Rooms& rooms) {
             rooms.journey("Walk", rooms.west, rooms.right, 1, rooms.steady);
             dispatch(rooms, {rooms.right}, {rooms.west});
         },
         "West", 24},
        {"from where somebody stands",
         [&](Rooms& rooms) {
             rooms.journey("Walk", CountPopulationSource({rooms.west}, {}, 1), rooms.steady);
             dispatch(rooms, {rooms.left}, {rooms.east});
         },
         "East", way},
        {"not past a floor that is a source",
         [&](Rooms& rooms) {
             rooms.walk();
             dispatch(rooms, {rooms.left, rooms.right}, {rooms.north});
         },
         "East", way},
        {"not when it is disabled",
         [&](Rooms& rooms) {
             rooms.walk();
             dispatch(rooms, {rooms.east}, {rooms.north})->SetEnabled(false);
         },
         "East", way},
        {"not to where somebody is already",
         [&](Rooms& rooms) {
             rooms.walk();
             dispatch(rooms, {rooms.east}, {rooms.east});
         },
         "East", way},
    };
    for (auto const& each : cases) {
        Rooms rooms;
        each.set(rooms);
        std::vector<std::shared_ptr<TallyObject>> exits;
        for (auto const& portal : {rooms.west, rooms.north, rooms.east}) {
            auto const total = rooms.project->CreateTallyObject("By " + rooms.project->GetPortal(portal)->GetName());
            total->SetTallyValueByAggregateSumOverTime(std::make_shared<TransitionTally>(Transition::SimExit(portal)));
            exits.push_back(total);
        }
        auto const simulation = rooms.simulate();
        EXPECT_NEAR(rooms.run_until_empty(*simulation, 100), each.seconds, 2) << each.name;
        for (auto const& total : exits) {
            EXPECT_EQ(simulation->GetTallyValue(total->GetId()),
                      total->GetName() == std::string("By ") + each.left_by ? 1 : 0)
                << each.name << ", " << total->GetName();
        }
    }
}

TEST(AgentTests, AskForEventsTalliesGatesAndTimes) {
    struct Case {
        char const* name;
        std::function<Question(Rooms&)> test;
        double seconds;  ///< for which it is true from the start
    };
    auto const other = [](Rooms& rooms) {  // there from 4 s to 26 s
        auto const created = rooms.journey("Other", rooms.west, rooms.east, 1, rooms.steady);
        created->SetStartTrigger(after(4));
        return created->GetId();
    };
    std::vector<Case> const cases{
        {"broadcast",
         [](Rooms& rooms) {
             auto const call = rooms.project->CreateBroadcast("Call");
             call->SetTriggerRange(span(0, 6));
             return std::make_shared<EventActiveTest>(call->GetId());
         },
         6},
        {"before an event",
         [&](Rooms& rooms) {
             return std::make_shared<EventActiveTest>(other(rooms), LogicQuantifier::ALL_OF,
                                                      EventStateActivity::INACTIVE);
         },
         4},
        {"until an event ends",
         [&](Rooms& rooms) {
             auto const event = other(rooms);
             return std::make_shared<AnyOfTest>(std::make_shared<EventActiveTest>(event),
                                                std::make_shared<TimeTest>(5, TimeComparison::BEFORE));
         },
         26},
        {"event that is disabled",
         [&](Rooms& rooms) {
             auto const event = other(rooms);
             rooms.project->GetJourney(event)->SetEnabled(false);
             return std::make_shared<EventActiveTest>(event);
         },
         0},
        {"tally",
         [](Rooms& rooms) {
             auto const clock = rooms.project->CreateTallyObject("Clock");
             clock->SetTallyValueByClockCountingUp(0);
             return std::make_shared<TallyTest>(std::make_shared<NamedTally>(clock->GetId()), ComparisonType::LESS_THAN,
                                                std::make_shared<VariableTally>(7));
         },
         7},
        {"gate",
         [](Rooms& rooms) {
             auto const closing = rooms.project->CreateGateAccess("Closing");
             closing->SetGatedObjects({rooms.link});
             closing->SetCommandToClose(ConnectionObjectDirection::BOTH_WAYS);
             closing->SetTriggerRange(span(0, 8));
             return std::make_shared<GateStateTest>(rooms.link, LogicQuantifier::ALL_OF, GateStateDirection::BOTH_WAYS,
                                                    AgentAccess::CLOSED);
         },
         8},
        {"time after an event",
         [&](Rooms& rooms) {
             return std::make_shared<TimeTest>(TimeReference::AfterEventStart(other(rooms), 5), TimeComparison::BEFORE);
         },
         9},
    };
    for (auto const& each : cases) {
        Rooms rooms;
        rooms.project->SetStartTimeInSeconds(0);
        rooms.walk()->SetInitialAction(
            std::make_shared<WaitWhileTestTrueAction>(each.test(rooms), WaitStyle::StandStill()));
        auto const simulation = rooms.simulate();
        EXPECT_NEAR(rooms.run_until_empty(*simulation, 100), std::max(each.seconds + 22, 22.0), 1.5) << each.name;
    }
}

TEST(Times, CountFromTheLastStartOfAnEvent) {
    Rooms const rooms;
    auto const other = rooms.walk(5)->GetId();
    auto const time = TimeReference::AfterEventStart(other, 30);
    auto const waiting = rooms.journey("Waiting", rooms.right, rooms.east, 1, rooms.steady);
    waiting->SetInitialAction(std::make_shared<WaitUntilTimeAction>(time, WaitStyle::StandStill()));
    auto const rounds = rooms.project->CreateCirculate("Rounds");
    rounds->SetPopulationSource(
        std::make_shared<CountPopulationSource>(std::vector{rooms.north}, std::vector{rooms.east}, 1.0));
    rounds->SetProfile(rooms.steady);
    rounds->SetCirculatePortals({rooms.north, rooms.east});
    rounds->CirculateUntilTime(time);
    auto const simulation = rooms.simulate();
    step_to(*simulation, 34.8);
    EXPECT_THAT(simulation->GetAllAgents(), SizeIs(2));
    EXPECT_LT(rooms.run_until_empty(*simulation, 100), 47) << "at most 10 m are left to both";
}

TEST(Evacuations, ClearTheirZonesWheneverTheyStart) {
    Rooms const rooms;
    rooms.stay(rooms.right, 5);
    auto const late = rooms.stay(rooms.right, 3);
    late->SetStartTrigger(after(40));
    rooms.walk();
    auto const evacuation = rooms.project->CreateEvacuation("Alarm");
    evacuation->SetPopulationSource(
        std::make_shared<CountPopulationSource>(std::vector{rooms.right}, std::vector{rooms.north}, 0.0));
    evacuation->SetZones({rooms.right});
    evacuation->SetStartTrigger(std::make_shared<AnyOfTrigger>(std::vector<std::shared_ptr<Trigger>>{
        std::make_shared<TransitionCountTrigger>(after(0), Transition::AreaEnter(rooms.link), 1, false), after(60)}));
    auto const simulation = rooms.simulate();
    step_to(*simulation, 9);
    EXPECT_THAT(simulation->GetAgentsOn(rooms.right), SizeIs(5));
    step_to(*simulation, 39);
    EXPECT_THAT(simulation->GetAllAgents(), SizeIs(0)) << "who walked started it and has left too";
    step_to(*simulation, 59);
    EXPECT_THAT(simulation->GetAgentsOn(rooms.right), SizeIs(3));
    rooms.run_until_empty(*simulation, 80);
}

TEST(Events, ColorTheirPeopleByTests) {
    Rooms const rooms;
    auto const quick = rooms.walkers("Quick", 2)->GetId();
    for (auto const& profile : {rooms.steady, quick}) {
        auto const journey = rooms.stay(rooms.left, 2, profile);
        journey->SetColorSchemeRules({std::make_shared<InAreaTest>(rooms.right), std::make_shared<ProfileTest>(quick)},
                                     {Color::RED, Color::GREEN}, Color::BLUE);
    }
    auto const simulation = rooms.simulate();
    step_to(*simulation, 1);
    ASSERT_THAT(simulation->GetAllAgents(), SizeIs(4));
    for (auto const& agent : simulation->GetAllAgents()) {
        auto const expected = agent->GetProfileId().InternalEquals(quick) ? Color::GREEN : Color::BLUE;
        EXPECT_TRUE(agent->GetColor().InternalEquals(expected));
    }
}

TEST(Events, ThatRulesCannotWaitForAreRefusedByName) {
    struct Case {
        char const* message;
        std::function<void(Rooms&)> draw;
    };
    auto const dispatch = [](Rooms& rooms) { return rooms.project->CreateDispatch("Queue", {0, 0, 0}); };
    std::vector<Case> const cases{
        {"Dispatch 'Queue': Server 'Desk' stands on no walkable surface",
         [&](Rooms& rooms) {
             dispatch(rooms)->SetSink(rooms.project->CreateServer("Desk", {Vec3d(5, 9, 2), Vec3d(5, 9, 3)})->GetId());
         }},
        {"Journey 'Walk 1': Dispatch 'Queue' has no start",
         [&](Rooms& rooms) {
             rooms.walk()->SetInitialAction(std::make_shared<WaitUntilTimeAction>(
                 TimeReference::AfterEventStart(dispatch(rooms)->GetId(), 5), WaitStyle::StandStill()));
         }},
    };
    for (auto const& each : cases) {
        Rooms rooms;
        each.draw(rooms);
        EXPECT_THAT(refusal_of([&] { Simulation::Create(rooms.project, "Run", rooms.database); }),
                    HasSubstr(each.message));
    }
}

}  // namespace
}  // namespace pedflux
