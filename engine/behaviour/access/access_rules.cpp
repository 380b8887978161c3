#include "engine/behaviour/access/access_rule_states.h"
#include "engine/model/accessors.h"

#include <pedflux/access_rules.h>

#include <algorithm>

namespace pedflux {

using engine::AccessCycle;
using engine::AccessState;
using engine::GateAccessState;
using engine::get;
using engine::ServerAccessState;
using engine::set;

namespace {

/// Sets one part of the cycle. In a cycle that there was not, the other part lasts as long.
void set_cycle_part(SimObject& access, int AccessCycle::*part, int seconds) {
    auto const& cycle = engine::state_of<AccessState>(access).cycle;
    AccessCycle changed = cycle ? *cycle : AccessCycle{std::max(seconds, 1), std::max(seconds, 1)};
    changed.*part = seconds;
    set(access, &AccessState::cycle, changed);
}

int cycle_part(AccessState const& access, int AccessCycle::*part) {
    return engine::get_field(owner_of(access), access, &AccessState::cycle).*part;
}

}  // namespace

// What both kinds have: class, type and name of what the command is about, its field.
#define ACCESS(Class, Target, Name, field)                                                                       \
    COPIED_PROPERTY(Class, TriggerRange, TriggerRange, range)                                                    \
    void Class::SetCommandToOpen(Target field) {                                                                 \
        set(*this, &engine::Class##State::field, field);                                                         \
        set(*this, &AccessState::opens, true);                                                                   \
    }                                                                                                            \
    void Class::SetCommandToClose(Target field) {                                                                \
        set(*this, &engine::Class##State::field, field);                                                         \
        set(*this, &AccessState::opens, false);                                                                  \
    }                                                                                                            \
    bool Class::IsCommandToOpen() const { return static_cast<AccessState const&>(*state_).opens; }               \
    bool Class::IsCommandToClose() const { return !IsCommandToOpen(); }                                          \
    Target Class::GetCommand##Name() { return get(*this, &engine::Class##State::field); }                        \
    OPTIONAL_PROPERTY(Class, Cycle, cycle)                                                                       \
    int Class::GetCycleOnDurationInSeconds() const {                                                             \
        return cycle_part(static_cast<AccessState const&>(*state_), &AccessCycle::on);                           \
    }                                                                                                            \
    void Class::SetCycleOnDurationInSeconds(int duration) { set_cycle_part(*this, &AccessCycle::on, duration); } \
    int Class::GetCycleOffDurationInSeconds() const {                                                            \
        return cycle_part(static_cast<AccessState const&>(*state_), &AccessCycle::off);                          \
    }                                                                                                            \
    void Class::SetCycleOffDurationInSeconds(int duration) { set_cycle_part(*this, &AccessCycle::off, duration); }

ACCESS(GateAccess, ConnectionObjectDirection, Direction, direction)
ACCESS(ServerAccess, ServerAccessPoint, AccessPoint, point)

std::vector<GlobalId> GateAccess::GetGatedObjects() { return get(*this, &GateAccessState::gates); }
void GateAccess::SetGatedObjects(std::vector<GlobalId> const& gated_objects) {
    set(*this, &GateAccessState::gates, gated_objects);
}

COPIED_PROPERTY(GateAccess, AgentTest, AgentTest, test)
OPTIONAL_PROPERTY(GateAccess, AgentTest, test)

std::vector<GlobalId> ServerAccess::GetServers() { return get(*this, &ServerAccessState::servers); }
void ServerAccess::SetServers(std::vector<GlobalId> const& servers) {
    set(*this, &ServerAccessState::servers, servers);
}

}  // namespace pedflux
