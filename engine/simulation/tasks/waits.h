#pragma once

#include "engine/simulation/frame/simulation_state.h"

/// People who wait: in wait spaces, spread out, or where they stand.
namespace pedflux::engine {

/// Lets those who begin to wait choose where, and those who wait no longer give up their places.
void attend_waits(SimulationState& run);

/// Somebody waits no longer, and its place in a wait space is free.
void end_wait(SimulationState& run, AgentMotion& motion);

}  // namespace pedflux::engine
