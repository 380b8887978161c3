#include "engine/model/accessors.h"
#include "engine/model/lists.h"
#include "engine/transport/elevator_states.h"

#include <pedflux/elevators.h>

#include <algorithm>
#include <utility>

namespace pedflux {

using engine::clear;
using engine::copy_of;
using engine::ElevatorBankState;
using engine::ElevatorState;
using engine::get;
using engine::get_copy;
using engine::has;
using engine::set;
using engine::set_copy;
using engine::state_of;

namespace engine {

std::vector<GlobalId> floors_of(DoorSide const& side) {
    auto floors = side.boarding;
    std::ranges::copy_if(side.alighting, std::back_inserter(floors),
                         [&](GlobalId const& floor) { return !lists(side.boarding, floor); });
    return floors;
}

}  // namespace engine

namespace {

/// Sets one field of a part of the state.
template <class Part, class Member, class Value>
void set_in(Elevator& elevator, Part ElevatorState::*part, Member Part::*member, Value&& value) {
    Part changed = state_of<ElevatorState>(elevator).*part;
    changed.*member = std::forward<Value>(value);
    set(elevator, part, std::move(changed));
}

bool is_two_way(engine::DoorSide const& side) {
    return side.boarding.size() == side.alighting.size() && floors_of(side).size() == side.boarding.size();
}

}  // namespace

#define DOOR_NUMBER(Name, field)                                                                          \
    double Elevator::Get##Name() const { return static_cast<ElevatorState const&>(*state_).doors.field; } \
    void Elevator::Set##Name(double value) { set_in(*this, &ElevatorState::doors, &engine::Doors::field, value); }

CONST_VALUE_PROPERTY(Elevator, double, Acceleration, acceleration)
CONST_VALUE_PROPERTY(Elevator, double, Jerk, jerk)
CONST_VALUE_PROPERTY(Elevator, double, Speed, speed)
CONST_VALUE_PROPERTY(Elevator, double, QueueMultiplier, queue_multiplier)
CONST_VALUE_PROPERTY(Elevator, double, AccessAgentTestFailureCost, access_test_failure_cost)
DOOR_NUMBER(DoorWidth, width)
DOOR_NUMBER(DoorOpeningDuration, opening_duration)
DOOR_NUMBER(DoorClosingDuration, closing_duration)
DOOR_NUMBER(DoorOpenDurationAfterUse, open_duration_after_use)
DOOR_NUMBER(DoorOpenDurationWhenUnused, open_duration_when_unused)

bool Elevator::AreDoorsTransposed() { return get(*this, &ElevatorState::doors).transposed; }
void Elevator::SetDoorsTransposed(bool transposed) {
    set_in(*this, &ElevatorState::doors, &engine::Doors::transposed, transposed);
}

ElevatorCapacityType Elevator::GetCapacityType() { return get(*this, &ElevatorState::capacity).type; }
int Elevator::GetCapacityByAgentCount() { return get(*this, &ElevatorState::capacity).agent_count; }
double Elevator::GetAgentRadiusForAreaCapacity() const {
    return static_cast<ElevatorState const&>(*state_).capacity.agent_radius;
}
double Elevator::GetCapacityCustomArea() const {
    return static_cast<ElevatorState const&>(*state_).capacity.custom_area;
}
void Elevator::SetCapacityByAgentCount(int count) {
    auto capacity = get(*this, &ElevatorState::capacity);
    capacity.type = ElevatorCapacityType::AGENT_COUNT;
    capacity.agent_count = count;
    set(*this, &ElevatorState::capacity, capacity);
}
void Elevator::SetCapacityByAutoArea(double agentRadius) {
    auto capacity = get(*this, &ElevatorState::capacity);
    capacity.type = ElevatorCapacityType::AUTO_AREA;
    capacity.agent_radius = agentRadius;
    set(*this, &ElevatorState::capacity, capacity);
}
void Elevator::SetCapacityByCustomArea(double area, double agentRadius) {
    auto capacity = get(*this, &ElevatorState::capacity);
    capacity.type = ElevatorCapacityType::CUSTOM_AREA;
    capacity.agent_radius = agentRadius;
    capacity.custom_area = area;
    set(*this, &ElevatorState::capacity, capacity);
}

bool Elevator::HasCycleDurationOverride() { return has(*this, &ElevatorState::cycle_duration); }
double Elevator::GetCycleDurationOverride() const {
    auto const& state = static_cast<ElevatorState const&>(*state_);
    return get_field(owner_of(state), state, &ElevatorState::cycle_duration);
}
void Elevator::SetCycleDurationOverride(int seconds) { set(*this, &ElevatorState::cycle_duration, double(seconds)); }
void Elevator::ClearCycleDurationOverride() { clear(*this, &ElevatorState::cycle_duration); }

#define FLOW_CAP(Name, field)                                                                           \
    FlowRateType Elevator::Get##Name##FlowRateType() { return get(*this, &ElevatorState::field).type; } \
    double Elevator::Get##Name##FlowRateValue() const {                                                 \
        auto const& state = static_cast<ElevatorState const&>(*state_);                                 \
        return get_field(owner_of(state), state, &ElevatorState::field).value;                          \
    }                                                                                                   \
    void Elevator::Set##Name##FlowCap(FlowRateType type, double value) {                                \
        set(*this, &ElevatorState::field, engine::FlowCap{type, value});                                \
    }

FLOW_CAP(Boarding, boarding_flow_cap)
FLOW_CAP(Alighting, alighting_flow_cap)
bool Elevator::IsBoardingFlowCapped() { return has(*this, &ElevatorState::boarding_flow_cap); }
void Elevator::ClearBoardingFlowCap() { clear(*this, &ElevatorState::boarding_flow_cap); }

#define SIDE_FLOORS(Name, side, field)                                                                     \
    std::vector<GlobalId> Elevator::Get##Name##Floors() { return get(*this, &ElevatorState::side).field; } \
    void Elevator::Set##Name##Floors(std::vector<GlobalId> const& floors) {                                \
        set_in(*this, &ElevatorState::side, &engine::DoorSide::field, floors);                             \
    }

SIDE_FLOORS(BallBoarding, ball, boarding)
SIDE_FLOORS(BallAlighting, ball, alighting)
SIDE_FLOORS(BoxBoarding, box, boarding)
SIDE_FLOORS(BoxAlighting, box, alighting)

std::vector<GlobalId> Elevator::GetBallFloors() { return floors_of(get(*this, &ElevatorState::ball)); }
std::vector<GlobalId> Elevator::GetBoxFloors() { return floors_of(get(*this, &ElevatorState::box)); }
bool Elevator::AreAllFloorsTwoWay() {
    return is_two_way(get(*this, &ElevatorState::ball)) && is_two_way(get(*this, &ElevatorState::box));
}
void Elevator::SetTwoWayFloors(std::vector<GlobalId> const& ballFloors, std::vector<GlobalId> const& boxFloors) {
    auto const before = get(*this, &ElevatorState::ball);
    set(*this, &ElevatorState::ball, engine::DoorSide{ballFloors, ballFloors});
    try {
        set(*this, &ElevatorState::box, engine::DoorSide{boxFloors, boxFloors});
    } catch (...) {
        state_of<ElevatorState>(*this).ball = before;
        throw;
    }
}

bool Elevator::HasElevatorBank() { return engine::bank_with<ElevatorBankState>(*state_) != nullptr; }
GlobalId Elevator::GetElevatorBank() {
    auto const* const bank = engine::bank_with<ElevatorBankState>(*state_);
    if (bank == nullptr) engine::refuse_unset(owner_of(*state_), "elevatorBank");
    return bank->id;
}
void Elevator::SetElevatorBank(GlobalId const& bank) {
    constexpr auto elevator_banks = engine::refers_to<ElevatorBankState>("an elevator bank");
    engine::check_value(owner_of(*state_), "elevatorBank", bank, elevator_banks);
    // An object of a kind that this version does not know cannot take the elevator in.
    auto* const joined = document_of(*state_).find<ElevatorBankState>(bank);
    if (joined == nullptr) engine::Subject{owner_of(*state_), "elevatorBank"}.refuse("an elevator bank", "unknown");
    engine::join_bank(*joined, state_->id);
}
void Elevator::ClearElevatorBank() { engine::leave_bank<ElevatorBankState>(*state_); }

GlobalId Elevator::GetRestFloor() { return state_of<ElevatorState>(*this).rest_floor.value_or(GlobalId::INVALID); }
void Elevator::SetRestFloor(GlobalId const& floor) {
    set(*this, &ElevatorState::rest_floor, floor.IsValid() ? std::optional(floor) : std::nullopt);
}
void Elevator::ClearRestFloor() { clear(*this, &ElevatorState::rest_floor); }

COPIED_PROPERTY(Elevator, ElevatorOperation, ElevatorOperation, operation)
COPIED_PROPERTY(Elevator, AgentTest, AccessAgentTest, access_test)
OPTIONAL_PROPERTY(Elevator, AccessAgentTest, access_test)
COPIED_PROPERTY(ElevatorBank, ElevatorOperation, ElevatorOperation, operation)
COPIED_PROPERTY(ElevatorBank, AgentTest, AccessAgentTest, access_test)
OPTIONAL_PROPERTY(ElevatorBank, AccessAgentTest, access_test)

ACTION_PROPERTY(Elevator, EnterAction, enter_action)
ACTION_PROPERTY(Elevator, ExitAction, exit_action)

std::shared_ptr<WaitStyle> Elevator::GetWaitStyle() { return get_copy(*this, &ElevatorState::wait_style); }
void Elevator::SetWaitStyle(std::shared_ptr<WaitStyle> const& style) {
    set_copy(*this, &ElevatorState::wait_style, style);
}

void ElevatorBank::SetItems(std::vector<GlobalId> const& elevators) {
    set(*this, &ElevatorBankState::items, elevators);
    engine::claim_items(state_of<ElevatorBankState>(*this));
}
void ElevatorBank::AddItems(std::vector<GlobalId> const& elevators) {
    engine::add_to_list(*this, &ElevatorBankState::items, elevators);
    engine::claim_items(state_of<ElevatorBankState>(*this));
}
void ElevatorBank::AddItem(GlobalId const& elevator) { AddItems({elevator}); }

std::vector<GlobalId> ElevatorBank::GetAlternateRouteItems() {
    return get(*this, &ElevatorBankState::alternate_routes);
}
void ElevatorBank::SetAlternateRouteItems(std::vector<GlobalId> const& items) {
    set(*this, &ElevatorBankState::alternate_routes, items);
}
double ElevatorBank::GetAccessAgentTestFailureCost() {
    return get(*this, &ElevatorBankState::access_test_failure_cost);
}
void ElevatorBank::SetAccessAgentTestFailureCost(double cost) {
    set(*this, &ElevatorBankState::access_test_failure_cost, cost);
}

}  // namespace pedflux
