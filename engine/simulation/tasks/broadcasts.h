#pragma once

#include <cstddef>
#include <vector>

/// Broadcasts, which tell agents that are there already what to do.
namespace pedflux::engine {

struct TaskContext;

struct BroadcastsTold {
    /// Of each broadcast and agent, in which span of the range the agent was told last; from 1.
    std::vector<std::vector<std::size_t>> told_in;
};

/// Gives the actions of the broadcasts that are on to agents that have not been told in this span of the range, are in
/// the zone and pass the test. Of several broadcasts the action of the project's first is done first. A test of chance
/// is drawn once for each span and agent, so that asking again in the next frame does not change its share.
void tell_broadcasts(TaskContext& context, BroadcastsTold& told);

}  // namespace pedflux::engine
