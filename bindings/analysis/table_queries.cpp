#include "bindings/kinds.h"

#include <pedflux/agent_filters.h>
#include <pedflux/identifiers.h>
#include <pedflux/level_of_service.h>
#include <pedflux/table_queries.h>
#include <pedflux/tables.h>
#include <pedflux/time_range.h>
#include <pedflux/timetables.h>
#include <pedflux/transitions.h>

#define TABLE_QUERY_CLASS(Class, Base) \
    CLASS(Class, Base)                 \
    GET(Class, TableQueryTypeId)
/// A query of its own kind of table.
#define TABLE_QUERY(Class, Classes)      \
    TABLE_QUERY_CLASS(Class, TableQuery) \
    KIND(Class, Classes)
/// A query of a table of origins and destinations.
#define ORIGIN_DESTINATION_QUERY(Class, Classes)                \
    TABLE_QUERY_CLASS(Class, OriginDestinationMatrixTableQuery) \
    KIND(Class, Classes)

namespace pedflux::jni {

CLASS(TableQuery, SimObject)
METHOD(TableQuery, evaluate, Evaluate)
PROPERTY(TableQuery, SimulationRunId)
GET(TableQuery, TimeRange)
METHOD_CONST(TableQuery, setTimeRange, SetTimeRange)
GET(TableQuery, TypeId)
GET(TableQuery, TableQueryTypeId)

TABLE_QUERY_CLASS(OriginDestinationMatrixTableQuery, TableQuery)
PROPERTY(OriginDestinationMatrixTableQuery, AgentFilter)
PROPERTY(OriginDestinationMatrixTableQuery, OriginDestinationMatrixTableOutput)
PROPERTY(OriginDestinationMatrixTableQuery, CountIfInRangeType)

TABLE_QUERY(AgentAreaTimeTableQuery, AgentAreaTimeTableQueries)
PROPERTY(AgentAreaTimeTableQuery, AgentFilter)
GET(AgentAreaTimeTableQuery, AreaIds)
SET(AgentAreaTimeTableQuery, Areas)
METHOD_CONST(AgentAreaTimeTableQuery, setArea, SetArea)

TABLE_QUERY(AgentElevatorTripTimeTableQuery, AgentElevatorTripTimeTableQueries)
PROPERTY(AgentElevatorTripTimeTableQuery, AgentFilter)
PROPERTY(AgentElevatorTripTimeTableQuery, Elevators)
PROPERTY(AgentElevatorTripTimeTableQuery, RestrictedOriginStops)
PROPERTY(AgentElevatorTripTimeTableQuery, RestrictedDestinationStops)
METHOD(AgentElevatorTripTimeTableQuery, usesRestrictedOriginStops, UsesRestrictedOriginStops)
METHOD(AgentElevatorTripTimeTableQuery, usesRestrictedDestinationStops, UsesRestrictedDestinationStops)
SET(AgentElevatorTripTimeTableQuery, UseAllOriginStops)
SET(AgentElevatorTripTimeTableQuery, UseAllDestinationStops)
PROPERTY(AgentElevatorTripTimeTableQuery, TableViewType)
PROPERTY(AgentElevatorTripTimeTableQuery, CountIfInRangeType)

TABLE_QUERY(AgentElevatorWaitTimeTableQuery, AgentElevatorWaitTimeTableQueries)
PROPERTY(AgentElevatorWaitTimeTableQuery, AgentFilter)
PROPERTY(AgentElevatorWaitTimeTableQuery, Elevators)
PROPERTY(AgentElevatorWaitTimeTableQuery, RestrictedStops)
METHOD(AgentElevatorWaitTimeTableQuery, usesRestrictedStops, UsesRestrictedStops)
SET(AgentElevatorWaitTimeTableQuery, UseAllStops)
PROPERTY(AgentElevatorWaitTimeTableQuery, TableViewType)
PROPERTY(AgentElevatorWaitTimeTableQuery, CountIfInRangeType)

TABLE_QUERY(AgentLevelOfServiceTimeTableQuery, AgentLevelOfServiceTimeTableQueries)
PROPERTY(AgentLevelOfServiceTimeTableQuery, AgentFilter)

TABLE_QUERY(AgentProcessChainTimeTableQuery, AgentProcessChainTimeTableQueries)
PROPERTY(AgentProcessChainTimeTableQuery, AgentFilter)
PROPERTY(AgentProcessChainTimeTableQuery, StartingServers)
PROPERTY(AgentProcessChainTimeTableQuery, EndingServers)

TABLE_QUERY(AgentProximityTableQuery, AgentProximityTableQueries)
PROPERTY(AgentProximityTableQuery, AgentFilter)
PROPERTY(AgentProximityTableQuery, ProximityDistance)
PROPERTY(AgentProximityTableQuery, MinInteractionDurationInSeconds)
PROPERTY(AgentProximityTableQuery, MaxGapDurationInSeconds)
FLAG(AgentProximityTableQuery, IgnoreObstacles)
PROPERTY(AgentProximityTableQuery, ViewType)
IS(AgentProximityTableQuery, OneWayInteractionView)
GET(AgentProximityTableQuery, OneWayInteractionSubjectAgentFilter)
GET(AgentProximityTableQuery, OneWayInteractionTargetAgentFilter)
SET(AgentProximityTableQuery, OneWayInteractionViewAgentFilters)

TABLE_QUERY(AgentSocialCostTableQuery, AgentSocialCostTableQueries)
PROPERTY(AgentSocialCostTableQuery, AgentFilter)
SET(AgentSocialCostTableQuery, CostPerHour)
SET(AgentSocialCostTableQuery, DaysPerYear)
SET(AgentSocialCostTableQuery, WalkingWeight)
SET(AgentSocialCostTableQuery, WaitingWeight)
SET(AgentSocialCostTableQuery, QueuingWeight)
SET(AgentSocialCostTableQuery, ProcessingWeight)
SET(AgentSocialCostTableQuery, StairUpWeight)
SET(AgentSocialCostTableQuery, StairDownWeight)
SET(AgentSocialCostTableQuery, EscalatorWeight)
SET(AgentSocialCostTableQuery, CustomWeight)
SET(AgentSocialCostTableQuery, CustomWeightAgentFilter)
METHOD(AgentSocialCostTableQuery, enableCustomWeight, EnableCustomWeight)

TABLE_QUERY(AgentSummaryTableQuery, AgentSummaryTableQueries)
PROPERTY(AgentSummaryTableQuery, AgentFilter)

TABLE_QUERY(AgentTimetableSummaryTableQuery, AgentTimetableSummaryTableQueries)
PROPERTY(AgentTimetableSummaryTableQuery, AgentFilter)
PROPERTY(AgentTimetableSummaryTableQuery, Timetable)
PROPERTY(AgentTimetableSummaryTableQuery, ReferenceEventNames)
CLEAR(AgentTimetableSummaryTableQuery, ReferenceEventNames)
FLAG(AgentTimetableSummaryTableQuery, FilterByReferenceEvents)

TABLE_QUERY(AgentTokenTimeTableQuery, AgentTokenTimeTableQueries)
PROPERTY(AgentTokenTimeTableQuery, AgentFilter)
SET(AgentTokenTimeTableQuery, Tokens)

TABLE_QUERY(AgentTransitionTableQuery, AgentTransitionTableQueries)
PROPERTY(AgentTransitionTableQuery, AgentFilter)
PROPERTY(AgentTransitionTableQuery, Transition)

TABLE_QUERY(AgentTripTimeTableQuery, AgentTripTimeTableQueries)
PROPERTY(AgentTripTimeTableQuery, AgentFilter)
PROPERTY(AgentTripTimeTableQuery, Trip)

ORIGIN_DESTINATION_QUERY(AreaOriginDestinationCountTableQuery, AreaOriginDestinationCountTableQueries)
OVERLOAD(AreaOriginDestinationCountTableQuery, setFloor, 0, SetFloor, GlobalId const&)
OVERLOAD(AreaOriginDestinationCountTableQuery, setFloor, 1, SetFloor, std::shared_ptr<Floor> const&)
OVERLOAD(AreaOriginDestinationCountTableQuery, setZone, 0, SetZone, GlobalId const&)
OVERLOAD(AreaOriginDestinationCountTableQuery, setZone, 1, SetZone, std::shared_ptr<Zone> const&)

TABLE_QUERY(ElevatorTimeWithoutServiceTableQuery, ElevatorTimeWithoutServiceTableQueries)
PROPERTY(ElevatorTimeWithoutServiceTableQuery, Elevators)
PROPERTY(ElevatorTimeWithoutServiceTableQuery, TableViewType)
PROPERTY(ElevatorTimeWithoutServiceTableQuery, CountIfInRangeType)

TABLE_QUERY(ExpectedDemandODCountTableQuery, ExpectedDemandODCountTableQueries)
PROPERTY(ExpectedDemandODCountTableQuery, Events)
PROPERTY(ExpectedDemandODCountTableQuery, ViewType)
FLAG(ExpectedDemandODCountTableQuery, ExpandCollections)
FLAG(ExpectedDemandODCountTableQuery, HideEmptyRowsAndColumns)

TABLE_QUERY(ServerSummaryTableQuery, ServerSummaryTableQueries)
SET(ServerSummaryTableQuery, SimulationRunId)
PROPERTY(ServerSummaryTableQuery, AgentFilter)
GET(ServerSummaryTableQuery, ServerIds)
SET(ServerSummaryTableQuery, Servers)
METHOD_CONST(ServerSummaryTableQuery, setServer, SetServer)
PROPERTY(ServerSummaryTableQuery, SimulationRunIds)
PROPERTY(ServerSummaryTableQuery, AggregationType)

ORIGIN_DESTINATION_QUERY(SimulationOriginDestinationCountTableQuery, SimulationOriginDestinationCountTableQueries)
GET(SimulationOriginDestinationCountTableQuery, AllPortals)
GET(SimulationOriginDestinationCountTableQuery, StartPortals)
GET(SimulationOriginDestinationCountTableQuery, EndPortals)
SET(SimulationOriginDestinationCountTableQuery, Portals)
SET(SimulationOriginDestinationCountTableQuery, AndSortPortals)
SET(SimulationOriginDestinationCountTableQuery, AndSortAllPortals)
METHOD(SimulationOriginDestinationCountTableQuery, arePortalsSorted, ArePortalsSorted)
METHOD(SimulationOriginDestinationCountTableQuery, usesAllPortalsInProject, UsesAllPortalsInProject)

ORIGIN_DESTINATION_QUERY(SimulationOriginDestinationSocialCostTableQuery,
                         SimulationOriginDestinationSocialCostTableQueries)
SET(SimulationOriginDestinationSocialCostTableQuery, CostPerHour)
SET(SimulationOriginDestinationSocialCostTableQuery, DaysPerYear)
SET(SimulationOriginDestinationSocialCostTableQuery, WalkingWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, WaitingWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, QueuingWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, ProcessingWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, StairUpWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, StairDownWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, EscalatorWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, CustomWeight)
SET(SimulationOriginDestinationSocialCostTableQuery, CustomWeightAgentFilter)
METHOD(SimulationOriginDestinationSocialCostTableQuery, enableCustomWeight, EnableCustomWeight)
PROPERTY(SimulationOriginDestinationSocialCostTableQuery, AggregationType)
PROPERTY(SimulationOriginDestinationSocialCostTableQuery, SocialCostDisplayType)

ORIGIN_DESTINATION_QUERY(SimulationOriginDestinationTimeTableQuery, SimulationOriginDestinationTimeTableQueries)
GET(SimulationOriginDestinationTimeTableQuery, AllPortals)
GET(SimulationOriginDestinationTimeTableQuery, StartPortals)
GET(SimulationOriginDestinationTimeTableQuery, EndPortals)
SET(SimulationOriginDestinationTimeTableQuery, Portals)
SET(SimulationOriginDestinationTimeTableQuery, AndSortPortals)
SET(SimulationOriginDestinationTimeTableQuery, AndSortAllPortals)
METHOD(SimulationOriginDestinationTimeTableQuery, arePortalsSorted, ArePortalsSorted)
METHOD(SimulationOriginDestinationTimeTableQuery, usesAllPortalsInProject, UsesAllPortalsInProject)
PROPERTY(SimulationOriginDestinationTimeTableQuery, AggregationType)

}  // namespace pedflux::jni
