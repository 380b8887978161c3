#include "engine/model/document.h"
#include "engine/model/properties.h"
#include "engine/project/paths.h"
#include "engine/scene/simulation_run_state.h"

#include <pedflux/database.h>
#include <pedflux/simulation_run.h>

namespace pedflux {

using engine::SimulationRunState;
using engine::state_of;

bool SimulationRun::Connect(std::string const& databaseFileName) {
    auto& state = state_of<SimulationRunState>(*this);
    engine::check_value(owner_of(state), "databaseFileName", databaseFileName, engine::NoRule{});
    auto database = Database::Open(engine::from_working_directory(document_of(state), databaseFileName));
    state.database_file_name = databaseFileName;
    state.database = std::move(database);
    return true;
}

void SimulationRun::Disconnect() { state_of<SimulationRunState>(*this).database.reset(); }

bool SimulationRun::IsConnected() const { return static_cast<SimulationRunState const&>(*state_).database != nullptr; }

std::string SimulationRun::GetDatabaseFileName() { return engine::get(*this, &SimulationRunState::database_file_name); }

}  // namespace pedflux
