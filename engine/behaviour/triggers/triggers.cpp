#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/node_kind.h"
#include "engine/model/properties.h"

#include <pedflux/triggers.h>

#include <utility>

namespace pedflux {

using engine::change;
using engine::checked_index;
using engine::get;
using engine::make_node;
using engine::set;

AbsoluteTimeTrigger::AbsoluteTimeTrigger(int seconds)
    : Trigger(make_node<Trigger, engine::AbsoluteTimeTriggerState>([&](auto& state) { state.seconds = seconds; })) {}
std::shared_ptr<TimeReference> AbsoluteTimeTrigger::GetTimeReference() {
    return TimeReference::Absolute(GetAbsoluteTimeInSeconds());
}

SimulationStartTrigger::SimulationStartTrigger(int offset)
    : Trigger(make_node<Trigger, engine::SimulationStartTriggerState>([&](auto& state) { state.offset = offset; })) {}
std::shared_ptr<TimeReference> SimulationStartTrigger::GetTimeReference() {
    return TimeReference::AfterSimulationStart(GetOffsetInSeconds());
}

SimulationEndTrigger::SimulationEndTrigger(int offset)
    : Trigger(make_node<Trigger, engine::SimulationEndTriggerState>([&](auto& state) { state.offset = offset; })) {}
std::shared_ptr<TimeReference> SimulationEndTrigger::GetTimeReference() {
    return TimeReference::BeforeSimulationEnd(GetOffsetInSeconds());
}

EventStartTimeTrigger::EventStartTimeTrigger(GlobalId const& event, int offset)
    : Trigger(make_node<Trigger, engine::EventStartTimeTriggerState>([&](auto& state) {
          state.event = event;
          state.offset = offset;
      })) {}

ClockInRangeTrigger::ClockInRangeTrigger(int seconds, ComparisonType comparison)
    : ClockInRangeTrigger(TimeReference::Absolute(seconds), comparison) {}
ClockInRangeTrigger::ClockInRangeTrigger(std::shared_ptr<TimeReference> const& time, ComparisonType comparison)
    : Trigger(make_node<Trigger, engine::ClockInRangeTriggerState>([&](auto& state) {
          state.time = time;
          state.comparison = comparison;
      })) {}

EventActiveTrigger::EventActiveTrigger(GlobalId const& event) : EventActiveTrigger(event, EventStateActivity::ACTIVE) {}
EventActiveTrigger::EventActiveTrigger(GlobalId const& event, EventStateActivity activity)
    : Trigger(make_node<Trigger, engine::EventActiveTriggerState>([&](auto& state) {
          state.event = event;
          state.activity = activity;
      })) {}

GateStateTrigger::GateStateTrigger(GlobalId const& gated_object)
    : GateStateTrigger(gated_object, GateStateDirection::BOTH_WAYS, AgentAccess::OPEN) {}
GateStateTrigger::GateStateTrigger(GlobalId const& gated_object, GateStateDirection direction, AgentAccess access)
    : Trigger(make_node<Trigger, engine::GateStateTriggerState>([&](auto& state) {
          state.gate = gated_object;
          state.direction = direction;
          state.access = access;
      })) {}

ServerStateTrigger::ServerStateTrigger(GlobalId const& server)
    : ServerStateTrigger(server, ServerAccessPoint::ENTRANCE_AND_EXIT, AgentAccess::OPEN) {}
ServerStateTrigger::ServerStateTrigger(GlobalId const& server, ServerAccessPoint point, AgentAccess access)
    : Trigger(make_node<Trigger, engine::ServerStateTriggerState>([&](auto& state) {
          state.server = server;
          state.point = point;
          state.access = access;
      })) {}

TallyTrigger::TallyTrigger(std::shared_ptr<Tally> const& first, ComparisonType comparison, double value)
    : TallyTrigger(first, comparison, std::make_shared<VariableTally>(value)) {}
TallyTrigger::TallyTrigger(std::shared_ptr<Tally> const& first, ComparisonType comparison,
                           std::shared_ptr<Tally> const& second)
    : Trigger(make_node<Trigger, engine::TallyTriggerState>([&](auto& state) {
          state.first = first;
          state.comparison = comparison;
          state.second = second;
      })) {}

NamedTrigger::NamedTrigger(GlobalId const& trigger_object)
    : Trigger(
          make_node<Trigger, engine::NamedTriggerState>([&](auto& state) { state.trigger_object = trigger_object; })) {}

NeverTrigger::NeverTrigger() : Trigger(make_node<Trigger, engine::NeverTriggerState>()) {}

PeriodicTrigger::PeriodicTrigger(std::shared_ptr<Trigger> const& child, int period)
    : Trigger(make_node<Trigger, engine::PeriodicTriggerState>([&](auto& state) {
          state.child = child;
          state.period = period;
      })) {}
PeriodicTrigger::PeriodicTrigger(std::shared_ptr<Trigger> const& child, int period, int count)
    : Trigger(make_node<Trigger, engine::PeriodicTriggerState>([&](auto& state) {
          state.child = child;
          state.period = period;
          state.count = count;
      })) {}
bool PeriodicTrigger::HasFixedCount() const {
    return engine::state_of<engine::PeriodicTriggerState>(*this).count.has_value();
}
void PeriodicTrigger::SetRepeatEndlessly() { set(*this, &engine::PeriodicTriggerState::count, std::nullopt); }

TransitionCountTrigger::TransitionCountTrigger(std::shared_ptr<Trigger> const& child,
                                               std::shared_ptr<Transition> const& transition, int target, bool loop)
    : Trigger(make_node<Trigger, engine::TransitionCountTriggerState>([&](auto& state) {
          state.child = child;
          state.transition = transition;
          state.target = target;
          state.loop = loop;
      })) {}
bool TransitionCountTrigger::IsLooped() const { return get(*this, &engine::TransitionCountTriggerState::loop); }
void TransitionCountTrigger::SetLoop(bool loop) { set(*this, &engine::TransitionCountTriggerState::loop, loop); }

// The properties: class, name, field of the state.
#define NUMBER(Class, Name, field)                                                    \
    int Class::Get##Name() const { return get(*this, &engine::Class##State::field); } \
    void Class::Set##Name(int value) { set(*this, &engine::Class##State::field, value); }

NUMBER(AbsoluteTimeTrigger, AbsoluteTimeInSeconds, seconds)
NUMBER(SimulationStartTrigger, OffsetInSeconds, offset)
NUMBER(SimulationEndTrigger, OffsetInSeconds, offset)
NUMBER(EventStartTimeTrigger, OffsetInSeconds, offset)
NUMBER(DurationTrigger, DurationInSeconds, duration)
NUMBER(DelayedTrigger, DelayInSeconds, delay)
NUMBER(BlockingTrigger, IntervalInSeconds, interval)
NUMBER(PeriodicTrigger, PeriodInSeconds, period)
NUMBER(PeriodicTrigger, FixedCount, count)
NUMBER(TransitionCountTrigger, TargetValue, target)

// The same with the type.
#define CHOICE(Class, Type, field)                                               \
    Type Class::Get##Type() { return get(*this, &engine::Class##State::field); } \
    void Class::Set##Type(Type value) { set(*this, &engine::Class##State::field, value); }

CHOICE(ClockInRangeTrigger, ComparisonType, comparison)
CHOICE(TallyTrigger, ComparisonType, comparison)
CHOICE(EventActiveTrigger, EventStateActivity, activity)
CHOICE(GateStateTrigger, GateStateDirection, direction)
CHOICE(GateStateTrigger, AgentAccess, access)
CHOICE(ServerStateTrigger, ServerAccessPoint, point)
CHOICE(ServerStateTrigger, AgentAccess, access)

#define IDENTIFIER(Class, Name, field)                                               \
    GlobalId Class::Get##Name() { return get(*this, &engine::Class##State::field); } \
    void Class::Set##Name(GlobalId const& id) { set(*this, &engine::Class##State::field, id); }

IDENTIFIER(EventStartTimeTrigger, Event, event)
IDENTIFIER(EventActiveTrigger, Event, event)
IDENTIFIER(GateStateTrigger, GatedObject, gate)
IDENTIFIER(ServerStateTrigger, Server, server)
IDENTIFIER(NamedTrigger, TriggerObject, trigger_object)

#define PART(Class, Type, Name, field)                                                            \
    std::shared_ptr<Type> Class::Get##Name() { return get(*this, &engine::Class##State::field); } \
    void Class::Set##Name(std::shared_ptr<Type> const& part) { set(*this, &engine::Class##State::field, part); }

PART(ClockInRangeTrigger, TimeReference, TimeReference, time)
PART(TallyTrigger, Tally, FirstTally, first)
PART(TallyTrigger, Tally, SecondTally, second)
PART(TransitionCountTrigger, Transition, Transition, transition)

// Triggers with one child; setting it asks for more than the field's own rule.
#define CHILD(Class)                                                                                       \
    std::shared_ptr<Trigger> Class::GetChildTrigger() { return get(*this, &engine::Class##State::child); } \
    void Class::SetChildTrigger(std::shared_ptr<Trigger> const& child) {                                   \
        change<engine::Class##State>(*this, [&](auto& state) { state.child = child; });                    \
    }
CHILD(PeriodicTrigger)
CHILD(TransitionCountTrigger)

#define OF_A_CHILD(Class)                                                                                    \
    Class::Class(std::shared_ptr<Trigger> const& interval)                                                   \
        : Trigger(make_node<Trigger, engine::Class##State>([&](auto& state) { state.child = interval; })) {} \
    CHILD(Class)

OF_A_CHILD(BeginningOfTrigger)
OF_A_CHILD(EndOfTrigger)
OF_A_CHILD(WheneverTrigger)
OF_A_CHILD(NotTrigger)

#define OF_A_CHILD_AND_SECONDS(Class, seconds)                                \
    Class::Class(std::shared_ptr<Trigger> const& child, int seconds)          \
        : Trigger(make_node<Trigger, engine::Class##State>([&](auto& state) { \
              state.child = child;                                            \
              state.seconds = seconds;                                        \
          })) {}                                                              \
    CHILD(Class)

OF_A_CHILD_AND_SECONDS(DurationTrigger, duration)
OF_A_CHILD_AND_SECONDS(DelayedTrigger, delay)
OF_A_CHILD_AND_SECONDS(BlockingTrigger, interval)

#define OF_CHILDREN(Class)                                                                                        \
    Class::Class(std::vector<std::shared_ptr<Trigger>> const& children)                                           \
        : Trigger(make_node<Trigger, engine::Class##State>([&](auto& state) { state.children = children; })) {}   \
    void Class::AddChildTrigger(std::shared_ptr<Trigger> const& child) {                                          \
        change<engine::Class##State>(*this, [&](auto& state) { state.children.push_back(child); });               \
    }                                                                                                             \
    void Class::ClearChildTriggers() { SetChildTriggers({}); }                                                    \
    void Class::SetChildTriggerAt(int index, std::shared_ptr<Trigger> const& child) {                             \
        change<engine::Class##State>(*this, [&](auto& state) {                                                    \
            state.children[checked_index(engine::node_of(*this), "child", index, state.children.size())] = child; \
        });                                                                                                       \
    }                                                                                                             \
    void Class::SetChildTriggers(std::vector<std::shared_ptr<Trigger>> const& children) {                         \
        change<engine::Class##State>(*this, [&](auto& state) { state.children = children; });                     \
    }

OF_CHILDREN(AllOfTrigger)
OF_CHILDREN(AnyOfTrigger)
OF_CHILDREN(NoneOfTrigger)

}  // namespace pedflux
