#pragma once

/// Every kind of graph query, one line each: class, classes, type, factory, evaluation, state, parts. query_states.h
/// tells what they mean and what follows from them; the evaluations stand in graph_evaluation.cpp.
#define PEDFLUX_GRAPH_QUERIES(QUERY)                                                                               \
    QUERY(PopulationCountGraphQuery, PopulationCountGraphQueries, POPULATION_COUNT, OF_RUN, population_graph,      \
          GraphQueryState, WriteOnlyFilter, OfAreas)                                                               \
    QUERY(FlowCountGraphQuery, FlowCountGraphQueries, FLOW_COUNT, OF_RUN, flow_graph, GraphQueryState,             \
          WriteOnlyFilter, OfTransitions)                                                                          \
    QUERY(CumulativeFlowCountGraphQuery, CumulativeFlowCountGraphQueries, CUMULATIVE_FLOW_COUNT, OF_RUN,           \
          cumulative_flow_graph, GraphQueryState, WriteOnlyFilter, OfTransitions)                                  \
    QUERY(AgentDensityGraphQuery, AgentDensityGraphQueries, AGENT_DENSITY, OF_RUN, density_graph, GraphQueryState, \
          Filtered, Sampled)                                                                                       \
    QUERY(AgentSpeedRatioGraphQuery, AgentSpeedRatioGraphQueries, AGENT_SPEED_RATIO, OF_RUN, not_evaluated_yet,    \
          GraphQueryState, Filtered, InSpeedColors)                                                                \
    QUERY(TallyGraphQuery, TallyGraphQueries, TALLY, OF_RUNS, not_evaluated_yet, GraphQueryState, SeveralRuns,     \
          OfTallies, Sampled, Aggregated)                                                                          \
    QUERY(VolumeDensityGraphQuery, VolumeDensityGraphQueries, VOLUME_DENSITY, OF_RUNS, not_evaluated_yet,          \
          GraphQueryState, SeveralRuns, OfVolumes)
