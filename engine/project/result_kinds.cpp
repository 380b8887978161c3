#include "engine/analysis/graph_query_states.h"
#include "engine/analysis/map_query_states.h"
#include "engine/analysis/table_query_states.h"
#include "engine/model/simulation_run_state.h"
#include "engine/project/kind_table.h"

#include <pedflux/simulation_run.h>

namespace pedflux {

KIND(SimulationRun, SimulationRuns)

// Nearly every query is made with the run that it asks about.
#define QUERY(Class, Names) KIND_WITH(Class, Names, GlobalId, run)
QUERY(AverageDensityMapQuery, AverageDensityMapQueries)
QUERY(MaxDensityMapQuery, MaxDensityMapQueries)
QUERY(NonZeroAverageDensityMapQuery, NonZeroAverageDensityMapQueries)
QUERY(ExperiencedDensityMapQuery, ExperiencedDensityMapQueries)
QUERY(InstantaneousDensityMapQuery, InstantaneousDensityMapQueries)
QUERY(AgentCountMapQuery, AgentCountMapQueries)
QUERY(AgentTimeToExitMapQuery, AgentTimeToExitMapQueries)
QUERY(TimeOccupiedMapQuery, TimeOccupiedMapQueries)
QUERY(TimeUntilClearMapQuery, TimeUntilClearMapQueries)
QUERY(TimeAboveDensityMapQuery, TimeAboveDensityMapQueries)
QUERY(AgentPathMapQuery, AgentPathMapQueries)
QUERY(InstantaneousProximityMapQuery, InstantaneousProximityMapQueries)
QUERY(TimeInProximityMapQuery, TimeInProximityMapQueries)
QUERY(MaximumProximityMapQuery, MaximumProximityMapQueries)
QUERY(DynamicPathMapQuery, DynamicPathMapQueries)
QUERY(VisionCountMapQuery, VisionCountMapQueries)
QUERY(VisionTimeMapQuery, VisionTimeMapQueries)
QUERY(VisionTimeAboveCountMapQuery, VisionTimeAboveCountMapQueries)
QUERY(PopulationCountGraphQuery, PopulationCountGraphQueries)
QUERY(FlowCountGraphQuery, FlowCountGraphQueries)
QUERY(CumulativeFlowCountGraphQuery, CumulativeFlowCountGraphQueries)
QUERY(AgentDensityGraphQuery, AgentDensityGraphQueries)
QUERY(AgentSpeedRatioGraphQuery, AgentSpeedRatioGraphQueries)
QUERY(AgentAreaTimeTableQuery, AgentAreaTimeTableQueries)
QUERY(AgentElevatorTripTimeTableQuery, AgentElevatorTripTimeTableQueries)
QUERY(AgentElevatorWaitTimeTableQuery, AgentElevatorWaitTimeTableQueries)
QUERY(AgentLevelOfServiceTimeTableQuery, AgentLevelOfServiceTimeTableQueries)
QUERY(AgentProcessChainTimeTableQuery, AgentProcessChainTimeTableQueries)
QUERY(AgentProximityTableQuery, AgentProximityTableQueries)
QUERY(AgentSocialCostTableQuery, AgentSocialCostTableQueries)
QUERY(AgentSummaryTableQuery, AgentSummaryTableQueries)
QUERY(AgentTimetableSummaryTableQuery, AgentTimetableSummaryTableQueries)
QUERY(AgentTokenTimeTableQuery, AgentTokenTimeTableQueries)
QUERY(AgentTransitionTableQuery, AgentTransitionTableQueries)
QUERY(AgentTripTimeTableQuery, AgentTripTimeTableQueries)
QUERY(AreaOriginDestinationCountTableQuery, AreaOriginDestinationCountTableQueries)
QUERY(ElevatorTimeWithoutServiceTableQuery, ElevatorTimeWithoutServiceTableQueries)
QUERY(SimulationOriginDestinationCountTableQuery, SimulationOriginDestinationCountTableQueries)
QUERY(SimulationOriginDestinationSocialCostTableQuery, SimulationOriginDestinationSocialCostTableQueries)
QUERY(SimulationOriginDestinationTimeTableQuery, SimulationOriginDestinationTimeTableQueries)
#undef QUERY

KIND(ExpectedDemandODCountTableQuery, ExpectedDemandODCountTableQueries)
KIND(ServerSummaryTableQuery, ServerSummaryTableQueries)
KIND_WITH(StaticCostMapQuery, StaticCostMapQueries, GlobalId, object)
KIND_WITH(StaticDistanceMapQuery, StaticDistanceMapQueries, GlobalId, object)

// Queries of one run or of several.
#define QUERY_OF_RUNS(Class, Names)                                                                              \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, std::vector<GlobalId> const& runs) {  \
        using State = engine::Class##State;                                                                      \
        auto const first = runs.empty() ? std::nullopt : std::optional(runs.front());                            \
        return engine::create<State>(*this, name, std::pair(&State::runs, runs), std::pair(&State::run, first)); \
    }                                                                                                            \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, GlobalId const& run) {                \
        return Create##Class(name, std::vector{run});                                                            \
    }                                                                                                            \
    KIND_MADE_ELSEWHERE(Class, Names)
QUERY_OF_RUNS(TallyGraphQuery, TallyGraphQueries)
QUERY_OF_RUNS(VolumeDensityGraphQuery, VolumeDensityGraphQueries)
#undef QUERY_OF_RUNS

}  // namespace pedflux
