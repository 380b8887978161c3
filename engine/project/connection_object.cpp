#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/accessors.h"
#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/scene/banks.h"
#include "engine/scene/goal_lines.h"
#include "engine/scene/group_states.h"
#include "engine/scene/scene_states.h"

#include <pedflux/exception.h>
#include <pedflux/objects.h>

#include <algorithm>
#include <optional>

namespace pedflux {

using engine::clear;
using engine::ConnectionState;
using engine::get;
using engine::get_copy;
using engine::has;
using engine::set;
using engine::set_copy;
using engine::state_of;

VALUE_PROPERTY_OF(ConnectionObject, ConnectionState, AgentTraversalType, AgentTraversalType, traversal)
VALUE_PROPERTY_OF(ConnectionObject, ConnectionState, ConnectionObjectDirection, Direction, direction)
FLAG_PROPERTY_OF(ConnectionObject, ConnectionState, IsGated, SetGated, gated)
FLAG_PROPERTY_OF(ConnectionObject, ConnectionState, IsIgnoreBarriers, SetIgnoreBarriers, ignore_barriers)
FLAG_PROPERTY_OF(ConnectionObject, ConnectionState, IsIgnoreNeighbors, SetIgnoreNeighbors, ignore_neighbors)
FLAG_PROPERTY_OF(ConnectionObject, ConnectionState, HasQueuingForceOnApproach, SetQueuingForceOnApproach,
                 queuing_on_approach)
VALUE_PROPERTY_OF(ConnectionObject, ConnectionState, double, LocalAgentBodyRadius, body_radius)

OPTIONAL_PROPERTY_OF(ConnectionObject, ConnectionState, LocalAgentBodyRadius, body_radius)

bool ConnectionObject::HasLocalAgentMaxSpeed() { return has(*this, &ConnectionState::speed_limit); }
bool ConnectionObject::HasLocalDirectionBias() { return has(*this, &ConnectionState::direction_bias); }
AgentDirectionBias ConnectionObject::GetLocalDirectionBias() { return get(*this, &ConnectionState::direction_bias); }
bool ConnectionObject::HasLocalSpeedDensityStandard() { return has(*this, &ConnectionState::speed_density_standard); }
SpeedDensityStandard ConnectionObject::GetLocalSpeedDensityStandard() {
    return get(*this, &ConnectionState::speed_density_standard);
}

ACTION_PROPERTY_OF(ConnectionObject, ConnectionState, BallEnterAction, ball_enter_action)
ACTION_PROPERTY_OF(ConnectionObject, ConnectionState, BallExitAction, ball_exit_action)
ACTION_PROPERTY_OF(ConnectionObject, ConnectionState, BoxEnterAction, box_enter_action)
ACTION_PROPERTY_OF(ConnectionObject, ConnectionState, BoxExitAction, box_exit_action)

LineSeg3d ConnectionObject::GetBallGoalLine() { return engine::end_goal_lines(*GetGeometry()).ball; }
LineSeg3d ConnectionObject::GetBoxGoalLine() { return engine::end_goal_lines(*GetGeometry()).box; }

bool ConnectionObject::IsEnteringFlowCapped() { return has(*this, &ConnectionState::flow_cap); }
FlowRateType ConnectionObject::GetEnteringFlowRateType() { return get(*this, &ConnectionState::flow_cap).type; }
double ConnectionObject::GetEnteringFlowRateValue() { return get(*this, &ConnectionState::flow_cap).value; }
void ConnectionObject::SetEnteringFlowCap(FlowRateType type, double value) {
    set(*this, &ConnectionState::flow_cap, engine::FlowCap{type, value});
}
void ConnectionObject::ClearEnteringFlowCap() { clear(*this, &ConnectionState::flow_cap); }

COPIED_PROPERTY_OF(ConnectionObject, ConnectionState, Distribution, EntranceDelayDistribution, entrance_delay)
OPTIONAL_PROPERTY_OF(ConnectionObject, ConnectionState, EntranceDelayDistribution, entrance_delay)

COPIED_PROPERTY_OF(ConnectionObject, ConnectionState, Distribution, ExitDelayDistribution, exit_delay)
OPTIONAL_PROPERTY_OF(ConnectionObject, ConnectionState, ExitDelayDistribution, exit_delay)

bool ConnectionObject::HasPriority() { return has(*this, &ConnectionState::priority); }
ConnectionObjectDirection ConnectionObject::GetPriorityDirection() {
    return get(*this, &ConnectionState::priority).direction;
}
void ConnectionObject::SetPriorityDirection(ConnectionObjectDirection direction) {
    auto& state = state_of<ConnectionState>(*this);
    auto priority = state.priority.value_or(engine::Priority{});
    priority.direction = direction;
    if (direction == ConnectionObjectDirection::BOTH_WAYS) {
        engine::Subject{owner_of(state), "priority.direction"}.refuse("one direction", "both ways");
    }
    set(*this, &ConnectionState::priority, priority);
}
void ConnectionObject::DisablePriority() { clear(*this, &ConnectionState::priority); }
double ConnectionObject::GetPriorityCost() { return get(*this, &ConnectionState::priority).cost; }
double ConnectionObject::GetPriorityDistance() { return get(*this, &ConnectionState::priority).distance; }
bool ConnectionObject::IsPriorityCommitWhenWaiting() {
    return get(*this, &ConnectionState::priority).commit_when_waiting;
}
bool ConnectionObject::IsPriorityPrimaryYieldToSecondary() {
    return get(*this, &ConnectionState::priority).primary_yields_to_secondary;
}

bool ConnectionObject::HasBank() {
    return engine::bank_with<engine::RouteBankState>(state_of<ConnectionState>(*this)) != nullptr;
}
GlobalId ConnectionObject::GetBank() {
    auto& state = state_of<ConnectionState>(*this);
    auto const* const bank = engine::bank_with<engine::RouteBankState>(state);
    if (bank == nullptr) engine::refuse_unset(owner_of(state), "bank");
    return bank->id;
}
void ConnectionObject::SetBank(GlobalId const& bank) {
    auto& state = state_of<ConnectionState>(*this);
    if (bank.IsValid()) {
        constexpr auto route_banks = engine::refers_to<engine::RouteBankState>("a route bank");
        engine::check_value(owner_of(state), "bank", bank, route_banks);
        engine::join_bank(*document_of(state).find<engine::RouteBankState>(bank), state.id);
    } else {
        engine::leave_bank<engine::RouteBankState>(state);
    }
}

int ConnectionObject::GetPerimeterCount() { return static_cast<int>(get(*this, &ConnectionState::perimeters).size()); }
std::vector<GlobalId> ConnectionObject::GetPerimeters() { return get(*this, &ConnectionState::perimeters); }
void ConnectionObject::SetPerimeters(std::vector<GlobalId> const& perimeters) {
    set(*this, &ConnectionState::perimeters, perimeters);
}
void ConnectionObject::AddPerimeter(GlobalId const& perimeter) {
    engine::add_to_list(*this, &ConnectionState::perimeters, {perimeter});
}
void ConnectionObject::RemovePerimeter(GlobalId const& perimeter) {
    engine::remove_from_list(*this, &ConnectionState::perimeters, perimeter);
}
void ConnectionObject::ClearPerimeters() { state_of<ConnectionState>(*this).perimeters.clear(); }

}  // namespace pedflux
