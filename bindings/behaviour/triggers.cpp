#include "bindings/table.h"

#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/tallies.h>
#include <pedflux/time_references.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

/// The combination of a list of triggers.
#define TRIGGER_OF_LIST(Class, copy)                                             \
    CLASS(Class, Trigger)                                                        \
    CONSTRUCTOR_OVERLOAD(Class, 0, std::vector<std::shared_ptr<Trigger>> const&) \
    COPY_CONSTRUCTOR(Class, copy)                                                \
    ADD(Class, ChildTrigger)                                                     \
    CLEAR(Class, ChildTriggers)                                                  \
    GET(Class, TriggerTypeId)                                                    \
    METHOD(Class, clone, Clone)                                                  \
    GET(Class, ChildTriggerCount)                                                \
    PROPERTY(Class, ChildTriggerAt)                                              \
    PROPERTY(Class, ChildTriggers)                                               \
    IS(Class, ValidChild)

/// A trigger made of another one.
#define TRIGGER_OF_ONE(Class, copy) \
    CLASS(Class, Trigger)           \
    COPY_CONSTRUCTOR(Class, copy)   \
    PROPERTY(Class, ChildTrigger)   \
    GET(Class, TriggerTypeId)       \
    METHOD(Class, clone, Clone)     \
    GET(Class, ChildTriggerCount)   \
    GET(Class, ChildTriggerAt)      \
    IS(Class, ValidChild)

/// A trigger; `copy` numbers its copy constructor.
#define TRIGGER(Class, copy)      \
    CLASS(Class, Trigger)         \
    COPY_CONSTRUCTOR(Class, copy) \
    GET(Class, TriggerTypeId)     \
    METHOD(Class, clone, Clone)

/// A trigger range.
#define RANGE(Class, copy)         \
    CLASS(Class, TriggerRange)     \
    COPY_CONSTRUCTOR(Class, copy)  \
    GET(Class, TriggerRangeTypeId) \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(Trigger)
IS(Trigger, Instant)
IS(Trigger, Interval)
GET(Trigger, AllNestedChildTriggers)
GET(Trigger, TriggerTypeId)
METHOD(Trigger, clone, Clone)
GET(Trigger, ChildTriggerCount)
GET(Trigger, ChildTriggerAt)
GET(Trigger, ChildTriggers)
IS(Trigger, ValidChild)

TRIGGER(AbsoluteTimeTrigger, 1)
CONSTRUCTOR_OVERLOAD(AbsoluteTimeTrigger, 0, int)
PROPERTY(AbsoluteTimeTrigger, AbsoluteTimeInSeconds)
GET(AbsoluteTimeTrigger, TimeReference)

TRIGGER(ClockInRangeTrigger, 2)
CONSTRUCTOR_OVERLOAD(ClockInRangeTrigger, 0, int, ComparisonType)
CONSTRUCTOR_OVERLOAD(ClockInRangeTrigger, 1, std::shared_ptr<TimeReference> const&, ComparisonType)
PROPERTY(ClockInRangeTrigger, ComparisonType)
PROPERTY(ClockInRangeTrigger, TimeReference)

TRIGGER(EventActiveTrigger, 2)
CONSTRUCTOR_OVERLOAD(EventActiveTrigger, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(EventActiveTrigger, 1, GlobalId const&, EventStateActivity)
PROPERTY(EventActiveTrigger, Event)
PROPERTY(EventActiveTrigger, EventStateActivity)

TRIGGER(EventStartTimeTrigger, 1)
CONSTRUCTOR_OVERLOAD(EventStartTimeTrigger, 0, GlobalId const&, int)
PROPERTY(EventStartTimeTrigger, Event)
PROPERTY(EventStartTimeTrigger, OffsetInSeconds)

TRIGGER(GateStateTrigger, 2)
CONSTRUCTOR_OVERLOAD(GateStateTrigger, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(GateStateTrigger, 1, GlobalId const&, GateStateDirection, AgentAccess)
PROPERTY(GateStateTrigger, GatedObject)
PROPERTY(GateStateTrigger, GateStateDirection)
PROPERTY(GateStateTrigger, AgentAccess)

TRIGGER(NamedTrigger, 1)
CONSTRUCTOR_OVERLOAD(NamedTrigger, 0, GlobalId const&)
PROPERTY(NamedTrigger, TriggerObject)

TRIGGER(NeverTrigger, 1)
CONSTRUCTOR_OVERLOAD(NeverTrigger, 0)

TRIGGER(ServerStateTrigger, 2)
CONSTRUCTOR_OVERLOAD(ServerStateTrigger, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ServerStateTrigger, 1, GlobalId const&, ServerAccessPoint, AgentAccess)
PROPERTY(ServerStateTrigger, Server)
PROPERTY(ServerStateTrigger, ServerAccessPoint)
PROPERTY(ServerStateTrigger, AgentAccess)

TRIGGER(SimulationEndTrigger, 1)
CONSTRUCTOR_OVERLOAD(SimulationEndTrigger, 0, int)
PROPERTY(SimulationEndTrigger, OffsetInSeconds)
GET(SimulationEndTrigger, TimeReference)

TRIGGER(SimulationStartTrigger, 1)
CONSTRUCTOR_OVERLOAD(SimulationStartTrigger, 0, int)
PROPERTY(SimulationStartTrigger, OffsetInSeconds)
GET(SimulationStartTrigger, TimeReference)

TRIGGER(TallyTrigger, 2)
CONSTRUCTOR_OVERLOAD(TallyTrigger, 0, std::shared_ptr<Tally> const&, ComparisonType, double)
CONSTRUCTOR_OVERLOAD(TallyTrigger, 1, std::shared_ptr<Tally> const&, ComparisonType, std::shared_ptr<Tally> const&)
PROPERTY(TallyTrigger, ComparisonType)
PROPERTY(TallyTrigger, FirstTally)
PROPERTY(TallyTrigger, SecondTally)

TRIGGER_OF_ONE(BeginningOfTrigger, 1)
CONSTRUCTOR_OVERLOAD(BeginningOfTrigger, 0, std::shared_ptr<Trigger> const&)

TRIGGER_OF_ONE(BlockingTrigger, 1)
CONSTRUCTOR_OVERLOAD(BlockingTrigger, 0, std::shared_ptr<Trigger> const&, int)
PROPERTY(BlockingTrigger, IntervalInSeconds)

TRIGGER_OF_ONE(DelayedTrigger, 1)
CONSTRUCTOR_OVERLOAD(DelayedTrigger, 0, std::shared_ptr<Trigger> const&, int)
PROPERTY(DelayedTrigger, DelayInSeconds)

TRIGGER_OF_ONE(DurationTrigger, 1)
CONSTRUCTOR_OVERLOAD(DurationTrigger, 0, std::shared_ptr<Trigger> const&, int)
PROPERTY(DurationTrigger, DurationInSeconds)

TRIGGER_OF_ONE(EndOfTrigger, 1)
CONSTRUCTOR_OVERLOAD(EndOfTrigger, 0, std::shared_ptr<Trigger> const&)

TRIGGER_OF_ONE(NotTrigger, 1)
CONSTRUCTOR_OVERLOAD(NotTrigger, 0, std::shared_ptr<Trigger> const&)

TRIGGER_OF_ONE(PeriodicTrigger, 2)
CONSTRUCTOR_OVERLOAD(PeriodicTrigger, 0, std::shared_ptr<Trigger> const&, int)
CONSTRUCTOR_OVERLOAD(PeriodicTrigger, 1, std::shared_ptr<Trigger> const&, int, int)
PROPERTY(PeriodicTrigger, PeriodInSeconds)
HAS(PeriodicTrigger, FixedCount)
PROPERTY(PeriodicTrigger, FixedCount)
SET(PeriodicTrigger, RepeatEndlessly)

TRIGGER_OF_ONE(TransitionCountTrigger, 1)
CONSTRUCTOR_OVERLOAD(TransitionCountTrigger, 0, std::shared_ptr<Trigger> const&, std::shared_ptr<Transition> const&,
                     int, bool)
PROPERTY(TransitionCountTrigger, Transition)
PROPERTY(TransitionCountTrigger, TargetValue)
IS(TransitionCountTrigger, Looped)
SET(TransitionCountTrigger, Loop)

TRIGGER_OF_ONE(WheneverTrigger, 1)
CONSTRUCTOR_OVERLOAD(WheneverTrigger, 0, std::shared_ptr<Trigger> const&)

TRIGGER_OF_LIST(AllOfTrigger, 1)

TRIGGER_OF_LIST(AnyOfTrigger, 1)

TRIGGER_OF_LIST(NoneOfTrigger, 1)

CLASS(TriggerRange)
GET(TriggerRange, TriggerRangeTypeId)
GET(TriggerRange, StartTrigger)
METHOD(TriggerRange, clone, Clone)

RANGE(AllSimulationTriggerRange, 1)
CONSTRUCTOR_OVERLOAD(AllSimulationTriggerRange, 0)
GET(AllSimulationTriggerRange, StartTrigger)

RANGE(BoundedTriggerRange, 2)
CONSTRUCTOR_OVERLOAD(BoundedTriggerRange, 0)
CONSTRUCTOR_OVERLOAD(BoundedTriggerRange, 1, std::shared_ptr<Trigger> const&, std::shared_ptr<Trigger> const&)
SET(BoundedTriggerRange, StartTrigger)
PROPERTY(BoundedTriggerRange, EndTrigger)

RANGE(OverDurationTriggerRange, 2)
CONSTRUCTOR_OVERLOAD(OverDurationTriggerRange, 0)
CONSTRUCTOR_OVERLOAD(OverDurationTriggerRange, 1, std::shared_ptr<Trigger> const&, int)
SET(OverDurationTriggerRange, StartTrigger)
PROPERTY(OverDurationTriggerRange, DurationInSeconds)

RANGE(ScheduledTriggerRange, 2)
CONSTRUCTOR_OVERLOAD(ScheduledTriggerRange, 0)
CONSTRUCTOR_OVERLOAD(ScheduledTriggerRange, 1, std::shared_ptr<Trigger> const&, std::vector<int> const&,
                     std::vector<int> const&)
SET(ScheduledTriggerRange, StartTrigger)
ADD(ScheduledTriggerRange, Interval)
CLEAR(ScheduledTriggerRange, Intervals)
GET(ScheduledTriggerRange, IntervalCount)
GET(ScheduledTriggerRange, IntervalOffsetInSeconds)
GET(ScheduledTriggerRange, IntervalOffsetsInSeconds)
GET(ScheduledTriggerRange, IntervalDurationInSeconds)
GET(ScheduledTriggerRange, IntervalDurationsInSeconds)

RANGE(WheneverTriggerRange, 2)
CONSTRUCTOR_OVERLOAD(WheneverTriggerRange, 0)
CONSTRUCTOR_OVERLOAD(WheneverTriggerRange, 1, std::shared_ptr<Trigger> const&)
SET(WheneverTriggerRange, StartTrigger)

CLASS(TriggerObject, SimObject)
GET(TriggerObject, TypeId)
PROPERTY(TriggerObject, Trigger)

}  // namespace pedflux::jni
