#include "tests/engine/simulation/office.h"

#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>
#include <pedflux/tasks.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace pedflux {
namespace {

using testing::HasSubstr;
using Access = ServerAccessPoint;

TEST(Servers, ServeOneAfterTheOtherInTheirContactTime) {
    Office office;
    office.visitors(40);
    auto const entered = office.total(Transition::ServerEnter(office.desk->GetId()));
    auto const left = office.served(office.desk);
    auto const simulation = office.simulate();
    step_to(*simulation, 60);
    double const before = simulation->GetTallyValue(left);
    EXPECT_GT(before, 5);
    for (int minute = 1; minute <= 2; ++minute) {
        step_to(*simulation, 60.0 + 60 * minute);
        EXPECT_EQ(simulation->GetTallyValue(left) - before, 12 * minute) << "12 a minute at 5 s each";
        EXPECT_EQ(simulation->GetTallyValue(entered) - simulation->GetTallyValue(left), 1);
    }
    office.run_until_empty(*simulation, 300);
    EXPECT_EQ(simulation->GetTallyValue(entered), 40);
    EXPECT_EQ(simulation->GetTallyValue(left), 40);
}

TEST(Servers, PeopleStandInLineAndAreServedInTheOrderInWhichTheyCame) {
    Office office;
    office.visitors(12);
    auto const simulation = office.simulate();
    std::vector<int> came;
    std::vector<int> went;
    double nearest = 1;
    step_to(*simulation, 40);
    std::map<double, int> along;
    for (auto const& agent : simulation->GetAllAgents()) {
        auto position = agent->GetPosition();
        if (agent->GetCurrentTaskType() != TaskType::SEEK_PROCESS_START) continue;
        EXPECT_NEAR(position.GetZ(), 6, 0.4) << "in a line";
        EXPECT_TRUE(agent->GetCurrentGoalId().InternalEquals(office.desk->GetId()));
        along[-position.GetX()] = agent->GetId();
    }
    ASSERT_GE(along.size(), 4U);
    double before = -20.7;
    for (auto const& [x, id] : along) {
        came.push_back(id);
        EXPECT_NEAR(x - before, 0.7, 0.3);
        before = x;
    }
    while (!simulation->IsDone()) {
        auto const frame = simulation->Step();
        auto const agents = simulation->GetAllAgents();
        for (auto const& one : agents) {
            if (one->GetCurrentTaskType() != TaskType::SEEK_PROCESS_START &&
                std::ranges::find(came, one->GetId()) != came.end() &&
                std::ranges::find(went, one->GetId()) == went.end()) {
                went.push_back(one->GetId());
            }
            for (auto const& other : agents) {
                if (one->GetId() == other->GetId()) continue;
                auto a = one->GetPosition();
                auto b = other->GetPosition();
                nearest = std::min(nearest, std::hypot(a.GetX() - b.GetX(), a.GetZ() - b.GetZ()));
            }
        }
    }
    EXPECT_EQ(went, came);
    EXPECT_GT(nearest, 0.3) << "nobody walks through anybody";
}

TEST(Servers, TalliesTellQueueApproachAndRoom) {
    Office office;
    office.desk->SetFixedCapacityLimit(4);
    auto const endless = office.server("Endless", 2);
    auto const id = std::vector{office.desk->GetId()};
    auto const queue = office.tally(std::make_shared<ServerQueueTally>(id));
    auto const all = office.tally(std::make_shared<ServerQueueAndApproachTally>(id));
    auto const room = office.tally(std::make_shared<ServerAvailableCapacityTally>(id));
    auto const endless_room = office.tally(std::make_shared<ServerAvailableCapacityTally>(endless->GetId()));
    office.desk->SetContactTime(seconds(1000));
    office.visitors(7);
    auto const simulation = office.simulate();
    EXPECT_EQ(simulation->GetTallyValue(room), 4);
    step_to(*simulation, 5);
    EXPECT_EQ(simulation->GetTallyValue(queue), 0) << "all are on their way";
    EXPECT_GE(simulation->GetTallyValue(all), 4);
    EXPECT_EQ(simulation->GetTallyValue(room), 4);
    step_to(*simulation, 60);
    EXPECT_EQ(simulation->GetTallyValue(queue), 3) << "besides the one who is served; the others find no room";
    EXPECT_EQ(simulation->GetTallyValue(all), 6);
    EXPECT_EQ(simulation->GetTallyValue(room), 0);
    EXPECT_GT(simulation->GetTallyValue(endless_room), 1e9);
}

/// The seconds at which those who are served have been served.
std::vector<double> served_at(Scene const& scene, Simulation& simulation, GlobalId const& tally) {
    std::vector<double> times;
    while (!simulation.IsDone()) {
        simulation.Step();
        double const now = simulation.GetClock()->GetCurrentSecond();
        while (static_cast<double>(times.size()) < simulation.GetTallyValue(tally)) times.push_back(now);
        if (now > scene.project->GetDurationInSeconds()) break;
    }
    return times;
}

TEST(Servers, TheFirstContactTimeRuleThatAppliesCounts) {
    Office office;
    auto const give = std::make_shared<AddTokensAction>(office.token);
    office.visitors(
        5, std::make_shared<ListAction>(std::vector<std::shared_ptr<AgentAction>>{give, office.seek({office.desk})},
                                        ListActionAssignment::IN_ORDER));
    office.visitors(5);
    office.desk->SetContactTime(seconds(4));
    office.desk->SetContactTimeRules({std::make_shared<TokenTest>(office.token), std::make_shared<AlwaysTrueTest>()},
                                     {seconds(10), seconds(6)});
    auto const left = office.served(office.desk);
    auto const simulation = office.simulate();
    auto const times = served_at(office, *simulation, left);
    ASSERT_EQ(times.size(), 10U);
    int long_ones = 0;
    int short_ones = 0;
    for (std::size_t i = 1; i < times.size(); ++i) {
        double const took = times[i] - times[i - 1];
        long_ones += std::abs(took - 10) < 0.5 ? 1 : 0;
        short_ones += std::abs(took - 6) < 0.5 ? 1 : 0;
    }
    EXPECT_EQ(long_ones + short_ones, 9);
    EXPECT_GE(long_ones, 4);
    EXPECT_GE(short_ones, 4);
}

TEST(Servers, TestsAndRoomDecideWhoUsesWhich) {
    struct Case {
        char const* name;
        std::function<void(Office&, Server& first, Server& second)> draw;
        double first;
        double second;
    };
    auto const all = std::make_shared<AlwaysTrueTest>();
    auto const nobody = std::make_shared<NotTest>(all);
    std::vector<Case> const cases{
        {"required by none", [&](Office&, Server& first, Server&) { first.SetAccessRequiredTest(nobody); }, 0, 12},
        {"required by both",
         [&](Office&, Server& first, Server& second) {
             first.SetAccessRequiredTest(nobody);
             second.SetAccessRequiredTest(nobody);
         },
         0, 0},
        {"preferred", [&](Office&, Server& first, Server&) { first.SetAccessPreferredTest(all); }, 12, 0},
        {"preferred by nobody",
         [&](Office&, Server& first, Server&) {
             first.SetAccessRequiredTest(all);
             first.SetAccessPreferredTest(nobody);
         },
         -1, -1},
        {"preferred, but full",
         [&](Office&, Server& first, Server&) {
             first.SetAccessPreferredTest(all);
             first.SetFixedCapacityLimit(3);
             first.SetContactTime(seconds(1000));
         },
         3, 9},
        {"preferred, but closed",
         [&](Office& office, Server& first, Server&) {
             first.SetAccessPreferredTest(all);
             auto const access = office.project->CreateServerAccess("Closed");
             access->SetServers({first.GetId()});
             access->SetCommandToClose(Access::ENTRANCE);
         },
         0, 12},
        {"by weight", [&](Office&, Server&, Server&) {}, 12, 0},
    };
    for (auto const& each : cases) {
        Office office;
        auto const other = office.server("Other", 3);
        each.draw(office, *office.desk, *other);
        bool const by_weight = std::string(each.name) == "by weight";
        office.visitors(12, by_weight ? office.seek({office.desk, other}, {1, 0}) : office.seek({office.desk, other}));
        auto const count = [&](std::shared_ptr<Server> const& server) {
            return office.tally(std::make_shared<ServerQueueAndApproachTally>(server->GetId()));
        };
        auto const enters = [&](std::shared_ptr<Server> const& server) {
            return office.total(Transition::ServerEnter(server->GetId()));
        };
        auto const first = std::pair(enters(office.desk), count(office.desk));
        auto const second = std::pair(enters(other), count(other));
        auto const simulation = office.simulate();
        step_to(*simulation, 12);
        auto const came = [&](auto const& tallies) {
            return simulation->GetTallyValue(tallies.first) + simulation->GetTallyValue(tallies.second);
        };
        if (each.first < 0) {
            EXPECT_GE(came(first), 2) << each.name;
            EXPECT_GE(came(second), 2) << each.name;
            EXPECT_EQ(came(first) + came(second), 12) << each.name;
            continue;
        }
        EXPECT_EQ(came(first), each.first) << each.name;
        EXPECT_EQ(came(second), each.second) << each.name;
    }
}

TEST(Servers, ActionsFollowWhenServedAndReleased) {
    Office office;
    auto const drop = office.project->CreateToken("Receipt")->GetId();
    office.desk->SetProcessedAction(std::make_shared<AddTokensAction>(office.token));
    office.desk->SetReleaseAction(std::make_shared<AddTokensAction>(drop));
    office.visitors(1);
    auto const simulation = office.simulate();
    simulation->CloseServerExit(office.desk->GetId());
    step_to(*simulation, 60);
    auto const agent = simulation->GetAllAgents().front();
    EXPECT_THAT(agent->GetTokenIds(), testing::SizeIs(1)) << "served, but not released as the exit is closed";
    EXPECT_NEAR(agent->GetPosition().GetX(), 20, 0.3);
    simulation->OpenServerExit(office.desk->GetId());
    step_to(*simulation, 61);
    EXPECT_THAT(agent->GetTokenIds(), testing::SizeIs(2));
    EXPECT_TRUE(agent->GetCurrentGoalId().InternalEquals(office.east));
    office.run_until_empty(*simulation, 90);
    EXPECT_TRUE(agent->HasExitedWithSuccess());
}

TEST(Servers, EntrancesAreClosedByTheProgramAndOpenAgain) {
    Office office;
    auto const desk = office.desk->GetId();
    office.visitors(10);
    auto const left = office.served(office.desk);
    auto const entered = office.total(Transition::ServerEnter(desk));
    auto const simulation = office.simulate();
    simulation->CloseServerEntrance(desk);
    EXPECT_TRUE(simulation->IsServerEntranceClosedToAll(desk));
    EXPECT_TRUE(simulation->IsServerExitOpenToAll(desk));
    step_to(*simulation, 60);
    EXPECT_EQ(simulation->GetTallyValue(entered), 0) << "the queue is held";
    simulation->OpenServerEntrance(desk);
    EXPECT_TRUE(simulation->IsServerEntranceOpenToAll(desk));
    step_to(*simulation, 72.8);
    EXPECT_EQ(simulation->GetTallyValue(entered), 3);
    simulation->CloseServerEntrance(desk);
    step_to(*simulation, 90);
    EXPECT_EQ(simulation->GetTallyValue(entered), 3);
    EXPECT_EQ(simulation->GetTallyValue(left), 3) << "who was being served was served to the end";
    simulation->ResetServerEntrance(desk);
    step_to(*simulation, 101);
    EXPECT_EQ(simulation->GetTallyValue(left), 5);
    EXPECT_THAT(refusal_of([&] { simulation->OpenServerEntrance(office.hall); }), HasSubstr("is no enabled server"));
}

TEST(Servers, AccessRulesCloseThemInCycles) {
    Office office;
    auto const desk = office.desk->GetId();
    auto const access = office.project->CreateServerAccess("Breaks");
    access->SetServers({desk});
    access->SetCommandToClose(Access::ENTRANCE);
    access->SetTriggerRange(std::make_shared<BoundedTriggerRange>(after(60), after(140)));
    access->SetCycleOnDurationInSeconds(30);
    access->SetCycleOffDurationInSeconds(10);
    office.desk->SetContactTime(seconds(2));
    office.visitors(40);
    auto const state_tally = office.project->CreateTallyObject("Open");
    auto const change = office.project->CreateTallyChange("While open");
    change->SetTallyObjects({state_tally->GetId()});
    change->SetCommandToAddRepeatedly(1);
    change->SetValueAsConstant(1);
    change->SetTriggerRange(std::make_shared<WheneverTriggerRange>(
        std::make_shared<ServerStateTrigger>(desk, Access::ENTRANCE, AgentAccess::CLOSED)));
    auto const entered = office.total(Transition::ServerEnter(desk));
    auto const simulation = office.simulate();
    std::map<int, double> served;
    for (int time = 60; time <= 150; time += 10) {
        step_to(*simulation, time);
        served[time] = simulation->GetTallyValue(entered);
        bool const is_closed = time < 140 && (time - 60) % 40 < 30;
        EXPECT_EQ(simulation->IsServerEntranceClosedToAll(desk), is_closed) << time;
    }
    EXPECT_EQ(served[70], served[90]) << "closed";
    EXPECT_NEAR(served[100] - served[90], 5, 1) << "open for 10 s";
    EXPECT_EQ(served[110], served[130]);
    EXPECT_NEAR(served[140] - served[130], 5, 1);
    EXPECT_NEAR(served[150] - served[140], 5, 1) << "and open afterwards";
    EXPECT_NEAR(simulation->GetTallyValue(state_tally->GetId()), 60, 2) << "a trigger saw it closed for 60 s";
}

TEST(Servers, AccessRulesKeepPeopleIn) {
    Office office;
    auto const access = office.project->CreateServerAccess("Locked in");
    access->SetServers({office.desk->GetId()});
    access->SetCommandToClose(Access::EXIT);
    access->SetTriggerRange(std::make_shared<OverDurationTriggerRange>(after(0), 40));
    office.visitors(1);
    auto const entered = office.total(Transition::ServerEnter(office.desk->GetId()));
    auto const left = office.served(office.desk);
    auto const simulation = office.simulate();
    step_to(*simulation, 39);
    EXPECT_EQ(simulation->GetTallyValue(entered), 1);
    EXPECT_EQ(simulation->GetTallyValue(left), 0);
    step_to(*simulation, 41);
    EXPECT_EQ(simulation->GetTallyValue(left), 1);
}

TEST(Servers, ActionsAskWhetherTheyAreOpen) {
    for (bool const is_open : {true, false}) {
        Office office;
        auto const desk = office.desk->GetId();
        auto const ask =
            std::make_shared<ServerStateTest>(desk, LogicQuantifier::ALL_OF, Access::EXIT, AgentAccess::OPEN);
        office.visitors(1, std::make_shared<IfThenElseAction>(ask, std::make_shared<SetColorAction>(Color::RED),
                                                              std::make_shared<SetColorAction>(Color::GREEN)));
        auto const simulation = office.simulate();
        if (!is_open) simulation->CloseServerExit(desk);
        step_to(*simulation, 1);
        EXPECT_TRUE(simulation->GetAllAgents().front()->GetColor().InternalEquals(is_open ? Color::RED : Color::GREEN));
    }
}

TEST(Servers, ProgramsSendPeopleThereAndCallThemOff) {
    Office office;
    auto const simulation = [&] {
        SimulationOptions options;
        options.AddExtraGoal(office.east);
        return Simulation::Create(office.project, "Run", office.database, options);
    }();
    auto const person = [&](double x) {
        AgentRequest request(office.hall);
        request.SetPosition({x, 0, 6});
        request.SetGoal(office.east);
        request.SetProfile(office.walker);
        auto const agent = simulation->RequestNewAgent(request);
        agent->AddTaskAsActive(std::make_shared<SeekProcessStartTask>(office.desk->GetId()));
        return agent;
    };
    auto const first = person(10);
    auto const second = person(8);
    auto const third = person(6);
    EXPECT_EQ(first->GetCurrentTaskType(), TaskType::SEEK_PROCESS_START);
    EXPECT_TRUE(first->GetCurrentTaskGoalIds().front().InternalEquals(office.desk->GetId()));
    EXPECT_GT(first->GetDistanceToTargetWaypoint(), 2);
    simulation->CloseServerEntrance(office.desk->GetId());
    step_to(*simulation, 30);
    EXPECT_NEAR(first->GetPosition().GetX(), 20, 0.3);
    EXPECT_NEAR(third->GetPosition().GetX(), 18.6, 0.4);
    second->ClearTasks();
    second->AddTaskAsActive(std::make_shared<SeekPortalTask>(office.west));
    first->ExitSimulation();
    step_to(*simulation, 45);
    EXPECT_NEAR(third->GetPosition().GetX(), 20, 0.3) << "the others have made room";
    EXPECT_LT(second->GetPosition().GetX(), 12);
    simulation->OpenServerEntrance(office.desk->GetId());
    step_to(*simulation, 75);
    EXPECT_FALSE(third->Exists()) << "served, and gone";
}

TEST(Servers, WhereNobodyCanGoIsRefusedByName) {
    struct Case {
        char const* message;
        std::function<GlobalId(Office&)> start;
    };
    std::vector<Case> const cases{
        {"Server 'Beside' stands on no walkable surface",
         [](Office& office) {
             return office.project->CreateServer("Beside", {Vec3d(-5, 0, 2), Vec3d(-9, 0, 2)})->GetId();
         }},
        {"Server 'Above' stands on no walkable surface",
         [](Office& office) {
             return office.project->CreateServer("Above", {Vec3d(5, 3, 2), Vec3d(9, 3, 2)})->GetId();
         }},
        {"is no enabled server",
         [](Office& office) {
             office.desk->SetEnabled(false);
             return office.desk->GetId();
         }},
    };
    for (auto const& each : cases) {
        Office office;
        auto const start = each.start(office);
        { auto const unused = Simulation::Create(office.project, "Run", office.database); }
        office.visitors(1, std::make_shared<SeekProcessStartAction>(std::vector{start}, false));
        EXPECT_THAT(refusal_of([&] { Simulation::Create(office.project, "Run", office.database); }),
                    HasSubstr(each.message));
    }
}

TEST(Servers, StoredRunsTellWhoWasThere) {
    Office const office;
    office.visitors(6);
    auto const queue = office.tally(std::make_shared<ServerQueueTally>(office.desk->GetId()));
    auto const simulation = office.simulate();
    step_to(*simulation, 26);
    auto const waiting = static_cast<int>(simulation->GetTallyValue(queue));
    int const frame = simulation->GetCurrentFrame();
    ASSERT_GE(waiting, 2);
    office.run_until_empty(*simulation, 90);
    simulation->Stop();
    auto const stored = Database::Open(office.database);
    auto const count = [&](std::shared_ptr<AgentFilter> const& filter) {
        return stored->GetFloorPopulation(office.hall, frame, filter);
    };
    EXPECT_EQ(count(std::make_shared<AtServerFilter>(office.desk->GetId())), waiting + 1);
    EXPECT_EQ(count(std::make_shared<ActivityFilter>(AgentActivity::QUEUING)), waiting);
    EXPECT_EQ(count(std::make_shared<ActivityFilter>(AgentActivity::SERVED)), 1);
    EXPECT_GE(count(std::make_shared<LocalDensityFilter>(0.3, 99)), waiting) << "who queues stands close";
    EXPECT_LT(count(std::make_shared<LocalDensityFilter>(0.3, 99)), count(nullptr));
    EXPECT_EQ(count(AgentFilter::IsEver(std::make_shared<AtServerFilter>(office.desk->GetId()))), count(nullptr));
}

TEST(Servers, RunsAreTheSameWithAnyNumberOfThreads) {
    auto const run = [](int threads) {
        Office office;
        auto const other = office.server("Other", 3);
        office.desk->SetContactTime(Distribution::CreateUniform(1, 4));
        office.visitors(15, office.seek({office.desk, other}, {2, 1}));
        auto const simulation = office.simulate(7, threads);
        office.run_until_empty(*simulation, 200);
        simulation->Stop();
        return hash_of(office.database);
    };
    EXPECT_EQ(run(1), run(3));
}

}  // namespace
}  // namespace pedflux
