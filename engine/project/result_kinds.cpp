#include "engine/analysis/query_states.h"
#include "engine/model/simulation_run_state.h"
#include "engine/project/kind_table.h"

#include <pedflux/graph_queries.h>
#include <pedflux/map_queries.h>
#include <pedflux/simulation_run.h>

namespace pedflux {

KIND(SimulationRun, SimulationRuns)
KIND_WITH(AverageDensityMapQuery, AverageDensityMapQueries, GlobalId, run)
KIND_WITH(MaxDensityMapQuery, MaxDensityMapQueries, GlobalId, run)
KIND_WITH(InstantaneousDensityMapQuery, InstantaneousDensityMapQueries, GlobalId, run)
KIND_WITH(ExperiencedDensityMapQuery, ExperiencedDensityMapQueries, GlobalId, run)
KIND_WITH(NonZeroAverageDensityMapQuery, NonZeroAverageDensityMapQueries, GlobalId, run)
KIND_WITH(AgentCountMapQuery, AgentCountMapQueries, GlobalId, run)
KIND_WITH(PopulationCountGraphQuery, PopulationCountGraphQueries, GlobalId, run)

}  // namespace pedflux
