#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/geometry/vector.h"
#include "engine/model/accessors.h"
#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/scene/cordon_direction.h"
#include "engine/scene/goal_lines.h"
#include "engine/scene/scene_states.h"

#include <pedflux/geometry.h>
#include <pedflux/scene.h>
#include <pedflux/wait_styles.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

namespace pedflux {

using engine::clear;
using engine::ConnectionState;
using engine::CordonState;
using engine::EscalatorState;
using engine::get;
using engine::has;
using engine::PathState;
using engine::PortalState;
using engine::Role;
using engine::set;
using engine::state_of;
using engine::WaitSpaceState;
using engine::ZoneState;

namespace {

bool is_mentioned(Portal& portal, Role role) {
    auto const references = document_of(engine::state_of<PortalState>(portal)).references_to(portal.GetId());
    return std::ranges::any_of(references, [&](auto const& reference) { return reference.role == role; });
}

}  // namespace

ACTION_PROPERTY(Floor, EnterAction, enter_action)
ACTION_PROPERTY(Floor, ExitAction, exit_action)
ACTION_PROPERTY(Portal, EnterAction, enter_action)
ACTION_PROPERTY(Portal, WaypointAction, waypoint_action)
ACTION_PROPERTY(Zone, EnterAction, enter_action)
ACTION_PROPERTY(Zone, ExitAction, exit_action)

LineSeg3d Portal::GetGoalLine() { return engine::centre_goal_line(*GetGeometry()); }
AgentInitialPlacement Portal::GetAgentInitialPlacement() { return get(*this, &PortalState::placement); }
void Portal::SetAgentInitialPlacement(AgentInitialPlacement placement) {
    set(*this, &PortalState::placement, placement);
}
bool Portal::IsEntrance() { return is_mentioned(*this, Role::ORIGIN); }
bool Portal::IsExit() { return is_mentioned(*this, Role::DESTINATION); }

// The local properties that kinds of connections have in common.
#define LOCAL_BIAS(Class)                                                                                              \
    void Class::SetLocalDirectionBias(AgentDirectionBias bias) { set(*this, &ConnectionState::direction_bias, bias); } \
    void Class::ClearLocalDirectionBias() { clear(*this, &ConnectionState::direction_bias); }
#define LOCAL_SPEED_DENSITY(Class)                                            \
    void Class::SetLocalSpeedDensityStandard(SpeedDensityStandard standard) { \
        set(*this, &ConnectionState::speed_density_standard, standard);       \
    }                                                                         \
    void Class::ClearLocalSpeedDensityStandard() { clear(*this, &ConnectionState::speed_density_standard); }
#define LOCAL_SPEED(Class)                                                                         \
    double Class::GetLocalAgentMaxSpeed() { return get(*this, &ConnectionState::speed_limit).up; } \
    void Class::SetLocalAgentMaxSpeed(double speed) {                                              \
        set(*this, &ConnectionState::speed_limit, engine::SpeedLimit{speed, speed});               \
    }                                                                                              \
    void Class::ClearLocalAgentMaxSpeed() { clear(*this, &ConnectionState::speed_limit); }
#define LOCAL_SPEEDS_UP_AND_DOWN(Class)                                                                  \
    double Class::GetLocalAgentMaxSpeedUp() { return get(*this, &ConnectionState::speed_limit).up; }     \
    double Class::GetLocalAgentMaxSpeedDown() { return get(*this, &ConnectionState::speed_limit).down; } \
    void Class::SetLocalAgentMaxSpeedUpAndDown(double up, double down) {                                 \
        set(*this, &ConnectionState::speed_limit, engine::SpeedLimit{up, down});                         \
    }                                                                                                    \
    void Class::ClearLocalAgentMaxSpeed() { clear(*this, &ConnectionState::speed_limit); }

LOCAL_SPEED(Link)
LOCAL_BIAS(Link)
LOCAL_SPEED_DENSITY(Link)

LOCAL_SPEEDS_UP_AND_DOWN(Stair)
LOCAL_BIAS(Stair)
LOCAL_SPEED_DENSITY(Stair)

LOCAL_SPEEDS_UP_AND_DOWN(Ramp)
LOCAL_BIAS(Ramp)
LOCAL_SPEED_DENSITY(Ramp)

LOCAL_SPEED(Path)
LOCAL_SPEED_DENSITY(Path)

double Escalator::GetTreadSpeedAlongIncline() {
    bool const stands_still = GetDirection() == ConnectionObjectDirection::BOTH_WAYS;
    return stands_still ? 0 : get(*this, &EscalatorState::tread_speed);
}
double Escalator::GetHorizontalTreadSpeed() {
    auto const ends = engine::end_goal_lines(*GetGeometry());
    auto const run =
        engine::vector_of(LineSeg3d(ends.box).GetMidpoint()) - engine::vector_of(LineSeg3d(ends.ball).GetMidpoint());
    return GetTreadSpeedAlongIncline() * std::hypot(run.x, run.z) / engine::length(run);
}

namespace {

void set_spacing(Path& path, QueueSpacingType type, std::shared_ptr<Distribution> const& distance,
                 std::optional<PersonalSpaceSelection> selection) {
    engine::QueueSpacing const spacing{type, engine::copy_of(distance), selection};
    require_whole({owner_of(state_of<PathState>(path)), "localAgentQueueSpacing"}, spacing);
    set(path, &PathState::queue_spacing, spacing);
}

}  // namespace

bool Path::HasLocalAgentQueueSpacing() { return has(*this, &PathState::queue_spacing); }
void Path::ClearLocalAgentQueueSpacing() { clear(*this, &PathState::queue_spacing); }
QueueSpacingType Path::GetLocalAgentQueueSpacingType() { return get(*this, &PathState::queue_spacing).type; }
std::shared_ptr<Distribution> Path::GetLocalAgentQueueSpacingDistance() {
    auto const& distance = get(*this, &PathState::queue_spacing).distance;
    if (!distance) engine::refuse_unset(owner_of(state_of<PathState>(*this)), "localAgentQueueSpacing.distance");
    return engine::copy_of(distance);
}
PersonalSpaceSelection Path::GetLocalAgentQueueSpacingPersonalSpaceSelection() {
    auto const& selection = get(*this, &PathState::queue_spacing).personal_space;
    if (!selection) {
        engine::refuse_unset(owner_of(state_of<PathState>(*this)), "localAgentQueueSpacing.personalSpaceSelection");
    }
    return *selection;
}
void Path::SetLocalAgentQueueSpacingByDistance(std::shared_ptr<Distribution> const& distance) {
    set_spacing(*this, QueueSpacingType::DISTANCE, distance, {});
}
void Path::SetLocalAgentQueueSpacingByPersonalSpace(PersonalSpaceSelection selection) {
    set_spacing(*this, QueueSpacingType::PERSONAL_SPACE, nullptr, selection);
}
void Path::SetLocalAgentQueueSpacingByMaxOfDistanceAndPersonalSpace(std::shared_ptr<Distribution> const& distance,
                                                                    PersonalSpaceSelection selection) {
    set_spacing(*this, QueueSpacingType::MAX_OF_DISTANCE_AND_PERSONAL_SPACE, distance, selection);
}
void Path::SetLocalAgentQueueSpacingBySumOfDistanceAndPersonalSpace(std::shared_ptr<Distribution> const& distance,
                                                                    PersonalSpaceSelection selection) {
    set_spacing(*this, QueueSpacingType::SUM_OF_DISTANCE_AND_PERSONAL_SPACE, distance, selection);
}

CordonDirection Cordon::GetCordonDirection() { return get(*this, &CordonState::direction); }
void Cordon::SetCordonDirection(CordonDirection direction) { set(*this, &CordonState::direction, direction); }
bool Cordon::IsDirectionInverted() { return get(*this, &CordonState::inverted); }
void Cordon::SetDirectionInverted(bool inverted) { set(*this, &CordonState::inverted, inverted); }
Vec3d Cordon::GetDirectionVector() { return engine::value_of(engine::direction_of(state_of<CordonState>(*this))); }
bool Cordon::WillCountInDirection(Vec3d const& direction) {
    engine::check_value(owner_of(state_of<CordonState>(*this)), "direction", direction, engine::NoRule{});
    auto const across = engine::vector_of(GetDirectionVector());
    auto const moved = engine::vector_of(direction);
    double const crossed = across.x * moved.x + across.z * moved.z;
    constexpr double tolerance = 1e-9;
    if (std::abs(crossed) <= tolerance * std::hypot(moved.x, moved.z)) return false;
    return crossed > 0 || GetCordonDirection() == CordonDirection::BOTH_WAYS;
}

std::shared_ptr<WaitStyle> WaitSpace::GetWaitStyle() {
    auto const& style = get(*this, &WaitSpaceState::wait_style);
    return style ? engine::copy_of(style) : WaitStyle::StandStill();
}
void WaitSpace::SetSpreadOutWaitStyle() { set(*this, &WaitSpaceState::wait_style, WaitStyle::SpreadOut()); }
void WaitSpace::SetStandStillWaitStyle() { set(*this, &WaitSpaceState::wait_style, WaitStyle::StandStill()); }

ZoneMembershipStrategy Zone::GetMembershipType() { return get(*this, &ZoneState::membership); }
void Zone::SetMembershipType(ZoneMembershipStrategy type) { set(*this, &ZoneState::membership, type); }
bool Zone::HasBaseMember(GlobalId const& member) { return engine::lists(get(*this, &ZoneState::base_members), member); }
std::vector<GlobalId> Zone::GetBaseMembers() { return get(*this, &ZoneState::base_members); }
void Zone::SetBaseMembers(std::vector<GlobalId> const& members) { set(*this, &ZoneState::base_members, members); }
void Zone::AddBaseMember(GlobalId const& member) { engine::add_to_list(*this, &ZoneState::base_members, {member}); }
void Zone::AddBaseMembers(std::vector<GlobalId> const& members) {
    engine::add_to_list(*this, &ZoneState::base_members, members);
}

}  // namespace pedflux
