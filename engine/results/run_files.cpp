#include "engine/results/run_files.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/results/run_reader.h"
#include "engine/scene/simulation_run_state.h"

#include <filesystem>

#include <fmt/format.h>

namespace pedflux::engine {

std::string file_of(Document const& document, std::string const& name) {
    return (std::filesystem::path(document.working_directory) / name).string();
}

std::shared_ptr<RunReader> results_of(Document const& document, GlobalId const& run) {
    auto const* const state = document.find<SimulationRunState>(run);
    if (!state) refuse("The query names no simulation run of the project");
    if (state->database) return DatabaseAccess::shared_reader(*state->database);
    if (state->database_file_name.empty()) {
        refuse(fmt::format("{} has no results: it was not simulated", title_of(*state)));
    }
    return std::make_shared<RunReader>(file_of(document, state->database_file_name));
}

}  // namespace pedflux::engine
