#pragma once

#include "engine/simulation/live_run.h"
#include "engine/simulation/ways.h"

#include <memory>

/// The way from the SDK's agents to the people of a simulation.
namespace pedflux::engine {

/// An agent that is in its simulation.
struct Here {
    std::shared_ptr<LiveRun> run;
    Person& person;
    Walker& walker;

    Standpoint standpoint() const { return {walker.region, walker.position}; }
};

/// Throws Exception when the agent has left or its simulation is gone.
Here here(std::weak_ptr<LiveRun> const& weak, int id);

}  // namespace pedflux::engine
