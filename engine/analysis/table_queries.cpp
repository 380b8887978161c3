#include "engine/analysis/query_handles.h"
#include "engine/analysis/table_evaluation.h"
#include "engine/analysis/table_query_states.h"
#include "engine/base/checks.h"
#include "engine/model/document.h"

#include <pedflux/scene.h>
#include <pedflux/table_queries.h>
#include <pedflux/tables.h>

namespace pedflux {

using engine::get_part;
using engine::set_part;
using engine::state_of;
using engine::TableQueryState;

std::shared_ptr<Table> TableQuery::Evaluate() {
    auto& state = state_of<TableQueryState>(*this);
    auto const type = static_cast<TableQueryType>(GetTableQueryTypeId());
    return std::make_shared<Table>(engine::table_of(document_of(state), state, type));
}
GlobalId TableQuery::GetSimulationRunId() { return engine::or_none(state_of<TableQueryState>(*this).run); }
void TableQuery::SetSimulationRunId(GlobalId const& run) {
    set_part<TableQueryState>(*this, &TableQueryState::run, run);
}
TimeRange TableQuery::GetTimeRange() { return time_range(state_of<TableQueryState>(*this).time); }
void TableQuery::SetTimeRange(TimeRange const range) {
    set_part<TableQueryState>(*this, &TableQueryState::time, engine::time_span(range));
}

#define TYPE(Query, TYPE_NAME) \
    int Query::GetTableQueryTypeId() { return static_cast<int>(TableQueryType::TYPE_NAME); }
TYPE(AgentAreaTimeTableQuery, AGENT_AREA_TIME)
TYPE(AgentElevatorTripTimeTableQuery, AGENT_ELEVATOR_TRIP_TIME)
TYPE(AgentElevatorWaitTimeTableQuery, AGENT_ELEVATOR_WAIT_TIME)
TYPE(AgentLevelOfServiceTimeTableQuery, AGENT_LEVEL_OF_SERVICE_TIME)
TYPE(AgentProcessChainTimeTableQuery, AGENT_PROCESS_CHAIN_TIME)
TYPE(AgentProximityTableQuery, AGENT_PROXIMITY)
TYPE(AgentSocialCostTableQuery, AGENT_SOCIAL_COST)
TYPE(AgentSummaryTableQuery, AGENT_SUMMARY)
TYPE(AgentTimetableSummaryTableQuery, AGENT_TIMETABLE_SUMMARY)
TYPE(AgentTokenTimeTableQuery, AGENT_TOKEN_TIME)
TYPE(AgentTransitionTableQuery, AGENT_TRANSITION)
TYPE(AgentTripTimeTableQuery, AGENT_TRIP_TIME)
TYPE(AreaOriginDestinationCountTableQuery, AREA_ORIGIN_DESTINATION_COUNT)
TYPE(ElevatorTimeWithoutServiceTableQuery, ELEVATOR_TIME_WITHOUT_SERVICE)
TYPE(ExpectedDemandODCountTableQuery, EXPECTED_DEMAND_OD_COUNT)
TYPE(ServerSummaryTableQuery, SERVER_SUMMARY)
TYPE(SimulationOriginDestinationCountTableQuery, SIMULATION_ORIGIN_DESTINATION_COUNT)
TYPE(SimulationOriginDestinationSocialCostTableQuery, SIMULATION_ORIGIN_DESTINATION_SOCIAL_COST)
TYPE(SimulationOriginDestinationTimeTableQuery, SIMULATION_ORIGIN_DESTINATION_TIME)
#undef TYPE

PEDFLUX_AGENT_FILTER(AgentAreaTimeTableQuery)
PEDFLUX_AGENT_FILTER(AgentElevatorTripTimeTableQuery)
PEDFLUX_AGENT_FILTER(AgentElevatorWaitTimeTableQuery)
PEDFLUX_AGENT_FILTER(AgentLevelOfServiceTimeTableQuery)
PEDFLUX_AGENT_FILTER(AgentProcessChainTimeTableQuery)
PEDFLUX_AGENT_FILTER(AgentProximityTableQuery)
PEDFLUX_AGENT_FILTER(AgentSocialCostTableQuery)
PEDFLUX_AGENT_FILTER(AgentSummaryTableQuery)
PEDFLUX_AGENT_FILTER(AgentTimetableSummaryTableQuery)
PEDFLUX_AGENT_FILTER(AgentTokenTimeTableQuery)
PEDFLUX_AGENT_FILTER(AgentTransitionTableQuery)
PEDFLUX_AGENT_FILTER(AgentTripTimeTableQuery)
PEDFLUX_AGENT_FILTER(OriginDestinationMatrixTableQuery)
PEDFLUX_AGENT_FILTER(ServerSummaryTableQuery)

PEDFLUX_VALUE(AgentElevatorTripTimeTableQuery, ElevatorQueryViewType, TableViewType, view)
PEDFLUX_VALUE(AgentElevatorTripTimeTableQuery, AgentCountIfInRangeType, CountIfInRangeType, counted)
PEDFLUX_LIST(AgentElevatorTripTimeTableQuery, Elevators, elevators)
PEDFLUX_VALUE(AgentElevatorWaitTimeTableQuery, ElevatorQueryViewType, TableViewType, view)
PEDFLUX_VALUE(AgentElevatorWaitTimeTableQuery, AgentCountIfInRangeType, CountIfInRangeType, counted)
PEDFLUX_LIST(AgentElevatorWaitTimeTableQuery, Elevators, elevators)
PEDFLUX_VALUE(ElevatorTimeWithoutServiceTableQuery, ElevatorQueryViewType, TableViewType, view)
PEDFLUX_VALUE(ElevatorTimeWithoutServiceTableQuery, AgentCountIfInRangeType, CountIfInRangeType, counted)
PEDFLUX_LIST(ElevatorTimeWithoutServiceTableQuery, Elevators, elevators)
PEDFLUX_VALUE(OriginDestinationMatrixTableQuery, AgentCountIfInRangeType, CountIfInRangeType, counted)
PEDFLUX_VALUE(ServerSummaryTableQuery, AggregationType, AggregationType, aggregation)
PEDFLUX_VALUE(SimulationOriginDestinationSocialCostTableQuery, AggregationType, AggregationType, aggregation)
PEDFLUX_VALUE(SimulationOriginDestinationTimeTableQuery, AggregationType, AggregationType, aggregation)
PEDFLUX_LIST(AgentProcessChainTimeTableQuery, StartingServers, starting_servers)
PEDFLUX_LIST(AgentProcessChainTimeTableQuery, EndingServers, ending_servers)
PEDFLUX_LIST(ExpectedDemandODCountTableQuery, Events, events)
PEDFLUX_VALUE(ExpectedDemandODCountTableQuery, OriginDestinationMatrixTableOutput, ViewType, output)
PEDFLUX_FLAG(ExpectedDemandODCountTableQuery, ExpandCollections, expand_collections)
PEDFLUX_FLAG(ExpectedDemandODCountTableQuery, HideEmptyRowsAndColumns, hide_empty)
PEDFLUX_VALUE(OriginDestinationMatrixTableQuery, OriginDestinationMatrixTableOutput, OriginDestinationMatrixTableOutput,
              output)
PEDFLUX_VALUE(SimulationOriginDestinationSocialCostTableQuery, SocialCostDisplayType, SocialCostDisplayType, display)
PEDFLUX_SETTER(AgentTokenTimeTableQuery, std::vector<GlobalId> const&, Tokens, tokens)
PEDFLUX_COPIED(AgentTransitionTableQuery, Transition, Transition, transition)

std::shared_ptr<Trip> AgentTripTimeTableQuery::GetTrip() {
    return engine::copy_of(state_of<engine::AgentTripTimeTableQueryState>(*this).trip);
}
void AgentTripTimeTableQuery::SetTrip(std::shared_ptr<Trip> trip) {
    using State = engine::AgentTripTimeTableQueryState;
    set_part<State>(*this, &State::trip, engine::copy_of(trip));
}

// Areas and servers, a list of them or one alone.
#define ONE_OR_SEVERAL(Query, Names, Name, member)                                   \
    std::vector<GlobalId> Query::Get##Name##Ids() {                                  \
        return get_part<engine::Query##State>(*this, &engine::Query##State::member); \
    }                                                                                \
    void Query::Set##Names(std::vector<GlobalId> const& ids) {                       \
        set_part<engine::Query##State>(*this, &engine::Query##State::member, ids);   \
    }                                                                                \
    void Query::Set##Name(GlobalId const id) { Set##Names({id}); }
ONE_OR_SEVERAL(AgentAreaTimeTableQuery, Areas, Area, areas)
ONE_OR_SEVERAL(ServerSummaryTableQuery, Servers, Server, servers)
#undef ONE_OR_SEVERAL

PEDFLUX_SEVERAL_RUNS(ServerSummaryTableQuery)

// Stops: the restricted ones, or all.
#define STOPS(Query, Which, member)                                                                   \
    std::vector<GlobalId> Query::GetRestricted##Which##Stops() {                                      \
        return engine::or_none(get_part<engine::Query##State>(*this, &engine::Query##State::member)); \
    }                                                                                                 \
    void Query::SetRestricted##Which##Stops(std::vector<GlobalId> const& floors) {                    \
        set_part<engine::Query##State>(*this, &engine::Query##State::member, floors);                 \
    }                                                                                                 \
    bool Query::UsesRestricted##Which##Stops() {                                                      \
        return get_part<engine::Query##State>(*this, &engine::Query##State::member).has_value();      \
    }                                                                                                 \
    void Query::SetUseAll##Which##Stops() {                                                           \
        set_part<engine::Query##State>(*this, &engine::Query##State::member, std::nullopt);           \
    }
STOPS(AgentElevatorTripTimeTableQuery, Origin, origin_stops)
STOPS(AgentElevatorTripTimeTableQuery, Destination, destination_stops)
STOPS(AgentElevatorWaitTimeTableQuery, , stops)
#undef STOPS

// The two tables of social cost are set in the same way.
#define SOCIAL_COST(Query)                                                               \
    PEDFLUX_SETTER(Query, double, CostPerHour, cost_per_hour)                            \
    PEDFLUX_SETTER(Query, int, DaysPerYear, days_per_year)                               \
    PEDFLUX_SETTER(Query, double, WalkingWeight, walking)                                \
    PEDFLUX_SETTER(Query, double, WaitingWeight, waiting)                                \
    PEDFLUX_SETTER(Query, double, QueuingWeight, queuing)                                \
    PEDFLUX_SETTER(Query, double, ProcessingWeight, processing)                          \
    PEDFLUX_SETTER(Query, double, StairUpWeight, stair_up)                               \
    PEDFLUX_SETTER(Query, double, StairDownWeight, stair_down)                           \
    PEDFLUX_SETTER(Query, double, EscalatorWeight, escalator)                            \
    PEDFLUX_SETTER(Query, double, CustomWeight, custom)                                  \
    void Query::SetCustomWeightAgentFilter(std::shared_ptr<AgentFilter> const& filter) { \
        using State = engine::Query##State;                                              \
        set_part<State>(*this, &State::custom_filter, engine::copy_of(filter));          \
    }                                                                                    \
    void Query::EnableCustomWeight() {                                                   \
        using State = engine::Query##State;                                              \
        set_part<State>(*this, &State::uses_custom, true);                               \
    }
SOCIAL_COST(AgentSocialCostTableQuery)
SOCIAL_COST(SimulationOriginDestinationSocialCostTableQuery)
#undef SOCIAL_COST

PEDFLUX_VALUE(AgentProximityTableQuery, double, ProximityDistance, distance)
PEDFLUX_VALUE(AgentProximityTableQuery, double, MinInteractionDurationInSeconds, min_duration)
PEDFLUX_VALUE(AgentProximityTableQuery, double, MaxGapDurationInSeconds, max_gap)
PEDFLUX_VALUE(AgentProximityTableQuery, AgentProximityTableViewType, ViewType, view)
PEDFLUX_FLAG(AgentProximityTableQuery, IgnoreObstacles, ignore_obstacles)
bool AgentProximityTableQuery::IsOneWayInteractionView() {
    return GetViewType() == AgentProximityTableViewType::ONE_WAY_INTERACTIONS;
}
std::shared_ptr<AgentFilter> AgentProximityTableQuery::GetOneWayInteractionSubjectAgentFilter() {
    return engine::copy_of(state_of<engine::AgentProximityTableQueryState>(*this).subjects);
}
std::shared_ptr<AgentFilter> AgentProximityTableQuery::GetOneWayInteractionTargetAgentFilter() {
    return engine::copy_of(state_of<engine::AgentProximityTableQueryState>(*this).targets);
}
void AgentProximityTableQuery::SetOneWayInteractionViewAgentFilters(std::shared_ptr<AgentFilter> const& subject,
                                                                    std::shared_ptr<AgentFilter> const& target) {
    using State = engine::AgentProximityTableQueryState;
    auto& state = state_of<State>(*this);
    auto targets = engine::copy_of(target);
    engine::check_value(owner_of(state), "oneWayInteractionTargetAgentFilter", targets, engine::NoRule{});
    set_part<State>(*this, &State::subjects, engine::copy_of(subject));
    state.targets = std::move(targets);
    state.view = AgentProximityTableViewType::ONE_WAY_INTERACTIONS;
}

GlobalId AgentTimetableSummaryTableQuery::GetTimetable() {
    return engine::or_none(state_of<engine::AgentTimetableSummaryTableQueryState>(*this).timetable);
}
PEDFLUX_SETTER(AgentTimetableSummaryTableQuery, GlobalId const&, Timetable, timetable)
PEDFLUX_PROPERTY(AgentTimetableSummaryTableQuery, std::vector<std::string>, std::vector<std::string> const&,
                 ReferenceEventNames, reference_events)
void AgentTimetableSummaryTableQuery::ClearReferenceEventNames() { SetReferenceEventNames({}); }
PEDFLUX_FLAG(AgentTimetableSummaryTableQuery, FilterByReferenceEvents, filter_by_reference_events)

// The area of a table of origins and destinations: of one kind or the other.
#define AREA(Kind)                                                                                              \
    void AreaOriginDestinationCountTableQuery::Set##Kind(GlobalId const& id) {                                  \
        using State = engine::AreaOriginDestinationCountTableQueryState;                                        \
        auto const& state = state_of<State>(*this);                                                             \
        engine::check_value(owner_of(state), "area", id, engine::refers_to<engine::Kind##State>("a " #Kind));   \
        set_part<State>(*this, &State::area, id);                                                               \
    }                                                                                                           \
    void AreaOriginDestinationCountTableQuery::Set##Kind(std::shared_ptr<Kind> const& object) {                 \
        if (!object) engine::refuse_empty(engine::Subject{owner_of(state_of<TableQueryState>(*this)), "area"}); \
        Set##Kind(object->GetId());                                                                             \
    }
AREA(Floor)
AREA(Zone)
#undef AREA

#define PORTALS(Query)                                                                        \
    std::vector<GlobalId> Query::GetAllPortals() {                                            \
        auto& state = state_of<engine::Query##State>(*this);                                  \
        return engine::portals_of(document_of(state), state);                                 \
    }                                                                                         \
    std::vector<GlobalId> Query::GetStartPortals() {                                          \
        auto& state = state_of<engine::Query##State>(*this);                                  \
        return engine::portals_used_as(document_of(state), state, engine::Role::ORIGIN);      \
    }                                                                                         \
    std::vector<GlobalId> Query::GetEndPortals() {                                            \
        auto& state = state_of<engine::Query##State>(*this);                                  \
        return engine::portals_used_as(document_of(state), state, engine::Role::DESTINATION); \
    }                                                                                         \
    void Query::SetPortals(std::vector<GlobalId> const& portals) {                            \
        set_part<engine::Query##State>(*this, &engine::Query##State::portals, portals);       \
        state_of<engine::Query##State>(*this).sorted = false;                                 \
    }                                                                                         \
    void Query::SetAndSortPortals(std::vector<GlobalId> const& portals) {                     \
        SetPortals(portals);                                                                  \
        state_of<engine::Query##State>(*this).sorted = true;                                  \
    }                                                                                         \
    void Query::SetAndSortAllPortals() {                                                      \
        state_of<engine::Query##State>(*this).portals.reset();                                \
        state_of<engine::Query##State>(*this).sorted = true;                                  \
    }                                                                                         \
    bool Query::ArePortalsSorted() { return state_of<engine::Query##State>(*this).sorted; }   \
    bool Query::UsesAllPortalsInProject() { return !state_of<engine::Query##State>(*this).portals.has_value(); }
PORTALS(SimulationOriginDestinationCountTableQuery)
PORTALS(SimulationOriginDestinationTimeTableQuery)
#undef PORTALS

}  // namespace pedflux
