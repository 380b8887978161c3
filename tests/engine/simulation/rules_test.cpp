#include "tests/engine/simulation/scene.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_tests.h>
#include <pedflux/tallies.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

#include <algorithm>
#include <cmath>

namespace pedflux {
namespace {

using testing::HasSubstr;

/// Two rooms of 10 m by 4 m with a gated link of 2 m between them; people walk from west to east at 1 m/s.
struct TwoRooms : Scene {
    TwoRooms() {
        left = room("Left", 0, 0, 10, 4);
        right = room("Right", 12, 0, 22, 4);
        link = project->CreateLink("Link", MeshGeometry::CreateRamp({10, 0, 2}, {12, 0, 2}, 2));
        link->SetGated(true);
        west = portal("West", 0, 1, 0, 3);
        east = portal("East", 22, 1, 22, 3);
        project->SetDurationInSeconds(120);
    }

    std::shared_ptr<Journey> walk(double count, std::shared_ptr<Trigger> const& start = nullptr) {
        auto const journey = this->journey("Walk", west->GetId(), east->GetId(), count, walkers("Slow", 1)->GetId());
        if (start) journey->SetStartTrigger(start);
        return journey;
    }
    /// A tally object that adds up how many have made a transition.
    std::shared_ptr<TallyObject> total(std::string const& name, std::shared_ptr<Transition> const& transition) const {
        auto object = project->CreateTallyObject(name);
        object->SetTallyValueByAggregateSumOverTime(std::make_shared<TransitionTally>(transition));
        return object;
    }
    std::shared_ptr<TallyObject> count(std::string const& name, std::shared_ptr<Tally> const& tally) const {
        auto object = project->CreateTallyObject(name);
        object->SetTallyValueByCount(tally);
        return object;
    }
    std::shared_ptr<GateAccess> closing(std::shared_ptr<TriggerRange> const& range) const {
        auto access = project->CreateGateAccess("Closing");
        access->SetGatedObjects({link->GetId()});
        access->SetCommandToClose(ConnectionObjectDirection::BOTH_WAYS);
        access->SetTriggerRange(range);
        return access;
    }

    std::shared_ptr<Floor> left;
    std::shared_ptr<Floor> right;
    std::shared_ptr<Link> link;
    std::shared_ptr<Portal> west;
    std::shared_ptr<Portal> east;
};

/// The first moment (seconds) at which somebody is there; the end if nobody comes.
double first_arrival(Simulation& simulation, double most) {
    while (simulation.GetAllAgents().empty() && simulation.GetClock()->GetCurrentSecond() < most) simulation.Step();
    return simulation.GetClock()->GetCurrentSecond();
}

TEST(Rules, TransitionsAreCountedOnceForEachPerson) {
    TwoRooms scene;
    scene.walk(7);
    auto const left = scene.left->GetId();
    auto const right = scene.right->GetId();
    auto const link = scene.link->GetId();
    auto const west = scene.west->GetId();
    auto const east = scene.east->GetId();
    auto const all = scene.project->CreateZone("All", {left, right, link});
    struct Case {
        std::shared_ptr<Transition> transition;
        double expected;
        std::shared_ptr<TallyObject> tally{};
    };
    std::vector<Case> cases{
        {Transition::AtPortal(west), 7},
        {Transition::AtPortal(east), 7},
        {Transition::SimEnter(west), 7},
        {Transition::SimEnter(east), 0},
        {Transition::SimExit(east), 7},
        {Transition::SimExit(left), 0},
        {Transition::AreaEnter(link), 7},
        {Transition::AreaExit(link), 7},
        {Transition::AreaExit(right), 7},
        {Transition::AreaEnter(all->GetId()), 7},
        {Transition::ChannelTransition(left, right), 7},
        {Transition::ChannelTransition(left, link), 7},
        {Transition::ChannelTransition(right, left), 0},
        {Transition::ChannelTransition(right, east), 7},
        {Transition::AnyOf({Transition::AreaExit(left), Transition::AreaEnter(link)}), 7},
        {Transition::AnyOf({Transition::AreaEnter(left), Transition::AreaEnter(right)}), 14},
        {Transition::AnyOf({}), 0},
    };
    for (auto& each : cases) {
        each.tally = scene.total("Total " + std::to_string(&each - cases.data()), each.transition);
    }
    auto const simulation = scene.simulate();
    scene.run_until_empty(*simulation, 100);
    for (auto const& each : cases) {
        EXPECT_EQ(simulation->GetTallyValue(each.tally->GetId()), each.expected) << each.tally->GetName();
    }
}

TEST(Rules, TalliesShowWhoIsWhereAndObeyTheProgram) {
    TwoRooms scene;
    scene.walk(6);
    auto const here = scene.count(
        "Here", std::make_shared<AreaPopulationTally>(std::vector{scene.left->GetId(), scene.link->GetId()}));
    auto const surface = scene.count("Surface", std::make_shared<SurfaceAreaTally>(scene.left->GetId()));
    auto const counter = scene.project->CreateTallyObject("Counter");
    auto const change = scene.project->CreateTallyChange("Every second from 2 s to 5 s");
    change->SetTallyObjects({counter->GetId()});
    change->SetCommandToAddRepeatedly(1);
    change->SetValueAsConstant(10);
    change->SetTriggerRange(std::make_shared<OverDurationTriggerRange>(after(2), 3));
    auto const simulation = scene.simulate();
    EXPECT_EQ(simulation->GetTallyValue(here->GetId()), 0);
    double most = 0;
    double before_2_s = -1;
    double at_2_s = -1;
    while (!simulation->IsDone()) {
        simulation->Step();
        double const seen = simulation->GetTallyValue(here->GetId());
        ASSERT_EQ(seen,
                  simulation->GetPopulation(scene.left->GetId()) + simulation->GetPopulation(scene.link->GetId()));
        most = std::max(most, seen);
        if (simulation->GetCurrentFrame() == 9) before_2_s = simulation->GetTallyValue(counter->GetId());
        if (simulation->GetCurrentFrame() == 10) at_2_s = simulation->GetTallyValue(counter->GetId());
    }
    EXPECT_EQ(most, 6);
    EXPECT_EQ(before_2_s, 0);
    EXPECT_EQ(at_2_s, 10);
    EXPECT_NEAR(simulation->GetTallyValue(surface->GetId()), 40, 0.5);
    EXPECT_EQ(simulation->GetTallyValue(counter->GetId()), 30);
    simulation->AddToTallyValue(counter->GetId(), 2.5);
    EXPECT_EQ(simulation->GetTallyValue(counter->GetId()), 32.5);
    simulation->ResetTallyValue(counter->GetId());
    EXPECT_EQ(simulation->GetTallyValue(counter->GetId()), 0);
    EXPECT_THAT(refusal_of([&] { simulation->GetTallyValue(scene.left->GetId()); }), HasSubstr("is no tally object"));
    EXPECT_THAT(refusal_of([&] { simulation->AddToTallyValue(counter->GetId(), std::nan("")); }), HasSubstr("A value"));
}

TEST(Rules, PeopleComeWhenTheirEventsTriggerFires) {
    struct Case {
        char const* name;
        std::function<std::shared_ptr<Trigger>(TwoRooms&)> trigger;
        double expected;  ///< seconds at which the first ones are there: at the end of the frame in which they come in
    };
    auto const entered = [](TwoRooms& scene) { return Transition::AreaEnter(scene.right->GetId()); };
    std::vector<Case> const cases{
        {"start", [](TwoRooms&) { return after(3); }, 3.2},
        {"clock", [](TwoRooms&) { return std::make_shared<AbsoluteTimeTrigger>(8 * 3600 + 4); }, 4.2},
        {"end", [](TwoRooms&) { return std::make_shared<SimulationEndTrigger>(100); }, 20.2},
        {"in range",
         [](TwoRooms&) { return std::make_shared<ClockInRangeTrigger>(8 * 3600 + 5, ComparisonType::GREATER_THAN); },
         6.2},
        {"delayed", [](TwoRooms&) { return std::make_shared<DelayedTrigger>(after(2), 3); }, 5.2},
        {"never", [](TwoRooms&) { return std::make_shared<NeverTrigger>(); }, 0},
        {"after another event",
         [](TwoRooms& scene) {
             auto const other = scene.project->CreateJourney("Other");
             other->SetStartTrigger(after(4));
             return std::make_shared<EventStartTimeTrigger>(other->GetId(), 3);
         },
         7.2},
        {"the first of several",
         [&](TwoRooms& scene) {
             auto const other = scene.journey("Other", scene.right->GetId(), scene.left->GetId(), 2);
             other->SetStartTrigger(std::make_shared<NeverTrigger>());
             return std::make_shared<AnyOfTrigger>(std::vector<std::shared_ptr<Trigger>>{
                 std::make_shared<TransitionCountTrigger>(after(0), entered(scene), 2, false), after(9)});
         },
         9.2},
    };
    for (auto const& each : cases) {
        TwoRooms scene;
        scene.project->SetStartTimeInSeconds(8 * 3600);
        scene.walk(1, each.trigger(scene));
        auto const simulation = scene.simulate();
        if (each.expected == 0) {
            EXPECT_TRUE(simulation->IsDone()) << each.name << ": nobody ever comes";
            continue;
        }
        EXPECT_NEAR(first_arrival(*simulation, 30), each.expected, 1e-9) << each.name;
    }
}

TEST(Rules, AnEventStartsAgainWithNewPeople) {
    TwoRooms scene;
    scene.walk(2, std::make_shared<PeriodicTrigger>(after(0), 10, 3));
    auto const came = scene.total("Came", Transition::SimEnter(scene.west->GetId()));
    auto const simulation = scene.simulate();
    for (auto const& [seconds, expected] : {std::pair{9.0, 2.0}, {19.0, 4.0}, {29.0, 6.0}, {100.0, 6.0}}) {
        while (!simulation->IsDone() && simulation->GetClock()->GetCurrentSecond() < seconds) simulation->Step();
        EXPECT_EQ(simulation->GetTallyValue(came->GetId()), expected) << seconds;
    }
    EXPECT_TRUE(simulation->IsDone());
    EXPECT_LT(simulation->GetClock()->GetCurrentSecond(), 60) << "done when nobody is left, and none comes again";
}

TEST(Rules, TransitionsStartAndTalliesCloseWhatFollows) {
    TwoRooms scene;
    scene.walk(8);
    auto const over = Transition::AreaEnter(scene.right->GetId());
    auto const passed = scene.total("Passed", over);
    auto const full = std::make_shared<TallyTrigger>(std::make_shared<NamedTally>(passed->GetId()),
                                                     ComparisonType::GREATER_THAN_OR_EQUAL, 3);
    scene.closing(std::make_shared<WheneverTriggerRange>(full));
    auto const back = scene.journey("Back", scene.right->GetId(), scene.east->GetId(), 1);
    back->SetStartTrigger(std::make_shared<TransitionCountTrigger>(after(0), over, 2, false));
    auto const came = scene.total("Came", Transition::SimEnter(scene.right->GetId()));
    auto const simulation = scene.simulate();
    while (simulation->GetTallyValue(passed->GetId()) < 2 && simulation->GetCurrentFrame() < 300) {
        EXPECT_EQ(simulation->GetTallyValue(came->GetId()), 0);
        simulation->Step();
    }
    simulation->Step();
    EXPECT_EQ(simulation->GetTallyValue(came->GetId()), 1) << "one came when two had passed";
    step_to(*simulation, 60);
    double const through = simulation->GetTallyValue(passed->GetId());
    EXPECT_GE(through, 3);
    EXPECT_LT(through, 8);
    EXPECT_GE(simulation->GetPopulation(scene.left->GetId()), 1) << "the last ones found it closed";
    EXPECT_TRUE(simulation->IsGateClosedToAll(scene.link->GetId()));
}

TEST(Rules, GatesOpenAndCloseInCyclesUnlessTheProgramSaysOtherwise) {
    TwoRooms scene;
    auto const access = scene.closing(std::make_shared<BoundedTriggerRange>(after(10), after(40)));
    access->SetCycleOnDurationInSeconds(6);
    access->SetCycleOffDurationInSeconds(4);
    scene.walk(1, after(118));
    auto const gate = scene.link->GetId();
    auto const simulation = scene.simulate();
    std::vector<bool> closed;
    std::vector<bool> expected;
    for (int second = 0; second < 50; ++second) {
        step_to(*simulation, second);
        closed.push_back(simulation->IsGateClosedToAll(gate));
        expected.push_back(second >= 10 && second < 40 && (second - 10) % 10 < 6);
        if (second == 21) {
            simulation->OpenGate(gate, ConnectionObjectDirection::BALL_TO_BOX);
            EXPECT_FALSE(simulation->IsGateClosedToAll(gate)) << "at once";
        }
        if (second == 22 || second == 23) expected.back() = false;
        if (second == 23) simulation->ResetGate(gate);
    }
    EXPECT_EQ(closed, expected);
}

}  // namespace
}  // namespace pedflux
