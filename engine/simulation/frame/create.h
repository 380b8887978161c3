#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

class Document;

struct RunSettings {
    std::uint64_t seed = 0;
    unsigned threads = 1;
    std::vector<GlobalId> extra_goals;
    std::shared_ptr<SimulationRunState> run;
    std::string database_name;
    std::string database_path;
};

/// Compiles a project into a simulation that stands before its first frame, its database begun. Throws Exception in one
/// sentence when the project cannot be simulated.
std::shared_ptr<SimulationState> create_simulation(Document const& document, RunSettings const& settings);

}  // namespace pedflux::engine
