#include "bindings/table.h"

#include <pedflux/elevator_operations.h>
#include <pedflux/identifiers.h>

namespace pedflux::jni {

CLASS(ElevatorOperation)
GET(ElevatorOperation, ElevatorOperationTypeId)

CLASS(CallAnswerElevatorOperation, ElevatorOperation)
CONSTRUCTOR(CallAnswerElevatorOperation)
FLAG(CallAnswerElevatorOperation, LeaveDoorsOpenWhenIdle)
FLAG(CallAnswerElevatorOperation, ReturnToRestFloorWhenIdle)
GET(CallAnswerElevatorOperation, ElevatorOperationTypeId)

CLASS(OrderedListElevatorOperation, ElevatorOperation)
CONSTRUCTOR(OrderedListElevatorOperation, std::vector<GlobalId> const&, ElevatorVisitingOrder,
            ElevatorOperationRepeatType)
PROPERTY(OrderedListElevatorOperation, OrderedFloors)
PROPERTY(OrderedListElevatorOperation, VisitingOrder)
PROPERTY(OrderedListElevatorOperation, RepeatType)
GET(OrderedListElevatorOperation, ElevatorOperationTypeId)

CLASS(SabbathElevatorOperation, ElevatorOperation)
CONSTRUCTOR(SabbathElevatorOperation, bool)
FLAG(SabbathElevatorOperation, MovingUpAtStart)
GET(SabbathElevatorOperation, ElevatorOperationTypeId)

CLASS(ShuttleElevatorOperation, ElevatorOperation)
CONSTRUCTOR(ShuttleElevatorOperation, std::vector<GlobalId> const&, ElevatorVisitingOrder, std::vector<GlobalId> const&)
PROPERTY(ShuttleElevatorOperation, BoardingFloors)
PROPERTY(ShuttleElevatorOperation, DestinationFloors)
PROPERTY(ShuttleElevatorOperation, VisitingOrder)
FLAG(ShuttleElevatorOperation, LeaveDoorsOpenWhenIdle)
FLAG(ShuttleElevatorOperation, ReturnToRestFloorWhenIdle)
GET(ShuttleElevatorOperation, ElevatorOperationTypeId)

}  // namespace pedflux::jni
