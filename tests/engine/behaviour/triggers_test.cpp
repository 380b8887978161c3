#include "tests/engine/behaviour/time_rules.h"
#include "tests/engine/refusal.h"

#include <pedflux/tallies.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

#include <limits>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using TriggerPointer = NodePointerOf<Trigger>;
using TriggerList = NodeList<Trigger>;

TriggerPointer at(int seconds) { return std::make_shared<AbsoluteTimeTrigger>(seconds); }

struct Triggers : TimeRules {
    std::shared_ptr<TriggerObject> alarm = create<TriggerObjectState>("Alarm");
    TriggerPointer running = std::make_shared<EventActiveTrigger>(journey, EventStateActivity::INACTIVE);

    TriggerPointer named(TriggerObject& object) const { return std::make_shared<NamedTrigger>(object.GetId()); }

    TriggerList one_of_each() const {
        auto const tick = at(28'800);
        return {tick,
                std::make_shared<AllOfTrigger>(TriggerList{tick, running}),
                std::make_shared<AnyOfTrigger>(TriggerList{running, tick, running}),
                std::make_shared<BeginningOfTrigger>(running),
                std::make_shared<BlockingTrigger>(tick, 30),
                std::make_shared<ClockInRangeTrigger>(TimeReference::AfterEventStart(journey, 60),
                                                      ComparisonType::LESS_THAN),
                std::make_shared<DelayedTrigger>(tick, 5),
                std::make_shared<DurationTrigger>(tick, 90),
                std::make_shared<EndOfTrigger>(running),
                running,
                std::make_shared<EventStartTimeTrigger>(broadcast, 15),
                std::make_shared<GateStateTrigger>(link, GateStateDirection::EITHER_WAY, AgentAccess::CLOSED),
                std::make_shared<NamedTrigger>(alarm->GetId()),
                std::make_shared<NeverTrigger>(),
                std::make_shared<NoneOfTrigger>(TriggerList{running}),
                std::make_shared<NotTrigger>(running),
                std::make_shared<PeriodicTrigger>(tick, 10, 3),
                std::make_shared<ServerStateTrigger>(server, ServerAccessPoint::EXIT, AgentAccess::CLOSED),
                std::make_shared<SimulationEndTrigger>(120),
                std::make_shared<SimulationStartTrigger>(60),
                std::make_shared<TallyTrigger>(std::make_shared<AreaPopulationTally>(volume),
                                               ComparisonType::GREATER_THAN, 12.5),
                std::make_shared<TransitionCountTrigger>(tick, Transition::AtPortal(portal), 20, true),
                std::make_shared<WheneverTrigger>(running)};
    }
    NodeList<TriggerRange> one_range_of_each() const {
        return {std::make_shared<AllSimulationTriggerRange>(), std::make_shared<BoundedTriggerRange>(at(10), running),
                std::make_shared<OverDurationTriggerRange>(at(10), 60),
                std::make_shared<ScheduledTriggerRange>(running, std::vector{0, 100}, std::vector{30, 40}),
                std::make_shared<WheneverTriggerRange>(running)};
    }
};

TEST_F(Triggers, ComeInAllKindsAndAreCopiedWhole) {
    expect_distinct_numbers<Trigger>();
    expect_one_of_each_kind(one_of_each());
    expect_clones(one_of_each());
    expect_distinct_numbers<TriggerRange>();
    expect_one_of_each_kind(one_range_of_each());
    expect_clones(one_range_of_each());
}

TEST_F(Triggers, AreSavedAndOpenedEqual) {
    for (auto const& trigger : one_of_each()) {
        if (trigger->GetTriggerTypeId() == static_cast<int>(TriggerType::NAMED)) continue;
        create<TriggerObjectState>(document.next_unique_name("Trigger"))->SetTrigger(trigger);
    }
    create<TriggerObjectState>("By name")->SetTrigger(named(*alarm));
    for (auto const& range : one_range_of_each()) {
        create<GateAccessState>(document.next_unique_name("Access"))->SetTriggerRange(range);
    }
    auto const opened = reopened();
    auto const* const access = opened->find<GateAccessState>(std::string("Access 4"));
    ASSERT_NE(access, nullptr);
    auto const scheduled = std::dynamic_pointer_cast<ScheduledTriggerRange>(access->range);
    ASSERT_TRUE(scheduled);
    EXPECT_THAT(scheduled->GetIntervalDurationsInSeconds(), ElementsAre(30, 40));
}

TEST_F(Triggers, FireOrHold) {
    auto const tick = at(0);
    auto const either = std::make_shared<NeverTrigger>();
    auto const all = [](TriggerList const& children) { return std::make_shared<AllOfTrigger>(children); };
    auto const any = [](TriggerList const& children) { return std::make_shared<AnyOfTrigger>(children); };
    struct {
        TriggerPointer trigger;
        bool instant;
        bool interval;
    } const cases[] = {
        {std::make_shared<EventStartTimeTrigger>(journey, 0), true, false},
        {std::make_shared<BeginningOfTrigger>(running), true, false},
        {std::make_shared<PeriodicTrigger>(running, 5), true, false},
        {std::make_shared<BlockingTrigger>(running, 5), true, false},
        {std::make_shared<WheneverTrigger>(running), true, false},
        {std::make_shared<DurationTrigger>(tick, 5), false, true},
        {std::make_shared<NotTrigger>(either), false, true},
        {std::make_shared<NoneOfTrigger>(TriggerList{}), false, true},
        {std::make_shared<DelayedTrigger>(tick, 5), true, false},
        {std::make_shared<DelayedTrigger>(running, 5), false, true},
        {std::make_shared<DelayedTrigger>(named(*alarm), 5), true, true},
        {all({}), false, true},
        {all({running, running}), false, true},
        {all({running, tick}), true, false},
        {all({running, either}), true, true},
        {any({}), false, true},
        {any({tick, either}), true, false},
        {any({running, all({running, std::make_shared<DelayedTrigger>(tick, 1)})}), true, false},
    };
    for (auto const& [trigger, instant, interval] : cases) {
        EXPECT_EQ(trigger->IsInstant(), instant) << written(trigger);
        EXPECT_EQ(trigger->IsInterval(), interval) << written(trigger);
    }
}

TEST_F(Triggers, TakeTheChildrenThatTheySayAreValid) {
    auto const as_one = [](auto& parent) {
        return [&parent](TriggerPointer const& child) { parent.SetChildTrigger(child); };
    };
    auto const as_list = [](auto& parent) {
        return [&parent](TriggerPointer const& child) { parent.AddChildTrigger(child); };
    };
    BeginningOfTrigger beginning(running);
    EndOfTrigger end(running);
    WheneverTrigger whenever(running);
    NotTrigger none(running);
    NoneOfTrigger none_of(TriggerList{});
    DelayedTrigger delayed(running, 1);
    DurationTrigger duration(running, 1);
    BlockingTrigger blocking(running, 1);
    PeriodicTrigger periodic(running, 1);
    TransitionCountTrigger count(running, Transition::AtPortal(portal), 1, false);
    AllOfTrigger all_of(TriggerList{});
    AnyOfTrigger any_of(TriggerList{});
    struct {
        Trigger& parent;
        std::function<void(TriggerPointer const&)> take;
        bool takes_instants;
    } const parents[] = {
        {beginning, as_one(beginning), false}, {end, as_one(end), false},          {whenever, as_one(whenever), false},
        {none, as_one(none), false},           {none_of, as_list(none_of), false}, {delayed, as_one(delayed), true},
        {duration, as_one(duration), true},    {blocking, as_one(blocking), true}, {periodic, as_one(periodic), true},
        {count, as_one(count), true},          {all_of, as_list(all_of), true},    {any_of, as_list(any_of), true},
    };
    for (auto const& [parent, take, takes_instants] : parents) {
        for (auto const& child : one_of_each()) {
            bool const valid = takes_instants || child->IsInterval();
            EXPECT_EQ(parent.IsValidChild(child), valid) << parent.GetTriggerTypeId() << written(child);
            auto const message = refusal_of([&, &take = take] { take(child); });
            EXPECT_THAT(message,
                        HasSubstr(valid ? NOTHING_REFUSED : "must be a trigger that holds for spans of time, not "));
        }
        EXPECT_FALSE(parent.IsValidChild(nullptr));
        EXPECT_THAT(refusal_of([&, &take = take] { take(nullptr); }), HasSubstr("must be given, not empty"));
    }
    EXPECT_FALSE(at(1)->IsValidChild(running));

    // A trigger is no part of itself, however far down.
    auto const outer = std::make_shared<NotTrigger>(running);
    auto const inner = std::make_shared<AnyOfTrigger>(TriggerList{running});
    outer->SetChildTrigger(inner);
    for (TriggerPointer const& own : TriggerList{inner, outer}) {
        EXPECT_FALSE(inner->IsValidChild(own));
        EXPECT_THAT(refusal_of([&] { inner->AddChildTrigger(own); }), HasSubstr("must not be or hold"));
    }
    EXPECT_EQ(inner->GetChildTriggerCount(), 1);
}

TEST_F(Triggers, KnowTheirChildren) {
    auto const tick = at(1);
    auto const later = std::make_shared<DelayedTrigger>(tick, 5);
    auto const all = std::make_shared<AllOfTrigger>(TriggerList{later, running});
    AnyOfTrigger any(TriggerList{all, tick});
    EXPECT_THAT(any.GetAllNestedChildTriggers(), ElementsAre(all, later, tick, running, tick));
    EXPECT_EQ(any.GetChildTriggerAt(1), tick);
    EXPECT_EQ(tick->GetChildTriggerCount(), 0);
    EXPECT_EQ(later->GetChildTriggerCount(), 1);

    any.SetChildTriggerAt(0, running);
    EXPECT_THAT(any.GetChildTriggers(), ElementsAre(running, tick));
    for (int const wrong : {-1, 2}) {
        EXPECT_THAT(refusal_of([&] { any.SetChildTriggerAt(wrong, tick); }), HasSubstr("it has 2"));
        EXPECT_THAT(refusal_of([&] { any.GetChildTriggerAt(wrong); }), HasSubstr("it has 2"));
    }
    EXPECT_THAT(refusal_of([&] { any.SetChildTriggers({tick, nullptr}); }), HasSubstr("childTriggers.1 must be given"));
    EXPECT_EQ(any.GetChildTriggerCount(), 2);
    any.ClearChildTriggers();
    EXPECT_THAT(any.GetChildTriggers(), IsEmpty());
}

TEST_F(Triggers, RefuseWhatCanNeverBeRight) {
    auto const tick = at(1);
    auto const tally = std::make_shared<AreaPopulationTally>(volume);
    PeriodicTrigger endless(tick, 5);
    GateStateTrigger gate(link);
    ScheduledTriggerRange scheduled(tick, {5}, {6});
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[] { at(-1); }, "AbsoluteTimeTrigger: absoluteTimeInSeconds must be at least 0 s, not -1"},
        {[] { SimulationEndTrigger made(-5); }, "SimulationEndTrigger: offsetInSeconds must be at least 0 s, not -5"},
        {[] { EventStartTimeTrigger made(GlobalId::INVALID, 0); }, "event must be the identifier of an event"},
        {[] { ClockInRangeTrigger made(nullptr, ComparisonType::EQUAL); }, "timeReference must be given"},
        {[] { ClockInRangeTrigger made(5, static_cast<ComparisonType>(6)); }, "comparisonType must be one of"},
        {[&] { gate.SetAgentAccess(static_cast<AgentAccess>(-1)); }, "agentAccess must be one of OPEN (0), CLOSED (1)"},
        {[&] { endless.SetPeriodInSeconds(0); }, "periodInSeconds must be at least 1 s, not 0"},
        {[&] { endless.SetFixedCount(0); }, "fixedCount must be at least 1, not 0"},
        {[&] { endless.GetFixedCount(); }, "PeriodicTrigger has no fixedCount"},
        {[&] { DurationTrigger made(tick, -1); }, "durationInSeconds must be at least 0 s"},
        {[&] { TransitionCountTrigger made(tick, nullptr, 1, false); }, "transition must be given"},
        {[&] { TransitionCountTrigger made(tick, Transition::AtPortal(portal), 0, false); }, "targetValue must be at"},
        {[&] { TallyTrigger made(tally, ComparisonType::EQUAL, std::numeric_limits<double>::quiet_NaN()); }, "finite"},
        {[&] { TallyTrigger made(tally, ComparisonType::EQUAL, nullptr); }, "secondTally must be given"},
        {[&] { BoundedTriggerRange made(tick, nullptr); }, "endTrigger must be given"},
        {[&] {
             ScheduledTriggerRange made(tick, {1, 2}, {3});
         },
         "2"},
        {[&] { scheduled.AddInterval(0, -1); }, "intervals.1.durationInSeconds must be at least 0 s, not -1"},
        {[&] { scheduled.GetIntervalOffsetInSeconds(1); }, "there is no interval 1, it has 1"},
    };
    for (auto const& [action, message] : refused) EXPECT_THAT(refusal_of(action), HasSubstr(message));
    EXPECT_FALSE(endless.HasFixedCount());
    EXPECT_EQ(scheduled.GetIntervalCount(), 1);

    endless.SetFixedCount(4);
    EXPECT_EQ(endless.GetFixedCount(), 4);
    endless.SetRepeatEndlessly();
    EXPECT_FALSE(endless.HasFixedCount());
}

TEST_F(Triggers, NameObjectsOfTheRightKindOnceAProjectTakesThem) {
    struct {
        TriggerPointer trigger;
        char const* expected;
    } const cases[] = {
        {std::make_shared<EventActiveTrigger>(link), "trigger.event must be the identifier of an event"},
        {std::make_shared<GateStateTrigger>(server), "trigger.gatedObject must be the identifier of a connection"},
        {std::make_shared<ServerStateTrigger>(link), "trigger.server must be the identifier of a server"},
        {std::make_shared<NamedTrigger>(journey), "must be the identifier of a trigger object"},
        {std::make_shared<ClockInRangeTrigger>(TimeReference::AfterEventStart(portal, 1), ComparisonType::EQUAL),
         "timeReference.event must be the identifier of an event"},
        {std::make_shared<NotTrigger>(std::make_shared<EventActiveTrigger>(GlobalId::Generate())),
         "trigger.childTrigger.event must be the identifier of an event"},
    };
    for (auto const& [trigger, expected] : cases) {
        EXPECT_THAT(refusal_of([&, &trigger = trigger] { alarm->SetTrigger(trigger); }),
                    testing::AllOf(HasSubstr(expected), HasSubstr("TriggerObject 'Alarm'")));
    }
    EXPECT_EQ(alarm->GetTrigger()->GetTriggerTypeId(), static_cast<int>(TriggerType::NEVER));
    // What was valid when it was put together can have changed since.
    auto const all = std::make_shared<AllOfTrigger>(TriggerList{running});
    auto const none = std::make_shared<NotTrigger>(all);
    all->AddChildTrigger(at(1));
    EXPECT_THAT(refusal_of([&] { alarm->SetTrigger(none); }), HasSubstr("trigger.childTrigger must be a trigger that"));
}

TEST_F(Triggers, ObjectsKeepCopiesAndWhatTheyNeed) {
    auto const mine = std::make_shared<EventStartTimeTrigger>(journey, 5);
    alarm->SetTrigger(mine);
    mine->SetOffsetInSeconds(6);
    auto const kept = [&] { return std::dynamic_pointer_cast<EventStartTimeTrigger>(alarm->GetTrigger()); };
    kept()->SetOffsetInSeconds(7);
    EXPECT_EQ(kept()->GetOffsetInSeconds(), 5);
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(journey)); }), HasSubstr("Alarm"));
    EXPECT_THAT(refusal_of([&] { alarm->SetTrigger(nullptr); }), HasSubstr("trigger must be given"));
    EXPECT_EQ(kept()->GetOffsetInSeconds(), 5);
}

TEST_F(Triggers, DoNotLeadBackToThemselvesByNames) {
    auto const second = create<TriggerObjectState>("Second");
    auto const third = create<TriggerObjectState>("Third");
    second->SetTrigger(std::make_shared<NotTrigger>(named(*third)));
    third->SetTrigger(std::make_shared<AnyOfTrigger>(TriggerList{running, named(*alarm)}));
    for (auto const& way :
         {named(*alarm), named(*third), TriggerPointer(std::make_shared<DelayedTrigger>(named(*second), 5))}) {
        EXPECT_THAT(refusal_of([&] { alarm->SetTrigger(way); }),
                    HasSubstr("TriggerObject 'Alarm': trigger must be one that does not lead back"));
    }
    EXPECT_EQ(alarm->GetTrigger()->GetTriggerTypeId(), static_cast<int>(TriggerType::NEVER));

    state_of<TriggerObjectState>(*alarm).trigger = named(*second);
    EXPECT_THAT(refusal_of([&] { from_text(to_text(document), kinds()); }), HasSubstr("does not lead back"));
}

TEST_F(Triggers, TellTheirTimes) {
    SimulationStartTrigger start(7);
    SimulationEndTrigger end(8);
    EXPECT_EQ(SharedValue<TimeReference>::value(*start.GetTimeReference()).frame,
              TimeReferenceFrame::AFTER_SIMULATION_START);
    EXPECT_EQ(SharedValue<TimeReference>::value(*start.GetTimeReference()).seconds, 7);
    EXPECT_EQ(SharedValue<TimeReference>::value(*end.GetTimeReference()).frame,
              TimeReferenceFrame::BEFORE_SIMULATION_END);
    EXPECT_EQ(SharedValue<TimeReference>::value(*end.GetTimeReference()).seconds, 8);
}

TEST_F(Triggers, RangesHaveAStartBeforeAnObjectTakesThem) {
    auto const access = create<GateAccessState>("Access");
    auto const expect_refused = [&](std::shared_ptr<TriggerRange> const& range, char const* missing) {
        EXPECT_THAT(refusal_of([&] { access->SetTriggerRange(range); }), HasSubstr(missing));
    };
    auto const bounded = std::make_shared<BoundedTriggerRange>();
    auto const over = std::make_shared<OverDurationTriggerRange>();
    auto const scheduled = std::make_shared<ScheduledTriggerRange>();
    auto const whenever = std::make_shared<WheneverTriggerRange>();
    for (auto const& range : NodeList<TriggerRange>{bounded, over, scheduled, whenever}) {
        EXPECT_EQ(range->GetStartTrigger(), nullptr);
        expect_refused(range, "triggerRange.startTrigger must be given");
    }
    auto const tick = at(1);
    bounded->SetStartTrigger(tick);
    EXPECT_EQ(bounded->GetStartTrigger(), tick);
    expect_refused(bounded, "triggerRange.endTrigger must be given");
    bounded->SetEndTrigger(running);
    EXPECT_EQ(bounded->GetEndTrigger(), running);
    over->SetStartTrigger(tick);
    scheduled->SetStartTrigger(tick);
    whenever->SetStartTrigger(running);
    for (auto const& range : NodeList<TriggerRange>{bounded, over, scheduled, whenever}) {
        access->SetTriggerRange(range);
        EXPECT_EQ(access->GetTriggerRange()->GetTriggerRangeTypeId(), range->GetTriggerRangeTypeId());
    }
    auto const start = AllSimulationTriggerRange().GetStartTrigger();
    EXPECT_EQ(start->GetTriggerTypeId(), static_cast<int>(TriggerType::SIMULATION_START));

    scheduled->AddInterval(5, 6);
    scheduled->AddInterval(7, 8);
    EXPECT_THAT(scheduled->GetIntervalOffsetsInSeconds(), ElementsAre(5, 7));
    EXPECT_EQ(scheduled->GetIntervalDurationInSeconds(1), 8);
    scheduled->ClearIntervals();
    EXPECT_THAT(scheduled->GetIntervalOffsetsInSeconds(), IsEmpty());
}

}  // namespace
}  // namespace pedflux::engine
