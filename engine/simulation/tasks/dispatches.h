#pragma once

#include "engine/simulation/world/places.h"

#include <optional>

/// Dispatches, which send agents on from station to station: portals, areas and servers.
namespace pedflux::engine {

struct AgentMotion;
struct DispatchProgram;
struct TaskContext;

/// Chooses the sink that is the easiest for an agent: of the best to go to the one with the fewest visitors, of these
/// the nearest. None when the agent is at all of them, or may use none.
/// @param from where it comes from; no sink of a way back to the same server
std::optional<PlaceIndex> sink_for(TaskContext& context, AgentMotion const& motion, DispatchProgram const& dispatch,
                                   PlaceIndex from);

/// Chooses where an agent goes that has passed a station of a process. The first dispatch of the project counts that
/// has the station among its sources and a sink to go to.
std::optional<PlaceIndex> next_station(TaskContext& context, AgentMotion const& motion, PlaceIndex passed);

/// Sends an agent on that has nothing else to do: from the goal that it has reached, or from where it stands without
/// one. Returns whether a dispatch did.
bool send_on(TaskContext& context, AgentMotion& motion);

/// The same for all who stand without a goal.
void send_on_who_stand(TaskContext& context);

}  // namespace pedflux::engine
