#pragma once

#include "engine/simulation/tasks/behaviour_program.h"

#include <optional>

/// Dispatches, which send people on from station to station: portals, areas and servers.
namespace pedflux::engine {

struct SimulationState;
struct AgentMotion;

/// The sink that is the easiest for somebody: of the best to go to the one with the fewest people who queue or come, of
/// these the nearest. None when it is at all of them, or may use none.
/// @param from where it comes from; no sink of a way back to the same server
std::optional<PlaceIndex> sink_for(SimulationState& run, AgentMotion const& motion, DispatchRules const& dispatch,
                                   PlaceIndex from);

/// Where somebody goes who has passed a station of a process. The first dispatch of the project counts that has the
/// station among its sources and a sink to go to.
std::optional<PlaceIndex> next_station(SimulationState& run, AgentMotion const& motion, PlaceIndex passed);

/// Sends somebody on who has nothing else to do: from the goal that it has reached, or from where it stands without
/// one. Returns whether a dispatch did.
bool send_on(SimulationState& run, AgentMotion& motion);

/// The same for all who stand without a goal.
void send_on_who_stand(SimulationState& run);

}  // namespace pedflux::engine
