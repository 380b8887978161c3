#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <memory>
#include <vector>

/// A frame: who is due comes in, everybody chooses where to walk, everybody walks.
namespace pedflux::engine {

/// Ends the part of the frame, so that doing it twice does nothing. Throws Exception when the simulation was stopped.
std::vector<std::shared_ptr<Agent>> create_agents(SimulationState& run);
void choose_targets(SimulationState& run);
std::shared_ptr<FrameChanges const> move_agents(SimulationState& run);

/// Puts a person into the world, if its place is free, and returns its number.
std::uint32_t enter(SimulationState& run, SpawnRequest const& request, navigation::RegionIndex region, Point position);

/// The share of a person's speed at which it walks in a direction on a region, seen in the plan.
double ground_factor(Incline const& incline, double speed, Point direction);

}  // namespace pedflux::engine
