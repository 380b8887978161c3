#pragma once

/// Broadcasts, which tell people who are there already what to do.
namespace pedflux::engine {

struct SimulationState;

/// Gives the actions of the broadcasts that are on to those who have not been told in this span of the range: everybody
/// who is in the zone and passes the test. Of several broadcasts the action of the project's first is done first. A
/// test of chance is drawn once for each span and agent, so that asking again in the next frame does not change its
/// share.
void tell_broadcasts(SimulationState& run);

}  // namespace pedflux::engine
