#include "tests/engine/simulation/office.h"

#include <pedflux/agent_tests.h>
#include <pedflux/tasks.h>

namespace pedflux {
namespace {

using testing::HasSubstr;

/// An office with a ticket desk at x = 10 m, a check at x = 20 m and a gate in the north; both serve for 5 s.
struct Terminal : Office {
    Terminal() {
        check = desk;
        ticket = server("Ticket", 6, 10);
        gate = portal("Gate", 26, 0, 28, 0)->GetId();
    }
    std::shared_ptr<Dispatch> dispatch(std::vector<GlobalId> const& sources, std::vector<GlobalId> const& sinks) const {
        auto created = project->CreateDispatch("Dispatch " + std::to_string(project->GetDispatches().size()), {});
        created->SetSources(sources);
        created->SetSinks(sinks);
        return created;
    }
    GlobalId entered(std::shared_ptr<Server> const& server) const {
        return total(Transition::ServerEnter(server->GetId()));
    }
    GlobalId left_by(GlobalId const& portal) const { return total(Transition::SimExit(portal)); }

    std::shared_ptr<Server> ticket, check;
    GlobalId gate;
};

std::shared_ptr<AgentAction> list(std::vector<std::shared_ptr<AgentAction>> const& actions) {
    return std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER);
}

TEST(Dispatches, LeadThroughProcesses) {
    struct Case {
        char const* name;
        std::function<void(Terminal&)> draw;
        std::array<double, 2> served;   ///< at the ticket desk and the check
        std::array<double, 2> left_by;  ///< the gate and the east
        double seconds;                 ///< of walking at 1.3 m/s, and of 5 s at each server
    };
    auto const chain = [](Terminal& scene) {
        scene.dispatch({scene.ticket->GetId()}, {scene.check->GetId()});
        return scene.dispatch({scene.check->GetId()}, {scene.gate});
    };
    auto const walk = [](double metres) { return metres / 1.3; };
    std::vector<Case> const cases{
        {"one server alone",
         [](Terminal& scene) { scene.visitors(1, scene.seek({scene.ticket})); },
         {1, 0},
         {0, 1},
         walk(30) + 5},
        {"a chain that ends at a portal",
         [&](Terminal& scene) {
             scene.visitors(1, scene.seek({scene.ticket}));
             chain(scene);
         },
         {1, 1},
         {1, 0},
         walk(20 + 8.5) + 10},
        {"a chain that leads on to what comes next",
         [&](Terminal& scene) {
             scene.visitors(1, scene.seek({scene.ticket}));
             chain(scene)->SetEnabled(false);
         },
         {1, 1},
         {0, 1},
         walk(30) + 10},
        {"the sink comes before what is left to do",
         [](Terminal& scene) {
             auto const back = std::make_shared<SeekPortalAction>(std::vector{scene.west}, false);
             scene.visitors(1, list({scene.seek({scene.ticket}), back}));
             scene.dispatch({scene.ticket->GetId()}, {scene.gate});
         },
         {1, 0},
         {1, 0},
         walk(10 + 17.1 + 26.3 + 26.3) + 5},
        {"from an area to an area to a server",
         [](Terminal& scene) {
             scene.visitors(1, scene.seek({scene.ticket}));
             auto const lobby = scene.room("Lobby", 24, 20, 28, 24);
             scene.project->CreateLink("Bridge", MeshGeometry::CreateRamp({26, 0, 12}, {26, 0, 20}, 2));
             scene.dispatch({scene.ticket->GetId()}, {lobby->GetId()});
             scene.dispatch({lobby->GetId()}, {scene.check->GetId()});
         },
         {1, 1},
         {0, 0},
         walk(10 + 21.4 + 20) + 10},
        {"the process begins at a dispatch",
         [](Terminal& scene) {
             auto const start = scene.dispatch({}, {scene.ticket->GetId()});
             scene.visitors(1, std::make_shared<SeekProcessStartAction>(std::vector{start->GetId()}, false));
             scene.dispatch({scene.ticket->GetId()}, {scene.gate});
         },
         {1, 0},
         {1, 0},
         walk(10 + 19.5) + 5},
        {"who has reached its goal is served and leaves there",
         [](Terminal& scene) {
             scene.journey("Walk", scene.west, scene.gate, 1, scene.walker);
             scene.dispatch({scene.gate}, {scene.ticket->GetId()});
             scene.dispatch({scene.ticket->GetId()}, {scene.check->GetId()});
         },
         {1, 1},
         {0, 0},
         walk(27.5 + 19.5 + 10) + 10},
        {"who stands without a goal is served once and leaves there",
         [](Terminal& scene) {
             scene.journey("Walk", CountPopulationSource({scene.west}, {}, 1), scene.walker);
             scene.dispatch({scene.hall}, {scene.ticket->GetId()});
         },
         {1, 0},
         {0, 0},
         walk(10) + 5},
        {"a server that an action of another one leads to",
         [](Terminal& scene) {
             scene.visitors(1, scene.seek({scene.ticket}));
             scene.ticket->SetProcessedAction(scene.seek({scene.check}));
         },
         {1, 1},
         {0, 1},
         walk(30) + 10},
    };
    for (auto const& each : cases) {
        Terminal scene;
        each.draw(scene);
        std::array const served{scene.entered(scene.ticket), scene.entered(scene.check)};
        std::array const left_by{scene.left_by(scene.gate), scene.left_by(scene.east)};
        auto const simulation = scene.simulate();
        EXPECT_NEAR(scene.run_until_empty(*simulation, 120), each.seconds, 2) << each.name;
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(simulation->GetTallyValue(served[i]), each.served[i]) << each.name << ", server " << i;
            EXPECT_EQ(simulation->GetTallyValue(left_by[i]), each.left_by[i]) << each.name << ", portal " << i;
        }
    }
}

TEST(Dispatches, FeedServersAsFastAsTheSlowestOfThem) {
    Terminal scene;
    scene.visitors(20, scene.seek({scene.ticket}));
    scene.ticket->SetContactTime(seconds(2));
    scene.check->SetContactTime(seconds(6));
    scene.dispatch({scene.ticket->GetId()}, {scene.check->GetId()});
    scene.dispatch({scene.check->GetId()}, {scene.gate});
    auto const tickets = scene.served(scene.ticket);
    auto const checks = scene.served(scene.check);
    auto const gone = scene.left_by(scene.gate);
    auto const simulation = scene.simulate();
    step_to(*simulation, 40);
    double const before = simulation->GetTallyValue(checks);
    step_to(*simulation, 100);
    EXPECT_EQ(simulation->GetTallyValue(tickets), 20);
    EXPECT_EQ(simulation->GetTallyValue(checks) - before, 10) << "6 s each";
    scene.run_until_empty(*simulation, 180);
    EXPECT_EQ(simulation->GetTallyValue(checks), 20);
    EXPECT_EQ(simulation->GetTallyValue(gone), 20);
}

TEST(Dispatches, ChooseTheServerThatIsTheEasiest) {
    struct Case {
        char const* name;
        std::function<void(Terminal&, Server& near, Server& far)> draw;
        std::array<double, 2> come;
    };
    auto const everybody = std::make_shared<AlwaysTrueTest>();
    auto const nobody = std::make_shared<NotTest>(everybody);
    std::vector<Case> const cases{
        {"fewest people", [](Terminal&, Server&, Server&) {}, {4, 4}},
        {"required by none", [&](Terminal&, Server& near, Server&) { near.SetAccessRequiredTest(nobody); }, {0, 8}},
        {"preferred", [&](Terminal&, Server& near, Server&) { near.SetAccessPreferredTest(everybody); }, {8, 0}},
        {"full", [](Terminal&, Server& near, Server&) { near.SetFixedCapacityLimit(2); }, {2, 6}},
        {"closed",
         [](Terminal& scene, Server&, Server& far) {
             auto const access = scene.project->CreateServerAccess("Closed");
             access->SetServers({far.GetId()});
             access->SetCommandToClose(ServerAccessPoint::ENTRANCE);
         },
         {8, 0}},
        {"required by both",
         [&](Terminal&, Server& near, Server& far) {
             near.SetAccessRequiredTest(nobody);
             far.SetAccessRequiredTest(nobody);
         },
         {0, 0}},
    };
    for (auto const& each : cases) {
        Terminal scene;
        auto const far = scene.server("Far", 2);
        scene.ticket->SetContactTime(seconds(1));
        for (auto const& server : {scene.check, far}) server->SetContactTime(seconds(1000));
        each.draw(scene, *scene.check, *far);
        scene.visitors(8, scene.seek({scene.ticket}));
        scene.dispatch({scene.ticket->GetId()}, {scene.check->GetId(), far->GetId()});
        auto const gone = scene.left_by(scene.east);
        std::array<GlobalId, 2> waiting;
        std::array<GlobalId, 2> served;
        for (std::size_t i = 0; i < 2; ++i) {
            auto const& server = i == 0 ? scene.check : far;
            waiting[i] = scene.tally(std::make_shared<ServerQueueAndApproachTally>(server->GetId()));
            served[i] = scene.entered(server);
        }
        auto const simulation = scene.simulate();
        step_to(*simulation, 60);
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(simulation->GetTallyValue(waiting[i]) + simulation->GetTallyValue(served[i]), each.come[i])
                << each.name << ", " << i;
        }
        EXPECT_EQ(simulation->GetTallyValue(gone), 8 - each.come[0] - each.come[1]) << each.name;
    }
}

TEST(Dispatches, ProcessesGoOnWhereTheyWereBrokenOff) {
    Terminal scene;
    scene.visitors(1, scene.seek({scene.ticket}));
    scene.dispatch({scene.ticket->GetId()}, {scene.check->GetId()});
    auto const tickets = scene.entered(scene.ticket);
    auto const checks = scene.entered(scene.check);
    auto const simulation = scene.simulate();
    step_to(*simulation, 16);
    auto const agent = simulation->GetAllAgents().front();
    EXPECT_TRUE(agent->GetCurrentGoalId().InternalEquals(scene.check->GetId()));
    agent->AddTaskAsActive(std::make_shared<WaitForDurationTask>(10, WaitStyle::StandStill()));
    EXPECT_NEAR(scene.run_until_empty(*simulation, 90), 30 / 1.3 + 20, 2);
    EXPECT_EQ(simulation->GetTallyValue(tickets), 1);
    EXPECT_EQ(simulation->GetTallyValue(checks), 1);
}

TEST(Dispatches, ProgramsSendPeopleToThem) {
    Terminal scene;
    auto const start = scene.dispatch({}, {scene.check->GetId(), scene.ticket->GetId()})->GetId();
    auto const off = scene.dispatch({}, {scene.check->GetId()});
    off->SetEnabled(false);
    scene.visitors(1, std::make_shared<DoNothingAction>());
    auto const checks = scene.entered(scene.check);
    auto const tickets = scene.entered(scene.ticket);
    auto const simulation = scene.simulate();
    step_to(*simulation, 1);
    auto const agent = simulation->GetAllAgents().front();
    agent->AddTaskAsActive(std::make_shared<SeekProcessStartTask>(start));
    EXPECT_THAT(refusal_of([&] { agent->AddTaskAsLast(std::make_shared<SeekProcessStartTask>(off->GetId())); }),
                HasSubstr("is no enabled server or dispatch"));
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::SEEK_PROCESS_START);
    scene.run_until_empty(*simulation, 60);
    EXPECT_EQ(simulation->GetTallyValue(tickets), 1) << "the nearest";
    EXPECT_EQ(simulation->GetTallyValue(checks), 0);
}

}  // namespace
}  // namespace pedflux
