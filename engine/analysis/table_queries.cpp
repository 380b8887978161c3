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

PEDFLUX_COPIED(OriginDestinationMatrixTableQuery, AgentFilter, AgentFilter, filter)
PEDFLUX_VALUE(OriginDestinationMatrixTableQuery, OriginDestinationMatrixTableOutput, OriginDestinationMatrixTableOutput,
              output)
PEDFLUX_VALUE(OriginDestinationMatrixTableQuery, AgentCountIfInRangeType, CountIfInRangeType, counted)

// Areas and servers, a list of them or one alone.
#define ONE_OR_SEVERAL(Query, Names, Name, member)                                   \
    std::vector<GlobalId> Query::Get##Name##Ids() {                                  \
        return get_part<engine::Query##State>(*this, &engine::Query##State::member); \
    }                                                                                \
    void Query::Set##Names(std::vector<GlobalId> const& ids) {                       \
        set_part<engine::Query##State>(*this, &engine::Query##State::member, ids);   \
    }                                                                                \
    void Query::Set##Name(GlobalId const id) { Set##Names({id}); }

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

// The operations of the parts of table queries.
#define PEDFLUX_OPERATIONS_InAreas(Query) ONE_OR_SEVERAL(Query, Areas, Area, areas)
#define PEDFLUX_OPERATIONS_OfServers(Query) ONE_OR_SEVERAL(Query, Servers, Server, servers)
#define PEDFLUX_OPERATIONS_OfElevators(Query) PEDFLUX_LIST(Query, Elevators, elevators)
#define PEDFLUX_OPERATIONS_AtStops(Query) STOPS(Query, , stops)
#define PEDFLUX_OPERATIONS_FromStops(Query) STOPS(Query, Origin, origin_stops)
#define PEDFLUX_OPERATIONS_ToStops(Query) STOPS(Query, Destination, destination_stops)
#define PEDFLUX_OPERATIONS_ViewedByElevator(Query) PEDFLUX_VALUE(Query, ElevatorQueryViewType, TableViewType, view)
#define PEDFLUX_OPERATIONS_CountedIfInRange(Query) \
    PEDFLUX_VALUE(Query, AgentCountIfInRangeType, CountIfInRangeType, counted)
#define PEDFLUX_OPERATIONS_WrittenAs(Query) PEDFLUX_VALUE(Query, OriginDestinationMatrixTableOutput, ViewType, output)
#define PEDFLUX_OPERATIONS_ShownAs(Query) PEDFLUX_VALUE(Query, SocialCostDisplayType, SocialCostDisplayType, display)
#define PEDFLUX_OPERATIONS_WithTokens(Query) PEDFLUX_SETTER(Query, std::vector<GlobalId> const&, Tokens, tokens)
#define PEDFLUX_OPERATIONS_AtTransition(Query) PEDFLUX_COPIED(Query, Transition, Transition, transition)
#define PEDFLUX_OPERATIONS_OnTrip(Query)                                                            \
    std::shared_ptr<Trip> Query::GetTrip() {                                                        \
        return engine::copy_of(get_part<engine::Query##State>(*this, &engine::Query##State::trip)); \
    }                                                                                               \
    void Query::SetTrip(std::shared_ptr<Trip> trip) {                                               \
        set_part<engine::Query##State>(*this, &engine::Query##State::trip, engine::copy_of(trip));  \
    }
#define PEDFLUX_OPERATIONS_BetweenServers(Query)           \
    PEDFLUX_LIST(Query, StartingServers, starting_servers) \
    PEDFLUX_LIST(Query, EndingServers, ending_servers)
#define PEDFLUX_OPERATIONS_OfExpectedDemand(Query)             \
    PEDFLUX_LIST(Query, Events, events)                        \
    PEDFLUX_FLAG(Query, ExpandCollections, expand_collections) \
    PEDFLUX_FLAG(Query, HideEmptyRowsAndColumns, hide_empty)
#define PEDFLUX_OPERATIONS_OfTimetable(Query)                                                               \
    GlobalId Query::GetTimetable() {                                                                        \
        return engine::or_none(get_part<engine::Query##State>(*this, &engine::Query##State::timetable));    \
    }                                                                                                       \
    PEDFLUX_SETTER(Query, GlobalId const&, Timetable, timetable)                                            \
    PEDFLUX_PROPERTY(Query, std::vector<std::string>, std::vector<std::string> const&, ReferenceEventNames, \
                     reference_events)                                                                      \
    void Query::ClearReferenceEventNames() { SetReferenceEventNames({}); }                                  \
    PEDFLUX_FLAG(Query, FilterByReferenceEvents, filter_by_reference_events)
#define PEDFLUX_OPERATIONS_SocialCost(Query)                                             \
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
#define PEDFLUX_OPERATIONS_BetweenPortals(Query)                                              \
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

// The parts of one query alone; their operations follow the table.
#define PEDFLUX_OPERATIONS_OfEncounters(Query)
#define PEDFLUX_OPERATIONS_AcrossArea(Query)

#define HANDLE(Query, Queries, TYPE, made, evaluation, State, ...) \
    PEDFLUX_QUERY_HANDLE(TableQuery, Query, TYPE __VA_OPT__(, ) __VA_ARGS__)
PEDFLUX_TABLE_QUERIES(HANDLE)

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

}  // namespace pedflux
