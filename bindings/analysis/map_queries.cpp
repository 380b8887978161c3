#include "bindings/kinds.h"

#include <pedflux/agent_filters.h>
#include <pedflux/color_functions.h>
#include <pedflux/identifiers.h>
#include <pedflux/map_queries.h>
#include <pedflux/maps.h>
#include <pedflux/time_range.h>

#define MAP_QUERY_CLASS(Class, Base) \
    CLASS(Class, Base)               \
    GET(Class, MapQueryTypeId)
/// A query of its own kind of map.
#define MAP_QUERY(Class, Classes)    \
    MAP_QUERY_CLASS(Class, MapQuery) \
    KIND(Class, Classes)
/// A query of a map of densities.
#define DENSITY_MAP_QUERY(Class, Classes)   \
    MAP_QUERY_CLASS(Class, DensityMapQuery) \
    KIND(Class, Classes)

namespace pedflux::jni {

CLASS(MapQuery, SimObject)
METHOD(MapQuery, evaluate, Evaluate)
CLEAR(MapQuery, Maps)
PROPERTY(MapQuery, MapDisplayObjects)
PROPERTY(MapQuery, SimulationRunId)
GET(MapQuery, TypeId)
GET(MapQuery, MapQueryTypeId)

MAP_QUERY(AgentCountMapQuery, AgentCountMapQueries)
PROPERTY(AgentCountMapQuery, AgentFilter)
PROPERTY(AgentCountMapQuery, ColorFunction)
PROPERTY(AgentCountMapQuery, TimeRange)

MAP_QUERY(AgentPathMapQuery, AgentPathMapQueries)
PROPERTY(AgentPathMapQuery, AgentFilter)
PROPERTY(AgentPathMapQuery, TimeRange)

MAP_QUERY(AgentTimeToExitMapQuery, AgentTimeToExitMapQueries)
PROPERTY(AgentTimeToExitMapQuery, AgentFilter)
PROPERTY(AgentTimeToExitMapQuery, ColorFunction)
PROPERTY(AgentTimeToExitMapQuery, TimeRange)

MAP_QUERY_CLASS(DensityMapQuery, MapQuery)
METHOD(DensityMapQuery, usesCustomColorFunction, UsesCustomColorFunction)
PROPERTY(DensityMapQuery, CustomColorFunction)
GET(DensityMapQuery, LevelOfServiceColorFunctionTypeId)
GET(DensityMapQuery, LevelOfServiceColorTransition)
SET(DensityMapQuery, LevelOfServiceColorFunction)
METHOD_CONST(DensityMapQuery, generateColorFunctionForWalkableObject, GenerateColorFunctionForWalkableObject)

DENSITY_MAP_QUERY(AverageDensityMapQuery, AverageDensityMapQueries)
PROPERTY(AverageDensityMapQuery, TimeRange)

DENSITY_MAP_QUERY(MaxDensityMapQuery, MaxDensityMapQueries)
PROPERTY(MaxDensityMapQuery, TimeRange)

DENSITY_MAP_QUERY(InstantaneousDensityMapQuery, InstantaneousDensityMapQueries)

DENSITY_MAP_QUERY(ExperiencedDensityMapQuery, ExperiencedDensityMapQueries)
PROPERTY(ExperiencedDensityMapQuery, TimeRange)

DENSITY_MAP_QUERY(NonZeroAverageDensityMapQuery, NonZeroAverageDensityMapQueries)
PROPERTY(NonZeroAverageDensityMapQuery, TimeRange)

MAP_QUERY(DynamicPathMapQuery, DynamicPathMapQueries)
PROPERTY(DynamicPathMapQuery, AgentFilter)

MAP_QUERY(InstantaneousProximityMapQuery, InstantaneousProximityMapQueries)
PROPERTY(InstantaneousProximityMapQuery, AgentFilter)
PROPERTY(InstantaneousProximityMapQuery, ColorFunction)
PROPERTY(InstantaneousProximityMapQuery, Distance)
FLAG(InstantaneousProximityMapQuery, IgnoreBarriers)

MAP_QUERY(MaximumProximityMapQuery, MaximumProximityMapQueries)
PROPERTY(MaximumProximityMapQuery, AgentFilter)
PROPERTY(MaximumProximityMapQuery, ColorFunction)
PROPERTY(MaximumProximityMapQuery, TimeRange)
PROPERTY(MaximumProximityMapQuery, Distance)
FLAG(MaximumProximityMapQuery, IgnoreBarriers)
PROPERTY(MaximumProximityMapQuery, SamplePeriod)

MAP_QUERY_CLASS(StaticMapQuery, MapQuery)
SET(StaticMapQuery, ColorFunction)

MAP_QUERY_CLASS(StaticCostMapQuery, StaticMapQuery)
KIND(StaticCostMapQuery, StaticCostMapQueries)

MAP_QUERY_CLASS(StaticDistanceMapQuery, StaticMapQuery)
KIND(StaticDistanceMapQuery, StaticDistanceMapQueries)

MAP_QUERY(TimeAboveDensityMapQuery, TimeAboveDensityMapQueries)
PROPERTY(TimeAboveDensityMapQuery, ColorFunction)
PROPERTY(TimeAboveDensityMapQuery, TimeRange)
PROPERTY(TimeAboveDensityMapQuery, DensityThreshold)

MAP_QUERY(TimeInProximityMapQuery, TimeInProximityMapQueries)
PROPERTY(TimeInProximityMapQuery, AgentFilter)
PROPERTY(TimeInProximityMapQuery, ColorFunction)
PROPERTY(TimeInProximityMapQuery, TimeRange)
PROPERTY(TimeInProximityMapQuery, Distance)
FLAG(TimeInProximityMapQuery, IgnoreBarriers)

MAP_QUERY(TimeOccupiedMapQuery, TimeOccupiedMapQueries)
PROPERTY(TimeOccupiedMapQuery, AgentFilter)
PROPERTY(TimeOccupiedMapQuery, ColorFunction)
PROPERTY(TimeOccupiedMapQuery, TimeRange)

MAP_QUERY(TimeUntilClearMapQuery, TimeUntilClearMapQueries)
PROPERTY(TimeUntilClearMapQuery, AgentFilter)
PROPERTY(TimeUntilClearMapQuery, ColorFunction)
PROPERTY(TimeUntilClearMapQuery, TimeRange)

MAP_QUERY(VisionCountMapQuery, VisionCountMapQueries)
PROPERTY(VisionCountMapQuery, AgentFilter)
PROPERTY(VisionCountMapQuery, ColorFunction)
PROPERTY(VisionCountMapQuery, TimeRange)

MAP_QUERY(VisionTimeAboveCountMapQuery, VisionTimeAboveCountMapQueries)
PROPERTY(VisionTimeAboveCountMapQuery, AgentFilter)
PROPERTY(VisionTimeAboveCountMapQuery, ColorFunction)
PROPERTY(VisionTimeAboveCountMapQuery, TimeRange)

MAP_QUERY(VisionTimeMapQuery, VisionTimeMapQueries)
PROPERTY(VisionTimeMapQuery, AgentFilter)
PROPERTY(VisionTimeMapQuery, ColorFunction)
PROPERTY(VisionTimeMapQuery, TimeRange)

}  // namespace pedflux::jni
