#pragma once

#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/journal.h"

namespace pedflux::engine {

/// Gives an agent a token; nothing happens when it holds the token already.
void give_token(Agents& agents, Journal& journal, Clock const& clock, std::uint32_t agent, GlobalId const& token);
/// Takes a token from an agent; nothing happens when it does not hold the token.
void take_token(Agents& agents, Journal& journal, Clock const& clock, std::uint32_t agent, GlobalId const& token);

}  // namespace pedflux::engine
