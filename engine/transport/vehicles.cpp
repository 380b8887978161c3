#include "engine/base/checks.h"
#include "engine/base/list_checks.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/population/pairs.h"
#include "engine/behaviour/population/population_handle.h"
#include "engine/model/node.h"
#include "engine/transport/vehicle_edit.h"

#include <pedflux/vehicles.h>

#include <string>

#include <fmt/format.h>

namespace pedflux {

using engine::copy_of;
using engine::edit;
using engine::get;
using engine::held_in;
using engine::require_held;
using engine::state_of;
using engine::VehicleState;

// Numbers of people.

#define COUNTED_BY(Is, part, Kind) \
    bool Vehicle::Is() { return held_in<engine::Kind>(get(*this, &VehicleState::part).count) != nullptr; }

COUNTED_BY(IsAlightingPopulationBySchedule, alighting, CountBySchedule)
COUNTED_BY(IsAlightingPopulationByLookupTable, alighting, CountByTable)
COUNTED_BY(IsAlightingPopulationByRandomDistribution, alighting, RandomCount)
COUNTED_BY(IsThroughPopulationBySchedule, through, CountBySchedule)
COUNTED_BY(IsThroughPopulationByLookupTable, through, CountByTable)
COUNTED_BY(IsThroughPopulationByRandomDistribution, through, RandomCount)
COUNTED_BY(IsThroughPopulationByFullCapacity, through, FullCapacity)
COUNTED_BY(IsThroughPopulationByPercentageCapacity, through, PercentageOfCapacity)

bool Vehicle::HasAlightingPopulation() { return get(*this, &VehicleState::alighting).count.has_value(); }
void Vehicle::ClearAlightingPopulation() { state_of<VehicleState>(*this).alighting.count.reset(); }
bool Vehicle::HasThroughPopulation() { return get(*this, &VehicleState::through).count.has_value(); }
void Vehicle::ClearThroughPopulation() { state_of<VehicleState>(*this).through.count.reset(); }

void Vehicle::SetAlightingPopulationByRandomDistribution(std::shared_ptr<Distribution> const& count) {
    edit(*this, [&](VehicleState& state) { state.alighting.count = engine::RandomCount{copy_of(count)}; });
}
std::shared_ptr<Distribution> Vehicle::GetAlightingPopulationRandomDistribution() {
    auto const& count = get(*this, &VehicleState::alighting).count;
    return copy_of(require_held<engine::RandomCount>(*this, count, "alighting.count by distribution").persons);
}
void Vehicle::SetThroughPopulationByRandomDistribution(std::shared_ptr<Distribution> const& count) {
    edit(*this, [&](VehicleState& state) { state.through.count = engine::RandomCount{copy_of(count)}; });
}
std::shared_ptr<Distribution> Vehicle::GetThroughPopulationRandomDistribution() {
    auto const& count = get(*this, &VehicleState::through).count;
    return copy_of(require_held<engine::RandomCount>(*this, count, "through.count by distribution").persons);
}
void Vehicle::SetThroughPopulationByFullCapacity() {
    edit(*this, [](VehicleState& state) { state.through.count = engine::FullCapacity{}; });
}
void Vehicle::SetThroughPopulationByPercentageCapacity(std::shared_ptr<Distribution> const& percentage) {
    edit(*this, [&](VehicleState& state) { state.through.count = engine::PercentageOfCapacity{copy_of(percentage)}; });
}
std::shared_ptr<Distribution> Vehicle::GetThroughPopulationPercentageCapacityDistribution() {
    auto const& count = get(*this, &VehicleState::through).count;
    return copy_of(require_held<engine::PercentageOfCapacity>(*this, count, "through.count by percentage").percentage);
}
bool Vehicle::IsThroughPopulationCreatedInScene() { return get(*this, &VehicleState::through).created_in_scene; }
void Vehicle::SetThroughPopulationCreatedInScene(bool created) {
    state_of<VehicleState>(*this).through.created_in_scene = created;
}

bool Vehicle::HasBoardingPopulation() { return get(*this, &VehicleState::boarding).source.has_value(); }
void Vehicle::ClearBoardingPopulation() { state_of<VehicleState>(*this).boarding.source.reset(); }
std::shared_ptr<PopulationSource> Vehicle::GetBoardingPopulationSource() {
    auto const& source = get(*this, &VehicleState::boarding).source;
    if (!source) engine::refuse_unset(owner_of(*state_), "boarding.source");
    return engine::make_source(*source);
}
void Vehicle::SetBoardingPopulationSource(std::shared_ptr<PopulationSource> const& source) {
    if (!source) engine::refuse_empty({owner_of(*state_), "boarding.source"});
    edit(*this, [&](VehicleState& state) { state.boarding.source = engine::population_of(*source); });
}

// Access by the doors.

#define ACCESS(Name, part, Own)                                                                                       \
    bool Vehicle::Is##Name##AccessOpenToAll() {                                                                       \
        return std::holds_alternative<engine::OpenToAll>(get(*this, &VehicleState::part).access);                     \
    }                                                                                                                 \
    bool Vehicle::Is##Name##AccessOpenTo##Own() {                                                                     \
        return std::holds_alternative<engine::OpenToOwn>(get(*this, &VehicleState::part).access);                     \
    }                                                                                                                 \
    bool Vehicle::Is##Name##AccessOpenIfTestTrue() {                                                                  \
        return std::holds_alternative<engine::OpenIfTestTrue>(get(*this, &VehicleState::part).access);                \
    }                                                                                                                 \
    void Vehicle::Set##Name##AccessOpenToAll() { state_of<VehicleState>(*this).part.access = engine::OpenToAll{}; }   \
    void Vehicle::Set##Name##AccessOpenTo##Own() { state_of<VehicleState>(*this).part.access = engine::OpenToOwn{}; } \
    void Vehicle::Set##Name##AccessOpenIfTestTrue(std::shared_ptr<AgentTest> const& test) {                           \
        edit(*this, [&](VehicleState& state) { state.part.access = engine::OpenIfTestTrue{copy_of(test)}; });         \
    }                                                                                                                 \
    std::shared_ptr<AgentTest> Vehicle::Get##Name##AccessAgentTest() {                                                \
        auto const& access = get(*this, &VehicleState::part).access;                                                  \
        auto const* const tested = std::get_if<engine::OpenIfTestTrue>(&access);                                      \
        if (tested == nullptr) engine::refuse_unset(owner_of(*state_), #part ".access by a test");                    \
        return copy_of(tested->test);                                                                                 \
    }

ACCESS(Boarding, boarding, Boarders)
ACCESS(Alighting, alighting, Alighters)

// Where people come from and go to.

#define ORIGINS(Name, part)                                                                                        \
    std::vector<GlobalId> Vehicle::Get##Name##Origins() { return get(*this, &VehicleState::part).origins.places; } \
    void Vehicle::Set##Name##Origins(std::vector<GlobalId> const& origins) {                                       \
        edit(*this, [&](VehicleState& state) { state.part.origins = {origins, {}}; });                             \
    }                                                                                                              \
    void Vehicle::Set##Name##OriginsWeighted(std::vector<GlobalId> const& origins,                                 \
                                             std::vector<double> const& weights) {                                 \
        engine::require_equal_lengths(title_of(*state_) + ": origins", origins.size(), "weights", weights.size()); \
        edit(*this, [&](VehicleState& state) { state.part.origins = {origins, weights}; });                        \
    }                                                                                                              \
    void Vehicle::Set##Name##OriginsWeighted(std::vector<IdValuePair> const& originsAndWeights) {                  \
        auto const lists = engine::lists_of(originsAndWeights);                                                    \
        Set##Name##OriginsWeighted(lists.ids, lists.values);                                                       \
    }                                                                                                              \
    bool Vehicle::Has##Name##OriginWeights() { return !get(*this, &VehicleState::part).origins.weights.empty(); }  \
    std::vector<double> Vehicle::Get##Name##OriginWeights() {                                                      \
        return get(*this, &VehicleState::part).origins.weights;                                                    \
    }                                                                                                              \
    std::vector<IdValuePair> Vehicle::Get##Name##OriginWeightPairs() {                                             \
        auto const& origins = get(*this, &VehicleState::part).origins;                                             \
        return engine::pairs_of(origins.places, origins.weights);                                                  \
    }

ORIGINS(Alighting, alighting)
ORIGINS(Through, through)

void Vehicle::SetAlightingDestinationsByChance(std::vector<GlobalId> const& destinations) {
    edit(*this, [&](VehicleState& state) {
        state.alighting.destinations = {destinations, {}, DestinationAssignment::BY_CHANCE};
    });
}
void Vehicle::SetAlightingDestinationsByLowestCost(std::vector<GlobalId> const& destinations) {
    edit(*this, [&](VehicleState& state) {
        state.alighting.destinations = {destinations, {}, DestinationAssignment::BY_LOWEST_COST};
    });
}
void Vehicle::SetAlightingDestinationsWeightedByChance(std::vector<GlobalId> const& destinations,
                                                       std::vector<double> const& weights) {
    engine::require_equal_lengths(title_of(*state_) + ": destinations", destinations.size(), "weights", weights.size());
    edit(*this, [&](VehicleState& state) {
        state.alighting.destinations = {destinations, weights, DestinationAssignment::WEIGHTED_BY_CHANCE};
    });
}
void Vehicle::SetAlightingDestinationsWeightedByChance(std::vector<IdValuePair> const& destinationsAndWeights) {
    auto const lists = engine::lists_of(destinationsAndWeights);
    SetAlightingDestinationsWeightedByChance(lists.ids, lists.values);
}
std::vector<GlobalId> Vehicle::GetAlightingDestinations() {
    return get(*this, &VehicleState::alighting).destinations.places;
}
DestinationAssignment Vehicle::GetAlightingDestinationAssignment() {
    return get(*this, &VehicleState::alighting).destinations.assignment;
}
bool Vehicle::HasAlightingDestinationWeights() { return !GetAlightingDestinationWeights().empty(); }
std::vector<double> Vehicle::GetAlightingDestinationWeights() {
    return get(*this, &VehicleState::alighting).destinations.weights;
}
std::vector<IdValuePair> Vehicle::GetAlightingDestinationWeightPairs() {
    auto const& destinations = get(*this, &VehicleState::alighting).destinations;
    return engine::pairs_of(destinations.places, destinations.weights);
}

// Cars.

std::vector<GlobalId> Vehicle::GetCarDoors() { return get(*this, &VehicleState::car_doors); }
void Vehicle::SetCarDoors(std::vector<GlobalId> const& doors) { set(*this, &VehicleState::car_doors, doors); }
std::vector<GlobalId> Vehicle::GetCarFloors() { return get(*this, &VehicleState::car_floors); }
void Vehicle::SetCarFloors(std::vector<GlobalId> const& floors) { set(*this, &VehicleState::car_floors, floors); }
bool Vehicle::HasCarFloorCapacityLimit() { return has(*this, &VehicleState::car_floor_capacity); }
int Vehicle::GetCarFloorCapacityLimit() { return get(*this, &VehicleState::car_floor_capacity); }
void Vehicle::SetCarFloorCapacityLimit(int limit) { set(*this, &VehicleState::car_floor_capacity, limit); }
void Vehicle::ClearCarFloorCapacityLimit() { clear(*this, &VehicleState::car_floor_capacity); }

// Properties of each population.

namespace {

engine::PeopleTraits& traits_in(VehicleState& state, VehiclePopulationType population) {
    switch (population) {
        case VehiclePopulationType::BOARDING:
            return state.boarding.traits;
        case VehiclePopulationType::ALIGHTING:
            return state.alighting.traits;
        case VehiclePopulationType::THROUGH:
            return state.through.traits;
    }
    engine::Subject{owner_of(state), "population"}.refuse(
        fmt::format("one of {}", engine::names_of<VehiclePopulationType>()),
        std::to_string(static_cast<int>(population)));
}

engine::PeopleTraits const& traits_of(Vehicle& vehicle, VehiclePopulationType population) {
    return traits_in(state_of<VehicleState>(vehicle), population);
}

template <class Change>
void edit_traits(Vehicle& vehicle, VehiclePopulationType population, Change const& change) {
    edit(vehicle, [&](VehicleState& state) { change(traits_in(state, population)); });
}

void set_scheme(Vehicle& vehicle, VehiclePopulationType population, EventColorSchemeType scheme) {
    edit_traits(vehicle, population, [&](engine::PeopleTraits& traits) {
        traits.color_scheme = scheme;
        traits.color_rules.clear();
    });
}

engine::ColorRule const& rule_at(Vehicle& vehicle, VehiclePopulationType population, int index) {
    auto const& rules = traits_of(vehicle, population).color_rules;
    if (index < 0 || static_cast<std::size_t>(index) >= rules.size()) {
        engine::refuse(fmt::format("{}: there is no colour rule {}, it has {}",
                                   title_of(state_of<VehicleState>(vehicle)), index, rules.size()));
    }
    return rules[static_cast<std::size_t>(index)];
}

}  // namespace

GlobalId Vehicle::GetProfile(VehiclePopulationType population) {
    return traits_of(*this, population).profile.value_or(GlobalId::INVALID);
}
void Vehicle::SetProfile(VehiclePopulationType population, GlobalId const& profile) {
    edit_traits(*this, population, [&](engine::PeopleTraits& traits) {
        traits.profile = profile.IsValid() ? std::optional(profile) : std::nullopt;
    });
}
bool Vehicle::HasInitialAction(VehiclePopulationType population) {
    return traits_of(*this, population).initial_action != nullptr;
}
std::shared_ptr<AgentAction> Vehicle::GetInitialActionCopy(VehiclePopulationType population) {
    return copy_of(traits_of(*this, population).initial_action);
}
void Vehicle::SetInitialAction(VehiclePopulationType population, std::shared_ptr<AgentAction> const& action) {
    edit_traits(*this, population, [&](engine::PeopleTraits& traits) { traits.initial_action = copy_of(action); });
}

EventColorSchemeType Vehicle::GetColorSchemeType(VehiclePopulationType population) {
    return traits_of(*this, population).color_scheme;
}
void Vehicle::SetColorSchemeEventColor(VehiclePopulationType population) {
    set_scheme(*this, population, EventColorSchemeType::EVENT_COLOR);
}
void Vehicle::SetColorSchemeLighter(VehiclePopulationType population) {
    set_scheme(*this, population, EventColorSchemeType::LIGHTER);
}
void Vehicle::SetColorSchemeDarker(VehiclePopulationType population) {
    set_scheme(*this, population, EventColorSchemeType::DARKER);
}
void Vehicle::SetColorSchemeSpecified(VehiclePopulationType population, Color color) {
    edit_traits(*this, population, [&](engine::PeopleTraits& traits) {
        traits.color_scheme = EventColorSchemeType::SPECIFIED;
        traits.color = color;
        traits.color_rules.clear();
    });
}
Color Vehicle::GetColorSchemeColor(VehiclePopulationType population) {
    auto const& traits = traits_of(*this, population);
    return engine::scheme_color(traits.color_scheme, state_->color, traits.color);
}
void Vehicle::SetColorSchemeRules(VehiclePopulationType population,
                                  std::vector<std::shared_ptr<AgentTest>> const& tests,
                                  std::vector<Color> const& colors, Color fallback) {
    engine::require_equal_lengths(title_of(*state_) + ": colour rules' tests", tests.size(), "colours", colors.size());
    std::vector<engine::ColorRule> rules;
    for (std::size_t index = 0; index < tests.size(); ++index) rules.push_back({copy_of(tests[index]), colors[index]});
    edit_traits(*this, population, [&](engine::PeopleTraits& traits) {
        traits.color_scheme = EventColorSchemeType::RULES;
        traits.color = fallback;
        traits.color_rules = rules;
    });
}
int Vehicle::GetColorSchemeRuleCount(VehiclePopulationType population) {
    return static_cast<int>(traits_of(*this, population).color_rules.size());
}
std::shared_ptr<AgentTest> Vehicle::GetColorSchemeRuleAgentTest(VehiclePopulationType population, int index) {
    return copy_of(rule_at(*this, population, index).test);
}
Color Vehicle::GetColorSchemeRuleColor(VehiclePopulationType population, int index) {
    return rule_at(*this, population, index).color;
}

}  // namespace pedflux
