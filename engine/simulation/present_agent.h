#pragma once

#include "engine/simulation/frame/simulation_state.h"
#include "engine/simulation/routing/path_queries.h"

#include <memory>

/// The way from the SDK's agents to the people of a simulation.
namespace pedflux::engine {

/// An agent that is in its simulation.
struct Here {
    std::shared_ptr<SimulationState> run;
    AgentInfo& info;
    AgentMotion& motion;

    Standpoint standpoint() const { return {motion.region, motion.position}; }
};

/// Throws Exception when the agent has left or its simulation is gone.
Here here(std::weak_ptr<SimulationState> const& weak, int id);

}  // namespace pedflux::engine
