#include "engine/base/list_checks.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/node_handles.h"

#include <pedflux/distributions.h>
#include <pedflux/exception.h>

namespace pedflux {

using engine::require_finite;
using engine::require_positive;

Distribution::Distribution(std::unique_ptr<State> state) : state_(std::move(state)) {}
Distribution::~Distribution() = default;

double Distribution::GetMin() { return engine::minimum(state_->spec); }
double Distribution::GetMax() { return engine::maximum(state_->spec); }
double Distribution::GetMean() { return engine::mean(state_->spec); }
bool Distribution::IsValid() { return engine::is_valid(state_->spec); }
DistributionType Distribution::GetDistributionType() {
    return std::visit([]<class Kind>(Kind const&) { return Kind::TYPE; }, state_->spec);
}

std::shared_ptr<DiscreteDistribution> Distribution::CreateDiscrete(std::vector<double> const& values,
                                                                   std::vector<double> const& weights) {
    return std::make_shared<DiscreteDistribution>(values, weights);
}

// How parameters are read and set: a getter for all but the bounds, and a setter that stores what passes the check.

#define PARAMETER_SETTER(Class, Name, member, check)                         \
    void Class##Distribution::Set##Name(double member) {                     \
        auto const checked = check(#Class "Distribution: " #member, member); \
        std::get<engine::Class##Spec>(state_->spec).member = checked;        \
    }
#define PARAMETER_GETTER(Class, Name, member) \
    double Class##Distribution::Get##Name() const { return std::get<engine::Class##Spec>(state_->spec).member; }
#define PEDFLUX_ACCESS_BOUND(Class, Type, Name, member) PARAMETER_SETTER(Class, Name, member, require_finite)
#define PEDFLUX_ACCESS_NUMBER(Class, Type, Name, member) \
    PARAMETER_GETTER(Class, Name, member)                \
    PARAMETER_SETTER(Class, Name, member, require_finite)
#define PEDFLUX_ACCESS_POSITIVE(Class, Type, Name, member) \
    PARAMETER_GETTER(Class, Name, member)                  \
    PARAMETER_SETTER(Class, Name, member, require_positive)

#define ARGUMENT(context, property) ARGUMENT_OF property
#define ARGUMENT_OF(access, Type, Name, member, ...) member
#define SET(context, property) SET_OF property
#define SET_OF(access, Type, Name, member, ...) Set##Name(member);

// The constructors run through the setters, so that a value is checked in one place.
#define DISTRIBUTION(Kind, type, ...)                                                                       \
    Kind##Distribution::Kind##Distribution(PEDFLUX_COMMAS(PEDFLUX_PARAMETER, , __VA_ARGS__))                \
        : Distribution(std::make_unique<State>(State{engine::Kind##Spec{}})){PEDFLUX_FOR_EACH(              \
              SET, , __VA_ARGS__)} PEDFLUX_ACCESSORS(Kind, __VA_ARGS__) std::shared_ptr<Kind##Distribution> \
              Distribution::Create##Kind(PEDFLUX_COMMAS(PEDFLUX_PARAMETER, , __VA_ARGS__)) {                \
        return std::make_shared<Kind##Distribution>(PEDFLUX_COMMAS(ARGUMENT, , __VA_ARGS__));               \
    }
#define DISTRIBUTION_OF_ITS_OWN(...)
#include "engine/behaviour/distributions/distribution_table.def"

double ExponentialDistribution::GetScale() const { return 1 / GetRate(); }
void ExponentialDistribution::SetScale(double scale) {
    require_positive("ExponentialDistribution: scale", scale);
    SetRate(1 / scale);
}

DiscreteDistribution::DiscreteDistribution(std::vector<double> const& values, std::vector<double> const& weights)
    : Distribution(std::make_unique<State>(State{engine::DiscreteSpec{}})) {
    SetValuesAndWeights(values, weights);
}
std::vector<double> DiscreteDistribution::GetValues() { return std::get<engine::DiscreteSpec>(state_->spec).values; }
std::vector<double> DiscreteDistribution::GetWeights() { return std::get<engine::DiscreteSpec>(state_->spec).weights; }
void DiscreteDistribution::SetValuesAndWeights(std::vector<double> const& values, std::vector<double> const& weights) {
    engine::require_equal_lengths("DiscreteDistribution: values", values.size(), "weights", weights.size());
    engine::require_all_finite("DiscreteDistribution: value", values);
    engine::require_none_negative("DiscreteDistribution: weight", weights);
    state_->spec = engine::DiscreteSpec{values, weights};
}

namespace engine {
namespace {

#define STORED(context, property) STORED_OF property
#define STORED_OF(access, Type, Name, member, ...) spec.member
#define DISTRIBUTION(Kind, type, ...)                                             \
    std::shared_ptr<Distribution> make(Kind##Spec const& spec) {                  \
        return Distribution::Create##Kind(PEDFLUX_COMMAS(STORED, , __VA_ARGS__)); \
    }
#define DISTRIBUTION_OF_ITS_OWN(...)
#include "engine/behaviour/distributions/distribution_table.def"
std::shared_ptr<Distribution> make(DiscreteSpec const& spec) {
    return Distribution::CreateDiscrete(spec.values, spec.weights);
}

}  // namespace

std::shared_ptr<Distribution> make_distribution(DistributionSpec const& spec) {
    return std::visit([](auto const& kind) { return make(kind); }, spec);
}

double sample(Distribution const& distribution, Random& random) {
    require_valid(spec_of(distribution));
    return sample(spec_of(distribution), random);
}

}  // namespace engine
}  // namespace pedflux
