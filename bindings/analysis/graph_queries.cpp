#include "bindings/table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>
#include <pedflux/identifiers.h>
#include <pedflux/time_range.h>
#include <pedflux/transitions.h>

/// A query of its own kind of graph.
#define GRAPH_QUERY(Class)   \
    CLASS(Class, GraphQuery) \
    GET(Class, GraphQueryTypeId)

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

GRAPH_QUERY(AgentDensityGraphQuery)
PROPERTY(AgentDensityGraphQuery, AgentFilter)
PROPERTY(AgentDensityGraphQuery, SamplingPeriodInSeconds)

GRAPH_QUERY(AgentSpeedRatioGraphQuery)
PROPERTY(AgentSpeedRatioGraphQuery, AgentFilter)
SET(AgentSpeedRatioGraphQuery, SpeedRatioColorFunction)

GRAPH_QUERY(CumulativeFlowCountGraphQuery)
SET(CumulativeFlowCountGraphQuery, AgentFilter)
CLEAR(CumulativeFlowCountGraphQuery, Filter)
SET(CumulativeFlowCountGraphQuery, Transitions)

GRAPH_QUERY(FlowCountGraphQuery)
SET(FlowCountGraphQuery, AgentFilter)
CLEAR(FlowCountGraphQuery, Filter)
SET(FlowCountGraphQuery, Transitions)

GRAPH_QUERY(PopulationCountGraphQuery)
SET(PopulationCountGraphQuery, AgentFilter)
CLEAR(PopulationCountGraphQuery, Filter)
SET(PopulationCountGraphQuery, AreaIds)

GRAPH_QUERY(TallyGraphQuery)
SET(TallyGraphQuery, SimulationRunId)
PROPERTY(TallyGraphQuery, SamplingPeriodInSeconds)
PROPERTY(TallyGraphQuery, TallyObjects)
PROPERTY(TallyGraphQuery, SimulationRunIds)
PROPERTY(TallyGraphQuery, AggregationType)

GRAPH_QUERY(VolumeDensityGraphQuery)
SET(VolumeDensityGraphQuery, SimulationRunId)
PROPERTY(VolumeDensityGraphQuery, Volumes)
PROPERTY(VolumeDensityGraphQuery, SimulationRunIds)

}  // namespace pedflux::jni
