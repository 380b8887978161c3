#include "engine/analysis/graph_query_states.h"
#include "engine/project/kind_table.h"

namespace pedflux {

KIND_OF_RUN(PopulationCountGraphQuery, PopulationCountGraphQueries)
KIND_OF_RUN(FlowCountGraphQuery, FlowCountGraphQueries)
KIND_OF_RUN(CumulativeFlowCountGraphQuery, CumulativeFlowCountGraphQueries)
KIND_OF_RUN(AgentDensityGraphQuery, AgentDensityGraphQueries)
KIND_OF_RUN(AgentSpeedRatioGraphQuery, AgentSpeedRatioGraphQueries)

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
