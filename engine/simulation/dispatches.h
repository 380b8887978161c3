#pragma once

/// Dispatches, which send people on from place to place.
namespace pedflux::engine {

struct LiveRun;
struct Walker;

/// Sends somebody on who has nothing else to do: from the goal that it has reached, or from where it stands without
/// one. The first dispatch of the project counts that has the place among its sources and a sink where the agent is not
/// yet. Returns whether there was one.
bool send_on(LiveRun& run, Walker& walker);

/// The same for all who stand without a goal.
void send_on_who_stand(LiveRun& run);

}  // namespace pedflux::engine
