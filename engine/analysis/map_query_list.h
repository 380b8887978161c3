#pragma once

/// Every kind of map query, one line each: class, classes, type, factory, evaluation, state, parts. query_states.h
/// tells what they mean and what follows from them; the evaluations stand in map_evaluation.cpp.
#define PEDFLUX_MAP_QUERIES(QUERY)                                                                                     \
    QUERY(AverageDensityMapQuery, AverageDensityMapQueries, AVERAGE_DENSITY, OF_RUN, density_maps<average_density>,    \
          DensityMapQueryState, Timed)                                                                                 \
    QUERY(MaxDensityMapQuery, MaxDensityMapQueries, MAX_DENSITY, OF_RUN, density_maps<greatest_density>,               \
          DensityMapQueryState, Timed)                                                                                 \
    QUERY(NonZeroAverageDensityMapQuery, NonZeroAverageDensityMapQueries, NON_ZERO_AVERAGE_DENSITY, OF_RUN,            \
          density_maps<average_density_while_near>, DensityMapQueryState, Timed)                                       \
    QUERY(ExperiencedDensityMapQuery, ExperiencedDensityMapQueries, EXPERIENCED_DENSITY, OF_RUN,                       \
          density_maps<experienced_density>, DensityMapQueryState, Timed)                                              \
    QUERY(InstantaneousDensityMapQuery, InstantaneousDensityMapQueries, INSTANTANEOUS_DENSITY, OF_RUN,                 \
          density_maps<last_density>, DensityMapQueryState)                                                            \
    QUERY(AgentCountMapQuery, AgentCountMapQueries, AGENT_COUNT, OF_RUN, count_maps, MapQueryState, Filtered, Colored, \
          Timed)                                                                                                       \
    QUERY(AgentTimeToExitMapQuery, AgentTimeToExitMapQueries, AGENT_TIME_TO_EXIT, OF_RUN, exit_maps, MapQueryState,    \
          Filtered, Colored, Timed)                                                                                    \
    QUERY(TimeOccupiedMapQuery, TimeOccupiedMapQueries, TIME_OCCUPIED, OF_RUN, occupied_maps, MapQueryState, Filtered, \
          Colored, Timed)                                                                                              \
    QUERY(TimeUntilClearMapQuery, TimeUntilClearMapQueries, TIME_UNTIL_CLEAR, OF_RUN, clear_maps, MapQueryState,       \
          Filtered, Colored, Timed)                                                                                    \
    QUERY(TimeAboveDensityMapQuery, TimeAboveDensityMapQueries, TIME_ABOVE_DENSITY, OF_RUN,                            \
          density_maps<seconds_above_density>, MapQueryState, Colored, Timed, AboveDensity)                            \
    QUERY(AgentPathMapQuery, AgentPathMapQueries, AGENT_PATH, OF_RUN, path_maps, MapQueryState, Filtered, Timed)       \
    QUERY(InstantaneousProximityMapQuery, InstantaneousProximityMapQueries, INSTANTANEOUS_PROXIMITY, OF_RUN,           \
          instantaneous_proximity_maps, MapQueryState, Filtered, Colored, CloseTogether)                               \
    QUERY(TimeInProximityMapQuery, TimeInProximityMapQueries, TIME_IN_PROXIMITY, OF_RUN, time_in_proximity_maps,       \
          MapQueryState, Filtered, Colored, Timed, CloseTogether)                                                      \
    QUERY(MaximumProximityMapQuery, MaximumProximityMapQueries, MAXIMUM_PROXIMITY, OF_RUN, maximum_proximity_maps,     \
          MapQueryState, Filtered, Colored, Timed, CloseTogether, SampledSometimes)                                    \
    QUERY(DynamicPathMapQuery, DynamicPathMapQueries, DYNAMIC_PATH, OF_RUN, not_evaluated_yet, MapQueryState,          \
          Filtered)                                                                                                    \
    QUERY(VisionCountMapQuery, VisionCountMapQueries, VISION_COUNT, OF_RUN, not_evaluated_yet, MapQueryState,          \
          Filtered, Colored, Timed)                                                                                    \
    QUERY(VisionTimeMapQuery, VisionTimeMapQueries, VISION_TIME, OF_RUN, not_evaluated_yet, MapQueryState, Filtered,   \
          Colored, Timed)                                                                                              \
    QUERY(VisionTimeAboveCountMapQuery, VisionTimeAboveCountMapQueries, VISION_TIME_ABOVE_COUNT, OF_RUN,               \
          not_evaluated_yet, MapQueryState, Filtered, Colored, Timed)                                                  \
    QUERY(StaticCostMapQuery, StaticCostMapQueries, STATIC_COST, OF_OBJECT, not_evaluated_yet, StaticMapQueryState)    \
    QUERY(StaticDistanceMapQuery, StaticDistanceMapQueries, STATIC_DISTANCE, OF_OBJECT, not_evaluated_yet,             \
          StaticMapQueryState)
