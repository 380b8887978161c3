#include "tests/recorded_runs/scenarios.h"

#include <pedflux/elevators.h>
#include <pedflux/tasks.h>

// What a program does to a simulation while it steps it, and what it asks.
namespace pedflux::recorded {

namespace {

void draw_rooms(Drawing& drawing) { Rooms const rooms(drawing); }
void draw_walkers(Drawing& drawing) {
    Rooms const rooms(drawing);
    drawing.journey(rooms.west, rooms.east, 10);
    drawing.journey(rooms.east, rooms.west, 6);
}

std::shared_ptr<Agent> person(LiveRun& run, std::string const& floor, Vec3d const& position, std::string const& goal) {
    AgentRequest request(run.id(floor));
    request.SetPosition(position);
    if (!goal.empty()) request.SetGoal(run.id(goal));
    auto agent = run.simulation->RequestNewAgent(request);
    run.note("requested", agent ? agent->GetId() : -1);
    return agent;
}

/// Lets somebody in every two seconds, in different ways.
void steer_requests(LiveRun& run) {
    static constexpr int last = 16;
    for (int second = 0; second <= last; second += 2) {
        if (!run.at(second)) continue;
        AgentRequest request(run.id(second % 4 == 0 ? "West" : "Left"));
        request.SetGoal(run.id(second % 3 == 0 ? "North" : "East"));
        if (second % 8 == 2) request.SetPosition({3, 0, 2});
        request.SetProfile(run.id("Profile 1"));
        request.SetColor(second > 8 ? Color::RED : Color::TEAL);
        request.SetHeading(10 * second);
        run.note("requested", run.simulation->RequestNewAgent(request) != nullptr);
        run.note("came by itself", run.simulation->RequestNewAgent(run.id("Right")) != nullptr);
    }
    if (run.at(5)) {
        run.note_refusal([&] { person(run, "Left", {50, 0, 5}, "East"); });
        run.note_refusal([&] { run.simulation->RequestNewAgent(GlobalId::INVALID); });
        run.agent(0)->ExitSimulation();
        run.agent(1)->ExitSimulationWithError("fell asleep");
        run.note_refusal([&] { run.agent(2)->SetRadius(0); });
    }
}

void steer_tasks(LiveRun& run) {
    if (run.simulation->GetCurrentFrame() == 0) {
        for (double const x : {2.0, 4.0, 6.0, 8.0}) person(run, "Left", {x, 0, 1}, "East");
        for (double const x : {2.0, 4.0, 6.0, 8.0}) person(run, "Left", {x, 0, 3}, "");
        auto const still = WaitStyle::StandStill();
        run.agent(0)->AddTaskAsLast(make<WaitForDurationTask>(5, still));
        run.agent(0)->AddTaskAsLast(make<SeekAreaTask>(Ids{run.id("Right"), run.id("Link")}, true));
        run.agent(0)->AddTaskAsActive(make<SeekPortalTask>(run.id("West")));
        run.agent(1)->AddTaskAsActive(make<FollowSignTask>(run.id("North")));
        run.agent(2)->AddTaskAsActive(make<WaitForeverTask>(WaitStyle::SpreadOut()));
        run.agent(3)->AddTaskAsActive(make<SeekProcessStartTask>(run.id("Desk")));
        run.agent(4)->AddTaskAsActive(
            make<WaitUntilTimeTask>(run.project->GetStartTimeInSeconds() + 9, WaitStyle::SpreadOut()));
        run.agent(4)->AddTaskAsLast(make<SeekPortalTask>(Ids{run.id("East"), run.id("North")}, false));
        run.agent(5)->AddTaskAsActive(make<SeekProcessStartTask>(run.id("Desk"), true));
        run.agent(5)->AddTaskAsLast(make<FollowSignTask>(Ids{run.id("Link"), run.id("North")}, true));
        run.agent(5)->AddTaskAsLast(make<ExitTask>());
        run.agent(6)->AddTaskAsActive(make<ExitTask>());
        run.note_refusal([&] { run.agent(7)->AddTaskAsActive(make<SeekPortalTask>(run.id("Left"))); });
    }
    if (run.at(20)) run.agent(2)->ClearTasks();
    if (run.at(22)) run.agent(7)->AddTaskAsLast(make<SeekAreaTask>(run.id("Right")));
}

/// Takes people in hand, changes what they are, and asks what is around them.
void steer_agents(LiveRun& run) {
    auto const frame = run.simulation->GetCurrentFrame();
    auto const first = run.agent(0);
    if (run.at(2)) {
        first->AssumeControl();
        first->DisallowAdjustment();
        run.note_refusal([&] { first->MoveTo({3, 0, 20}); });
    }
    if (run.at(3)) first->MoveTo({6, 0, 1}, {0, 0, 1}, 1.5);
    if (run.at(4)) first->AllowAdjustment(), first->MoveTo({6.2, 0, 1});
    if (run.at(6)) first->ReleaseControl(), first->SetGoalDirectionOverride({-1, 0, 0.3});
    if (run.at(8)) first->ClearGoalDirectionOverride();
    auto const second = run.agent(1);
    if (run.at(2)) second->SetRadius(0.3), second->SetDesiredUnconstrainedSpeed(2), second->SetHeight(1.5);
    if (run.at(3)) second->SetColor(Color::GREEN), second->SetNextAgentMovement(AgentMovement::RUN);
    if (run.at(4)) second->ClearColor(), second->GiveToken(run.id("Badge"));
    if (run.at(5)) second->RemoveToken(run.id("Badge")), second->SetAvatar(run.project->GetAvatar("Tall"));
    if (run.at(6)) second->ResetAvatar(), second->SetNetwork(run.id("Own"));
    if (run.at(7)) second->SetNetworkToGlobal();
    if (run.at(8)) second->ResetNetwork();
    if (frame % 10 != 9) return;
    for (auto const& agent : run.simulation->GetAllAgents()) {
        run.note("agent", agent->GetId());
        auto space = agent->GetAvailableSpace(4);
        run.note("space", space.GetArea());
        run.note("least", space.GetMinSegmentRadius());
        run.note("narrowest", space.GetSegmentDirection(space.GetMinSegmentIndex()));
        run.note("east", space.GetSegmentIndex({1, 0, 0}));
        run.note("start", GlobalId(agent->GetStartObjectId()).GetString());
        run.note("initial goal", GlobalId(agent->GetInitialGoalId()).GetString());
        if (auto const near = agent->GetObstaclePointClosestTo({5, 0, 1}, 3)) run.note("near", near->GetPosition());
        run.note("open", agent->IsInOpenSpace());
        run.note("open point", agent->GetClosestOpenPoint(2));
        if (auto const obstacle = agent->GetClosestObstaclePoint(5)) run.note("obstacle", obstacle->GetPosition());
        if (auto const ahead = agent->GetObstaclePointInDirection({1, 0, 0.2}, 20))
            run.note("ahead", ahead->GetNormal());
        if (!agent->HasTargetWaypoint() || !agent->HasPathToTargetWaypoint()) continue;
        run.note("way", agent->GetDistanceToTargetWaypoint());
        run.note("direction", agent->GetDirectionToTargetWaypoint());
        run.note("way from there", agent->GetDistanceToTargetWaypointFrom({5, 0, 2}));
        run.note("direction from there", agent->GetDirectionToTargetWaypointFrom({5, 0, 2}));
        run.note("closest with a way", agent->GetClosestPointWithPathToTargetWaypoint(2));
        run.note("line", agent->GetTargetWaypointGoalLine().GetMidpoint());
        run.note("on the way", agent->GetPointWithPathToTargetWaypointClosestTo({5, 0, 4.3}, 2));
    }
}

/// Opens and closes gates and servers, changes tallies, and asks for ways.
void steer_rules(LiveRun& run) {
    auto& simulation = *run.simulation;
    auto const gate = run.id("Link");
    auto const desk = run.id("Desk");
    auto const counter = run.id("Counter");
    if (run.at(1)) simulation.CloseGate(gate), simulation.CloseServerEntrance(desk);
    if (run.at(6)) simulation.OpenGate(gate, ConnectionObjectDirection::BALL_TO_BOX);
    if (run.at(12)) simulation.ResetGate(gate, ConnectionObjectDirection::BALL_TO_BOX);
    if (run.at(14)) simulation.ResetGate(gate), simulation.OpenServerEntrance(desk), simulation.CloseServerExit(desk);
    if (run.at(16)) simulation.CloseGate(gate, ConnectionObjectDirection::BOX_TO_BALL);
    if (run.at(20)) simulation.OpenGate(gate), simulation.OpenServerExit(desk), simulation.ResetServerEntrance(desk);
    if (run.at(24)) simulation.ResetServerExit(desk);
    if (run.at(5)) simulation.AddToTallyValue(counter, 2.5);
    if (run.at(7)) simulation.ResetTallyValue(counter);
    if (run.at(9)) run.note_refusal([&] { simulation.GetTallyValue(gate); });
    if (simulation.GetCurrentFrame() % 20 != 0) return;
    run.note("path", simulation.ExistsPathTo(run.id("Left"), {5, 0, 3}, run.id("East")));
    run.note("population", simulation.GetPopulation(run.id("Left")));
    run.note("on", static_cast<double>(simulation.GetAgentsOn(run.id("Right")).size()));
    run.note("in box", static_cast<double>(simulation.GetAgentsInBox({{1, -1, 0}, {7, 1, 4}}).size()));
    run.note("near", static_cast<double>(simulation.GetAgentsNearPoint({6, 0, 2}, 3, 0.5).size()));
    run.note("closest", simulation.GetClosestPointWithPathTo(run.id("Left"), {-1, 0, 2}, 2, run.id("West")));
    if (!simulation.ExistsPathTo(run.id("Right"), {15, 0, 3}, run.id("West"))) return;
    run.note("distance", simulation.GetDistanceAlongPathTo(run.id("Right"), {15, 0, 3}, run.id("West")));
    run.note("direction", simulation.GetDirectionAlongPathTo(run.id("Right"), {15, 0, 3}, run.id("West")));
}

/// Takes each frame in its parts, and some of them twice.
void steer_in_parts(LiveRun& run) {
    for (auto const& agent : run.simulation->CreateAgents()) run.note("created", agent->GetId());
    run.simulation->ChooseAgentTargets();
    if (run.simulation->GetCurrentFrame() % 3 == 0) run.simulation->CreateAgents();
}

/// So many orders that those which are done are forgotten, while others wait and queue as they were told before.
void steer_many_orders(LiveRun& run) {
    if (run.simulation->GetCurrentFrame() == 0) {
        for (double const x : {2.0, 4.0, 6.0, 8.0}) person(run, "Left", {x, 0, 2}, "East");
        run.agent(0)->AddTaskAsActive(make<SeekProcessStartTask>(run.id("Desk")));
        run.agent(1)->AddTaskAsActive(make<WaitForDurationTask>(15, WaitStyle::SpreadOut()));
        run.agent(1)->AddTaskAsLast(make<SeekPortalTask>(run.id("North")));
        run.agent(2)->AddTaskAsLast(
            make<WaitUntilTimeTask>(run.project->GetStartTimeInSeconds() + 20, WaitStyle::StandStill()));
        run.agent(2)->AddTaskAsActive(make<SeekAreaTask>(Ids{run.id("Link"), run.id("Right")}));
    }
    if (run.at(4) || run.at(12)) {
        for (int i = 1; i <= 1200; ++i) {
            run.agent(3)->ClearTasks();
            run.agent(3)->AddTaskAsActive(make<WaitForDurationTask>(i % 7, WaitStyle::StandStill()));
        }
        run.agent(3)->AddTaskAsLast(make<SeekPortalTask>(run.id("West")));
    }
}

/// What is refused, and how it is said.
void steer_refusals(LiveRun& run) {
    if (!run.at(2)) return;
    auto& simulation = *run.simulation;
    auto& agent = *run.agent(0);
    auto const hall = run.id("Left");
    auto const east = run.id("East");
    for (std::function<void()> const& action : std::vector<std::function<void()>>{
             [&] { agent.SetHeight(4); }, [&] { agent.SetDesiredUnconstrainedSpeed(-1); },
             [&] { agent.SetNextAgentMovement(static_cast<AgentMovement>(9)); }, [&] { agent.GetAvailableSpace(0); },
             [&] {
                 agent.GetObstaclePointInDirection({0, 1, 0}, 5);
             },
             [&] { agent.GetPreviousWaypointId(); },
             [&] {
                 agent.MoveTo({1, 0, 1});
             },
             [&] { agent.GiveToken(hall); }, [&] { agent.SetNetwork(hall); },
             [&] { agent.AddTaskAsActive(make<SeekAreaTask>(east)); }, [&] { agent.AddTaskAsActive(nullptr); },
             [&] { agent.AddTaskAsActive(make<SeekProcessStartTask>(east)); },
             [&] { agent.AddTaskAsActive(make<WaitForeverTask>(WaitStyle::AssignedWaitSpace({run.id("Away")}))); },
             [&] { simulation.OpenGate(hall); },
             [&] { simulation.OpenGate(run.id("Link"), static_cast<ConnectionObjectDirection>(7)); },
             [&] { simulation.OpenServerEntrance(hall); }, [&] { simulation.GetAgentsOn(east); },
             [&] {
                 simulation.ExistsPathTo(hall, {50, 0, 50}, east);
             },
             [&] { simulation.AddToTallyValue(run.id("Counter"), 1 / 0.0); }}) {
        run.note_refusal(action);
    }
}

void steer_elevator(LiveRun& run) {
    if (run.simulation->GetCurrentFrame() % 25 != 0) return;
    auto const car = run.simulation->GetElevatorCar("Lift");
    for (auto& stop : car->GetAllStops()) run.note("stop", stop.GetString());
    auto const hall = car->GetStopForFloor(run.id("Hall"));
    car->AddStopToServiceList(hall);
    run.note("rest", car->GetRestStop().GetString());
    run.note("services", static_cast<double>(car->GetServiceList().size()));
    run.note("travel", car->GetTravelTimeInSeconds(hall, car->GetStopForFloor("Gallery")));
    run.note_refusal([&] { car->GetElevation(); });
    run.note_refusal([&] { car->IsMoving(); });
    run.note("services of the same car",
             static_cast<double>(run.simulation->GetElevatorCar(run.id("Lift"))->GetServiceList().size()));
    run.note_refusal([&] { run.simulation->GetElevatorCar("Broken"); });
    run.note_refusal([&] { run.simulation->GetElevatorCar(run.id("Hall")); });
    if (auto const first = run.agent(0)) run.note_refusal([&] { first->GetElevatorTripDestinationStop(); });
    for (auto const& agent : run.simulation->GetAllAgents()) run.note("rides", agent->HasElevatorTripDestinationStop());
}

}  // namespace

std::vector<Scenario> program_scenarios() {
    return {
        {"requests",
         60,
         [](Drawing& drawing) {
             draw_rooms(drawing);
             // Somebody has to come, or the run would be over before anybody is asked for.
             drawing.journey(drawing.project->GetPortal("West")->GetId(), drawing.project->GetPortal("East")->GetId(),
                             4);
         },
         steer_requests,
         {"East", "North"}},
        {"tasks",
         60,
         [](Drawing& drawing) {
             Rooms const rooms(drawing);
             drawing.server("Desk", {{20, 0, 1}, {15, 0, 1}}, 4);
             rooms.walk(3);
         },
         steer_tasks,
         {"East", "West", "North"}},
        {"steered_agents", 40,
         [](Drawing& drawing) {
             draw_walkers(drawing);
             drawing.token("Badge");
             drawing.project->CreateAvatar("Tall", MeshGeometry::CreateBox({0, 0, 0}, {1, 2, 1}));
             drawing.project->CreateNetwork("Own")->SetByExcludingObjects({drawing.project->GetLink("Link")->GetId()});
         },
         steer_agents},
        {"steered_rules", 60,
         [](Drawing& drawing) {
             Rooms const rooms(drawing);
             auto const desk = drawing.server("Desk", {{20, 0, 1}, {15, 0, 1}}, 2)->GetId();
             drawing.journey(rooms.west, rooms.east, 8)->SetInitialAction(Office::seek({desk}));
             drawing.journey(rooms.east, rooms.west, 8);
         },
         steer_rules},
        {"many_orders",
         60,
         [](Drawing& drawing) {
             Rooms const rooms(drawing);
             drawing.server("Desk", {{20, 0, 1}, {15, 0, 1}}, 9);
             rooms.walk(2, Office::seek({drawing.project->GetServer("Desk")->GetId()}));
         },
         steer_many_orders,
         {"East", "West", "North"}},
        {"refusals", 10,
         [](Drawing& drawing) {
             draw_walkers(drawing);
             drawing.wait_space("Away", 100, 0, 102, 2);
         },
         steer_refusals},
        {"frames_in_parts", 40, draw_walkers, steer_in_parts},
        {"standing_elevator", 30,
         [](Drawing& drawing) {
             auto const hall = drawing.room("Hall", 0, 0, 20, 4);
             auto const gallery = drawing.room("Gallery", 0, 0, 20, 4, 5);
             drawing.journey(hall, drawing.portal("Exit", 20, 0, 20, 4), 5);
             auto const lift = drawing.project->CreateElevator("Lift", MeshGeometry::CreateBox({2, 0, 1}, {4, 8, 3}));
             lift->SetTwoWayFloors({hall}, {gallery});
             lift->SetRestFloor(gallery);
         },
         steer_elevator},
    };
}

}  // namespace pedflux::recorded
