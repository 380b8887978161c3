#include "tests/engine/simulation/rooms.h"

#include <pedflux/access_rules.h>

namespace pedflux {
namespace {

using Moments = std::vector<int>;
using Children = std::vector<std::shared_ptr<Trigger>>;

std::shared_ptr<Trigger> lasting(int from, int duration) {
    return std::make_shared<DurationTrigger>(after(from), duration);
}
std::shared_ptr<Trigger> every(int from, int period, int count) {
    return std::make_shared<PeriodicTrigger>(after(from), period, count);
}

/// Five people come in at the west at 2, 4 ... 10 s and are gone a second later, so that their event ends at 11 s. The
/// link is closed from 3 s to 7 s; a tally counts the seconds.
struct Timetable : Rooms {
    Timetable() {
        CountPopulationSource source({west}, {east}, 5);
        source.SetPopulationArrival(PopulationArrival::CreateEvenlySpaced(10));
        auto const people = journey("Stream", source, steady);
        std::vector<std::shared_ptr<AgentAction>> const actions{
            std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(0.7), WaitStyle::StandStill()),
            std::make_shared<ExitSimulationAction>()};
        people->SetInitialAction(std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER));
        people->SetStartTrigger(after(2));
        stream = people->GetId();
        auto const closing = project->CreateGateAccess("Closing");
        closing->SetGatedObjects({link});
        closing->SetCommandToClose(ConnectionObjectDirection::BOTH_WAYS);
        closing->SetTriggerRange(span(3, 4));
        auto const seconds = project->CreateTallyObject("Seconds");
        seconds->SetTallyValueByClockCountingUp(0);
        clock = seconds->GetId();
        project->SetStartTimeInSeconds(1000);
        project->SetDurationInSeconds(60);
    }
    std::shared_ptr<Trigger> coming(std::shared_ptr<Trigger> const& from, int target, bool again) const {
        return std::make_shared<TransitionCountTrigger>(from, Transition::SimEnter(west), target, again);
    }
    std::shared_ptr<Trigger> named(std::shared_ptr<Trigger> const& trigger) const {
        auto const object = project->CreateTriggerObject("Named");
        object->SetTrigger(trigger);
        return std::make_shared<NamedTrigger>(object->GetId());
    }
    std::shared_ptr<Trigger> active(EventStateActivity activity = EventStateActivity::ACTIVE) const {
        return std::make_shared<EventActiveTrigger>(stream, activity);
    }

    GlobalId stream, clock;
};

struct Case {
    std::string name;
    std::shared_ptr<TriggerRange> range;
    Moments moments;  ///< seconds at which it begins, and each second for which it goes on
};

/// Counts with a tally change for each range, in one simulation of 13 s.
void expect_moments(Timetable& scene, std::vector<Case> const& cases) {
    std::vector<GlobalId> counters;
    for (auto const& each : cases) {
        auto const counter = scene.project->CreateTallyObject(each.name);
        auto const change = scene.project->CreateTallyChange("Change of " + each.name);
        change->SetTallyObjects({counter->GetId()});
        change->SetCommandToAddRepeatedly(1);
        change->SetTriggerRange(each.range);
        counters.push_back(counter->GetId());
    }
    auto const simulation = scene.simulate();
    std::vector<Moments> seen(cases.size());
    std::vector<double> before(cases.size(), 0);
    for (;;) {
        double const now = simulation->GetClock()->GetCurrentSecond();
        for (std::size_t i = 0; i < cases.size(); ++i) {
            double const value = simulation->GetTallyValue(counters[i]);
            if (value > before[i]) seen[i].push_back(static_cast<int>(now + 1e-6));
            before[i] = value;
        }
        if (now > 12.7) break;
        simulation->Step();
    }
    for (std::size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(seen[i], cases[i].moments) << cases[i].name;
}

TEST(Triggers, OfEveryKindFireAndHoldInTime) {
    Timetable scene;
    auto const whenever = [](std::shared_ptr<Trigger> const& trigger) {
        return std::make_shared<WheneverTriggerRange>(trigger);
    };
    auto const beginning = [](auto const& interval) { return std::make_shared<BeginningOfTrigger>(interval); };
    auto const end = [](auto const& interval) { return std::make_shared<EndOfTrigger>(interval); };
    auto const late = std::make_shared<ClockInRangeTrigger>(1005, ComparisonType::GREATER_THAN);
    struct {
        char const* name;
        std::shared_ptr<Trigger> trigger;
        Moments moments;
    } const cases[] = {
        // Those that fire.
        {"start", after(3), {3}},
        {"end", std::make_shared<SimulationEndTrigger>(52), {8}},
        {"clock", std::make_shared<AbsoluteTimeTrigger>(1004), {4}},
        {"start of an event", std::make_shared<EventStartTimeTrigger>(scene.stream, 1), {3}},
        {"beginning", beginning(late), {6}},
        {"beginning of an event", beginning(scene.active()), {2}},
        {"end of a span", end(lasting(2, 3)), {5}},
        {"end of an event", end(scene.active()), {11}},
        {"period", every(3, 4, 2), {3, 7}},
        {"period of a span", std::make_shared<PeriodicTrigger>(lasting(3, 5), 2), {3, 5, 7}},
        {"blocked", std::make_shared<BlockingTrigger>(every(1, 1, 8), 3), {1, 4, 7}},
        {"blocked in a span",
         std::make_shared<BlockingTrigger>(std::make_shared<WheneverTrigger>(lasting(2, 5)), 2),
         {2, 4, 6}},
        {"every second one", scene.coming(after(0), 2, true), {4, 8}},
        {"second one from then on", scene.coming(after(3), 2, false), {6}},
        {"delayed", std::make_shared<DelayedTrigger>(after(2), 3), {5}},
        {"all at once", std::make_shared<AllOfTrigger>(Children{every(0, 2, 7), every(0, 3, 5)}), {0, 6, 12}},
        {"in a span", std::make_shared<AllOfTrigger>(Children{every(0, 2, 7), lasting(3, 4)}), {4, 6}},
        {"any", std::make_shared<AnyOfTrigger>(Children{after(2), lasting(5, 3)}), {2, 5}},
        {"named", scene.named(after(3)), {3}},
        {"never", std::make_shared<NeverTrigger>(), {}},
        // Those that hold.
        {"lasting", lasting(2, 3), {2, 3, 4}},
        {"not", std::make_shared<NotTrigger>(lasting(2, 10)), {0, 1, 12}},
        {"none of two", std::make_shared<NoneOfTrigger>(Children{lasting(1, 3), lasting(5, 7)}), {0, 4, 12}},
        {"both", std::make_shared<AllOfTrigger>(Children{lasting(1, 4), lasting(3, 5)}), {3, 4}},
        {"either", std::make_shared<AnyOfTrigger>(Children{lasting(1, 4), lasting(3, 4)}), {1, 2, 3, 4, 5, 6}},
        {"delayed span", std::make_shared<DelayedTrigger>(lasting(2, 2), 3), {5, 6}},
        {"one second", std::make_shared<ClockInRangeTrigger>(1005, ComparisonType::EQUAL), {5}},
        // An event is active from the frame after its start on.
        {"event", scene.active(), {2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {"no event", scene.active(EventStateActivity::INACTIVE), {0, 1, 2, 11, 12}},
        {"closed gate",
         std::make_shared<GateStateTrigger>(scene.link, GateStateDirection::EITHER_WAY, AgentAccess::CLOSED),
         {3, 4, 5, 6}},
        {"tally",
         std::make_shared<TallyTrigger>(std::make_shared<NamedTally>(scene.clock), ComparisonType::GREATER_THAN, 9.9),
         {10, 11, 12}},
    };
    std::vector<Case> ranges;
    for (auto const& each : cases) ranges.push_back({each.name, whenever(each.trigger), each.moments});
    expect_moments(scene, ranges);
}

TEST(TriggerRanges, OfEveryKindBeginAndEndInTime) {
    Timetable scene;
    expect_moments(
        scene,
        {{"all", std::make_shared<AllSimulationTriggerRange>(), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
         {"bounded", std::make_shared<BoundedTriggerRange>(every(2, 6, 2), every(4, 6, 1)), {2, 3, 8, 9, 10, 11, 12}},
         {"for seconds", std::make_shared<OverDurationTriggerRange>(every(2, 5, 2), 2), {2, 3, 7, 8}},
         {"for no time", std::make_shared<OverDurationTriggerRange>(after(2), 0), {}},
         {"scheduled",
          std::make_shared<ScheduledTriggerRange>(after(1), std::vector{1, 6}, std::vector{2, 3}),
          {2, 3, 7, 8, 9}},
         {"whenever", std::make_shared<WheneverTriggerRange>(lasting(4, 2)), {4, 5}}});
}

}  // namespace
}  // namespace pedflux
