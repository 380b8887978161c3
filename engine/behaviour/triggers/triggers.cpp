#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"

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

CONST_VALUE_PROPERTY(AbsoluteTimeTrigger, int, AbsoluteTimeInSeconds, seconds)
CONST_VALUE_PROPERTY(SimulationStartTrigger, int, OffsetInSeconds, offset)
CONST_VALUE_PROPERTY(SimulationEndTrigger, int, OffsetInSeconds, offset)
CONST_VALUE_PROPERTY(EventStartTimeTrigger, int, OffsetInSeconds, offset)
CONST_VALUE_PROPERTY(DurationTrigger, int, DurationInSeconds, duration)
CONST_VALUE_PROPERTY(DelayedTrigger, int, DelayInSeconds, delay)
CONST_VALUE_PROPERTY(BlockingTrigger, int, IntervalInSeconds, interval)
CONST_VALUE_PROPERTY(PeriodicTrigger, int, PeriodInSeconds, period)
CONST_VALUE_PROPERTY(PeriodicTrigger, int, FixedCount, count)
CONST_VALUE_PROPERTY(TransitionCountTrigger, int, TargetValue, target)

VALUE_PROPERTY(ClockInRangeTrigger, ComparisonType, ComparisonType, comparison)
VALUE_PROPERTY(TallyTrigger, ComparisonType, ComparisonType, comparison)
VALUE_PROPERTY(EventActiveTrigger, EventStateActivity, EventStateActivity, activity)
VALUE_PROPERTY(GateStateTrigger, GateStateDirection, GateStateDirection, direction)
VALUE_PROPERTY(GateStateTrigger, AgentAccess, AgentAccess, access)
VALUE_PROPERTY(ServerStateTrigger, ServerAccessPoint, ServerAccessPoint, point)
VALUE_PROPERTY(ServerStateTrigger, AgentAccess, AgentAccess, access)

PROPERTY(EventStartTimeTrigger, GlobalId, Event, event)
PROPERTY(EventActiveTrigger, GlobalId, Event, event)
PROPERTY(GateStateTrigger, GlobalId, GatedObject, gate)
PROPERTY(ServerStateTrigger, GlobalId, Server, server)
PROPERTY(NamedTrigger, GlobalId, TriggerObject, trigger_object)

PROPERTY(ClockInRangeTrigger, std::shared_ptr<TimeReference>, TimeReference, time)
PROPERTY(TallyTrigger, std::shared_ptr<Tally>, FirstTally, first)
PROPERTY(TallyTrigger, std::shared_ptr<Tally>, SecondTally, second)
PROPERTY(TransitionCountTrigger, std::shared_ptr<Transition>, Transition, transition)

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
