#include "bindings/table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/identifiers.h>
#include <pedflux/level_of_service.h>
#include <pedflux/table_queries.h>
#include <pedflux/tables.h>
#include <pedflux/time_range.h>
#include <pedflux/timetables.h>
#include <pedflux/transitions.h>

/// A query of its own kind of table.
#define TABLE_QUERY(Class)   \
    CLASS(Class, TableQuery) \
    GET(Class, TableQueryTypeId)

namespace pedflux::jni {

CLASS(TableQuery, SimObject)
METHOD(TableQuery, evaluate, Evaluate)
PROPERTY(TableQuery, SimulationRunId)
GET(TableQuery, TimeRange)
METHOD_CONST(TableQuery, setTimeRange, SetTimeRange)
GET(TableQuery, TypeId)
GET(TableQuery, TableQueryTypeId)

TABLE_QUERY(OriginDestinationMatrixTableQuery)
PROPERTY(OriginDestinationMatrixTableQuery, AgentFilter)
PROPERTY(OriginDestinationMatrixTableQuery, OriginDestinationMatrixTableOutput)
PROPERTY(OriginDestinationMatrixTableQuery, CountIfInRangeType)

TABLE_QUERY(AgentAreaTimeTableQuery)
PROPERTY(AgentAreaTimeTableQuery, AgentFilter)
GET(AgentAreaTimeTableQuery, AreaIds)
SET(AgentAreaTimeTableQuery, Areas)
METHOD_CONST(AgentAreaTimeTableQuery, setArea, SetArea)

TABLE_QUERY(AgentElevatorTripTimeTableQuery)
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

TABLE_QUERY(AgentElevatorWaitTimeTableQuery)
PROPERTY(AgentElevatorWaitTimeTableQuery, AgentFilter)
PROPERTY(AgentElevatorWaitTimeTableQuery, Elevators)
PROPERTY(AgentElevatorWaitTimeTableQuery, RestrictedStops)
METHOD(AgentElevatorWaitTimeTableQuery, usesRestrictedStops, UsesRestrictedStops)
SET(AgentElevatorWaitTimeTableQuery, UseAllStops)
PROPERTY(AgentElevatorWaitTimeTableQuery, TableViewType)
PROPERTY(AgentElevatorWaitTimeTableQuery, CountIfInRangeType)

TABLE_QUERY(AgentLevelOfServiceTimeTableQuery)
PROPERTY(AgentLevelOfServiceTimeTableQuery, AgentFilter)

TABLE_QUERY(AgentProcessChainTimeTableQuery)
PROPERTY(AgentProcessChainTimeTableQuery, AgentFilter)
PROPERTY(AgentProcessChainTimeTableQuery, StartingServers)
PROPERTY(AgentProcessChainTimeTableQuery, EndingServers)

TABLE_QUERY(AgentProximityTableQuery)
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

TABLE_QUERY(AgentSocialCostTableQuery)
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

TABLE_QUERY(AgentSummaryTableQuery)
PROPERTY(AgentSummaryTableQuery, AgentFilter)

TABLE_QUERY(AgentTimetableSummaryTableQuery)
PROPERTY(AgentTimetableSummaryTableQuery, AgentFilter)
PROPERTY(AgentTimetableSummaryTableQuery, Timetable)
PROPERTY(AgentTimetableSummaryTableQuery, ReferenceEventNames)
CLEAR(AgentTimetableSummaryTableQuery, ReferenceEventNames)
FLAG(AgentTimetableSummaryTableQuery, FilterByReferenceEvents)

TABLE_QUERY(AgentTokenTimeTableQuery)
PROPERTY(AgentTokenTimeTableQuery, AgentFilter)
SET(AgentTokenTimeTableQuery, Tokens)

TABLE_QUERY(AgentTransitionTableQuery)
PROPERTY(AgentTransitionTableQuery, AgentFilter)
PROPERTY(AgentTransitionTableQuery, Transition)

TABLE_QUERY(AgentTripTimeTableQuery)
PROPERTY(AgentTripTimeTableQuery, AgentFilter)
PROPERTY(AgentTripTimeTableQuery, Trip)

CLASS(AreaOriginDestinationCountTableQuery, OriginDestinationMatrixTableQuery)
GET(AreaOriginDestinationCountTableQuery, TableQueryTypeId)
OVERLOAD(AreaOriginDestinationCountTableQuery, setFloor, 0, SetFloor, GlobalId const&)
OVERLOAD(AreaOriginDestinationCountTableQuery, setFloor, 1, SetFloor, std::shared_ptr<Floor> const&)
OVERLOAD(AreaOriginDestinationCountTableQuery, setZone, 0, SetZone, GlobalId const&)
OVERLOAD(AreaOriginDestinationCountTableQuery, setZone, 1, SetZone, std::shared_ptr<Zone> const&)

TABLE_QUERY(ElevatorTimeWithoutServiceTableQuery)
PROPERTY(ElevatorTimeWithoutServiceTableQuery, Elevators)
PROPERTY(ElevatorTimeWithoutServiceTableQuery, TableViewType)
PROPERTY(ElevatorTimeWithoutServiceTableQuery, CountIfInRangeType)

TABLE_QUERY(ExpectedDemandODCountTableQuery)
PROPERTY(ExpectedDemandODCountTableQuery, Events)
PROPERTY(ExpectedDemandODCountTableQuery, ViewType)
FLAG(ExpectedDemandODCountTableQuery, ExpandCollections)
FLAG(ExpectedDemandODCountTableQuery, HideEmptyRowsAndColumns)

TABLE_QUERY(ServerSummaryTableQuery)
SET(ServerSummaryTableQuery, SimulationRunId)
PROPERTY(ServerSummaryTableQuery, AgentFilter)
GET(ServerSummaryTableQuery, ServerIds)
SET(ServerSummaryTableQuery, Servers)
METHOD_CONST(ServerSummaryTableQuery, setServer, SetServer)
PROPERTY(ServerSummaryTableQuery, SimulationRunIds)
PROPERTY(ServerSummaryTableQuery, AggregationType)

CLASS(SimulationOriginDestinationCountTableQuery, OriginDestinationMatrixTableQuery)
GET(SimulationOriginDestinationCountTableQuery, TableQueryTypeId)
GET(SimulationOriginDestinationCountTableQuery, AllPortals)
GET(SimulationOriginDestinationCountTableQuery, StartPortals)
GET(SimulationOriginDestinationCountTableQuery, EndPortals)
SET(SimulationOriginDestinationCountTableQuery, Portals)
SET(SimulationOriginDestinationCountTableQuery, AndSortPortals)
SET(SimulationOriginDestinationCountTableQuery, AndSortAllPortals)
METHOD(SimulationOriginDestinationCountTableQuery, arePortalsSorted, ArePortalsSorted)
METHOD(SimulationOriginDestinationCountTableQuery, usesAllPortalsInProject, UsesAllPortalsInProject)

CLASS(SimulationOriginDestinationSocialCostTableQuery, OriginDestinationMatrixTableQuery)
GET(SimulationOriginDestinationSocialCostTableQuery, TableQueryTypeId)
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

CLASS(SimulationOriginDestinationTimeTableQuery, OriginDestinationMatrixTableQuery)
GET(SimulationOriginDestinationTimeTableQuery, TableQueryTypeId)
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
