#pragma once

#include "engine/analysis/query_states.h"
#include "engine/analysis/table_query_list.h"
#include "engine/behaviour/population/trip.h"

#include <pedflux/table_queries.h>
#include <pedflux/transitions.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pedflux::engine {

PEDFLUX_NAMES(AgentCountIfInRangeType, {{AgentCountIfInRangeType::START_IN_RANGE, "START_IN_RANGE"},
                                        {AgentCountIfInRangeType::END_IN_RANGE, "END_IN_RANGE"},
                                        {AgentCountIfInRangeType::START_AND_END_IN_RANGE, "START_AND_END_IN_RANGE"},
                                        {AgentCountIfInRangeType::ANY_PART_IN_RANGE, "ANY_PART_IN_RANGE"}});
PEDFLUX_NAMES(ElevatorQueryViewType, {{ElevatorQueryViewType::EACH, "EACH"},
                                      {ElevatorQueryViewType::BY_ELEVATOR, "BY_ELEVATOR"},
                                      {ElevatorQueryViewType::BY_STOP, "BY_STOP"}});
PEDFLUX_NAMES(AgentProximityTableViewType,
              {{AgentProximityTableViewType::INTERACTIONS, "INTERACTIONS"},
               {AgentProximityTableViewType::BY_AGENT, "BY_AGENT"},
               {AgentProximityTableViewType::ONE_WAY_INTERACTIONS, "ONE_WAY_INTERACTIONS"}});
PEDFLUX_NAMES(OriginDestinationMatrixTableOutput, {{OriginDestinationMatrixTableOutput::MATRIX, "MATRIX"},
                                                   {OriginDestinationMatrixTableOutput::LIST, "LIST"}});
PEDFLUX_NAMES(SocialCostDisplayType, {{SocialCostDisplayType::COST_PER_YEAR, "COST_PER_YEAR"},
                                      {SocialCostDisplayType::COST_OF_RUN, "COST_OF_RUN"},
                                      {SocialCostDisplayType::WEIGHTED_TIME, "WEIGHTED_TIME"}});

struct TableQueryState : MadeOf<QueryState, Timed> {
    static constexpr ObjectType TYPE = ObjectType::TABLE_QUERY;
};

inline constexpr RefersTo an_elevator = refers_to_kind<ObjectType::ELEVATOR>("an elevator");
inline constexpr RefersTo a_stop = refers_to<FloorState>("a floor at which an elevator stops");

PEDFLUX_QUERY_PART(InAreas, std::vector<GlobalId>, areas, {}, "areas", self.areas, walkable_areas)
PEDFLUX_QUERY_PART(AcrossArea, std::optional<GlobalId>, area, {}, "area", self.area, walkable_areas)
/// Immutable; empty: the whole stay in the simulation.
PEDFLUX_QUERY_PART(OnTrip, std::shared_ptr<Trip>, trip, {}, "trip", self.trip)
/// Immutable; setters replace it.
PEDFLUX_QUERY_PART(AtTransition, std::shared_ptr<Transition>, transition, {}, "transition", self.transition)
PEDFLUX_QUERY_PART(WithTokens, std::vector<GlobalId>, tokens, {}, "tokens", self.tokens, A_TOKEN)
PEDFLUX_QUERY_PART(OfServers, std::vector<GlobalId>, servers, {}, "servers", self.servers, A_SERVER)
PEDFLUX_QUERY_PART(OfElevators, std::vector<GlobalId>, elevators, {}, "elevators", self.elevators, an_elevator)
/// The floors of the stops that count; none: all.
PEDFLUX_QUERY_PART(AtStops, std::optional<std::vector<GlobalId>>, stops, {}, "restrictedStops", self.stops, a_stop)
PEDFLUX_QUERY_PART(FromStops, std::optional<std::vector<GlobalId>>, origin_stops, {}, "restrictedOriginStops",
                   self.origin_stops, a_stop)
PEDFLUX_QUERY_PART(ToStops, std::optional<std::vector<GlobalId>>, destination_stops, {}, "restrictedDestinationStops",
                   self.destination_stops, a_stop)
PEDFLUX_QUERY_PART(ViewedByElevator, ElevatorQueryViewType, view, = ElevatorQueryViewType::EACH, "tableViewType",
                   self.view)
PEDFLUX_QUERY_PART(CountedIfInRange, AgentCountIfInRangeType, counted, = AgentCountIfInRangeType::START_IN_RANGE,
                   "countIfInRangeType", self.counted)
PEDFLUX_QUERY_PART(WrittenAs, OriginDestinationMatrixTableOutput, output, = OriginDestinationMatrixTableOutput::MATRIX,
                   "output", self.output)
PEDFLUX_QUERY_PART(ShownAs, SocialCostDisplayType, display, = SocialCostDisplayType::COST_PER_YEAR,
                   "socialCostDisplayType", self.display)

struct BetweenServers {
    std::vector<GlobalId> starting_servers;
    std::vector<GlobalId> ending_servers;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("startingServers", self.starting_servers, A_SERVER);
        field("endingServers", self.ending_servers, A_SERVER);
    }
};

struct BetweenPortals {
    std::optional<std::vector<GlobalId>> portals;  ///< none: all of the project
    bool sorted = true;                            ///< by name

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("portals", self.portals, A_PORTAL);
        field("portalsSorted", self.sorted);
    }
};

struct OfTimetable {
    std::optional<GlobalId> timetable;
    std::vector<std::string> reference_events;  ///< none: all of the timetable
    bool filter_by_reference_events = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("timetable", self.timetable, refers_to_kind<ObjectType::TIMETABLE>("a timetable"));
        field("referenceEventNames", self.reference_events);
        field("filterByReferenceEvents", self.filter_by_reference_events);
    }
};

struct OfExpectedDemand {
    std::vector<GlobalId> events;
    bool expand_collections = false;
    bool hide_empty = false;  ///< rows and columns

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("events", self.events, AN_EVENT_WITH_PEOPLE);
        field("expandCollections", self.expand_collections);
        field("hideEmptyRowsAndColumns", self.hide_empty);
    }
};

struct OfEncounters {
    double distance = 2;      ///< metres
    double min_duration = 0;  ///< seconds
    double max_gap = 0;       ///< seconds
    bool ignore_obstacles = false;
    AgentProximityTableViewType view = AgentProximityTableViewType::INTERACTIONS;
    // Immutable; setters replace them. Empty: everybody.
    std::shared_ptr<AgentFilter> subjects;
    std::shared_ptr<AgentFilter> targets;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr Range seconds{0, unlimited, "s"};
        field("proximityDistance", self.distance, Range{0, unlimited, "m", true});
        field("minInteractionDurationInSeconds", self.min_duration, seconds);
        field("maxGapDurationInSeconds", self.max_gap, seconds);
        field("ignoreObstacles", self.ignore_obstacles);
        field("viewType", self.view);
        field("oneWayInteractionSubjectAgentFilter", self.subjects);
        field("oneWayInteractionTargetAgentFilter", self.targets);
    }
};

struct SocialCost {
    double cost_per_hour = 1;
    int days_per_year = 365;
    double walking = 1;
    double waiting = 1;
    double queuing = 1;
    double processing = 1;
    double stair_up = 1;
    double stair_down = 1;
    double escalator = 1;
    double custom = 1;
    std::shared_ptr<AgentFilter> custom_filter;  ///< immutable; empty: nobody
    bool uses_custom = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("costPerHour", self.cost_per_hour, not_negative);
        field("daysPerYear", self.days_per_year, Range{1, 366, "days"});
        field("walkingWeight", self.walking, not_negative);
        field("waitingWeight", self.waiting, not_negative);
        field("queuingWeight", self.queuing, not_negative);
        field("processingWeight", self.processing, not_negative);
        field("stairUpWeight", self.stair_up, not_negative);
        field("stairDownWeight", self.stair_down, not_negative);
        field("escalatorWeight", self.escalator, not_negative);
        field("customWeight", self.custom, not_negative);
        field("customWeightAgentFilter", self.custom_filter);
        field("customWeightEnabled", self.uses_custom);
    }
};

struct OriginDestinationMatrixTableQueryState : MadeOf<TableQueryState, Filtered, WrittenAs, CountedIfInRange> {};

PEDFLUX_TABLE_QUERIES(PEDFLUX_QUERY_STATE)

}  // namespace pedflux::engine
