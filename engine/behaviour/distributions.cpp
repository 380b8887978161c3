#include "engine/behaviour/checks.h"
#include "engine/behaviour/distribution_face.h"

#include <pedflux/distributions.h>
#include <pedflux/exception.h>

namespace pedflux {

using engine::require_finite;
using engine::require_positive;

Distribution::Distribution(std::unique_ptr<State> state) : state_(std::move(state)) {}
Distribution::~Distribution() = default;

double Distribution::GetMin() { return engine::minimum(state_->law); }
double Distribution::GetMax() { return engine::maximum(state_->law); }
double Distribution::GetMean() { return engine::mean(state_->law); }
bool Distribution::IsValid() { return engine::is_valid(state_->law); }
DistributionType Distribution::GetDistributionType() { return static_cast<DistributionType>(state_->law.index()); }

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
// class: ConstantDistribution keeps a ConstantLaw.
#define PARAMETER(Kind, Setter, field, check)                             \
    void Kind##Distribution::Setter(double field) {                       \
        auto const checked = check(#Kind "Distribution: " #field, field); \
        std::get<engine::Kind##Law>(state_->law).field = checked;         \
    }
#define GETTER(Kind, Getter, field) \
    double Kind##Distribution::Getter() const { return std::get<engine::Kind##Law>(state_->law).field; }

// The constructors run through the setters, so a value is judged in one place.
ConstantDistribution::ConstantDistribution(double value)
    : Distribution(std::make_unique<State>(State{engine::ConstantLaw{}})) {
    SetValue(value);
}
GETTER(Constant, GetValue, value)
PARAMETER(Constant, SetValue, value, require_finite)

UniformDistribution::UniformDistribution(double min, double max)
    : Distribution(std::make_unique<State>(State{engine::UniformLaw{}})) {
    SetMin(min);
    SetMax(max);
}
PARAMETER(Uniform, SetMin, min, require_finite)
PARAMETER(Uniform, SetMax, max, require_finite)

TriangularDistribution::TriangularDistribution(double min, double mode, double max)
    : Distribution(std::make_unique<State>(State{engine::TriangularLaw{}})) {
    SetMin(min);
    SetMode(mode);
    SetMax(max);
}
GETTER(Triangular, GetMode, mode)
PARAMETER(Triangular, SetMin, min, require_finite)
PARAMETER(Triangular, SetMode, mode, require_finite)
PARAMETER(Triangular, SetMax, max, require_finite)

NormalDistribution::NormalDistribution(double mu, double sigma, double min, double max)
    : Distribution(std::make_unique<State>(State{engine::NormalLaw{}})) {
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
    : Distribution(std::make_unique<State>(State{engine::LogNormalLaw{}})) {
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
    : Distribution(std::make_unique<State>(State{engine::ExponentialLaw{}})) {
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
    : Distribution(std::make_unique<State>(State{engine::DiscreteLaw{}})) {
    SetValuesAndWeights(values, weights);
}
std::vector<double> DiscreteDistribution::GetValues() { return std::get<engine::DiscreteLaw>(state_->law).values; }
std::vector<double> DiscreteDistribution::GetWeights() { return std::get<engine::DiscreteLaw>(state_->law).weights; }
void DiscreteDistribution::SetValuesAndWeights(std::vector<double> const& values, std::vector<double> const& weights) {
    engine::require_equal_lengths("DiscreteDistribution: values", values.size(), "weights", weights.size());
    engine::require_all_finite("DiscreteDistribution: value", values);
    engine::require_none_negative("DiscreteDistribution: weight", weights);
    state_->law = engine::DiscreteLaw{values, weights};
}

namespace engine {
namespace {

std::shared_ptr<Distribution> make(ConstantLaw const& law) { return Distribution::CreateConstant(law.value); }
std::shared_ptr<Distribution> make(UniformLaw const& law) { return Distribution::CreateUniform(law.min, law.max); }
std::shared_ptr<Distribution> make(TriangularLaw const& law) {
    return Distribution::CreateTriangular(law.min, law.mode, law.max);
}
std::shared_ptr<Distribution> make(NormalLaw const& law) {
    return Distribution::CreateNormal(law.mu, law.sigma, law.min, law.max);
}
std::shared_ptr<Distribution> make(LogNormalLaw const& law) {
    return Distribution::CreateLogNormal(law.mu, law.sigma, law.shift, law.max);
}
std::shared_ptr<Distribution> make(ExponentialLaw const& law) {
    return Distribution::CreateExponential(law.rate, law.shift, law.max);
}
std::shared_ptr<Distribution> make(DiscreteLaw const& law) {
    return Distribution::CreateDiscrete(law.values, law.weights);
}

}  // namespace

std::shared_ptr<Distribution> make_distribution(Law const& law) {
    return std::visit([](auto const& kind) { return make(kind); }, law);
}

double sample(Distribution const& distribution, Random& random) {
    require_valid(law_of(distribution));
    return sample(law_of(distribution), random);
}

}  // namespace engine
}  // namespace pedflux
