#pragma once

#include "engine/behaviour/condition_names.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/node.h"

#include <pedflux/tallies.h>
#include <pedflux/time_references.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of triggers: see engine/model/node.h.
namespace pedflux::engine {

/// Every kind of trigger, in the order of TriggerType: name, type, whether it is an instant or an interval, which
/// triggers it takes as children.
#define PEDFLUX_TRIGGERS(TRIGGER)                             \
    TRIGGER(AbsoluteTime, ABSOLUTE_TIME, INSTANT, NONE)       \
    TRIGGER(AllOf, ALL_OF, AS_CHILDREN, ANY)                  \
    TRIGGER(AnyOf, ANY_OF, AS_CHILDREN, ANY)                  \
    TRIGGER(BeginningOf, BEGINNING_OF, INSTANT, INTERVALS)    \
    TRIGGER(Blocking, BLOCKING, INSTANT, ANY)                 \
    TRIGGER(ClockInRange, CLOCK_IN_RANGE, INTERVAL, NONE)     \
    TRIGGER(Delayed, DELAYED, AS_CHILDREN, ANY)               \
    TRIGGER(Duration, DURATION, INTERVAL, ANY)                \
    TRIGGER(EndOf, END_OF, INSTANT, INTERVALS)                \
    TRIGGER(EventActive, EVENT_ACTIVE, INTERVAL, NONE)        \
    TRIGGER(EventStartTime, EVENT_START_TIME, INSTANT, NONE)  \
    TRIGGER(GateState, GATE_STATE, INTERVAL, NONE)            \
    TRIGGER(Named, NAMED, EITHER, NONE)                       \
    TRIGGER(Never, NEVER, EITHER, NONE)                       \
    TRIGGER(NoneOf, NONE_OF, INTERVAL, INTERVALS)             \
    TRIGGER(Not, NOT, INTERVAL, INTERVALS)                    \
    TRIGGER(Periodic, PERIODIC, INSTANT, ANY)                 \
    TRIGGER(ServerState, SERVER_STATE, INTERVAL, NONE)        \
    TRIGGER(SimulationEnd, SIMULATION_END, INSTANT, NONE)     \
    TRIGGER(SimulationStart, SIMULATION_START, INSTANT, NONE) \
    TRIGGER(Tally, TALLY, INTERVAL, NONE)                     \
    TRIGGER(TransitionCount, TRANSITION_COUNT, INSTANT, ANY)  \
    TRIGGER(Whenever, WHENEVER, INSTANT, INTERVALS)

/// What a trigger can be: one that can be both answers as either.
struct TriggerTiming {
    bool instant;
    bool interval;
};
/// Throws Exception for triggers that nest too deep.
TriggerTiming timing_of(Trigger const& trigger);

inline constexpr RefersTo A_TRIGGER_OBJECT = refers_to_kind<ObjectType::TRIGGER_OBJECT>("a trigger object");
inline constexpr Range WHOLE_SECONDS{0, unlimited, "s"};
inline constexpr Range AT_LEAST_ONE_SECOND{1, unlimited, "s"};

#define TRIGGER_KIND(Name, type)                              \
    static constexpr TriggerType TYPE = TriggerType::type;    \
    static constexpr std::string_view NAME = #Name "Trigger"; \
    using Handle = Name##Trigger

struct AbsoluteTimeTriggerState : NodeState {
    TRIGGER_KIND(AbsoluteTime, ABSOLUTE_TIME);

    int seconds = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("absoluteTimeInSeconds", self.seconds, WHOLE_SECONDS);
    }
};

struct OffsetTriggerState : NodeState {
    int offset = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("offsetInSeconds", self.offset, WHOLE_SECONDS);
    }
};

struct SimulationStartTriggerState : OffsetTriggerState {
    TRIGGER_KIND(SimulationStart, SIMULATION_START);
};

struct SimulationEndTriggerState : OffsetTriggerState {
    TRIGGER_KIND(SimulationEnd, SIMULATION_END);
};

struct EventStartTimeTriggerState : OffsetTriggerState {
    TRIGGER_KIND(EventStartTime, EVENT_START_TIME);

    GlobalId event;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        OffsetTriggerState::fields(self, field);
        field("event", self.event, AN_EVENT);
    }
};

struct ClockInRangeTriggerState : NodeState {
    TRIGGER_KIND(ClockInRange, CLOCK_IN_RANGE);

    ComparisonType comparison = ComparisonType::GREATER_THAN_OR_EQUAL;
    std::shared_ptr<TimeReference> time;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("comparisonType", self.comparison);
        field("timeReference", self.time, must_be_given);
    }
};

struct EventActiveTriggerState : NodeState {
    TRIGGER_KIND(EventActive, EVENT_ACTIVE);

    GlobalId event;
    EventStateActivity activity = EventStateActivity::ACTIVE;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("event", self.event, AN_EVENT);
        field("eventStateActivity", self.activity);
    }
};

struct GateStateTriggerState : NodeState {
    TRIGGER_KIND(GateState, GATE_STATE);

    GlobalId gate;
    GateStateDirection direction = GateStateDirection::BOTH_WAYS;
    AgentAccess access = AgentAccess::OPEN;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("gatedObject", self.gate, A_GATE);
        field("gateStateDirection", self.direction);
        field("agentAccess", self.access);
    }
};

struct ServerStateTriggerState : NodeState {
    TRIGGER_KIND(ServerState, SERVER_STATE);

    GlobalId server;
    ServerAccessPoint point = ServerAccessPoint::ENTRANCE_AND_EXIT;
    AgentAccess access = AgentAccess::OPEN;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("server", self.server, A_SERVER);
        field("serverAccessPoint", self.point);
        field("agentAccess", self.access);
    }
};

struct TallyTriggerState : NodeState {
    TRIGGER_KIND(Tally, TALLY);

    std::shared_ptr<Tally> first;
    ComparisonType comparison = ComparisonType::GREATER_THAN_OR_EQUAL;
    std::shared_ptr<Tally> second;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("firstTally", self.first, must_be_given);
        field("comparisonType", self.comparison);
        field("secondTally", self.second, must_be_given);
    }
};

struct NamedTriggerState : NodeState {
    TRIGGER_KIND(Named, NAMED);

    GlobalId trigger_object;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("triggerObject", self.trigger_object, A_TRIGGER_OBJECT);
    }
};

struct NeverTriggerState : NodeState {
    TRIGGER_KIND(Never, NEVER);

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct ChildTriggerState : NodeState {
    std::shared_ptr<Trigger> child;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("childTrigger", self.child, must_be_given);
    }
};

struct IntervalChildTriggerState : ChildTriggerState {
    static void check(Subject const& subject, IntervalChildTriggerState const& self);
};

struct BeginningOfTriggerState : IntervalChildTriggerState {
    TRIGGER_KIND(BeginningOf, BEGINNING_OF);
};

struct EndOfTriggerState : IntervalChildTriggerState {
    TRIGGER_KIND(EndOf, END_OF);
};

struct WheneverTriggerState : IntervalChildTriggerState {
    TRIGGER_KIND(Whenever, WHENEVER);
};

struct NotTriggerState : IntervalChildTriggerState {
    TRIGGER_KIND(Not, NOT);
};

struct DurationTriggerState : ChildTriggerState {
    TRIGGER_KIND(Duration, DURATION);

    int duration = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ChildTriggerState::fields(self, field);
        field("durationInSeconds", self.duration, WHOLE_SECONDS);
    }
};

struct DelayedTriggerState : ChildTriggerState {
    TRIGGER_KIND(Delayed, DELAYED);

    int delay = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ChildTriggerState::fields(self, field);
        field("delayInSeconds", self.delay, WHOLE_SECONDS);
    }
};

struct BlockingTriggerState : ChildTriggerState {
    TRIGGER_KIND(Blocking, BLOCKING);

    int interval = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ChildTriggerState::fields(self, field);
        field("intervalInSeconds", self.interval, WHOLE_SECONDS);
    }
};

struct PeriodicTriggerState : ChildTriggerState {
    TRIGGER_KIND(Periodic, PERIODIC);

    int period = 1;            ///< seconds
    std::optional<int> count;  ///< endless without

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ChildTriggerState::fields(self, field);
        field("periodInSeconds", self.period, AT_LEAST_ONE_SECOND);
        field("fixedCount", self.count, at_least_one);
    }
};

struct TransitionCountTriggerState : ChildTriggerState {
    TRIGGER_KIND(TransitionCount, TRANSITION_COUNT);

    std::shared_ptr<Transition> transition;
    int target = 1;
    bool loop = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ChildTriggerState::fields(self, field);
        field("transition", self.transition, must_be_given);
        field("targetValue", self.target, at_least_one);
        field("loop", self.loop);
    }
};

struct ChildTriggersState : NodeState {
    std::vector<std::shared_ptr<Trigger>> children;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("childTriggers", self.children, must_be_given);
    }
};

struct AllOfTriggerState : ChildTriggersState {
    TRIGGER_KIND(AllOf, ALL_OF);
};

struct AnyOfTriggerState : ChildTriggersState {
    TRIGGER_KIND(AnyOf, ANY_OF);
};

struct NoneOfTriggerState : ChildTriggersState {
    TRIGGER_KIND(NoneOf, NONE_OF);

    static void check(Subject const& subject, NoneOfTriggerState const& self);
};

#undef TRIGGER_KIND

struct TriggerObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TRIGGER_OBJECT;
    static constexpr std::string_view NAME = "TriggerObject";
    using Handle = TriggerObject;

    std::shared_ptr<Trigger> trigger = std::make_shared<NeverTrigger>();  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("trigger", self.trigger, must_be_given);
    }
    /// Its trigger does not lead back to it by names.
    static void check(TriggerObjectState const& self);
};

}  // namespace pedflux::engine
