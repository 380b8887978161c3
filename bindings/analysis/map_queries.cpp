#include "bindings/table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/color_functions.h>
#include <pedflux/identifiers.h>
#include <pedflux/map_queries.h>
#include <pedflux/maps.h>
#include <pedflux/time_range.h>

/// A query of its own kind of map.
#define MAP_QUERY(Class)   \
    CLASS(Class, MapQuery) \
    GET(Class, MapQueryTypeId)

/// A query of a map of densities.
#define DENSITY_MAP_QUERY(Class)  \
    CLASS(Class, DensityMapQuery) \
    GET(Class, MapQueryTypeId)

namespace pedflux::jni {

CLASS(MapQuery, SimObject)
METHOD(MapQuery, evaluate, Evaluate)
CLEAR(MapQuery, Maps)
PROPERTY(MapQuery, MapDisplayObjects)
PROPERTY(MapQuery, SimulationRunId)
GET(MapQuery, TypeId)
GET(MapQuery, MapQueryTypeId)

MAP_QUERY(AgentCountMapQuery)
PROPERTY(AgentCountMapQuery, AgentFilter)
PROPERTY(AgentCountMapQuery, ColorFunction)
PROPERTY(AgentCountMapQuery, TimeRange)

MAP_QUERY(AgentPathMapQuery)
PROPERTY(AgentPathMapQuery, AgentFilter)
PROPERTY(AgentPathMapQuery, TimeRange)

MAP_QUERY(AgentTimeToExitMapQuery)
PROPERTY(AgentTimeToExitMapQuery, AgentFilter)
PROPERTY(AgentTimeToExitMapQuery, ColorFunction)
PROPERTY(AgentTimeToExitMapQuery, TimeRange)

MAP_QUERY(DensityMapQuery)
METHOD(DensityMapQuery, usesCustomColorFunction, UsesCustomColorFunction)
PROPERTY(DensityMapQuery, CustomColorFunction)
GET(DensityMapQuery, LevelOfServiceColorFunctionTypeId)
GET(DensityMapQuery, LevelOfServiceColorTransition)
SET(DensityMapQuery, LevelOfServiceColorFunction)
METHOD_CONST(DensityMapQuery, generateColorFunctionForWalkableObject, GenerateColorFunctionForWalkableObject)

DENSITY_MAP_QUERY(AverageDensityMapQuery)
PROPERTY(AverageDensityMapQuery, TimeRange)

DENSITY_MAP_QUERY(MaxDensityMapQuery)
PROPERTY(MaxDensityMapQuery, TimeRange)

DENSITY_MAP_QUERY(InstantaneousDensityMapQuery)

DENSITY_MAP_QUERY(ExperiencedDensityMapQuery)
PROPERTY(ExperiencedDensityMapQuery, TimeRange)

DENSITY_MAP_QUERY(NonZeroAverageDensityMapQuery)
PROPERTY(NonZeroAverageDensityMapQuery, TimeRange)

MAP_QUERY(DynamicPathMapQuery)
PROPERTY(DynamicPathMapQuery, AgentFilter)

MAP_QUERY(InstantaneousProximityMapQuery)
PROPERTY(InstantaneousProximityMapQuery, AgentFilter)
PROPERTY(InstantaneousProximityMapQuery, ColorFunction)
PROPERTY(InstantaneousProximityMapQuery, Distance)
FLAG(InstantaneousProximityMapQuery, IgnoreBarriers)

MAP_QUERY(MaximumProximityMapQuery)
PROPERTY(MaximumProximityMapQuery, AgentFilter)
PROPERTY(MaximumProximityMapQuery, ColorFunction)
PROPERTY(MaximumProximityMapQuery, TimeRange)
PROPERTY(MaximumProximityMapQuery, Distance)
FLAG(MaximumProximityMapQuery, IgnoreBarriers)
PROPERTY(MaximumProximityMapQuery, SamplePeriod)

MAP_QUERY(StaticMapQuery)
SET(StaticMapQuery, ColorFunction)

CLASS(StaticCostMapQuery, StaticMapQuery)
GET(StaticCostMapQuery, MapQueryTypeId)

CLASS(StaticDistanceMapQuery, StaticMapQuery)
GET(StaticDistanceMapQuery, MapQueryTypeId)

MAP_QUERY(TimeAboveDensityMapQuery)
PROPERTY(TimeAboveDensityMapQuery, ColorFunction)
PROPERTY(TimeAboveDensityMapQuery, TimeRange)
PROPERTY(TimeAboveDensityMapQuery, DensityThreshold)

MAP_QUERY(TimeInProximityMapQuery)
PROPERTY(TimeInProximityMapQuery, AgentFilter)
PROPERTY(TimeInProximityMapQuery, ColorFunction)
PROPERTY(TimeInProximityMapQuery, TimeRange)
PROPERTY(TimeInProximityMapQuery, Distance)
FLAG(TimeInProximityMapQuery, IgnoreBarriers)

MAP_QUERY(TimeOccupiedMapQuery)
PROPERTY(TimeOccupiedMapQuery, AgentFilter)
PROPERTY(TimeOccupiedMapQuery, ColorFunction)
PROPERTY(TimeOccupiedMapQuery, TimeRange)

MAP_QUERY(TimeUntilClearMapQuery)
PROPERTY(TimeUntilClearMapQuery, AgentFilter)
PROPERTY(TimeUntilClearMapQuery, ColorFunction)
PROPERTY(TimeUntilClearMapQuery, TimeRange)

MAP_QUERY(VisionCountMapQuery)
PROPERTY(VisionCountMapQuery, AgentFilter)
PROPERTY(VisionCountMapQuery, ColorFunction)
PROPERTY(VisionCountMapQuery, TimeRange)

MAP_QUERY(VisionTimeAboveCountMapQuery)
PROPERTY(VisionTimeAboveCountMapQuery, AgentFilter)
PROPERTY(VisionTimeAboveCountMapQuery, ColorFunction)
PROPERTY(VisionTimeAboveCountMapQuery, TimeRange)

MAP_QUERY(VisionTimeMapQuery)
PROPERTY(VisionTimeMapQuery, AgentFilter)
PROPERTY(VisionTimeMapQuery, ColorFunction)
PROPERTY(VisionTimeMapQuery, TimeRange)

}  // namespace pedflux::jni
