#include "engine/base/checks.h"
#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/properties.h"

#include <pedflux/exception.h>
#include <pedflux/tallies.h>

#include <algorithm>
#include <concepts>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include <fmt/format.h>

namespace pedflux {

using engine::get;
using engine::set;
using engine::TallyChangeState;
using engine::TallyObjectState;

using TallyPointer = std::shared_ptr<Tally>;
using DistributionPointer = std::shared_ptr<Distribution>;

namespace {

// The SDK's const operations read what the others write.
TallyObjectState const& state_of(TallyObject const& handle) {
    return engine::state_of<TallyObjectState>(const_cast<TallyObject&>(handle));
}
TallyChangeState const& state_of(TallyChange const& handle) {
    return engine::state_of<TallyChangeState>(const_cast<TallyChange&>(handle));
}

/// A value made of an expression, as the object keeps it.
template <class Value>
void set_value_by(TallyObject& handle, TallyPointer const& tally, Value value = {}) {
    value.tally = engine::copy_of(tally);
    engine::TallyValue changed{std::move(value)};
    engine::require_acyclic(state_of(handle), changed);
    set(handle, &TallyObjectState::value, std::move(changed));
}

/// A value without an expression, which its default value stands for.
template <class Value>
void set_value_from(TallyObject& handle, DistributionPointer const& default_value, Value value) {
    engine::set_copy(handle, &TallyObjectState::default_value, default_value);
    set(handle, &TallyObjectState::value, value);
}

DistributionPointer constant(double value) { return Distribution::CreateConstant(value); }

template <class Reset>
bool resets_by(TallyObject const& handle) {
    return std::holds_alternative<Reset>(state_of(handle).reset);
}

template <class Reset>
void set_reset_by(TallyObject& handle, TallyPointer const& tally) {
    set(handle, &TallyObjectState::reset, engine::TallyReset{Reset{{engine::copy_of(tally)}}});
}

void set_bounds(TallyObject& handle, std::optional<double> min, std::optional<double> max) {
    auto& state = engine::state_of<TallyObjectState>(handle);
    TallyObjectState changed = state;
    engine::set_field(owner_of(state), changed, &TallyObjectState::min, min);
    engine::set_field(owner_of(state), changed, &TallyObjectState::max, max);
    engine::require_ordered_bounds(changed);
    state.min = min;
    state.max = max;
}

void set_command(TallyChange& handle, bool resets, bool adds, std::optional<int> period = {}) {
    set(handle, &TallyChangeState::command, engine::TallyCommand{resets, adds, period});
}

}  // namespace

std::shared_ptr<Tally> TallyObject::GetTally() { return engine::copy_of(engine::expression_of(state_of(*this).value)); }
TallyValueType TallyObject::GetTallyValueType() {
    return std::visit([]<class Value>(Value const&) { return Value::TYPE; }, state_of(*this).value);
}

void TallyObject::SetTallyValueByCount(TallyPointer const& tally) { set_value_by<engine::CountValue>(*this, tally); }
void TallyObject::SetTallyValueByAggregateSumOverTime(TallyPointer const& tally) {
    set_value_by<engine::SumOverTimeValue>(*this, tally);
}
void TallyObject::SetTallyValueByAggregateMinOverTime(TallyPointer const& tally) {
    set_value_by<engine::MinOverTimeValue>(*this, tally);
}
void TallyObject::SetTallyValueByAggregateMaxOverTime(TallyPointer const& tally) {
    set_value_by<engine::MaxOverTimeValue>(*this, tally);
}
void TallyObject::SetTallyValueByAggregateRollingSum(TallyPointer const& tally, int windowInSeconds) {
    set_value_by(*this, tally, engine::RollingSumValue{{{}, windowInSeconds}});
}
void TallyObject::SetTallyValueByAggregateRollingAverage(TallyPointer const& tally, int windowInSeconds,
                                                         bool wholeWindow) {
    set_value_by(*this, tally, engine::RollingAverageValue{{{}, windowInSeconds}, wholeWindow});
}

void TallyObject::SetTallyValueByVariable(double defaultValue) { SetTallyValueByVariable(constant(defaultValue)); }
void TallyObject::SetTallyValueByVariable(DistributionPointer const& defaultValue) {
    set_value_from(*this, defaultValue, engine::VariableValue{});
}
void TallyObject::SetTallyValueByClockCountingUp(double defaultValue) {
    SetTallyValueByClockCountingUp(constant(defaultValue));
}
void TallyObject::SetTallyValueByClockCountingUp(DistributionPointer const& defaultValue) {
    set_value_from(*this, defaultValue, engine::ClockValue{.counts_down = false});
}
void TallyObject::SetTallyValueByClockCountingDown(double defaultValue) {
    SetTallyValueByClockCountingDown(constant(defaultValue));
}
void TallyObject::SetTallyValueByClockCountingDown(DistributionPointer const& defaultValue) {
    set_value_from(*this, defaultValue, engine::ClockValue{.counts_down = true});
}
bool TallyObject::IsClockCountingDown() const {
    auto const* const clock = std::get_if<engine::ClockValue>(&state_of(*this).value);
    return clock != nullptr && clock->counts_down;
}

bool TallyObject::HasMinValue() const { return state_of(*this).min.has_value(); }
double TallyObject::GetMinValue() const {
    auto const& state = state_of(*this);
    return engine::get_field(owner_of(state), state, &TallyObjectState::min);
}
void TallyObject::SetMinValue(double value) { set_bounds(*this, value, state_of(*this).max); }
void TallyObject::ClearMinValue() { engine::clear(*this, &TallyObjectState::min); }
bool TallyObject::HasMaxValue() const { return state_of(*this).max.has_value(); }
double TallyObject::GetMaxValue() const {
    auto const& state = state_of(*this);
    return engine::get_field(owner_of(state), state, &TallyObjectState::max);
}
void TallyObject::SetMaxValue(double value) { set_bounds(*this, state_of(*this).min, value); }
void TallyObject::ClearMaxValue() { engine::clear(*this, &TallyObjectState::max); }

bool TallyObject::IsStartAtDefaultValue() const { return !IsStartAtCustomValue(); }
void TallyObject::SetStartAtDefaultValue() { engine::clear(*this, &TallyObjectState::start); }
bool TallyObject::IsStartAtCustomValue() const { return state_of(*this).start.has_value(); }
void TallyObject::SetStartAtCustomValue(double value) { set(*this, &TallyObjectState::start, value); }
double TallyObject::GetStartCustomValue() const {
    auto const& state = state_of(*this);
    return engine::get_field(owner_of(state), state, &TallyObjectState::start);
}

bool TallyObject::IsAutoResetDisabled() const { return resets_by<engine::NoReset>(*this); }
void TallyObject::SetAutoResetDisabled() { set(*this, &TallyObjectState::reset, engine::NoReset{}); }
bool TallyObject::IsAutoResetEveryFrame() const { return resets_by<engine::EveryFrameReset>(*this); }
void TallyObject::SetAutoResetEveryFrame() { set(*this, &TallyObjectState::reset, engine::EveryFrameReset{}); }
bool TallyObject::IsAutoResetEveryInterval() const { return resets_by<engine::IntervalReset>(*this); }
void TallyObject::SetAutoResetEveryInterval(int seconds) {
    set(*this, &TallyObjectState::reset, engine::IntervalReset{seconds});
}
bool TallyObject::IsAutoResetWhenValueReached() const {
    return IsAutoResetWhenValueGreaterOrEqual() || IsAutoResetWhenValueLessOrEqual();
}
bool TallyObject::IsAutoResetWhenValueGreaterOrEqual() const { return resets_by<engine::GreaterOrEqualReset>(*this); }
void TallyObject::SetAutoResetWhenValueGreaterOrEqual(TallyPointer const& tally) {
    set_reset_by<engine::GreaterOrEqualReset>(*this, tally);
}
bool TallyObject::IsAutoResetWhenValueLessOrEqual() const { return resets_by<engine::LessOrEqualReset>(*this); }
void TallyObject::SetAutoResetWhenValueLessOrEqual(TallyPointer const& tally) {
    set_reset_by<engine::LessOrEqualReset>(*this, tally);
}
int TallyObject::GetAutoResetIntervalInSeconds() const {
    auto const& state = state_of(*this);
    auto const* const interval = std::get_if<engine::IntervalReset>(&state.reset);
    if (interval == nullptr) engine::refuse_unset(owner_of(state), "autoReset.intervalInSeconds");
    return interval->seconds;
}
TallyPointer TallyObject::GetAutoResetTally() {
    return std::visit(
        []<class Reset>(Reset const& reset) -> TallyPointer {
            if constexpr (std::derived_from<Reset, engine::MadeOfTally>) return engine::copy_of(reset.tally);
            return nullptr;
        },
        state_of(*this).reset);
}

void TallyObject::SetDefaultValueOnReset(double value) {
    set(*this, &TallyObjectState::default_value, constant(value));
}
DistributionPointer TallyObject::GetDefaultDistributionOnReset() {
    return engine::get_copy(*this, &TallyObjectState::default_value);
}

std::vector<GlobalId> TallyChange::GetTallyObjects() { return get(*this, &TallyChangeState::tally_objects); }
void TallyChange::SetTallyObjects(std::vector<GlobalId> const& tallyObjects) {
    set(*this, &TallyChangeState::tally_objects, tallyObjects);
}
std::shared_ptr<TriggerRange> TallyChange::GetTriggerRange() {
    return engine::copy_of(get(*this, &TallyChangeState::range));
}
void TallyChange::SetTriggerRange(std::shared_ptr<TriggerRange> const& range) {
    set(*this, &TallyChangeState::range, engine::copy_of(range));
}

void TallyChange::SetCommandToAddOnce() { set_command(*this, false, true); }
void TallyChange::SetCommandToAddRepeatedly(int periodInSeconds) { set_command(*this, false, true, periodInSeconds); }
void TallyChange::SetCommandToReset() { set_command(*this, true, false); }
void TallyChange::SetCommandToResetThenAddOnce() { set_command(*this, true, true); }
void TallyChange::SetCommandToResetThenAddRepeatedly(int periodInSeconds) {
    set_command(*this, true, true, periodInSeconds);
}
bool TallyChange::DoesCommandAdd() { return state_of(*this).command.adds; }
bool TallyChange::DoesCommandAddOnce() { return DoesCommandAdd() && !DoesCommandAddRepeatedly(); }
bool TallyChange::DoesCommandAddRepeatedly() { return state_of(*this).command.period.has_value(); }
bool TallyChange::DoesCommandReset() { return state_of(*this).command.resets; }
int TallyChange::GetAddPeriodInSeconds() const {
    auto const& state = state_of(*this);
    return engine::get_field(owner_of(state), state.command, &engine::TallyCommand::period);
}

void TallyChange::SetValueAsConstant(double value) { SetValueAsDistribution(constant(value)); }
bool TallyChange::CanGetValueAsDistribution() {
    return std::holds_alternative<engine::AddedDistribution>(state_of(*this).value);
}
DistributionPointer TallyChange::GetValueAsDistribution() {
    auto const* const added = std::get_if<engine::AddedDistribution>(&state_of(*this).value);
    return added == nullptr ? nullptr : engine::copy_of(added->distribution);
}
void TallyChange::SetValueAsDistribution(DistributionPointer const& distribution) {
    set(*this, &TallyChangeState::value, engine::AddedDistribution{engine::copy_of(distribution)});
}
bool TallyChange::CanGetValueAsTally() { return std::holds_alternative<engine::AddedTally>(state_of(*this).value); }
TallyPointer TallyChange::GetValueAsTally() {
    auto const* const added = std::get_if<engine::AddedTally>(&state_of(*this).value);
    return added == nullptr ? nullptr : engine::copy_of(added->tally);
}
void TallyChange::SetValueAsTally(TallyPointer const& tally) {
    set(*this, &TallyChangeState::value, engine::AddedTally{{engine::copy_of(tally)}});
}
void TallyChange::SetValueDistributionUsesIntegers(bool integers) { set(*this, &TallyChangeState::integers, integers); }
bool TallyChange::DoesValueDistributionUseIntegers() { return get(*this, &TallyChangeState::integers); }

void TallyChange::SetCyclingEnabled(int periodInSeconds) {
    set(*this, &TallyChangeState::cycle_period, periodInSeconds);
}
void TallyChange::SetCyclingDisabled() { engine::clear(*this, &TallyChangeState::cycle_period); }
bool TallyChange::IsCyclingEnabled() { return engine::has(*this, &TallyChangeState::cycle_period); }
int TallyChange::GetCyclePeriodInSeconds() const {
    auto const& state = state_of(*this);
    return engine::get_field(owner_of(state), state, &TallyChangeState::cycle_period);
}

bool TallyChange::IsSkipFirstAddition() { return get(*this, &TallyChangeState::skip_first); }
void TallyChange::SetSkipFirstAddition(bool skip) { set(*this, &TallyChangeState::skip_first, skip); }

namespace engine {

std::shared_ptr<Tally> expression_of(TallyValue const& value) {
    return std::visit(
        []<class Value>(Value const& held) -> std::shared_ptr<Tally> {
            if constexpr (std::derived_from<Value, MadeOfTally>) return held.tally;
            return nullptr;
        },
        value);
}

std::vector<TallyObjectState const*> tally_objects_in(TallyObjectState const& owner, TallyValue const& value) {
    if (owner.document == nullptr) return {};
    std::vector<Reference> references;
    collect_references(&owner, value, references);
    std::vector<TallyObjectState const*> found;
    for (auto const& reference : references) {
        if (auto const* const object = owner.document->find<TallyObjectState>(reference.to)) found.push_back(object);
    }
    return found;
}

void require_acyclic(TallyObjectState const& owner, TallyValue const& value) {
    std::vector<TallyObjectState const*> reached = tally_objects_in(owner, value);
    for (std::size_t i = 0; i < reached.size(); ++i) {
        if (reached[i] == &owner) {
            throw Exception(fmt::format("{}: value must be made of other tally objects, not of itself{}",
                                        title_of(owner), i == 0 ? "" : " by way of others"));
        }
        for (auto const* const inner : tally_objects_in(*reached[i], reached[i]->value)) {
            if (std::ranges::find(reached, inner) == reached.end()) reached.push_back(inner);
        }
    }
}

void require_ordered_bounds(TallyObjectState const& self) {
    if (self.min && self.max && *self.min > *self.max) {
        throw Exception(fmt::format("{}: minValue must be at most maxValue, {}, not {}", title_of(self),
                                    text_of(*self.max), text_of(*self.min)));
    }
}

void TallyObjectState::check(TallyObjectState const& self) {
    require_ordered_bounds(self);
    require_acyclic(self, self.value);
}

void TallyChangeState::check(TallyChangeState const& self) {
    if (!self.command.resets && !self.command.adds) {
        throw Exception(fmt::format("{}: command must reset or add, or both, not neither", title_of(self)));
    }
    if (!self.command.adds && self.command.period) {
        throw Exception(
            fmt::format("{}: command must not have an addPeriodInSeconds when it does not add", title_of(self)));
    }
}

}  // namespace engine
}  // namespace pedflux
