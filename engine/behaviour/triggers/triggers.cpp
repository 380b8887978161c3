#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/node_handles.h"

#include <pedflux/triggers.h>

#include <utility>

namespace pedflux {

using engine::change;
using engine::checked_index;
using engine::get;
using engine::make_node;
using engine::set;

/// A list of triggers that make one up.
#define PEDFLUX_ACCESS_CHILDREN(Class, Type, Name, member)                                                    \
    void Class::AddChildTrigger(std::shared_ptr<Trigger> const& child) {                                      \
        change<engine::Class##State>(*this, [&](auto& state) { state.member.push_back(child); });             \
    }                                                                                                         \
    void Class::ClearChildTriggers() { SetChildTriggers({}); }                                                \
    void Class::SetChildTriggerAt(int index, std::shared_ptr<Trigger> const& child) {                         \
        change<engine::Class##State>(*this, [&](auto& state) {                                                \
            state.member[checked_index(engine::node_of(*this), "child", index, state.member.size())] = child; \
        });                                                                                                   \
    }                                                                                                         \
    void Class::SetChildTriggers(Type const& children) {                                                      \
        change<engine::Class##State>(*this, [&](auto& state) { state.member = children; });                   \
    }

#define TRIGGER(Class, type, timing, children, ...)  \
    PEDFLUX_CONSTRUCTOR(Trigger, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define TRIGGER_WITH_CONSTRUCTORS(Class, type, timing, children, ...) PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#include "engine/behaviour/triggers/trigger_table.def"

// What the table does not tell.

std::shared_ptr<TimeReference> AbsoluteTimeTrigger::GetTimeReference() {
    return TimeReference::Absolute(GetAbsoluteTimeInSeconds());
}
std::shared_ptr<TimeReference> SimulationStartTrigger::GetTimeReference() {
    return TimeReference::AfterSimulationStart(GetOffsetInSeconds());
}
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
GateStateTrigger::GateStateTrigger(GlobalId const& gated_object)
    : GateStateTrigger(gated_object, GateStateDirection::BOTH_WAYS, AgentAccess::OPEN) {}
ServerStateTrigger::ServerStateTrigger(GlobalId const& server)
    : ServerStateTrigger(server, ServerAccessPoint::ENTRANCE_AND_EXIT, AgentAccess::OPEN) {}
TallyTrigger::TallyTrigger(std::shared_ptr<Tally> const& first, ComparisonType comparison, double value)
    : TallyTrigger(first, comparison, std::make_shared<VariableTally>(value)) {}
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
int PeriodicTrigger::GetFixedCount() const { return get(*this, &engine::PeriodicTriggerState::count); }
void PeriodicTrigger::SetFixedCount(int count) { set(*this, &engine::PeriodicTriggerState::count, count); }
void PeriodicTrigger::SetRepeatEndlessly() { set(*this, &engine::PeriodicTriggerState::count, std::nullopt); }

bool TransitionCountTrigger::IsLooped() const { return get(*this, &engine::TransitionCountTriggerState::loop); }
void TransitionCountTrigger::SetLoop(bool loop) { set(*this, &engine::TransitionCountTriggerState::loop, loop); }

}  // namespace pedflux
