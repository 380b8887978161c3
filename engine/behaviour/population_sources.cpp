#include "engine/behaviour/checks.h"
#include "engine/behaviour/pairs.h"
#include "engine/behaviour/population_face.h"

#include <pedflux/exception.h>
#include <pedflux/population_sources.h>

#include <algorithm>
#include <string>
#include <utility>

namespace pedflux {

using engine::Population;

namespace {

// Every setter changes a copy, which replaces the population only if it is valid.
template <class Change>
void edit(Population& population, Change change) {
    auto changed = population;
    change(changed);
    engine::require_valid(changed);
    population = std::move(changed);
}

void set_origins(Population& population, std::vector<GlobalId> const& origins, std::vector<double> const& weights) {
    edit(population, [&](Population& changed) {
        changed.origins = origins;
        changed.origin_weights = weights;
    });
}

void require_one_weight_each(Population const& population, std::string_view list, std::vector<GlobalId> const& places,
                             std::vector<double> const& weights) {
    auto const name = std::string(engine::traits_of(population.type).name);
    engine::require_equal_lengths(name + ": " + std::string(list), places.size(), "their weights", weights.size());
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

void set_arrival(Population& population, std::shared_ptr<PopulationArrival> const& arrival) {
    if (!arrival)
        engine::refuse(std::string(engine::traits_of(population.type).name) +
                       ": the arrival is empty; it must be given");
    edit(population, [&](Population& changed) { changed.arrival = engine::PopulationAccess::arrival(*arrival); });
}

bool same(GlobalId const& left, GlobalId const& right) { return left.InternalEquals(right); }

// The position of a place in a list, or the list's length.
std::size_t position_of(std::vector<GlobalId> const& places, GlobalId const& place) {
    auto const found = std::ranges::find_if(places, [&](GlobalId const& other) { return same(other, place); });
    return static_cast<std::size_t>(found - places.begin());
}

std::size_t require_position(Population const& population, char const* what, std::vector<GlobalId> const& places,
                             GlobalId place) {
    auto const position = position_of(places, place);
    if (position == places.size()) {
        engine::refuse(std::string(engine::traits_of(population.type).name) + ": " +
                       (place.IsValid() ? place.GetString() : "the invalid identifier") + " is none of its " + what +
                       "s");
    }
    return position;
}

std::size_t require_pair(Population const& population, GlobalId const& origin, GlobalId const& destination) {
    auto const row = require_position(population, "origin", population.origins, origin);
    auto const column = require_position(population, "destination", population.destinations, destination);
    return row * population.destinations.size() + column;
}

// The matrix over other places: what is in both keeps its persons.
Population over_places(Population const& population, std::vector<GlobalId> const& origins,
                       std::vector<GlobalId> const& destinations) {
    auto changed = population;
    changed.origins = origins;
    changed.destinations = destinations;
    changed.amounts.clear();
    for (auto const& origin : origins) {
        auto const row = position_of(population.origins, origin);
        for (auto const& destination : destinations) {
            auto const column = position_of(population.destinations, destination);
            bool const kept = row < population.origins.size() && column < population.destinations.size();
            changed.amounts.push_back(kept ? population.amounts[row * population.destinations.size() + column] : 0.0);
        }
    }
    engine::require_valid(changed);
    return changed;
}

std::vector<std::shared_ptr<ODMatrixEntry>> entries_of(Population const& population, bool with_zeros) {
    std::vector<std::shared_ptr<ODMatrixEntry>> entries;
    for (std::size_t index = 0; index < population.amounts.size(); ++index) {
        auto const persons = population.amounts[index];
        if (persons == 0 && !with_zeros) continue;
        auto const columns = population.destinations.size();
        entries.push_back(std::make_shared<ODMatrixEntry>(population.origins[index / columns],
                                                          population.destinations[index % columns], persons));
    }
    return entries;
}

void add_unless_present(std::vector<GlobalId>& places, GlobalId const& place) {
    if (position_of(places, place) == places.size()) places.push_back(place);
}

Population from_entries(Population const& population, std::vector<std::shared_ptr<ODMatrixEntry>> const& entries) {
    auto const name = std::string(engine::traits_of(population.type).name);
    Population changed = over_places(population, {}, {});
    for (std::size_t index = 0; index < entries.size(); ++index) {
        if (!entries[index]) engine::refuse(name + ": entry " + std::to_string(index) + " is empty; it must be given");
        add_unless_present(changed.origins, entries[index]->GetOrigin());
        add_unless_present(changed.destinations, entries[index]->GetDestination());
    }
    changed.amounts.assign(changed.origins.size() * changed.destinations.size(), 0.0);
    std::vector<bool> given(changed.amounts.size(), false);
    for (std::size_t index = 0; index < entries.size(); ++index) {
        auto const cell = require_pair(changed, entries[index]->GetOrigin(), entries[index]->GetDestination());
        if (given[cell]) {
            engine::refuse(name + ": entry " + std::to_string(index) +
                           " has the origin and destination of an earlier one; each pair may occur once");
        }
        given[cell] = true;
        changed.amounts[cell] = entries[index]->GetPopulation();
    }
    engine::require_valid(changed);
    return changed;
}

}  // namespace

ODMatrixEntry::ODMatrixEntry(GlobalId const& origin, GlobalId const& destination, double population)
    : origin_(origin),
      destination_(destination),
      population_(engine::require_not_negative("ODMatrixEntry: population", population)) {}
ODMatrixEntry::ODMatrixEntry(ODMatrixEntry const& other) = default;
ODMatrixEntry& ODMatrixEntry::operator=(ODMatrixEntry const& other) = default;
ODMatrixEntry::~ODMatrixEntry() = default;

GlobalId ODMatrixEntry::GetOrigin() { return origin_; }
void ODMatrixEntry::SetOrigin(GlobalId const& origin) { origin_ = origin; }
GlobalId ODMatrixEntry::GetDestination() { return destination_; }
void ODMatrixEntry::SetDestination(GlobalId const& destination) { destination_ = destination; }
double ODMatrixEntry::GetPopulation() { return population_; }
void ODMatrixEntry::SetPopulation(double population) {
    population_ = engine::require_not_negative("ODMatrixEntry: population", population);
}

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

SOURCE(ODMatrix, OD_MATRIX)
ARRIVAL(ODMatrix)
ODMatrixPopulationSource::ODMatrixPopulationSource(std::vector<GlobalId> const& origins,
                                                   std::vector<GlobalId> const& destinations,
                                                   std::vector<double> const& data)
    : ODMatrixPopulationSource() {
    SetODPopulationData(origins, destinations, data);
}
ODMatrixPopulationSource::ODMatrixPopulationSource(std::vector<std::shared_ptr<ODMatrixEntry>> const& entries)
    : ODMatrixPopulationSource() {
    SetFromODMatrixEntries(entries);
}
void ODMatrixPopulationSource::SetOrigins(std::vector<GlobalId> const& origins) {
    state_->population = over_places(state_->population, origins, state_->population.destinations);
}
void ODMatrixPopulationSource::SetDestinations(std::vector<GlobalId> const& destinations) {
    state_->population = over_places(state_->population, state_->population.origins, destinations);
}
int ODMatrixPopulationSource::GetOriginCount() const { return static_cast<int>(state_->population.origins.size()); }
int ODMatrixPopulationSource::GetDestinationCount() const {
    return static_cast<int>(state_->population.destinations.size());
}
bool ODMatrixPopulationSource::HasOrigin(GlobalId const& origin) const {
    return position_of(state_->population.origins, origin) < state_->population.origins.size();
}
bool ODMatrixPopulationSource::HasDestination(GlobalId const& destination) const {
    return position_of(state_->population.destinations, destination) < state_->population.destinations.size();
}
std::vector<double> ODMatrixPopulationSource::GetPopulationData() { return state_->population.amounts; }
void ODMatrixPopulationSource::SetPopulationData(std::vector<double> const& data) {
    edit(state_->population, [&](Population& changed) { changed.amounts = data; });
}
void ODMatrixPopulationSource::SetODPopulationData(std::vector<GlobalId> const& origins,
                                                   std::vector<GlobalId> const& destinations,
                                                   std::vector<double> const& data) {
    edit(state_->population, [&](Population& changed) {
        changed.origins = origins;
        changed.destinations = destinations;
        changed.amounts = data;
    });
}
double ODMatrixPopulationSource::GetPopulationForOD(GlobalId const& origin, GlobalId const& destination) const {
    return state_->population.amounts[require_pair(state_->population, origin, destination)];
}
void ODMatrixPopulationSource::SetPopulationForOD(GlobalId const& origin, GlobalId const& destination,
                                                  double population) {
    auto const index = require_pair(state_->population, origin, destination);
    state_->population.amounts[index] =
        engine::require_not_negative("ODMatrixPopulationSource: population", population);
}
int ODMatrixPopulationSource::GetPopulationDataIndexForOD(GlobalId const& origin, GlobalId const& destination) const {
    return static_cast<int>(require_pair(state_->population, origin, destination));
}
std::vector<std::shared_ptr<ODMatrixEntry>> ODMatrixPopulationSource::GetODMatrixEntriesAll() {
    return entries_of(state_->population, true);
}
std::vector<std::shared_ptr<ODMatrixEntry>> ODMatrixPopulationSource::GetODMatrixEntriesNonZero() {
    return entries_of(state_->population, false);
}
void ODMatrixPopulationSource::SetFromODMatrixEntries(std::vector<std::shared_ptr<ODMatrixEntry>> const& entries) {
    state_->population = from_entries(state_->population, entries);
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
    refuse("PopulationSource: " + std::to_string(static_cast<int>(type)) + " is no type of source");
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
