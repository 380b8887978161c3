#include "bindings/table.h"

#include <pedflux/color_functions.h>
#include <pedflux/identifiers.h>
#include <pedflux/map_queries.h>
#include <pedflux/maps.h>
#include <pedflux/time_range.h>

namespace pedflux::jni {

CLASS(MapQuery, SimObject)
METHOD(MapQuery, evaluate, Evaluate)
CLEAR(MapQuery, Maps)
PROPERTY(MapQuery, MapDisplayObjects)
PROPERTY(MapQuery, SimulationRunId)
GET(MapQuery, TypeId)
GET(MapQuery, MapQueryTypeId)

CLASS(AgentCountMapQuery, MapQuery)
GET(AgentCountMapQuery, MapQueryTypeId)
PROPERTY(AgentCountMapQuery, ColorFunction)
PROPERTY(AgentCountMapQuery, TimeRange)

CLASS(DensityMapQuery, MapQuery)
GET(DensityMapQuery, MapQueryTypeId)
METHOD(DensityMapQuery, usesCustomColorFunction, UsesCustomColorFunction)
PROPERTY(DensityMapQuery, CustomColorFunction)
GET(DensityMapQuery, LevelOfServiceColorFunctionTypeId)
GET(DensityMapQuery, LevelOfServiceColorTransition)
SET(DensityMapQuery, LevelOfServiceColorFunction)
METHOD_CONST(DensityMapQuery, generateColorFunctionForWalkableObject, GenerateColorFunctionForWalkableObject)

CLASS(AverageDensityMapQuery, DensityMapQuery)
GET(AverageDensityMapQuery, MapQueryTypeId)
PROPERTY(AverageDensityMapQuery, TimeRange)

CLASS(MaxDensityMapQuery, DensityMapQuery)
GET(MaxDensityMapQuery, MapQueryTypeId)
PROPERTY(MaxDensityMapQuery, TimeRange)

CLASS(InstantaneousDensityMapQuery, DensityMapQuery)
GET(InstantaneousDensityMapQuery, MapQueryTypeId)

CLASS(ExperiencedDensityMapQuery, DensityMapQuery)
GET(ExperiencedDensityMapQuery, MapQueryTypeId)
PROPERTY(ExperiencedDensityMapQuery, TimeRange)

CLASS(NonZeroAverageDensityMapQuery, DensityMapQuery)
GET(NonZeroAverageDensityMapQuery, MapQueryTypeId)
PROPERTY(NonZeroAverageDensityMapQuery, TimeRange)

}  // namespace pedflux::jni
