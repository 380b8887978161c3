#include "engine/base/checks.h"
#include "engine/simulation/present_agent.h"

#include <pedflux/agents.h>

/// By which ways agents go.
namespace pedflux {

using engine::no_network;
using engine::present_agent;

namespace {

void set_network(engine::PresentAgent const& agent, engine::NetworkIndex network) {
    auto& state = *agent.state;
    engine::set_network(state.routes, state.world, state.agents, agent.motion, network);
}

}  // namespace

bool Agent::HasNetwork() { return present_agent(run_, id_).info.preferences.network != no_network; }

GlobalId Agent::GetNetwork() {
    auto const agent = present_agent(run_, id_);
    auto const network = agent.info.preferences.network;
    if (network == no_network) engine::refuse("Agent " + std::to_string(id_) + " has no network; it takes all ways");
    return agent.state->routes.networks[network].id;
}

void Agent::SetNetwork(GlobalId const& network) {
    auto const agent = present_agent(run_, id_);
    set_network(agent, require_network(agent.state->routes, network));
}

void Agent::SetNetworkToGlobal() {
    auto const agent = present_agent(run_, id_);
    set_network(agent, no_network);
}

void Agent::ResetNetwork() {
    auto const agent = present_agent(run_, id_);
    set_network(agent, preferences_of(agent.state->routes, agent.info.origin).network);
}

}  // namespace pedflux
