#include "engine/base/checks.h"
#include "engine/behaviour/population/population_edits.h"
#include "engine/behaviour/population/population_handle.h"

#include <pedflux/population_sources.h>

#include <string>

#include <fmt/format.h>

namespace pedflux {

using engine::edit;
using engine::Population;
using engine::position_of;
using engine::require_position;

namespace {

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
        if (!entries[index]) engine::refuse(fmt::format("{}: entry {} is empty; it must be given", name, index));
        add_unless_present(changed.origins, entries[index]->GetOrigin());
        add_unless_present(changed.destinations, entries[index]->GetDestination());
    }
    changed.amounts.assign(changed.origins.size() * changed.destinations.size(), 0.0);
    std::vector<bool> given(changed.amounts.size(), false);
    for (std::size_t index = 0; index < entries.size(); ++index) {
        auto const cell = require_pair(changed, entries[index]->GetOrigin(), entries[index]->GetDestination());
        if (given[cell]) {
            engine::refuse(
                fmt::format("{}: entry {} has the origin and destination of an earlier one; each pair may occur once",
                            name, index));
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

ODMatrixPopulationSource::ODMatrixPopulationSource() : PopulationSource(PopulationSourceTypeId::OD_MATRIX) {}
ODMatrixPopulationSource::ODMatrixPopulationSource(ODMatrixPopulationSource const& other) = default;
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

std::shared_ptr<PopulationArrival> ODMatrixPopulationSource::GetPopulationArrival() {
    return engine::PopulationAccess::make(state_->population.arrival);
}
void ODMatrixPopulationSource::SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival) {
    engine::set_arrival(state_->population, arrival);
}

}  // namespace pedflux
