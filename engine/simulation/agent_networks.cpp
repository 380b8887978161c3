#include "engine/base/checks.h"
#include "engine/simulation/present_agent.h"
#include "engine/simulation/routing/route_classes.h"

#include <pedflux/agents.h>

/// By which ways agents go.
namespace pedflux {

using engine::here;
using engine::no_network;

bool Agent::HasNetwork() { return here(run_, id_).info.preferences.network != no_network; }

GlobalId Agent::GetNetwork() {
    auto const agent = here(run_, id_);
    auto const network = agent.info.preferences.network;
    if (network == no_network) engine::refuse("Agent " + std::to_string(id_) + " has no network; it takes all ways");
    return agent.run->routes.networks[network].id;
}

void Agent::SetNetwork(GlobalId const& network) {
    auto const agent = here(run_, id_);
    set_network(*agent.run, agent.motion, require_network(*agent.run, network));
}

void Agent::SetNetworkToGlobal() {
    auto const agent = here(run_, id_);
    set_network(*agent.run, agent.motion, no_network);
}

void Agent::ResetNetwork() {
    auto const agent = here(run_, id_);
    set_network(*agent.run, agent.motion, preferences_of(*agent.run, agent.info.origin).network);
}

}  // namespace pedflux
