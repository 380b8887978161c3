#pragma once

#include "engine/simulation/frame/simulation_state.h"

namespace pedflux::engine {

/// Lets agents enter that are due, where there is room for them.
void enter_due_agents(SimulationState& state);

/// Lets an agent enter at a free point and returns its number.
std::uint32_t enter(SimulationState& state, SpawnRequest const& request, Standpoint const& at);

}  // namespace pedflux::engine
