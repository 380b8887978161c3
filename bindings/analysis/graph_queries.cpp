#include "bindings/table.h"

#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>
#include <pedflux/identifiers.h>
#include <pedflux/time_range.h>

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
IS(GraphQuery, ShowLegend)
SET(GraphQuery, ShowLegend)
IS(GraphQuery, ShowMetadata)
SET(GraphQuery, ShowMetadata)
GET(GraphQuery, GraphQueryTypeId)

CLASS(PopulationCountGraphQuery, GraphQuery)
GET(PopulationCountGraphQuery, GraphQueryTypeId)
SET(PopulationCountGraphQuery, AreaIds)

}  // namespace pedflux::jni
