#pragma once

#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/model/enumerations.h"
#include "engine/model/rules.h"

#include <pedflux/identifiers.h>
#include <pedflux/population_sources.h>

#include <string_view>
#include <variant>
#include <vector>

// Populations as plain data: how many people come from where, go where, and arrive when.
namespace pedflux::engine {

PEDFLUX_NAMES(PopulationSourceTypeId, {{PopulationSourceTypeId::COUNT, "COUNT"},
                                       {PopulationSourceTypeId::COUNT_PER_ORIGIN, "COUNT_PER_ORIGIN"},
                                       {PopulationSourceTypeId::COUNT_PER_DESTINATION, "COUNT_PER_DESTINATION"},
                                       {PopulationSourceTypeId::ORIGIN_TABLE, "ORIGIN_TABLE"},
                                       {PopulationSourceTypeId::DESTINATION_TABLE, "DESTINATION_TABLE"},
                                       {PopulationSourceTypeId::SCHEDULE, "SCHEDULE"},
                                       {PopulationSourceTypeId::OD_MATRIX, "OD_MATRIX"}});
PEDFLUX_NAMES(DestinationAssignment, {{DestinationAssignment::BY_CHANCE, "BY_CHANCE"},
                                      {DestinationAssignment::BY_LOWEST_COST, "BY_LOWEST_COST"},
                                      {DestinationAssignment::WEIGHTED_BY_CHANCE, "WEIGHTED_BY_CHANCE"},
                                      {DestinationAssignment::BY_COUNT, "BY_COUNT"},
                                      {DestinationAssignment::IN_SEQUENCE, "IN_SEQUENCE"}});

/// All at once.
struct InstantArrival {
    static constexpr std::string_view NAME = "Instant";
    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

/// One after the other at equal intervals.
struct EvenArrival {
    static constexpr std::string_view NAME = "EvenlySpaced";
    int seconds = 1;
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("seconds", self.seconds, at_least_one);
    }
};

/// Each at a random time after the event's start, in seconds.
struct RandomArrival {
    static constexpr std::string_view NAME = "RandomDistribution";
    DistributionSpec delay;
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("delay", self.delay);
    }
};

/// A time span in seconds, and the persons or the share of persons that arrive in it, at equal intervals.
struct Period {
    double duration = 0;
    double value = 0;
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("duration", self.duration, not_negative);
        field("value", self.value, not_negative);
    }
};

/// Period after period, in proportion to the values.
struct CurveArrival {
    static constexpr std::string_view NAME = "WeightedCurve";
    std::vector<Period> periods;
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("periods", self.periods);
    }
};

/// The order of the kinds is that of `PopulationArrivalTypeId`.
using Arrival = std::variant<InstantArrival, EvenArrival, RandomArrival, CurveArrival>;

/// The seconds from the event's start to the last possible arrival, rounded up.
int duration_of(Arrival const& arrival);

/// Throws an Exception that tells what no arrival can have: no seconds, negative delays, a curve without weight.
void require_valid(Arrival const& arrival);

/// The data of all kinds of population source. Which of the fields a kind uses, its traits tell; the others stay empty.
struct Population {
    PopulationSourceTypeId type = PopulationSourceTypeId::COUNT;
    std::vector<GlobalId> origins;
    std::vector<double> origin_weights;  ///< one for each origin; none: all alike
    std::vector<GlobalId> destinations;
    std::vector<double> destination_weights;  ///< one for each destination when they are weighted
    DestinationAssignment assignment = DestinationAssignment::BY_CHANCE;
    double count = 0;             ///< persons in all, per origin or per destination
    std::vector<double> amounts;  ///< persons per origin, per destination or per pair of both, origin by origin
    Arrival arrival;              ///< of a schedule: a curve whose values are persons

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("type", self.type);
        field("origins", self.origins, RefersTo{"a place where agents can be", is_place, Role::ORIGIN});
        field("originWeights", self.origin_weights, not_negative);
        field("destinations", self.destinations, RefersTo{"a place where agents can be", is_place, Role::DESTINATION});
        field("destinationWeights", self.destination_weights, not_negative);
        field("destinationAssignment", self.assignment);
        field("count", self.count, not_negative);
        field("amounts", self.amounts, not_negative);
        field("arrival", self.arrival);
    }

    /// Floors, connections, portals and zones.
    static bool is_place(ObjectState const& object);
};

/// What the amounts of a kind of source stand for.
enum class Amounts { NONE, PER_ORIGIN, PER_DESTINATION, PER_PAIR };

/// What sets the kinds of source apart.
struct PopulationTraits {
    std::string_view name;      ///< of the SDK's class
    bool has_origin_weights;    ///< people are spread over the origins by weight
    bool chooses_destinations;  ///< people choose their destination; otherwise the numbers tell how many go where
    Amounts amounts;
};
PopulationTraits const& traits_of(PopulationSourceTypeId type);

/// An empty population of a kind.
Population empty_population(PopulationSourceTypeId type);

/// Throws an Exception that names the kind and what does not fit: lists of unequal length, negative numbers, weights
/// that are all 0, an identifier twice.
void require_valid(Population const& population);

/// All persons of the population; not always a whole number.
double total_of(Population const& population);

}  // namespace pedflux::engine
