#include "tests/engine/simulation/scene.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/avatars.h>
#include <pedflux/tasks.h>
#include <pedflux/time_references.h>
#include <pedflux/triggers.h>
#include <pedflux/wait_styles.h>

#include <cmath>

namespace pedflux {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Action = std::shared_ptr<AgentAction>;

Action in_order(std::vector<Action> const& actions) {
    return std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER);
}
Action wait(int seconds) {
    return std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(seconds), WaitStyle::StandStill());
}
Action paint(Color color) { return std::make_shared<SetColorAction>(color); }
Action leave() { return std::make_shared<ExitSimulationAction>(); }

/// A hall of 20 by 10 m with portals in the west, east and north, and a yard behind a link in the south.
struct House : Scene {
    House() {
        hall = room("Hall", 0, 0, 20, 10)->GetId();
        yard = room("Yard", 0, 12, 20, 20)->GetId();
        passage = project
                      ->CreateLink("Passage",
                                   MeshGeometry::CreateFlatPolygon(0, {{4.4, 10}, {5.6, 10}, {5.6, 12}, {4.4, 12}}))
                      ->GetId();
        west = portal("West", 0, 4, 0, 6)->GetId();
        east = portal("East", 20, 4, 20, 6)->GetId();
        north = portal("North", 9, 0, 11, 0)->GetId();
        token = project->CreateToken("Token")->GetId();
        steady = walkers("Steady", 1.25)->GetId();
    }
    /// A journey of one from the west to the east that does something first.
    std::shared_ptr<Journey> journey_with(Action const& action, double count = 1) const {
        auto created = journey("Journey", west, east, count, steady);
        created->SetInitialAction(action);
        return created;
    }
    std::shared_ptr<Agent> person(Simulation& simulation, Vec3d const& position) const {
        AgentRequest request(hall);
        request.SetPosition(position);
        request.SetGoal(east);
        request.SetProfile(steady);
        return simulation.RequestNewAgent(request);
    }
    std::shared_ptr<Simulation> empty_simulation() const {
        SimulationOptions options;
        options.AddExtraGoal(east);
        return Simulation::Create(project, "Run", database, options);
    }
    /// The seconds in which the journey's one person walks out.
    double seconds_with(Action const& action) const {
        auto const created = journey_with(action);
        auto const seconds = run_until_empty(*simulate(), 120);
        project->RemoveAndDeleteObject(created->GetId());
        return seconds;
    }

    GlobalId hall, yard, passage, west, east, north, token, steady;
};

TEST(AgentTasks, ComeBeforeTheGoalOneAfterTheOther) {
    House const house;
    auto const simulation = house.empty_simulation();
    auto const agent = house.person(*simulation, {10, 0, 5});
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::SEEK_PORTAL);
    agent->AddTaskAsLast(std::make_shared<WaitForDurationTask>(10, WaitStyle::StandStill()));
    agent->AddTaskAsLast(std::make_shared<SeekAreaTask>(house.yard));
    agent->AddTaskAsActive(std::make_shared<SeekPortalTask>(house.north));
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::SEEK_PORTAL);
    EXPECT_TRUE(agent->GetCurrentTaskGoalIds().front().InternalEquals(house.north));
    step_for(*simulation, 8);  // 5 m at 1.25 m/s, so it is there after 4 s
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::WAIT_FOR_DURATION);
    EXPECT_FALSE(agent->HasCurrentTaskGoalId());
    EXPECT_LT(agent->GetPosition().GetZ(), 0.6);
    step_for(*simulation, 12);
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::SEEK_AREA);
    EXPECT_TRUE(agent->GetCurrentGoalId().InternalEquals(house.yard));
    bool was_in_yard = false;
    while (agent->Exists() && simulation->GetClock()->GetCurrentSecond() < 90) {
        was_in_yard = !simulation->Step().GetAgentsThatEntered(house.yard).empty() || was_in_yard;
    }
    EXPECT_TRUE(was_in_yard);
    EXPECT_TRUE(agent->HasExitedWithSuccess());
}

TEST(AgentTasks, SignsLeadThroughConnections) {
    House const house;
    auto const simulation = house.empty_simulation();
    auto const agent = house.person(*simulation, {5, 0, 5});
    agent->AddTaskAsActive(std::make_shared<FollowSignTask>(house.passage));
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::FOLLOW_SIGN);
    double farthest = 0;
    while (agent->Exists() && simulation->GetClock()->GetCurrentSecond() < 60) {
        farthest = std::max(farthest, agent->GetPosition().GetZ());
        simulation->Step();
    }
    EXPECT_GT(farthest, 11.5) << "the passage ends at 12";
    EXPECT_TRUE(agent->HasExitedWithSuccess());
}

TEST(AgentTasks, WaitUntilToldOtherwiseAndLeaveWhenTold) {
    House const house;
    auto const simulation = house.empty_simulation();
    auto const waiting = house.person(*simulation, {10, 0, 5});
    auto const leaving = house.person(*simulation, {5, 0, 5});
    auto const lost = house.person(*simulation, {5, 0, 8});
    waiting->AddTaskAsActive(std::make_shared<WaitForeverTask>(WaitStyle::SpreadOut()));
    leaving->AddTaskAsActive(std::make_shared<ExitTask>());
    lost->AddTaskAsLast(std::make_shared<SeekPortalTask>(house.north));
    lost->ClearTasks();
    EXPECT_TRUE(leaving->HasExitedWithSuccess());
    EXPECT_EQ(lost->GetCurrentTaskType(), TaskType::NONE);
    step_for(*simulation, 30);
    EXPECT_EQ(waiting->GetCurrentTaskType(), TaskType::WAIT_FOREVER);
    EXPECT_NEAR(waiting->GetPosition().GetX(), 10, 0.1);
    EXPECT_NEAR(lost->GetPosition().GetX(), 5, 0.1);
    auto const now = simulation->GetClock()->GetCurrentSecondAsInt();
    waiting->ClearTasks();
    waiting->AddTaskAsLast(
        std::make_shared<WaitUntilTimeTask>(house.project->GetStartTimeInSeconds() + now + 5, WaitStyle::StandStill()));
    EXPECT_EQ(waiting->GetCurrentTaskType(), TaskType::WAIT_UNTIL_TIME);
    step_for(*simulation, 6);
    EXPECT_EQ(waiting->GetCurrentTaskType(), TaskType::NONE);
}

TEST(AgentTasks, ThatCannotBeDoneAreRefused) {
    House const house;
    auto const simulation = house.empty_simulation();
    auto const agent = house.person(*simulation, {10, 0, 5});
    auto const refusal = [&](std::shared_ptr<Task> const& task) {
        return refusal_of([&] { agent->AddTaskAsActive(task); });
    };
    EXPECT_THAT(refusal(nullptr), HasSubstr("A task is needed"));
    EXPECT_THAT(refusal(std::make_shared<SeekPortalTask>(house.yard)), HasSubstr("no portal"));
    EXPECT_THAT(refusal(std::make_shared<SeekAreaTask>(house.east)), HasSubstr("no floor"));
    EXPECT_THAT(refusal(std::make_shared<SeekAreaTask>(GlobalId::Generate())), HasSubstr("no enabled portal"));
    EXPECT_THAT(refusal(std::make_shared<SeekProcessStartTask>(house.east)), HasSubstr("no enabled server"));
    EXPECT_EQ(agent->GetCurrentTaskType(), TaskType::SEEK_PORTAL) << "and nothing has changed";
}

TEST(InitialActions, TakeTheirTimeAndWay) {
    House const house;
    double const alone = house.seconds_with(nullptr);
    EXPECT_NEAR(alone, 20 / 1.25, 1);
    auto const seek_north = std::make_shared<SeekPortalAction>(std::vector{house.north}, false);
    double const half = std::hypot(10.0, 5.0) / 1.25;
    EXPECT_NEAR(house.seconds_with(wait(20)), alone + 20, 0.5);
    EXPECT_NEAR(house.seconds_with(seek_north), 2 * half, 2);
    EXPECT_NEAR(house.seconds_with(in_order({wait(5), seek_north, wait(7)})), 2 * half + 12, 2);
    EXPECT_NEAR(house.seconds_with(std::make_shared<RepeatForCountAction>(wait(4), Distribution::CreateConstant(3))),
                alone + 12, 0.6);
    EXPECT_NEAR(house.seconds_with(std::make_shared<DoUntilDurationEndsAction>(
                    std::make_shared<WaitForeverAction>(WaitStyle::StandStill()), Distribution::CreateConstant(9))),
                alone + 9, 0.5);
    EXPECT_LT(house.seconds_with(in_order({wait(3), leave()})), 4);
}

TEST(InitialActions, ChangeWhatAgentsCarryAndLookLike) {
    House const house;
    auto const avatar = house.project->CreateAvatar("Tall", MeshGeometry::CreateBox({0, 0, 0}, {1, 2, 1}))->GetId();
    house.project->GetProfile("Steady")->SetAvatar(avatar);
    house.project->GetProfile("Steady")->SetInitialAction(std::make_shared<AddTokensAction>(house.token));
    auto const marked =
        std::make_shared<IfThenElseAction>(std::make_shared<TokenTest>(house.token), paint(Color::RED), leave());
    house.journey_with(marked);
    auto const simulation = house.simulate();
    simulation->Step();
    ASSERT_THAT(simulation->GetAllAgents(), SizeIs(1));
    auto const agent = simulation->GetAllAgents().front();
    EXPECT_TRUE(agent->GetColor().InternalEquals(Color::RED));
    EXPECT_THAT(agent->GetTokenIds(), SizeIs(1));
    ASSERT_TRUE(agent->HasAvatar());
    EXPECT_TRUE(agent->GetAvatar()->GetId().InternalEquals(avatar));
}

TEST(InitialActions, AreChosenByWeightAndChanceAlikeForOneSeed) {
    House const house;
    auto const chosen = std::make_shared<ChooseFromSetAction>(std::vector{paint(Color::RED), paint(Color::GREEN)},
                                                              std::vector{3.0, 1.0});
    auto const half_leave = std::make_shared<IfThenAction>(std::make_shared<RandomChanceTest>(0.5), leave());
    auto const created = house.journey("Crowd", CountPopulationSource({house.hall}, {house.east}, 80), house.steady);
    created->SetInitialAction(in_order({chosen, half_leave}));
    auto const counts = [&](int seed) {
        auto const simulation = house.simulate(seed);
        simulation->Step();
        int red = 0;
        auto const agents = simulation->GetAllAgents();
        for (auto const& agent : agents) red += agent->GetColor().InternalEquals(Color::RED) ? 1 : 0;
        return std::pair(static_cast<int>(agents.size()), red);
    };
    auto const [stay, red] = counts(1);
    EXPECT_NEAR(stay, 40, 14) << "half of 80, three standard deviations";
    EXPECT_NEAR(red, 0.75 * stay, 3 * std::sqrt(0.75 * 0.25 * stay));
    EXPECT_EQ(counts(1), std::pair(stay, red));
}

TEST(PlaceActions, HappenWhereAgentsPass) {
    House const house;
    auto const zone = house.project->CreateZone("Outside", {house.yard});
    house.project->GetPortal("West")->SetEnterAction(std::make_shared<SeekAreaAction>(std::vector{house.yard}, false));
    zone->SetEnterAction(std::make_shared<AddTokensAction>(house.token));
    house.project->GetFloor("Hall")->SetExitAction(paint(Color::GREEN));
    house.journey_with(nullptr);
    auto const simulation = house.simulate();
    simulation->Step();
    auto const agent = simulation->GetAllAgents().front();
    EXPECT_FALSE(agent->GetColor().InternalEquals(Color::GREEN));
    while (agent->Exists() && agent->GetTokenIds().empty()) simulation->Step();
    ASSERT_TRUE(agent->Exists()) << "it never came into the zone";
    EXPECT_TRUE(agent->GetColor().InternalEquals(Color::GREEN));
    house.run_until_empty(*simulation, 90);
    EXPECT_TRUE(agent->HasExitedWithSuccess());
}

TEST(PlaceActions, ZonesAreEvacuatedToWhateverIsOutside) {
    House const house;
    auto const zone = house.project->CreateZone("Danger", {house.hall})->GetId();
    house.journey_with(in_order({std::make_shared<EvacuateZoneAction>(zone), paint(Color::GREEN),
                                 std::make_shared<WaitForeverAction>(WaitStyle::StandStill())}));
    auto const simulation = house.simulate();
    step_for(*simulation, 20);
    ASSERT_THAT(simulation->GetAllAgents(), SizeIs(1));
    EXPECT_TRUE(simulation->GetAllAgents().front()->GetColor().InternalEquals(Color::GREEN));
    EXPECT_THAT(simulation->GetAgentsOn(house.hall), IsEmpty());
}

TEST(Evacuations, ClearTheirZonesOfThePeopleOfOtherEvents) {
    House const house;
    auto const zone = house.project->CreateZone("Danger", {house.hall})->GetId();
    auto const stay = std::make_shared<WaitForeverAction>(WaitStyle::StandStill());
    house.journey("Inside", CountPopulationSource({house.hall}, {house.east}, 5), house.steady)->SetInitialAction(stay);
    house.journey("Beside", CountPopulationSource({house.yard}, {house.east}, 3), house.steady)->SetInitialAction(stay);
    auto const evacuation = house.project->CreateEvacuation("Alarm");
    evacuation->SetPopulationSource(
        std::make_shared<CountPopulationSource>(std::vector{house.hall}, std::vector{house.north}, 0.0));
    evacuation->SetZones({zone});
    evacuation->SetStartTrigger(std::make_shared<SimulationStartTrigger>(10));
    evacuation->SetPreMovementWaitDistribution(Distribution::CreateConstant(8));
    auto const simulation = house.simulate();
    step_for(*simulation, 17.5);
    EXPECT_THAT(simulation->GetAllAgents(), SizeIs(8));
    step_for(*simulation, 25);
    EXPECT_THAT(simulation->GetAgentsOn(house.hall), IsEmpty());
    EXPECT_THAT(simulation->GetAllAgents(), SizeIs(3)) << "those in the yard wait on";
}

TEST(Circulation, GoesFromPortalToPortalForCountTimeOrDuration) {
    struct Case {
        std::function<void(Circulate&)> circulate;
        double seconds;
    };
    auto const number = [](double value) { return Distribution::CreateConstant(value); };
    auto const time = [](double seconds) { return TimeReference::AfterSimulationStart(static_cast<int>(seconds)); };
    double const leg = 20 / 1.25;  // the portals are opposite each other
    int const whole = 100;
    for (auto const& [circulate, seconds] : std::vector<Case>{
             {[&](Circulate& rounds) { rounds.CirculateForCount(number(0)); }, leg},
             {[&](Circulate& rounds) { rounds.CirculateForCount(number(4)); }, 5 * leg},
             {[&](Circulate& rounds) { rounds.CirculateForDuration(number(2 * leg + 4)); }, 3 * leg},
             {[&](Circulate& rounds) { rounds.CirculateForCountOrDuration(number(2), number(9 * leg), false); },
              3 * leg},
             {[&](Circulate& rounds) { rounds.CirculateForCountOrDuration(number(1), number(2 * leg + 4), true); },
              3 * leg},
             {[&](Circulate& rounds) { rounds.CirculateUntilTime(time(2 * leg + 4)); }, 3 * leg},
             {[&](Circulate& rounds) { rounds.CirculateUntilTimeOrCount(time(9 * leg), number(2), false); }, 3 * leg},
             {[&](Circulate& rounds) { rounds.CirculateUntilTimeOrCount(time(2 * leg + 4), number(1), true); },
              3 * leg},
             {[&](Circulate& rounds) { rounds.CirculateEntireSimulation(); }, whole},
         }) {
        House const house;
        house.project->SetDurationInSeconds(whole);
        auto const rounds = house.project->CreateCirculate("Rounds");
        rounds->SetPopulationSource(
            std::make_shared<CountPopulationSource>(std::vector{house.west}, std::vector{house.east}, 1.0));
        rounds->SetProfile(house.steady);
        rounds->SetCirculatePortals({house.west, house.east});
        circulate(*rounds);
        auto const simulation = house.simulate();
        EXPECT_NEAR(house.run_until_empty(*simulation, 200), seconds, 4) << seconds / leg << " legs";
    }
}

TEST(RulesNotFollowed, AreRefusedByName) {
    struct Case {
        std::function<void(House const&)> change;
        std::string message;
    };
    for (auto const& [change, message] : std::vector<Case>{
             {[](House const& house) { house.project->CreateCirculate("Rounds"); }, "at least one portal"},
         }) {
        House const house;
        change(house);
        std::string refusal;
        try {
            house.simulate();
        } catch (std::runtime_error const& error) {
            refusal = error.what();
        }
        EXPECT_THAT(refusal, HasSubstr(message));
    }
}

}  // namespace
}  // namespace pedflux
