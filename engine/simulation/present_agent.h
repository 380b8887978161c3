#pragma once

#include "engine/simulation/frame/simulation_state.h"
#include "engine/simulation/routing/surroundings.h"

#include <memory>

namespace pedflux::engine {

/// An agent that is in its simulation, as the SDK's handle classes see it.
struct PresentAgent {
    std::shared_ptr<SimulationState> state;
    AgentInfo& info;
    TaskState& tasks;
    AgentMotion& motion;

    Standpoint standpoint() const { return {motion.region, motion.position}; }
};

/// Throws Exception when the agent has left or its simulation is gone.
PresentAgent present_agent(std::weak_ptr<SimulationState> const& weak, int id);

/// What is around points of a simulation.
inline Surroundings surroundings_of(SimulationState const& state) {
    return {state.world.plan, state.routes.navigation, state.agents, state.crowd};
}

}  // namespace pedflux::engine
