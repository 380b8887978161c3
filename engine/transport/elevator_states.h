#pragma once

#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/rules.h"
#include "engine/scene/banks.h"
#include "engine/scene/group_states.h"
#include "engine/scene/scene_states.h"
#include "engine/transport/elevator_operation_states.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/elevators.h>
#include <pedflux/wait_styles.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of elevators and their banks: see engine/model/state.h for how a state lists its fields.
namespace pedflux::engine {

PEDFLUX_NAMES(ElevatorDirection,
              {{ElevatorDirection::NONE, "NONE"}, {ElevatorDirection::UP, "UP"}, {ElevatorDirection::DOWN, "DOWN"}});
PEDFLUX_NAMES(ElevatorControlStyle, {{ElevatorControlStyle::DIRECTION_CALLS, "DIRECTION_CALLS"},
                                     {ElevatorControlStyle::DESTINATION_CALLS, "DESTINATION_CALLS"}});
PEDFLUX_NAMES(ElevatorComputer,
              {{ElevatorComputer::COLLECTIVE, "COLLECTIVE"}, {ElevatorComputer::IN_ORDER, "IN_ORDER"}});
PEDFLUX_NAMES(ElevatorCapacityType, {{ElevatorCapacityType::AGENT_COUNT, "AGENT_COUNT"},
                                     {ElevatorCapacityType::AUTO_AREA, "AUTO_AREA"},
                                     {ElevatorCapacityType::CUSTOM_AREA, "CUSTOM_AREA"}});

/// What it costs to count on an elevator that one may not use: more than any way round.
inline constexpr double cost_when_denied = 1'000'000;  // seconds

struct Doors {
    double width = 1.1;                    ///< metres
    double opening_duration = 2;           ///< seconds
    double closing_duration = 3;           ///< seconds
    double open_duration_after_use = 3;    ///< seconds
    double open_duration_when_unused = 5;  ///< seconds
    bool transposed = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr Range seconds{0, unlimited, "s"};
        field("width", self.width, Range{0, unlimited, "m", true});
        field("openingDuration", self.opening_duration, seconds);
        field("closingDuration", self.closing_duration, seconds);
        field("openDurationAfterUse", self.open_duration_after_use, seconds);
        field("openDurationWhenUnused", self.open_duration_when_unused, seconds);
        field("transposed", self.transposed);
    }
};

struct Capacity {
    ElevatorCapacityType type = ElevatorCapacityType::AGENT_COUNT;
    int agent_count = 13;
    double agent_radius = 0.2;  ///< metres; of the types by area
    double custom_area = 2;     ///< m²

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("type", self.type);
        field("agentCount", self.agent_count, Range{1, unlimited, "person"});
        field("agentRadius", self.agent_radius, Range{0, 2, "m", true});
        field("customArea", self.custom_area, Range{0, unlimited, "m²", true});
    }
};

/// The floors that one side of the car serves.
struct DoorSide {
    std::vector<GlobalId> boarding;
    std::vector<GlobalId> alighting;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("boardingFloors", self.boarding, any_floor);
        field("alightingFloors", self.alighting, any_floor);
    }
};

struct ElevatorState : WalkableState {
    static constexpr ObjectType TYPE = ObjectType::ELEVATOR;
    static constexpr std::string_view NAME = "Elevator";
    using Handle = Elevator;

    double acceleration = 0.8;  ///< m/s²
    double jerk = 1;            ///< m/s³
    double speed = 1.6;         ///< m/s
    Doors doors;
    Capacity capacity;
    std::optional<FlowCap> boarding_flow_cap;
    std::optional<FlowCap> alighting_flow_cap;
    DoorSide ball;
    DoorSide box;
    std::optional<GlobalId> rest_floor;
    std::optional<double> cycle_duration;  ///< seconds
    double queue_multiplier = 1;
    // What is shared is replaced, never changed.
    std::shared_ptr<ElevatorOperation> operation = std::make_shared<CallAnswerElevatorOperation>();
    std::shared_ptr<AgentTest> access_test;
    double access_test_failure_cost = cost_when_denied;  ///< seconds
    std::shared_ptr<AgentAction> enter_action;
    std::shared_ptr<AgentAction> exit_action;
    std::shared_ptr<WaitStyle> wait_style = WaitStyle::StandStill();

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr Range seconds{0, unlimited, "s"};
        WalkableState::fields(self, field);
        field("acceleration", self.acceleration, Range{0, unlimited, "m/s²", true});
        field("jerk", self.jerk, Range{0, unlimited, "m/s³", true});
        field("speed", self.speed, Range{0, unlimited, "m/s", true});
        field("doors", self.doors);
        field("capacity", self.capacity);
        field("boardingFlowCap", self.boarding_flow_cap);
        field("alightingFlowCap", self.alighting_flow_cap);
        field("ball", self.ball);
        field("box", self.box);
        field("restFloor", self.rest_floor, any_floor);
        field("cycleDurationOverride", self.cycle_duration, Range{1, unlimited, "s"});
        field("queueMultiplier", self.queue_multiplier, not_negative);
        field("elevatorOperation", self.operation, must_be_given);
        field("accessAgentTest", self.access_test);
        field("accessAgentTestFailureCost", self.access_test_failure_cost, seconds);
        field("enterAction", self.enter_action);
        field("exitAction", self.exit_action);
        field("waitStyle", self.wait_style, must_be_given);
    }
};

struct ElevatorBankState : GroupState {
    static constexpr ObjectType TYPE = ObjectType::ELEVATOR_BANK;
    static constexpr std::string_view NAME = "ElevatorBank";
    using Handle = ElevatorBank;

    RefersTo item_rule() const override { return refers_to<ElevatorState>("an elevator"); }

    std::vector<GlobalId> alternate_routes;
    std::shared_ptr<ElevatorOperation> operation = std::make_shared<CallAnswerElevatorOperation>();
    std::shared_ptr<AgentTest> access_test;
    double access_test_failure_cost = cost_when_denied;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr Range seconds{0, unlimited, "s"};
        GroupState::fields(self, field);
        field("alternateRouteItems", self.alternate_routes,
              refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object"));
        field("elevatorOperation", self.operation, must_be_given);
        field("accessAgentTest", self.access_test);
        field("accessAgentTestFailureCost", self.access_test_failure_cost, seconds);
    }
    static void check(ElevatorBankState const& self) { require_unshared_items(self, "elevators"); }
};

/// All floors that a side serves: those for boarding, then those for alighting alone.
std::vector<GlobalId> floors_of(DoorSide const& side);

}  // namespace pedflux::engine
