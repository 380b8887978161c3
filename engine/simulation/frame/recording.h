#pragma once

#include "engine/results/recorded_run.h"
#include "engine/simulation/frame/simulation_state.h"

#include <pedflux/agent_filters.h>

#include <vector>

/// What a simulation records beside where everybody is.
namespace pedflux::engine {

class Document;

/// What stored runs know of the project.
RecordedProject recorded_project_of(Document const& document, FloorPlan const& plan);

/// What somebody is doing at the end of a frame.
AgentActivity activity_of(SimulationState const& run, AgentMotion const& motion);

/// From the next frame on something is so for somebody; nothing happens when it is so already.
void begin_episode(SimulationState& run, std::uint32_t agent, EpisodeKind kind, GlobalId const& object);
/// From the next frame on it is no longer so.
void end_episode(SimulationState& run, std::uint32_t agent, EpisodeKind kind, GlobalId const& object);
/// All episodes that a frame shows; who is still in one is in it to its last frame.
std::vector<Episode> recorded_episodes(SimulationState const& run);

}  // namespace pedflux::engine
