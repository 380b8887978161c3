#pragma once

/// Every kind of table query, one line each: class, classes, type, factory, evaluation, state, parts. query_states.h
/// tells what they mean and what follows from them; the evaluations stand in table_evaluation.cpp.
#define PEDFLUX_TABLE_QUERIES(QUERY)                                                                                   \
    QUERY(AgentAreaTimeTableQuery, AgentAreaTimeTableQueries, AGENT_AREA_TIME, OF_RUN, area_times, TableQueryState,    \
          Filtered, InAreas)                                                                                           \
    QUERY(AgentElevatorTripTimeTableQuery, AgentElevatorTripTimeTableQueries, AGENT_ELEVATOR_TRIP_TIME, OF_RUN,        \
          not_evaluated_yet, TableQueryState, Filtered, OfElevators, FromStops, ToStops, ViewedByElevator,             \
          CountedIfInRange)                                                                                            \
    QUERY(AgentElevatorWaitTimeTableQuery, AgentElevatorWaitTimeTableQueries, AGENT_ELEVATOR_WAIT_TIME, OF_RUN,        \
          not_evaluated_yet, TableQueryState, Filtered, OfElevators, AtStops, ViewedByElevator, CountedIfInRange)      \
    QUERY(AgentLevelOfServiceTimeTableQuery, AgentLevelOfServiceTimeTableQueries, AGENT_LEVEL_OF_SERVICE_TIME, OF_RUN, \
          level_of_service_times, TableQueryState, Filtered)                                                           \
    QUERY(AgentProcessChainTimeTableQuery, AgentProcessChainTimeTableQueries, AGENT_PROCESS_CHAIN_TIME, OF_RUN,        \
          not_evaluated_yet, TableQueryState, Filtered, BetweenServers)                                                \
    QUERY(AgentProximityTableQuery, AgentProximityTableQueries, AGENT_PROXIMITY, OF_RUN, encounters, TableQueryState,  \
          Filtered, OfEncounters)                                                                                      \
    QUERY(AgentSocialCostTableQuery, AgentSocialCostTableQueries, AGENT_SOCIAL_COST, OF_RUN, not_evaluated_yet,        \
          TableQueryState, Filtered, SocialCost)                                                                       \
    QUERY(AgentSummaryTableQuery, AgentSummaryTableQueries, AGENT_SUMMARY, OF_RUN, summary, TableQueryState, Filtered) \
    QUERY(AgentTimetableSummaryTableQuery, AgentTimetableSummaryTableQueries, AGENT_TIMETABLE_SUMMARY, OF_RUN,         \
          not_evaluated_yet, TableQueryState, Filtered, OfTimetable)                                                   \
    QUERY(AgentTokenTimeTableQuery, AgentTokenTimeTableQueries, AGENT_TOKEN_TIME, OF_RUN, not_evaluated_yet,           \
          TableQueryState, Filtered, WithTokens)                                                                       \
    QUERY(AgentTransitionTableQuery, AgentTransitionTableQueries, AGENT_TRANSITION, OF_RUN, transitions,               \
          TableQueryState, Filtered, AtTransition)                                                                     \
    QUERY(AgentTripTimeTableQuery, AgentTripTimeTableQueries, AGENT_TRIP_TIME, OF_RUN, trip_times, TableQueryState,    \
          Filtered, OnTrip)                                                                                            \
    QUERY(AreaOriginDestinationCountTableQuery, AreaOriginDestinationCountTableQueries, AREA_ORIGIN_DESTINATION_COUNT, \
          OF_RUN, counts_across_area, OriginDestinationMatrixTableQueryState, AcrossArea)                              \
    QUERY(ElevatorTimeWithoutServiceTableQuery, ElevatorTimeWithoutServiceTableQueries, ELEVATOR_TIME_WITHOUT_SERVICE, \
          OF_RUN, not_evaluated_yet, TableQueryState, OfElevators, ViewedByElevator, CountedIfInRange)                 \
    QUERY(ExpectedDemandODCountTableQuery, ExpectedDemandODCountTableQueries, EXPECTED_DEMAND_OD_COUNT, NAMED,         \
          not_evaluated_yet, TableQueryState, OfExpectedDemand, WrittenAs)                                             \
    QUERY(ServerSummaryTableQuery, ServerSummaryTableQueries, SERVER_SUMMARY, NAMED, not_evaluated_yet,                \
          TableQueryState, SeveralRuns, Filtered, OfServers, Aggregated)                                               \
    QUERY(SimulationOriginDestinationCountTableQuery, SimulationOriginDestinationCountTableQueries,                    \
          SIMULATION_ORIGIN_DESTINATION_COUNT, OF_RUN, counts_between_portals, OriginDestinationMatrixTableQueryState, \
          BetweenPortals)                                                                                              \
    QUERY(SimulationOriginDestinationSocialCostTableQuery, SimulationOriginDestinationSocialCostTableQueries,          \
          SIMULATION_ORIGIN_DESTINATION_SOCIAL_COST, OF_RUN, not_evaluated_yet,                                        \
          OriginDestinationMatrixTableQueryState, SocialCost, Aggregated, ShownAs)                                     \
    QUERY(SimulationOriginDestinationTimeTableQuery, SimulationOriginDestinationTimeTableQueries,                      \
          SIMULATION_ORIGIN_DESTINATION_TIME, OF_RUN, times_between_portals, OriginDestinationMatrixTableQueryState,   \
          BetweenPortals, Aggregated)
