#pragma once

#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/population/population.h"
#include "engine/model/enumerations.h"
#include "engine/model/state.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/distributions.h>
#include <pedflux/vehicles.h>

#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

/// The state of vehicles; engine/model/state.h explains lists of fields. Distributions, tests and actions are
/// immutable; setters replace them.
namespace pedflux::engine {

PEDFLUX_NAMES(VehiclePopulationType, {{VehiclePopulationType::BOARDING, "BOARDING"},
                                      {VehiclePopulationType::ALIGHTING, "ALIGHTING"},
                                      {VehiclePopulationType::THROUGH, "THROUGH"}});

// When a vehicle arrives.

struct HeadwayArrivals {
    static constexpr std::string_view NAME = "Headway";
    std::shared_ptr<Distribution> headway = Distribution::CreateConstant(600);  ///< seconds
    std::optional<int> count;                                                   ///< none: unlimited

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("headway", self.headway, RequiredRange{{0, unlimited, "s"}});
        field("fixedCount", self.count, at_least_one);
    }
};

struct ScheduledArrivals {
    static constexpr std::string_view NAME = "Schedule";
    std::vector<int> offsets;  ///< seconds from the start time, ascending

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("timeOffsets", self.offsets, Range{0, unlimited, "s"});
    }
};

using VehicleArrivals = std::variant<HeadwayArrivals, ScheduledArrivals>;

// The number of people of an arrival.

/// One number for each arrival of a schedule.
struct CountBySchedule {
    static constexpr std::string_view NAME = "Schedule";
    std::vector<int> persons;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("populations", self.persons, Range{0, unlimited, "persons"});
    }
};

/// One number for each interval of the vehicle's table.
struct CountByTable {
    static constexpr std::string_view NAME = "LookupTable";
    std::vector<int> persons;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("populations", self.persons, Range{0, unlimited, "persons"});
    }
};

struct RandomCount {
    static constexpr std::string_view NAME = "RandomDistribution";
    std::shared_ptr<Distribution> persons;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("populations", self.persons, RequiredRange{{0, unlimited, "persons"}});
    }
};

/// As many as the vehicle has room for.
struct FullCapacity {
    static constexpr std::string_view NAME = "FullCapacity";

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct PercentageOfCapacity {
    static constexpr std::string_view NAME = "PercentageCapacity";
    std::shared_ptr<Distribution> percentage;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("percentage", self.percentage, RequiredRange{{0, 100, "%"}});
    }
};

using AlightingCount = std::variant<CountBySchedule, CountByTable, RandomCount>;
using ThroughCount = std::variant<CountBySchedule, CountByTable, RandomCount, FullCapacity, PercentageOfCapacity>;

// Access by the doors.

struct OpenToAll {
    static constexpr std::string_view NAME = "All";
    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

/// Only those whom the population is made for: who boards, or who alights.
struct OpenToOwn {
    static constexpr std::string_view NAME = "Own";
    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct OpenIfTestTrue {
    static constexpr std::string_view NAME = "IfTestTrue";
    std::shared_ptr<AgentTest> test;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("agentTest", self.test, must_be_given);
    }
};

using DoorAccess = std::variant<OpenToOwn, OpenToAll, OpenIfTestTrue>;

/// The origins of people, and a weight for each unless all are equal.
struct PeopleOrigins {
    std::vector<GlobalId> places;
    std::vector<double> weights;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("places", self.places,
              RefersTo{"a portal, floor, connection or zone", Population::is_place, Role::ORIGIN});
        field("weights", self.weights, not_negative);
    }
};

/// The destinations of people, and a weight for each if they are assigned by weight.
struct PeopleDestinations {
    std::vector<GlobalId> places;
    std::vector<double> weights;
    DestinationAssignment assignment = DestinationAssignment::BY_CHANCE;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("places", self.places,
              RefersTo{"a portal, floor, connection or zone", Population::is_place, Role::DESTINATION});
        field("weights", self.weights, not_negative);
        field("assignment", self.assignment);
    }
};

/// The appearance and the first action of the people of a population.
struct PeopleTraits {
    std::optional<GlobalId> profile;
    std::shared_ptr<AgentAction> initial_action;  ///< empty: none
    EventColorSchemeType color_scheme = EventColorSchemeType::EVENT_COLOR;
    Color color;                         ///< of the scheme SPECIFIED, and where no rule of RULES holds
    std::vector<ColorRule> color_rules;  ///< of the scheme RULES

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("profile", self.profile, A_PROFILE);
        field("initialAction", self.initial_action);
        field("colorScheme", self.color_scheme);
        field("color", self.color);
        field("colorRules", self.color_rules);
    }
};

struct BoardingPeople {
    std::optional<Population> source;
    DoorAccess access;
    PeopleTraits traits;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("source", self.source);
        field("access", self.access);
        field("traits", self.traits);
    }
};

struct AlightingPeople {
    std::optional<AlightingCount> count;  ///< none: nobody alights
    PeopleOrigins origins;
    PeopleDestinations destinations;
    DoorAccess access;
    PeopleTraits traits;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("count", self.count);
        field("origins", self.origins);
        field("destinations", self.destinations);
        field("access", self.access);
        field("traits", self.traits);
    }
};

struct ThroughPeople {
    std::optional<ThroughCount> count;  ///< none: nobody stays in the vehicle
    PeopleOrigins origins;
    bool created_in_scene = false;
    PeopleTraits traits;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("count", self.count);
        field("origins", self.origins);
        field("createdInScene", self.created_in_scene);
        field("traits", self.traits);
    }
};

struct VehicleState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::VEHICLE;
    static constexpr std::string_view NAME = "Vehicle";
    using Handle = Vehicle;

    VehicleArrivals arrivals;
    std::shared_ptr<TimeReference> start = TimeReference::AfterSimulationStart(0);
    std::shared_ptr<Distribution> dwell = Distribution::CreateConstant(30);  ///< seconds
    int boarding_offset = 0;                                                 ///< seconds after the arrival
    std::vector<int> table_intervals;  ///< seconds; none when no population is by table
    BoardingPeople boarding;
    AlightingPeople alighting;
    ThroughPeople through;
    std::vector<GlobalId> car_doors;
    std::vector<GlobalId> car_floors;
    std::optional<int> car_floor_capacity;  ///< persons on each floor

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("arrival", self.arrivals);
        field("startTime", self.start, must_be_given);
        field("dwellDuration", self.dwell, RequiredRange{{0, unlimited, "s"}});
        field("boardingTimeOffset", self.boarding_offset);
        field("lookupTableIntervals", self.table_intervals, Range{1, unlimited, "s"});
        field("boarding", self.boarding);
        field("alighting", self.alighting);
        field("through", self.through);
        field("carDoors", self.car_doors, refers_to<ConnectionState>("a link, stair, ramp or other connection"));
        field("carFloors", self.car_floors, refers_to_kind<ObjectType::FLOOR>("a floor"));
        field("carFloorCapacityLimit", self.car_floor_capacity, Range{1, unlimited, "person"});
    }
    /// Checks the rules that several fields share, such as lists of equal length. Throws Exception.
    static void check(VehicleState const& self);
};

}  // namespace pedflux::engine
