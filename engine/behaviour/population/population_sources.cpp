#include "engine/base/list_checks.h"
#include "engine/behaviour/population/pairs.h"
#include "engine/behaviour/population/population_edits.h"
#include "engine/behaviour/population/population_handle.h"

#include <pedflux/exception.h>
#include <pedflux/population_sources.h>

#include <algorithm>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

using engine::edit;
using engine::Population;
using engine::require_position;
using engine::set_arrival;

namespace {

void set_origins(Population& population, std::vector<GlobalId> const& origins, std::vector<double> const& weights) {
    edit(population, [&](Population& changed) {
        changed.origins = origins;
        changed.origin_weights = weights;
    });
}

void require_one_weight_each(Population const& population, std::string_view list, std::vector<GlobalId> const& places,
                             std::vector<double> const& weights) {
    auto const name = std::string(engine::traits_of(population.type).name);
    engine::require_equal_lengths(fmt::format("{}: {}", name, list), places.size(), "their weights", weights.size());
}

void set_weighted_origins(Population& population, std::vector<GlobalId> const& origins,
                          std::vector<double> const& weights) {
    require_one_weight_each(population, "origins", origins, weights);
    set_origins(population, origins, weights);
}

void set_destinations(Population& population, DestinationAssignment assignment,
                      std::vector<GlobalId> const& destinations, std::vector<double> const& weights) {
    edit(population, [&](Population& changed) {
        changed.assignment = assignment;
        changed.destinations = destinations;
        changed.destination_weights = weights;
    });
}

void set_count(Population& population, double count) {
    edit(population, [&](Population& changed) { changed.count = count; });
}

void set_periods(Population& population, std::vector<DurationValuePair> const& schedule) {
    edit(population,
         [&](Population& changed) { changed.arrival = engine::CurveArrival{engine::periods_of(schedule)}; });
}

}  // namespace

PopulationSource::PopulationSource(PopulationSourceTypeId type)
    : state_(std::make_unique<State>(State{engine::empty_population(type)})) {}
PopulationSource::PopulationSource(PopulationSource const& other) : state_(std::make_unique<State>(*other.state_)) {}
PopulationSource::~PopulationSource() = default;

int PopulationSource::GetPopulationSourceTypeId() { return static_cast<int>(state_->population.type); }
std::vector<GlobalId> PopulationSource::GetOrigins() { return state_->population.origins; }
bool PopulationSource::HasOriginWeights() { return !state_->population.origin_weights.empty(); }
std::vector<double> PopulationSource::GetOriginWeights() { return state_->population.origin_weights; }
std::vector<IdValuePair> PopulationSource::GetOriginWeightPairs() {
    return engine::pairs_of(state_->population.origins, state_->population.origin_weights);
}
std::vector<GlobalId> PopulationSource::GetDestinations() { return state_->population.destinations; }
bool PopulationSource::HasDestinationWeights() { return !state_->population.destination_weights.empty(); }
std::vector<double> PopulationSource::GetDestinationWeights() { return state_->population.destination_weights; }
std::vector<IdValuePair> PopulationSource::GetDestinationWeightPairs() {
    return engine::pairs_of(state_->population.destinations, state_->population.destination_weights);
}
DestinationAssignment PopulationSource::GetDestinationAssignment() { return state_->population.assignment; }
double PopulationSource::GetTotalPopulationCount() { return engine::total_of(state_->population); }
PopulationArrivalTypeId PopulationSource::GetPopulationArrivalTypeId() {
    return static_cast<PopulationArrivalTypeId>(state_->population.arrival.index());
}
int PopulationSource::GetPopulationArrivalDurationInSeconds() {
    return engine::duration_of(state_->population.arrival);
}
std::shared_ptr<PopulationSource> PopulationSource::Clone() { return engine::make_source(state_->population); }

// What several kinds have in common, in words that the kinds below are made of.

// A kind: default and copy constructor.
#define SOURCE(Kind, TYPE)                                                                               \
    Kind##PopulationSource::Kind##PopulationSource() : PopulationSource(PopulationSourceTypeId::TYPE) {} \
    Kind##PopulationSource::Kind##PopulationSource(Kind##PopulationSource const& other) = default;

#define WEIGHTED_ORIGINS(Kind)                                                                           \
    void Kind##PopulationSource::SetOrigins(std::vector<GlobalId> const& origins) {                      \
        set_origins(state_->population, origins, {});                                                    \
    }                                                                                                    \
    void Kind##PopulationSource::SetOriginsWeighted(std::vector<GlobalId> const& origins,                \
                                                    std::vector<double> const& weights) {                \
        set_weighted_origins(state_->population, origins, weights);                                      \
    }                                                                                                    \
    void Kind##PopulationSource::SetOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights) { \
        auto const lists = engine::lists_of(originsAndWeights);                                          \
        set_weighted_origins(state_->population, lists.ids, lists.values);                               \
    }

#define CHOSEN_DESTINATIONS(Kind)                                                                               \
    void Kind##PopulationSource::SetDestinationsByChance(std::vector<GlobalId> const& destinations) {           \
        set_destinations(state_->population, DestinationAssignment::BY_CHANCE, destinations, {});               \
    }                                                                                                           \
    void Kind##PopulationSource::SetDestinationsByLowestCost(std::vector<GlobalId> const& destinations) {       \
        set_destinations(state_->population, DestinationAssignment::BY_LOWEST_COST, destinations, {});          \
    }                                                                                                           \
    void Kind##PopulationSource::SetDestinationsWeightedByChance(std::vector<GlobalId> const& destinations,     \
                                                                 std::vector<double> const& weights) {          \
        set_destinations(state_->population, DestinationAssignment::WEIGHTED_BY_CHANCE, destinations, weights); \
    }                                                                                                           \
    void Kind##PopulationSource::SetDestinationsWeightedByChance(                                               \
        std::vector<IdValuePair> const& destinationsAndWeights) {                                               \
        auto const lists = engine::lists_of(destinationsAndWeights);                                            \
        SetDestinationsWeightedByChance(lists.ids, lists.values);                                               \
    }

#define ARRIVAL(Kind)                                                                                      \
    std::shared_ptr<PopulationArrival> Kind##PopulationSource::GetPopulationArrival() {                    \
        return engine::PopulationAccess::make(state_->population.arrival);                                 \
    }                                                                                                      \
    void Kind##PopulationSource::SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival) { \
        set_arrival(state_->population, arrival);                                                          \
    }

SOURCE(Count, COUNT)
WEIGHTED_ORIGINS(Count)
CHOSEN_DESTINATIONS(Count)
ARRIVAL(Count)
CountPopulationSource::CountPopulationSource(std::vector<GlobalId> const& origins, double count)
    : CountPopulationSource(origins, {}, count) {}
CountPopulationSource::CountPopulationSource(std::vector<GlobalId> const& origins,
                                             std::vector<GlobalId> const& destinations, double count)
    : CountPopulationSource() {
    SetOrigins(origins);
    SetDestinationsByChance(destinations);
    SetPopulationCount(count);
}
double CountPopulationSource::GetPopulationCount() const { return state_->population.count; }
void CountPopulationSource::SetPopulationCount(double count) { set_count(state_->population, count); }

SOURCE(CountPerOrigin, COUNT_PER_ORIGIN)
CHOSEN_DESTINATIONS(CountPerOrigin)
ARRIVAL(CountPerOrigin)
CountPerOriginPopulationSource::CountPerOriginPopulationSource(std::vector<GlobalId> const& origins, double count)
    : CountPerOriginPopulationSource(origins, count, {}) {}
CountPerOriginPopulationSource::CountPerOriginPopulationSource(std::vector<GlobalId> const& origins, double count,
                                                               std::vector<GlobalId> const& destinations)
    : CountPerOriginPopulationSource() {
    SetOrigins(origins);
    set_count(state_->population, count);
    SetDestinationsByChance(destinations);
}
double CountPerOriginPopulationSource::GetPopulationCountPerOrigin() const { return state_->population.count; }
void CountPerOriginPopulationSource::SetPopulationCountPerOrigin(int count) { set_count(state_->population, count); }
void CountPerOriginPopulationSource::SetOrigins(std::vector<GlobalId> const& origins) {
    set_origins(state_->population, origins, {});
}

SOURCE(CountPerDestination, COUNT_PER_DESTINATION)
WEIGHTED_ORIGINS(CountPerDestination)
ARRIVAL(CountPerDestination)
CountPerDestinationPopulationSource::CountPerDestinationPopulationSource(std::vector<GlobalId> const& origins,
                                                                         std::vector<GlobalId> const& destinations,
                                                                         double count)
    : CountPerDestinationPopulationSource() {
    SetOrigins(origins);
    SetDestinations(destinations);
    SetPopulationCountPerDestination(count);
}
double CountPerDestinationPopulationSource::GetPopulationCountPerDestination() const {
    return state_->population.count;
}
void CountPerDestinationPopulationSource::SetPopulationCountPerDestination(double count) {
    set_count(state_->population, count);
}
void CountPerDestinationPopulationSource::SetDestinations(std::vector<GlobalId> const& destinations) {
    set_destinations(state_->population, DestinationAssignment::BY_COUNT, destinations, {});
}

SOURCE(OriginTable, ORIGIN_TABLE)
CHOSEN_DESTINATIONS(OriginTable)
ARRIVAL(OriginTable)
OriginTablePopulationSource::OriginTablePopulationSource(std::vector<IdValuePair> const& originsAndPopulations)
    : OriginTablePopulationSource(originsAndPopulations, {}) {}
OriginTablePopulationSource::OriginTablePopulationSource(std::vector<IdValuePair> const& originsAndPopulations,
                                                         std::vector<GlobalId> const& destinations)
    : OriginTablePopulationSource() {
    SetOriginsAndPopulations(originsAndPopulations);
    SetDestinationsByChance(destinations);
}
std::vector<IdValuePair> OriginTablePopulationSource::GetOriginsAndPopulations() {
    return engine::pairs_of(state_->population.origins, state_->population.amounts);
}
void OriginTablePopulationSource::SetOriginsAndPopulations(std::vector<IdValuePair> const& originsAndPopulations) {
    auto lists = engine::lists_of(originsAndPopulations);
    edit(state_->population, [&](Population& changed) {
        changed.origins = std::move(lists.ids);
        changed.amounts = std::move(lists.values);
    });
}
double OriginTablePopulationSource::GetPopulationForOrigin(GlobalId const& origin) const {
    auto const& population = state_->population;
    return population.amounts[require_position(population, "origin", population.origins, origin)];
}

SOURCE(DestinationTable, DESTINATION_TABLE)
WEIGHTED_ORIGINS(DestinationTable)
ARRIVAL(DestinationTable)
DestinationTablePopulationSource::DestinationTablePopulationSource(
    std::vector<GlobalId> const& origins, std::vector<IdValuePair> const& destinationsAndPopulations)
    : DestinationTablePopulationSource() {
    SetOrigins(origins);
    SetDestinationsAndPopulations(destinationsAndPopulations);
}
std::vector<IdValuePair> DestinationTablePopulationSource::GetDestinationsAndPopulations() {
    return engine::pairs_of(state_->population.destinations, state_->population.amounts);
}
void DestinationTablePopulationSource::SetDestinationsAndPopulations(
    std::vector<IdValuePair> const& destinationsAndPopulations) {
    auto lists = engine::lists_of(destinationsAndPopulations);
    edit(state_->population, [&](Population& changed) {
        changed.destinations = std::move(lists.ids);
        changed.amounts = std::move(lists.values);
    });
}
double DestinationTablePopulationSource::GetPopulationForDestination(GlobalId const& destination) const {
    auto const& population = state_->population;
    return population.amounts[require_position(population, "destination", population.destinations, destination)];
}

SOURCE(Schedule, SCHEDULE)
WEIGHTED_ORIGINS(Schedule)
CHOSEN_DESTINATIONS(Schedule)
SchedulePopulationSource::SchedulePopulationSource(std::vector<GlobalId> const& origins,
                                                   std::vector<DurationValuePair> const& schedule)
    : SchedulePopulationSource(origins, {}, schedule) {}
SchedulePopulationSource::SchedulePopulationSource(std::vector<GlobalId> const& origins,
                                                   std::vector<GlobalId> const& destinations,
                                                   std::vector<DurationValuePair> const& schedule)
    : SchedulePopulationSource() {
    SetOrigins(origins);
    SetDestinationsByChance(destinations);
    SetDurationPopulationPairs(schedule);
}
std::vector<DurationValuePair> SchedulePopulationSource::GetDurationPopulationPairs() {
    return engine::pairs_of(std::get<engine::CurveArrival>(state_->population.arrival).periods);
}
void SchedulePopulationSource::SetDurationPopulationPairs(std::vector<DurationValuePair> const& schedule) {
    set_periods(state_->population, schedule);
}

namespace engine {
namespace {

std::shared_ptr<PopulationSource> empty_source(PopulationSourceTypeId type) {
    switch (type) {
        case PopulationSourceTypeId::COUNT:
            return std::make_shared<CountPopulationSource>();
        case PopulationSourceTypeId::COUNT_PER_ORIGIN:
            return std::make_shared<CountPerOriginPopulationSource>();
        case PopulationSourceTypeId::COUNT_PER_DESTINATION:
            return std::make_shared<CountPerDestinationPopulationSource>();
        case PopulationSourceTypeId::ORIGIN_TABLE:
            return std::make_shared<OriginTablePopulationSource>();
        case PopulationSourceTypeId::DESTINATION_TABLE:
            return std::make_shared<DestinationTablePopulationSource>();
        case PopulationSourceTypeId::SCHEDULE:
            return std::make_shared<SchedulePopulationSource>();
        case PopulationSourceTypeId::OD_MATRIX:
            return std::make_shared<ODMatrixPopulationSource>();
    }
    refuse(fmt::format("PopulationSource: {} is no type of source", static_cast<int>(type)));
}

}  // namespace

std::shared_ptr<PopulationSource> make_source(Population const& population) {
    require_valid(population);
    auto source = empty_source(population.type);
    PopulationAccess::population(*source) = population;
    return source;
}

}  // namespace engine
}  // namespace pedflux
