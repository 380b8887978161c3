#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

class Document;

/// What a run is made of. The world comes from the project; nothing refers to it afterwards.
struct SimulationInput {
    FloorPlan plan;
    Places places;
    SpawnRequests requests;
    BehaviourProgram rules;
    unsigned threads = 1;
};

struct RunSettings {
    std::uint64_t seed = 0;
    unsigned threads = 1;
    std::vector<GlobalId> extra_goals;
    std::shared_ptr<SimulationRunState> run;
    std::string database_name;
    std::string database_path;
};

/// A run that stands before its first frame, its database begun. Throws Exception in one sentence when the project
/// cannot be simulated.
std::shared_ptr<SimulationState> create_run(Document const& document, RunSettings const& settings);

}  // namespace pedflux::engine
