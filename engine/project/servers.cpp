#include "engine/base/list_checks.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/accessors.h"
#include "engine/scene/server_states.h"

#include <pedflux/servers.h>

#include <variant>

namespace pedflux {

using engine::AutoCapacity;
using engine::clear;
using engine::FixedCapacity;
using engine::get;
using engine::get_copy;
using engine::has;
using engine::ServerState;
using engine::set;
using engine::set_copy;
using engine::state_of;

ACTION_PROPERTY(Server, ProcessedAction, processed_action)
ACTION_PROPERTY(Server, ReleaseAction, release_action)

// An optional property.
#define PART(Type, Name, field)                                                                               \
    bool Server::Has##Name() { return has(*this, &ServerState::field); }                                      \
    std::shared_ptr<Type> Server::Get##Name() { return get_copy(*this, &ServerState::field); }                \
    void Server::Set##Name(std::shared_ptr<Type> const& part) { set_copy(*this, &ServerState::field, part); } \
    void Server::Clear##Name() { clear(*this, &ServerState::field); }

PART(AgentTest, AccessRequiredTest, access_required)
PART(AgentTest, AccessPreferredTest, access_preferred)
PART(Distribution, ContactTime, contact_time)

bool Server::HasCapacityLimit() { return has(*this, &ServerState::capacity); }
bool Server::IsAutoCapacityLimit() { return std::holds_alternative<AutoCapacity>(get(*this, &ServerState::capacity)); }
int Server::GetCapacityLimit() {
    static_cast<void>(get(*this, &ServerState::capacity));  // throws when there is none
    return capacity_limit_of(state_of<ServerState>(*this));
}
void Server::SetFixedCapacityLimit(int limit) { set(*this, &ServerState::capacity, FixedCapacity{limit}); }
void Server::SetAutoCapacityLimit(double spacing) { set(*this, &ServerState::capacity, AutoCapacity{spacing}); }
void Server::ClearCapacityLimit() { clear(*this, &ServerState::capacity); }

std::vector<std::shared_ptr<AgentTest>> Server::GetContactTimeRuleTests() {
    std::vector<std::shared_ptr<AgentTest>> tests;
    for (auto const& rule : get(*this, &ServerState::contact_time_rules)) tests.push_back(engine::copy_of(rule.test));
    return tests;
}
std::vector<std::shared_ptr<Distribution>> Server::GetContactTimeRuleDurations() {
    std::vector<std::shared_ptr<Distribution>> durations;
    for (auto const& rule : get(*this, &ServerState::contact_time_rules)) {
        durations.push_back(engine::copy_of(rule.duration));
    }
    return durations;
}
void Server::SetContactTimeRules(std::vector<std::shared_ptr<AgentTest>> const& tests,
                                 std::vector<std::shared_ptr<Distribution>> const& durations) {
    engine::require_equal_lengths(title_of(state_of<ServerState>(*this)) + ": contactTimeRules: tests", tests.size(),
                                  "durations", durations.size());
    std::vector<engine::ContactTimeRule> rules;
    for (std::size_t i = 0; i < tests.size(); ++i) {
        rules.push_back({engine::copy_of(tests[i]), engine::copy_of(durations[i])});
    }
    set(*this, &ServerState::contact_time_rules, std::move(rules));
}

}  // namespace pedflux
