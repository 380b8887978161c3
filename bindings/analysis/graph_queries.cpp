#include "bindings/kinds.h"

#include <pedflux/agent_filters.h>
#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>
#include <pedflux/identifiers.h>
#include <pedflux/time_range.h>
#include <pedflux/transitions.h>

#define GRAPH_QUERY_CLASS(Class, Base) \
    CLASS(Class, Base)                 \
    GET(Class, GraphQueryTypeId)
/// A query of its own kind of graph.
#define GRAPH_QUERY(Class, Classes)      \
    GRAPH_QUERY_CLASS(Class, GraphQuery) \
    KIND(Class, Classes)

namespace pedflux::jni {

CLASS(GraphQuery, SimObject)
METHOD(GraphQuery, evaluate, Evaluate)
PROPERTY(GraphQuery, SimulationRunId)
GET(GraphQuery, TimeRange)
METHOD_CONST(GraphQuery, setTimeRange, SetTimeRange)
GET(GraphQuery, TypeId)
PROPERTY(GraphQuery, Title)
PROPERTY(GraphQuery, HorizontalLabel)
PROPERTY(GraphQuery, VerticalLabel)
PROPERTY(GraphQuery, WindowSizeInSeconds)
FLAG(GraphQuery, ShowLegend)
FLAG(GraphQuery, ShowMetadata)
GET(GraphQuery, GraphQueryTypeId)

GRAPH_QUERY(AgentDensityGraphQuery, AgentDensityGraphQueries)
PROPERTY(AgentDensityGraphQuery, AgentFilter)
PROPERTY(AgentDensityGraphQuery, SamplingPeriodInSeconds)

GRAPH_QUERY(AgentSpeedRatioGraphQuery, AgentSpeedRatioGraphQueries)
PROPERTY(AgentSpeedRatioGraphQuery, AgentFilter)
SET(AgentSpeedRatioGraphQuery, SpeedRatioColorFunction)

GRAPH_QUERY(CumulativeFlowCountGraphQuery, CumulativeFlowCountGraphQueries)
SET(CumulativeFlowCountGraphQuery, AgentFilter)
CLEAR(CumulativeFlowCountGraphQuery, Filter)
SET(CumulativeFlowCountGraphQuery, Transitions)

GRAPH_QUERY(FlowCountGraphQuery, FlowCountGraphQueries)
SET(FlowCountGraphQuery, AgentFilter)
CLEAR(FlowCountGraphQuery, Filter)
SET(FlowCountGraphQuery, Transitions)

GRAPH_QUERY(PopulationCountGraphQuery, PopulationCountGraphQueries)
SET(PopulationCountGraphQuery, AgentFilter)
CLEAR(PopulationCountGraphQuery, Filter)
SET(PopulationCountGraphQuery, AreaIds)

GRAPH_QUERY_CLASS(TallyGraphQuery, GraphQuery)
OVERLOAD(Project, createTallyGraphQuery, 0, CreateTallyGraphQuery, std::string const&, GlobalId const&)
OVERLOAD(Project, createTallyGraphQuery, 1, CreateTallyGraphQuery, std::string const&, std::vector<GlobalId> const&)
BASE_OF_KINDS(TallyGraphQuery, TallyGraphQueries)
SET(TallyGraphQuery, SimulationRunId)
PROPERTY(TallyGraphQuery, SamplingPeriodInSeconds)
PROPERTY(TallyGraphQuery, TallyObjects)
PROPERTY(TallyGraphQuery, SimulationRunIds)
PROPERTY(TallyGraphQuery, AggregationType)

GRAPH_QUERY_CLASS(VolumeDensityGraphQuery, GraphQuery)
OVERLOAD(Project, createVolumeDensityGraphQuery, 0, CreateVolumeDensityGraphQuery, std::string const&,
         std::vector<GlobalId> const&)
OVERLOAD(Project, createVolumeDensityGraphQuery, 1, CreateVolumeDensityGraphQuery, std::string const&, GlobalId const&)
BASE_OF_KINDS(VolumeDensityGraphQuery, VolumeDensityGraphQueries)
SET(VolumeDensityGraphQuery, SimulationRunId)
PROPERTY(VolumeDensityGraphQuery, Volumes)
PROPERTY(VolumeDensityGraphQuery, SimulationRunIds)

}  // namespace pedflux::jni
