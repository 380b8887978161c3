#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"
#include "engine/scene/simulation_run_state.h"

#include <pedflux/simulation_run.h>

namespace pedflux {

PEDFLUX_RUN_KINDS(OBJECT_KIND)

}  // namespace pedflux
