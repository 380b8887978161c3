#include "engine/model/document.h"
#include "engine/model/goal_lines.h"
#include "engine/model/lists.h"
#include "engine/model/properties.h"
#include "engine/model/scene_states.h"

#include <pedflux/scene.h>

#include <algorithm>

namespace pedflux {

using engine::clear;
using engine::ConnectionState;
using engine::get;
using engine::PortalState;
using engine::Role;
using engine::set;
using engine::ZoneState;

namespace {

bool is_mentioned(Portal& portal, Role role) {
    auto const references = document_of(engine::state_of<PortalState>(portal)).references_to(portal.GetId());
    return std::ranges::any_of(references, [&](auto const& reference) { return reference.role == role; });
}

}  // namespace

LineSeg3d Portal::GetGoalLine() { return engine::centre_goal_line(*GetGeometry()); }
AgentInitialPlacement Portal::GetAgentInitialPlacement() { return get(*this, &PortalState::placement); }
void Portal::SetAgentInitialPlacement(AgentInitialPlacement placement) {
    set(*this, &PortalState::placement, placement);
}
bool Portal::IsEntrance() { return is_mentioned(*this, Role::ORIGIN); }
bool Portal::IsExit() { return is_mentioned(*this, Role::DESTINATION); }

// The local properties that links, stairs and ramps have in common.
#define LOCAL_PROPERTIES(Class)                                                                                        \
    void Class::ClearLocalAgentMaxSpeed() { clear(*this, &ConnectionState::speed_limit); }                             \
    void Class::SetLocalDirectionBias(AgentDirectionBias bias) { set(*this, &ConnectionState::direction_bias, bias); } \
    void Class::ClearLocalDirectionBias() { clear(*this, &ConnectionState::direction_bias); }                          \
    void Class::SetLocalSpeedDensityStandard(SpeedDensityStandard standard) {                                          \
        set(*this, &ConnectionState::speed_density_standard, standard);                                                \
    }                                                                                                                  \
    void Class::ClearLocalSpeedDensityStandard() { clear(*this, &ConnectionState::speed_density_standard); }

// The local speeds of stairs and ramps.
#define LOCAL_SPEEDS_UP_AND_DOWN(Class)                                                                  \
    double Class::GetLocalAgentMaxSpeedUp() { return get(*this, &ConnectionState::speed_limit).up; }     \
    double Class::GetLocalAgentMaxSpeedDown() { return get(*this, &ConnectionState::speed_limit).down; } \
    void Class::SetLocalAgentMaxSpeedUpAndDown(double up, double down) {                                 \
        set(*this, &ConnectionState::speed_limit, engine::SpeedLimit{up, down});                         \
    }

LOCAL_PROPERTIES(Link)
LOCAL_PROPERTIES(Stair)
LOCAL_PROPERTIES(Ramp)
LOCAL_SPEEDS_UP_AND_DOWN(Stair)
LOCAL_SPEEDS_UP_AND_DOWN(Ramp)

double Link::GetLocalAgentMaxSpeed() { return get(*this, &ConnectionState::speed_limit).up; }
void Link::SetLocalAgentMaxSpeed(double speed) {
    set(*this, &ConnectionState::speed_limit, engine::SpeedLimit{speed, speed});
}

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
