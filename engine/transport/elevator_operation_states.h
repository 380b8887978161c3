#pragma once

#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/rules.h"

#include <pedflux/elevator_operations.h>

#include <string_view>
#include <vector>

/// The states of elevator operations: see engine/model/node.h.
namespace pedflux::engine {

PEDFLUX_NAMES(ElevatorOperationTypeId, {{ElevatorOperationTypeId::CALL_ANSWER, "CALL_ANSWER"},
                                        {ElevatorOperationTypeId::ORDERED_LIST, "ORDERED_LIST"},
                                        {ElevatorOperationTypeId::SABBATH, "SABBATH"},
                                        {ElevatorOperationTypeId::SHUTTLE, "SHUTTLE"}});
PEDFLUX_NAMES(ElevatorVisitingOrder, {{ElevatorVisitingOrder::AS_LISTED, "AS_LISTED"},
                                      {ElevatorVisitingOrder::UPWARDS, "UPWARDS"},
                                      {ElevatorVisitingOrder::DOWNWARDS, "DOWNWARDS"}});
PEDFLUX_NAMES(ElevatorOperationRepeatType, {{ElevatorOperationRepeatType::ONCE, "ONCE"},
                                            {ElevatorOperationRepeatType::FROM_START, "FROM_START"},
                                            {ElevatorOperationRepeatType::BACK_AND_FORTH, "BACK_AND_FORTH"}});

inline constexpr RefersTo any_floor = refers_to_kind<ObjectType::FLOOR>("a floor");

/// What a car does while nobody wants it.
struct WhenIdle {
    bool leave_doors_open = false;
    bool return_to_rest_floor = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("leaveDoorsOpen", self.leave_doors_open);
        field("returnToRestFloor", self.return_to_rest_floor);
    }
};

struct CallAnswerElevatorOperationState : NodeState {
    static constexpr ElevatorOperationTypeId TYPE = ElevatorOperationTypeId::CALL_ANSWER;
    static constexpr std::string_view NAME = "CallAnswerElevatorOperation";
    using Handle = CallAnswerElevatorOperation;

    WhenIdle when_idle;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("whenIdle", self.when_idle);
    }
};

struct OrderedListElevatorOperationState : NodeState {
    static constexpr ElevatorOperationTypeId TYPE = ElevatorOperationTypeId::ORDERED_LIST;
    static constexpr std::string_view NAME = "OrderedListElevatorOperation";
    using Handle = OrderedListElevatorOperation;

    std::vector<GlobalId> floors;
    ElevatorVisitingOrder order = ElevatorVisitingOrder::AS_LISTED;
    ElevatorOperationRepeatType repeat = ElevatorOperationRepeatType::ONCE;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("orderedFloors", self.floors, any_floor);
        field("visitingOrder", self.order);
        field("repeatType", self.repeat);
    }
};

struct SabbathElevatorOperationState : NodeState {
    static constexpr ElevatorOperationTypeId TYPE = ElevatorOperationTypeId::SABBATH;
    static constexpr std::string_view NAME = "SabbathElevatorOperation";
    using Handle = SabbathElevatorOperation;

    bool moving_up_at_start = true;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("movingUpAtStart", self.moving_up_at_start);
    }
};

struct ShuttleElevatorOperationState : NodeState {
    static constexpr ElevatorOperationTypeId TYPE = ElevatorOperationTypeId::SHUTTLE;
    static constexpr std::string_view NAME = "ShuttleElevatorOperation";
    using Handle = ShuttleElevatorOperation;

    std::vector<GlobalId> boarding_floors;
    std::vector<GlobalId> destination_floors;
    ElevatorVisitingOrder order = ElevatorVisitingOrder::AS_LISTED;
    WhenIdle when_idle;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("boardingFloors", self.boarding_floors, any_floor);
        field("destinationFloors", self.destination_floors, any_floor);
        field("visitingOrder", self.order);
        field("whenIdle", self.when_idle);
    }
};

}  // namespace pedflux::engine
