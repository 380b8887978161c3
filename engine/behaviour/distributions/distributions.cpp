#include "engine/base/list_checks.h"
#include "engine/behaviour/distributions/distribution_handle.h"

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
DistributionType Distribution::GetDistributionType() { return static_cast<DistributionType>(state_->spec.index()); }

std::shared_ptr<ConstantDistribution> Distribution::CreateConstant(double value) {
    return std::make_shared<ConstantDistribution>(value);
}
std::shared_ptr<UniformDistribution> Distribution::CreateUniform(double min, double max) {
    return std::make_shared<UniformDistribution>(min, max);
}
std::shared_ptr<TriangularDistribution> Distribution::CreateTriangular(double min, double mode, double max) {
    return std::make_shared<TriangularDistribution>(min, mode, max);
}
std::shared_ptr<NormalDistribution> Distribution::CreateNormal(double mu, double sigma, double min, double max) {
    return std::make_shared<NormalDistribution>(mu, sigma, min, max);
}
std::shared_ptr<LogNormalDistribution> Distribution::CreateLogNormal(double mu, double sigma, double shift,
                                                                     double max) {
    return std::make_shared<LogNormalDistribution>(mu, sigma, shift, max);
}
std::shared_ptr<ExponentialDistribution> Distribution::CreateExponential(double rate, double shift, double max) {
    return std::make_shared<ExponentialDistribution>(rate, shift, max);
}
std::shared_ptr<DiscreteDistribution> Distribution::CreateDiscrete(std::vector<double> const& values,
                                                                   std::vector<double> const& weights) {
    return std::make_shared<DiscreteDistribution>(values, weights);
}

// PARAMETER(Class, Setter, field, check): a setter that stores what passes the check. The law's type follows from the
// class: ConstantDistribution keeps a ConstantSpec.
#define PARAMETER(Kind, Setter, field, check)                             \
    void Kind##Distribution::Setter(double field) {                       \
        auto const checked = check(#Kind "Distribution: " #field, field); \
        std::get<engine::Kind##Spec>(state_->spec).field = checked;       \
    }
#define GETTER(Kind, Getter, field) \
    double Kind##Distribution::Getter() const { return std::get<engine::Kind##Spec>(state_->spec).field; }

// The constructors run through the setters, so a value is judged in one place.
ConstantDistribution::ConstantDistribution(double value)
    : Distribution(std::make_unique<State>(State{engine::ConstantSpec{}})) {
    SetValue(value);
}
GETTER(Constant, GetValue, value)
PARAMETER(Constant, SetValue, value, require_finite)

UniformDistribution::UniformDistribution(double min, double max)
    : Distribution(std::make_unique<State>(State{engine::UniformSpec{}})) {
    SetMin(min);
    SetMax(max);
}
PARAMETER(Uniform, SetMin, min, require_finite)
PARAMETER(Uniform, SetMax, max, require_finite)

TriangularDistribution::TriangularDistribution(double min, double mode, double max)
    : Distribution(std::make_unique<State>(State{engine::TriangularSpec{}})) {
    SetMin(min);
    SetMode(mode);
    SetMax(max);
}
GETTER(Triangular, GetMode, mode)
PARAMETER(Triangular, SetMin, min, require_finite)
PARAMETER(Triangular, SetMode, mode, require_finite)
PARAMETER(Triangular, SetMax, max, require_finite)

NormalDistribution::NormalDistribution(double mu, double sigma, double min, double max)
    : Distribution(std::make_unique<State>(State{engine::NormalSpec{}})) {
    SetMu(mu);
    SetSigma(sigma);
    SetMin(min);
    SetMax(max);
}
GETTER(Normal, GetMu, mu)
GETTER(Normal, GetSigma, sigma)
PARAMETER(Normal, SetMu, mu, require_finite)
PARAMETER(Normal, SetSigma, sigma, require_positive)
PARAMETER(Normal, SetMin, min, require_finite)
PARAMETER(Normal, SetMax, max, require_finite)

LogNormalDistribution::LogNormalDistribution(double mu, double sigma, double shift, double max)
    : Distribution(std::make_unique<State>(State{engine::LogNormalSpec{}})) {
    SetMu(mu);
    SetSigma(sigma);
    SetShift(shift);
    SetMax(max);
}
GETTER(LogNormal, GetMu, mu)
GETTER(LogNormal, GetSigma, sigma)
GETTER(LogNormal, GetShift, shift)
PARAMETER(LogNormal, SetMu, mu, require_finite)
PARAMETER(LogNormal, SetSigma, sigma, require_positive)
PARAMETER(LogNormal, SetShift, shift, require_finite)
PARAMETER(LogNormal, SetMax, max, require_finite)

ExponentialDistribution::ExponentialDistribution(double rate, double shift, double max)
    : Distribution(std::make_unique<State>(State{engine::ExponentialSpec{}})) {
    SetRate(rate);
    SetShift(shift);
    SetMax(max);
}
GETTER(Exponential, GetRate, rate)
GETTER(Exponential, GetShift, shift)
PARAMETER(Exponential, SetRate, rate, require_positive)
PARAMETER(Exponential, SetShift, shift, require_finite)
PARAMETER(Exponential, SetMax, max, require_finite)
double ExponentialDistribution::GetScale() const { return 1 / GetRate(); }
void ExponentialDistribution::SetScale(double scale) {
    require_positive("ExponentialDistribution: scale", scale);
    SetRate(1 / scale);
}

#undef PARAMETER
#undef GETTER

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

std::shared_ptr<Distribution> make(ConstantSpec const& spec) { return Distribution::CreateConstant(spec.value); }
std::shared_ptr<Distribution> make(UniformSpec const& spec) { return Distribution::CreateUniform(spec.min, spec.max); }
std::shared_ptr<Distribution> make(TriangularSpec const& spec) {
    return Distribution::CreateTriangular(spec.min, spec.mode, spec.max);
}
std::shared_ptr<Distribution> make(NormalSpec const& spec) {
    return Distribution::CreateNormal(spec.mu, spec.sigma, spec.min, spec.max);
}
std::shared_ptr<Distribution> make(LogNormalSpec const& spec) {
    return Distribution::CreateLogNormal(spec.mu, spec.sigma, spec.shift, spec.max);
}
std::shared_ptr<Distribution> make(ExponentialSpec const& spec) {
    return Distribution::CreateExponential(spec.rate, spec.shift, spec.max);
}
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
