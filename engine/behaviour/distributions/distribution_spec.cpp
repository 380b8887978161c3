#include "engine/behaviour/distributions/distribution_spec.h"

#include "engine/base/list_checks.h"
#include "engine/behaviour/distributions/bounded_normal.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

// The rule that the parameters break, or nothing.
using Fault = std::optional<std::string>;

Fault ordered(char const* lower_name, double lower, char const* upper_name, double upper) {
    if (lower <= upper) return {};
    return fmt::format("{} is {} and {} is {}; {} must not exceed {}", lower_name, text_of(lower), upper_name,
                       text_of(upper), lower_name, upper_name);
}

Fault fault(ConstantSpec const& /*spec*/) { return {}; }
Fault fault(UniformSpec const& spec) { return ordered("min", spec.min, "max", spec.max); }
Fault fault(TriangularSpec const& spec) {
    auto const below_mode = ordered("min", spec.min, "mode", spec.mode);
    return below_mode ? below_mode : ordered("mode", spec.mode, "max", spec.max);
}
Fault fault(NormalSpec const& spec) { return ordered("min", spec.min, "max", spec.max); }
Fault fault(LogNormalSpec const& spec) { return ordered("shift", spec.shift, "max", spec.max); }
Fault fault(ExponentialSpec const& spec) { return ordered("shift", spec.shift, "max", spec.max); }
Fault fault(DiscreteSpec const& spec) {
    if (std::any_of(spec.weights.begin(), spec.weights.end(), [](double weight) { return weight > 0; })) return {};
    return "it has no value with a weight above 0";
}

double extreme(DiscreteSpec const& spec, bool greatest) {
    std::optional<double> found;
    for (std::size_t index = 0; index < spec.values.size(); ++index) {
        if (spec.weights[index] <= 0) continue;
        auto const value = spec.values[index];
        if (!found || (greatest ? value > *found : value < *found)) found = value;
    }
    if (!found) throw Exception(fmt::format("DiscreteDistribution: {}", *fault(spec)));
    return *found;
}

double lowest(ConstantSpec const& spec) { return spec.value; }
double lowest(UniformSpec const& spec) { return spec.min; }
double lowest(TriangularSpec const& spec) { return spec.min; }
double lowest(NormalSpec const& spec) { return spec.min; }
double lowest(LogNormalSpec const& spec) { return spec.shift; }
double lowest(ExponentialSpec const& spec) { return spec.shift; }
double lowest(DiscreteSpec const& spec) { return extreme(spec, false); }

double highest(ConstantSpec const& spec) { return spec.value; }
double highest(DiscreteSpec const& spec) { return extreme(spec, true); }
template <class BoundedSpec>
double highest(BoundedSpec const& spec) {
    return spec.max;
}

double expected(ConstantSpec const& spec) { return spec.value; }
double expected(UniformSpec const& spec) { return std::midpoint(spec.min, spec.max); }
double expected(TriangularSpec const& spec) { return spec.min / 3 + spec.mode / 3 + spec.max / 3; }

double expected(NormalSpec const& spec) {
    return spec.mu +
           spec.sigma * mean_of_bounded_normal((spec.min - spec.mu) / spec.sigma, (spec.max - spec.mu) / spec.sigma);
}

// With b = (ln(max - shift) - mu) / sigma the bound in units of the underlying normal distribution, the bounded mean is
// shift + exp(mu + sigma²/2) Φ(b - sigma) / Φ(b): Johnson, Kotz and Balakrishnan, "Continuous Univariate
// Distributions", volume 1, second edition (1994), chapter 14. Where the first chance may vanish, φ(b - sigma) = φ(b)
// exp(b sigma - sigma²/2) turns the quotient into one of Mills' ratios.
double expected(LogNormalSpec const& spec) {
    if (spec.shift == spec.max) return spec.max;
    auto const bound = (std::log(spec.max - spec.shift) - spec.mu) / spec.sigma;
    if (bound <= spec.sigma) {
        return spec.shift + (spec.max - spec.shift) * mills_ratio(spec.sigma - bound) * inverse_mills_ratio(bound);
    }
    return spec.shift + std::exp(spec.mu + 0.5 * spec.sigma * spec.sigma) *
                            normal_probability_below(bound - spec.sigma) / normal_probability_below(bound);
}

// With L = max - shift and y = rate L the bounded mean is shift + L (1/y - 1/(e^y - 1)): Johnson, Kotz and
// Balakrishnan, chapter 19. Near y = 0 the two terms cancel; there its Taylor series takes over.
double expected(ExponentialSpec const& spec) {
    auto const length = spec.max - spec.shift;
    auto const decay = spec.rate * length;
    constexpr double series_is_precise_below = 0.05;
    auto const share = decay < series_is_precise_below ? 0.5 - decay / 12 + decay * decay * decay / 720
                                                       : 1 / decay - 1 / std::expm1(decay);
    return spec.shift + length * share;
}

double expected(DiscreteSpec const& spec) {
    auto const total = std::accumulate(spec.weights.begin(), spec.weights.end(), 0.0);
    return std::inner_product(spec.values.begin(), spec.values.end(), spec.weights.begin(), 0.0) / total;
}

double draw(ConstantSpec const& spec, Random& /*random*/) { return spec.value; }
double draw(UniformSpec const& spec, Random& random) { return std::lerp(spec.min, spec.max, random.uniform()); }

double draw(TriangularSpec const& spec, Random& random) {
    auto const width = spec.max - spec.min;
    if (width == 0) return spec.min;
    auto const rank = random.uniform();
    auto const rising = spec.mode - spec.min;
    if (rank * width < rising) return spec.min + std::sqrt(rank * width * rising);
    return spec.max - std::sqrt((1 - rank) * width * (spec.max - spec.mode));
}

double draw(NormalSpec const& spec, Random& random) {
    return spec.mu + spec.sigma * draw_bounded_normal((spec.min - spec.mu) / spec.sigma,
                                                      (spec.max - spec.mu) / spec.sigma, random);
}

double draw(LogNormalSpec const& spec, Random& random) {
    if (spec.shift == spec.max) return spec.max;
    auto const bound = (std::log(spec.max - spec.shift) - spec.mu) / spec.sigma;
    return spec.shift + std::exp(spec.mu + spec.sigma * draw_bounded_normal(-unlimited, bound, random));
}

double draw(ExponentialSpec const& spec, Random& random) {
    auto const share_below_max = -std::expm1(-spec.rate * (spec.max - spec.shift));
    return spec.shift - std::log1p(-random.uniform() * share_below_max) / spec.rate;
}

double draw(DiscreteSpec const& spec, Random& random) { return spec.values[draw_weighted(spec.weights, random)]; }

Fault fault_of(DistributionSpec const& spec) {
    return std::visit([](auto const& kind) { return fault(kind); }, spec);
}

}  // namespace

std::string_view name_of(DistributionSpec const& spec) {
    return std::visit([]<class Kind>(Kind const&) { return Kind::NAME; }, spec);
}

bool is_valid(DistributionSpec const& spec) { return !fault_of(spec); }

void require_valid(DistributionSpec const& spec) {
    if (auto const fault = fault_of(spec)) throw Exception(fmt::format("{}: {}", name_of(spec), *fault));
}

double minimum(DistributionSpec const& spec) {
    return std::visit([](auto const& kind) { return lowest(kind); }, spec);
}

double maximum(DistributionSpec const& spec) {
    return std::visit([](auto const& kind) { return highest(kind); }, spec);
}

double mean(DistributionSpec const& spec) {
    require_valid(spec);
    auto const value = std::visit([](auto const& kind) { return expected(kind); }, spec);
    return std::clamp(value, minimum(spec), maximum(spec));
}

double sample(DistributionSpec const& spec, Random& random) {
    auto const value = std::visit([&random](auto const& kind) { return draw(kind, random); }, spec);
    return std::clamp(value, minimum(spec), maximum(spec));
}

}  // namespace pedflux::engine
