#pragma once

#include "engine/simulation/agent_rules.h"

#include <optional>

/// Dispatches, which send people on from station to station: portals, areas and servers.
namespace pedflux::engine {

struct LiveRun;
struct Walker;

/// The sink that is the easiest for somebody: of the best to go to the one with the fewest people who queue or come, of
/// these the nearest. None when it is at all of them, or may use none.
/// @param from where it comes from; no sink of a way back to the same server
std::optional<PlaceIndex> sink_for(LiveRun& run, Walker const& walker, DispatchRules const& dispatch, PlaceIndex from);

/// Where somebody goes who has passed a station of a process. The first dispatch of the project counts that has the
/// station among its sources and a sink to go to.
std::optional<PlaceIndex> next_station(LiveRun& run, Walker const& walker, PlaceIndex passed);

/// Sends somebody on who has nothing else to do: from the goal that it has reached, or from where it stands without
/// one. Returns whether a dispatch did.
bool send_on(LiveRun& run, Walker& walker);

/// The same for all who stand without a goal.
void send_on_who_stand(LiveRun& run);

}  // namespace pedflux::engine
