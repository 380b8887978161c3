#include "engine/analysis/graph_evaluation.h"
#include "engine/analysis/graph_query_states.h"
#include "engine/analysis/query_handles.h"
#include "engine/model/document.h"

#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>

namespace pedflux {

using engine::GraphQueryState;
using engine::set_part;
using engine::state_of;

std::shared_ptr<Graph> GraphQuery::Evaluate() {
    auto& state = state_of<GraphQueryState>(*this);
    auto const type = static_cast<GraphQueryType>(GetGraphQueryTypeId());
    return std::make_shared<Graph>(engine::graph_of(document_of(state), state, type));
}

void GraphQuery::SetSimulationRunId(GlobalId const& run) {
    set_part<GraphQueryState>(*this, &GraphQueryState::run, run);
}
GlobalId GraphQuery::GetSimulationRunId() { return engine::or_none(state_of<GraphQueryState>(*this).run); }
TimeRange GraphQuery::GetTimeRange() { return time_range(state_of<GraphQueryState>(*this).time); }
void GraphQuery::SetTimeRange(TimeRange const range) {
    set_part<GraphQueryState>(*this, &GraphQueryState::time, engine::time_span(range));
}
PEDFLUX_PROPERTY(GraphQuery, std::string, std::string const&, Title, title)
PEDFLUX_PROPERTY(GraphQuery, std::string, std::string const&, HorizontalLabel, horizontal_label)
PEDFLUX_PROPERTY(GraphQuery, std::string, std::string const&, VerticalLabel, vertical_label)
PEDFLUX_VALUE(GraphQuery, int, WindowSizeInSeconds, window)
bool GraphQuery::IsShowLegend() const { return static_cast<GraphQueryState const&>(*state_).show_legend; }
PEDFLUX_SETTER(GraphQuery, bool, ShowLegend, show_legend)
bool GraphQuery::IsShowMetadata() const { return static_cast<GraphQueryState const&>(*state_).show_metadata; }
PEDFLUX_SETTER(GraphQuery, bool, ShowMetadata, show_metadata)

#define TYPE(Query, TYPE_NAME) \
    int Query::GetGraphQueryTypeId() { return static_cast<int>(GraphQueryType::TYPE_NAME); }
TYPE(PopulationCountGraphQuery, POPULATION_COUNT)
TYPE(FlowCountGraphQuery, FLOW_COUNT)
TYPE(CumulativeFlowCountGraphQuery, CUMULATIVE_FLOW_COUNT)
TYPE(AgentDensityGraphQuery, AGENT_DENSITY)
TYPE(AgentSpeedRatioGraphQuery, AGENT_SPEED_RATIO)
TYPE(TallyGraphQuery, TALLY)
TYPE(VolumeDensityGraphQuery, VOLUME_DENSITY)
#undef TYPE

// The filter of these queries is set and taken away, and not read.
#define WRITTEN_FILTER(Query)                                            \
    void Query::SetAgentFilter(std::shared_ptr<AgentFilter>& filter) {   \
        using State = engine::Query##State;                              \
        set_part<State>(*this, &State::filter, engine::copy_of(filter)); \
    }                                                                    \
    void Query::ClearFilter() { state_of<engine::Query##State>(*this).filter.reset(); }
WRITTEN_FILTER(PopulationCountGraphQuery)
WRITTEN_FILTER(FlowCountGraphQuery)
WRITTEN_FILTER(CumulativeFlowCountGraphQuery)
#undef WRITTEN_FILTER

#define TRANSITIONS(Query)                                                                    \
    void Query::SetTransitions(std::vector<std::shared_ptr<Transition>> const& transitions) { \
        using State = engine::Query##State;                                                   \
        auto copies = transitions;                                                            \
        for (auto& transition : copies) transition = engine::copy_of(transition);             \
        set_part<State>(*this, &State::transitions, std::move(copies));                       \
    }
TRANSITIONS(FlowCountGraphQuery)
TRANSITIONS(CumulativeFlowCountGraphQuery)
#undef TRANSITIONS

PEDFLUX_AGENT_FILTER(AgentDensityGraphQuery)
PEDFLUX_AGENT_FILTER(AgentSpeedRatioGraphQuery)
PEDFLUX_SETTER(PopulationCountGraphQuery, std::vector<GlobalId> const&, AreaIds, areas)
PEDFLUX_SETTER(AgentSpeedRatioGraphQuery, std::shared_ptr<ColorFunction>, SpeedRatioColorFunction, colors)
PEDFLUX_VALUE(AgentDensityGraphQuery, int, SamplingPeriodInSeconds, sampling_period)
PEDFLUX_VALUE(TallyGraphQuery, int, SamplingPeriodInSeconds, sampling_period)
PEDFLUX_VALUE(TallyGraphQuery, AggregationType, AggregationType, aggregation)
PEDFLUX_LIST(TallyGraphQuery, TallyObjects, tallies)
PEDFLUX_LIST(VolumeDensityGraphQuery, Volumes, volumes)
PEDFLUX_SEVERAL_RUNS(TallyGraphQuery)
PEDFLUX_SEVERAL_RUNS(VolumeDensityGraphQuery)

}  // namespace pedflux
