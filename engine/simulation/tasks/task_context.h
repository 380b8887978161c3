#pragma once

#include "engine/behaviour/tallies/tally_run.h"
#include "engine/crowd/crowd.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/journal.h"
#include "engine/simulation/agents/spawning.h"
#include "engine/simulation/routing/dynamic_walls.h"
#include "engine/simulation/routing/routes.h"
#include "engine/simulation/tasks/behaviour_program.h"
#include "engine/simulation/tasks/event_view.h"
#include "engine/simulation/tasks/server_queues.h"
#include "engine/simulation/tasks/wait_places.h"

namespace pedflux::engine {

/// What the tasks of agents can read and change: an action can send its agent anywhere, open an exit, add to a tally or
/// let the agent leave.
struct TaskContext {
    World& world;  ///< only its places grow
    Clock const& clock;
    BehaviourProgram const& program;
    EventView const& events;
    Gates const& gates;

    Agents& agents;
    Spawning& spawning;
    Routes& routes;
    Exits& exits;
    crowd::Crowd& crowd;
    ServerQueues& servers;
    WaitPlaces& waits;
    TallyRun& tallies;
    Journal& journal;
};

}  // namespace pedflux::engine
