#include "engine/model/simulation_run_state.h"
#include "engine/project/kind_table.h"

#include <pedflux/simulation_run.h>

namespace pedflux {

KIND(SimulationRun, SimulationRuns)

}  // namespace pedflux
