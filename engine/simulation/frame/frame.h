#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <memory>
#include <vector>

namespace pedflux::engine {

/// Goes on with a frame up to a phase; BEGUN is the beginning of the next frame. Nothing happens when the frame is
/// there already, so that the phases can be called for one by one. Throws Exception when the simulation was stopped.
void advance_frame(SimulationState& state, Phase until);

/// The agents that enter in this frame.
std::vector<std::shared_ptr<Agent>> create_agents(SimulationState& state);
void choose_targets(SimulationState& state);
/// Takes the frame to its end and returns what it changed.
std::shared_ptr<FrameChanges const> move_agents(SimulationState& state);

/// What events, access rules and tallies say at the start of the simulation and at the end of each frame.
void evaluate_events(SimulationState& state);

}  // namespace pedflux::engine
