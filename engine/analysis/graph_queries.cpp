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

// The operations of the parts of graph queries.
#define PEDFLUX_OPERATIONS_WriteOnlyFilter(Query)                        \
    void Query::SetAgentFilter(std::shared_ptr<AgentFilter>& filter) {   \
        using State = engine::Query##State;                              \
        set_part<State>(*this, &State::filter, engine::copy_of(filter)); \
    }                                                                    \
    void Query::ClearFilter() { state_of<engine::Query##State>(*this).filter.reset(); }
#define PEDFLUX_OPERATIONS_OfTransitions(Query)                                               \
    void Query::SetTransitions(std::vector<std::shared_ptr<Transition>> const& transitions) { \
        using State = engine::Query##State;                                                   \
        auto copies = transitions;                                                            \
        for (auto& transition : copies) transition = engine::copy_of(transition);             \
        set_part<State>(*this, &State::transitions, std::move(copies));                       \
    }
#define PEDFLUX_OPERATIONS_OfAreas(Query) PEDFLUX_SETTER(Query, std::vector<GlobalId> const&, AreaIds, areas)
#define PEDFLUX_OPERATIONS_InSpeedColors(Query) \
    PEDFLUX_SETTER(Query, std::shared_ptr<ColorFunction>, SpeedRatioColorFunction, colors)
#define PEDFLUX_OPERATIONS_OfTallies(Query) PEDFLUX_LIST(Query, TallyObjects, tallies)
#define PEDFLUX_OPERATIONS_OfVolumes(Query) PEDFLUX_LIST(Query, Volumes, volumes)

#define HANDLE(Query, Queries, TYPE, made, evaluation, State, ...) \
    PEDFLUX_QUERY_HANDLE(GraphQuery, Query, TYPE __VA_OPT__(, ) __VA_ARGS__)
PEDFLUX_GRAPH_QUERIES(HANDLE)

}  // namespace pedflux
