#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <pedflux/simulation.h>

#include <memory>
#include <optional>
#include <vector>

namespace pedflux::engine {

struct SimulationOptionsAccess {
    static std::optional<int> seed(SimulationOptions const& options) { return options.randomSeed_; }
    static unsigned threads(SimulationOptions const& options) { return static_cast<unsigned>(options.threadCount_); }
    static std::vector<GlobalId> const& extra_goals(SimulationOptions const& options) { return options.extraGoals_; }
};

/// The agent that a program asks for; empty when there is no room for it.
std::shared_ptr<Agent> request_agent(SimulationState& state, AgentRequest const& request);

}  // namespace pedflux::engine
