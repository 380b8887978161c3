#include "engine/project/kind_table.h"
#include "engine/scene/simulation_run_state.h"

#include <pedflux/simulation_run.h>

namespace pedflux {

KIND(SimulationRun, SimulationRuns)

}  // namespace pedflux
