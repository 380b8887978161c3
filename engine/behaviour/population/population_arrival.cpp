#include "engine/base/list_checks.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/population/pairs.h"
#include "engine/behaviour/population/population_handle.h"

#include <pedflux/exception.h>
#include <pedflux/population_sources.h>

#include <algorithm>
#include <utility>

namespace pedflux {

PopulationArrival::PopulationArrival(std::unique_ptr<State> state) : state_(std::move(state)) {}
PopulationArrival::~PopulationArrival() = default;

std::shared_ptr<PopulationArrival> engine::PopulationAccess::make(Arrival arrival) {
    require_valid(arrival);
    auto state = std::make_unique<PopulationArrival::State>(PopulationArrival::State{std::move(arrival)});
    return std::shared_ptr<PopulationArrival>(new PopulationArrival(std::move(state)));
}

std::shared_ptr<PopulationArrival> PopulationArrival::CreateInstant() {
    return engine::PopulationAccess::make(engine::InstantArrival{});
}

std::shared_ptr<PopulationArrival> PopulationArrival::CreateEvenlySpaced(int seconds) {
    return engine::PopulationAccess::make(engine::EvenArrival{seconds});
}

std::shared_ptr<PopulationArrival> PopulationArrival::CreateRandomDistribution(
    std::shared_ptr<Distribution> const& delay) {
    if (!delay) engine::refuse("PopulationArrival: the distribution is empty; it must be given");
    return engine::PopulationAccess::make(engine::RandomArrival{engine::spec_of(*delay)});
}

std::shared_ptr<PopulationArrival> PopulationArrival::CreateWeightedCurve(
    std::vector<DurationValuePair> const& periods) {
    return engine::PopulationAccess::make(engine::CurveArrival{engine::periods_of(periods)});
}

PopulationArrivalTypeId PopulationArrival::GetPopulationArrivalTypeId() {
    return static_cast<PopulationArrivalTypeId>(state_->arrival.index());
}

int PopulationArrival::GetPopulationArrivalDurationInSeconds() const { return engine::duration_of(state_->arrival); }

std::shared_ptr<Distribution> PopulationArrival::GetDistribution() {
    auto const* const random = std::get_if<engine::RandomArrival>(&state_->arrival);
    return random ? engine::make_distribution(random->delay) : nullptr;
}

std::vector<DurationValuePair> PopulationArrival::GetWeightedCurvePairs() {
    auto const* const curve = std::get_if<engine::CurveArrival>(&state_->arrival);
    return curve ? engine::pairs_of(curve->periods) : std::vector<DurationValuePair>();
}

}  // namespace pedflux
