#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"
#include "engine/transport/elevator_operation_states.h"

#include <pedflux/elevator_operations.h>

namespace pedflux {

using engine::CallAnswerElevatorOperationState;
using engine::get;
using engine::make_node;
using engine::OrderedListElevatorOperationState;
using engine::SabbathElevatorOperationState;
using engine::set;
using engine::ShuttleElevatorOperationState;
using engine::state_of;

ElevatorOperation::ElevatorOperation(engine::NodePointer node) : node_(std::move(node)) {}
ElevatorOperation::ElevatorOperation(ElevatorOperation const& other) : node_(engine::copy_of(engine::node_of(other))) {}
ElevatorOperation::~ElevatorOperation() = default;

ElevatorOperationTypeId ElevatorOperation::GetElevatorOperationTypeId() {
    return static_cast<ElevatorOperationTypeId>(engine::type_of(*this));
}

CallAnswerElevatorOperation::CallAnswerElevatorOperation()
    : ElevatorOperation(make_node<ElevatorOperation, CallAnswerElevatorOperationState>()) {}

// An operation outside of a project cannot check its floors; the elevator or bank that takes it does.

OrderedListElevatorOperation::OrderedListElevatorOperation(std::vector<GlobalId> const& floors,
                                                           ElevatorVisitingOrder order,
                                                           ElevatorOperationRepeatType repeat)
    : ElevatorOperation(make_node<ElevatorOperation, OrderedListElevatorOperationState>([&](auto& state) {
          state.order = order;
          state.repeat = repeat;
      })) {
    SetOrderedFloors(floors);
}

SabbathElevatorOperation::SabbathElevatorOperation(bool movingUpAtStart)
    : ElevatorOperation(make_node<ElevatorOperation, SabbathElevatorOperationState>(
          [&](auto& state) { state.moving_up_at_start = movingUpAtStart; })) {}

ShuttleElevatorOperation::ShuttleElevatorOperation(std::vector<GlobalId> const& boardingFloors,
                                                   ElevatorVisitingOrder order,
                                                   std::vector<GlobalId> const& destinationFloors)
    : ElevatorOperation(
          make_node<ElevatorOperation, ShuttleElevatorOperationState>([&](auto& state) { state.order = order; })) {
    SetBoardingFloors(boardingFloors);
    SetDestinationFloors(destinationFloors);
}

#define LIST(Class, Name, field)                                                          \
    std::vector<GlobalId> Class::Get##Name() { return get(*this, &Class##State::field); } \
    void Class::Set##Name(std::vector<GlobalId> const& floors) { state_of<Class##State>(*this).field = floors; }
#define FLAG(Class, Name, field)                                                 \
    bool Class::Is##Name() const { return state_of<Class##State>(*this).field; } \
    void Class::Set##Name(bool value) { state_of<Class##State>(*this).field = value; }

FLAG(CallAnswerElevatorOperation, LeaveDoorsOpenWhenIdle, when_idle.leave_doors_open)
FLAG(CallAnswerElevatorOperation, ReturnToRestFloorWhenIdle, when_idle.return_to_rest_floor)

LIST(OrderedListElevatorOperation, OrderedFloors, floors)
VALUE_PROPERTY(OrderedListElevatorOperation, ElevatorVisitingOrder, VisitingOrder, order)
VALUE_PROPERTY(OrderedListElevatorOperation, ElevatorOperationRepeatType, RepeatType, repeat)

FLAG(SabbathElevatorOperation, MovingUpAtStart, moving_up_at_start)

LIST(ShuttleElevatorOperation, BoardingFloors, boarding_floors)
LIST(ShuttleElevatorOperation, DestinationFloors, destination_floors)
VALUE_PROPERTY(ShuttleElevatorOperation, ElevatorVisitingOrder, VisitingOrder, order)
FLAG(ShuttleElevatorOperation, LeaveDoorsOpenWhenIdle, when_idle.leave_doors_open)
FLAG(ShuttleElevatorOperation, ReturnToRestFloorWhenIdle, when_idle.return_to_rest_floor)

namespace engine {

template <>
std::span<KindOfNode<ElevatorOperation> const* const> kinds_of<ElevatorOperation>() {
    static KindOfNode<ElevatorOperation> const* const kinds[] = {
        &node_kind<ElevatorOperation, CallAnswerElevatorOperationState>(),
        &node_kind<ElevatorOperation, OrderedListElevatorOperationState>(),
        &node_kind<ElevatorOperation, SabbathElevatorOperationState>(),
        &node_kind<ElevatorOperation, ShuttleElevatorOperationState>()};
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
