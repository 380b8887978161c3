#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/model/properties.h"
#include "engine/project/actions.h"
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

// A plain property: the getter and the setter of a field.
#define PROPERTY(Type, Getter, Setter, field)                                       \
    Type ConnectionObject::Getter() { return get(*this, &ConnectionState::field); } \
    void ConnectionObject::Setter(Type value) { set(*this, &ConnectionState::field, value); }

PROPERTY(AgentTraversalType, GetAgentTraversalType, SetAgentTraversalType, traversal)
PROPERTY(ConnectionObjectDirection, GetDirection, SetDirection, direction)
PROPERTY(bool, IsGated, SetGated, gated)
PROPERTY(bool, IsIgnoreBarriers, SetIgnoreBarriers, ignore_barriers)
PROPERTY(bool, IsIgnoreNeighbors, SetIgnoreNeighbors, ignore_neighbors)
PROPERTY(bool, HasQueuingForceOnApproach, SetQueuingForceOnApproach, queuing_on_approach)
PROPERTY(double, GetLocalAgentBodyRadius, SetLocalAgentBodyRadius, body_radius)

bool ConnectionObject::HasLocalAgentBodyRadius() { return has(*this, &ConnectionState::body_radius); }
void ConnectionObject::ClearLocalAgentBodyRadius() { clear(*this, &ConnectionState::body_radius); }

bool ConnectionObject::HasLocalAgentMaxSpeed() { return has(*this, &ConnectionState::speed_limit); }
bool ConnectionObject::HasLocalDirectionBias() { return has(*this, &ConnectionState::direction_bias); }
AgentDirectionBias ConnectionObject::GetLocalDirectionBias() { return get(*this, &ConnectionState::direction_bias); }
bool ConnectionObject::HasLocalSpeedDensityStandard() { return has(*this, &ConnectionState::speed_density_standard); }
SpeedDensityStandard ConnectionObject::GetLocalSpeedDensityStandard() {
    return get(*this, &ConnectionState::speed_density_standard);
}

ACTION(ConnectionObject, ConnectionState, BallEnter, ball_enter_action)
ACTION(ConnectionObject, ConnectionState, BallExit, ball_exit_action)
ACTION(ConnectionObject, ConnectionState, BoxEnter, box_enter_action)
ACTION(ConnectionObject, ConnectionState, BoxExit, box_exit_action)

LineSeg3d ConnectionObject::GetBallGoalLine() { return engine::end_goal_lines(*GetGeometry()).ball; }
LineSeg3d ConnectionObject::GetBoxGoalLine() { return engine::end_goal_lines(*GetGeometry()).box; }

bool ConnectionObject::IsEnteringFlowCapped() { return has(*this, &ConnectionState::flow_cap); }
FlowRateType ConnectionObject::GetEnteringFlowRateType() { return get(*this, &ConnectionState::flow_cap).type; }
double ConnectionObject::GetEnteringFlowRateValue() { return get(*this, &ConnectionState::flow_cap).value; }
void ConnectionObject::SetEnteringFlowCap(FlowRateType type, double value) {
    set(*this, &ConnectionState::flow_cap, engine::FlowCap{type, value});
}
void ConnectionObject::ClearEnteringFlowCap() { clear(*this, &ConnectionState::flow_cap); }

bool ConnectionObject::HasEntranceDelayDistribution() {
    return get(*this, &ConnectionState::entrance_delay) != nullptr;
}
std::shared_ptr<Distribution> ConnectionObject::GetEntranceDelayDistribution() {
    return get_copy(*this, &ConnectionState::entrance_delay);
}
void ConnectionObject::SetEntranceDelayDistribution(std::shared_ptr<Distribution> const& delay) {
    set_copy(*this, &ConnectionState::entrance_delay, delay);
}
void ConnectionObject::ClearEntranceDelayDistribution() { state_of<ConnectionState>(*this).entrance_delay.reset(); }

bool ConnectionObject::HasExitDelayDistribution() { return get(*this, &ConnectionState::exit_delay) != nullptr; }
std::shared_ptr<Distribution> ConnectionObject::GetExitDelayDistribution() {
    return get_copy(*this, &ConnectionState::exit_delay);
}
void ConnectionObject::SetExitDelayDistribution(std::shared_ptr<Distribution> const& delay) {
    set_copy(*this, &ConnectionState::exit_delay, delay);
}
void ConnectionObject::ClearExitDelayDistribution() { state_of<ConnectionState>(*this).exit_delay.reset(); }

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
