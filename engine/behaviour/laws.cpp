#include "engine/behaviour/laws.h"

#include "engine/behaviour/bounded_normal.h"
#include "engine/behaviour/checks.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <string>

namespace pedflux::engine {
namespace {

// What a law's parameters break, or nothing.
using Fault = std::optional<std::string>;

Fault ordered(char const* lower_name, double lower, char const* upper_name, double upper) {
    if (lower <= upper) return {};
    return std::string(lower_name) + " is " + text_of(lower) + " and " + upper_name + " is " + text_of(upper) + "; " +
           lower_name + " must not exceed " + upper_name;
}

Fault fault(ConstantLaw const& /*law*/) { return {}; }
Fault fault(UniformLaw const& law) { return ordered("min", law.min, "max", law.max); }
Fault fault(TriangularLaw const& law) {
    auto const below_mode = ordered("min", law.min, "mode", law.mode);
    return below_mode ? below_mode : ordered("mode", law.mode, "max", law.max);
}
Fault fault(NormalLaw const& law) { return ordered("min", law.min, "max", law.max); }
Fault fault(LogNormalLaw const& law) { return ordered("shift", law.shift, "max", law.max); }
Fault fault(ExponentialLaw const& law) { return ordered("shift", law.shift, "max", law.max); }
Fault fault(DiscreteLaw const& law) {
    if (std::any_of(law.weights.begin(), law.weights.end(), [](double weight) { return weight > 0; })) return {};
    return "it has no value with a weight above 0";
}

double extreme(DiscreteLaw const& law, bool greatest) {
    std::optional<double> found;
    for (std::size_t index = 0; index < law.values.size(); ++index) {
        if (law.weights[index] <= 0) continue;
        auto const value = law.values[index];
        if (!found || (greatest ? value > *found : value < *found)) found = value;
    }
    if (!found) throw Exception("DiscreteDistribution: " + *fault(law));
    return *found;
}

double lowest(ConstantLaw const& law) { return law.value; }
double lowest(UniformLaw const& law) { return law.min; }
double lowest(TriangularLaw const& law) { return law.min; }
double lowest(NormalLaw const& law) { return law.min; }
double lowest(LogNormalLaw const& law) { return law.shift; }
double lowest(ExponentialLaw const& law) { return law.shift; }
double lowest(DiscreteLaw const& law) { return extreme(law, false); }

double highest(ConstantLaw const& law) { return law.value; }
double highest(DiscreteLaw const& law) { return extreme(law, true); }
template <class BoundedLaw>
double highest(BoundedLaw const& law) {
    return law.max;
}

double expected(ConstantLaw const& law) { return law.value; }
double expected(UniformLaw const& law) { return std::midpoint(law.min, law.max); }
double expected(TriangularLaw const& law) { return law.min / 3 + law.mode / 3 + law.max / 3; }

double expected(NormalLaw const& law) {
    return law.mu + law.sigma * mean_of_bounded_normal((law.min - law.mu) / law.sigma, (law.max - law.mu) / law.sigma);
}

// With b = (ln(max - shift) - mu) / sigma the bound in units of the underlying normal law, the bounded mean is
// shift + exp(mu + sigma²/2) Φ(b - sigma) / Φ(b): Johnson, Kotz and Balakrishnan, "Continuous Univariate
// Distributions", volume 1, second edition (1994), chapter 14. Where the first chance may vanish, φ(b - sigma) = φ(b)
// exp(b sigma - sigma²/2) turns the quotient into one of Mills' ratios.
double expected(LogNormalLaw const& law) {
    if (law.shift == law.max) return law.max;
    auto const bound = (std::log(law.max - law.shift) - law.mu) / law.sigma;
    if (bound <= law.sigma) {
        return law.shift + (law.max - law.shift) * mills_ratio(law.sigma - bound) * inverse_mills_ratio(bound);
    }
    return law.shift + std::exp(law.mu + 0.5 * law.sigma * law.sigma) * normal_probability_below(bound - law.sigma) /
                           normal_probability_below(bound);
}

// With L = max - shift and y = rate L the bounded mean is shift + L (1/y - 1/(e^y - 1)): Johnson, Kotz and
// Balakrishnan, chapter 19. Near y = 0 the two terms cancel; there its Taylor series takes over.
double expected(ExponentialLaw const& law) {
    auto const length = law.max - law.shift;
    auto const decay = law.rate * length;
    constexpr double series_is_precise_below = 0.05;
    auto const share = decay < series_is_precise_below ? 0.5 - decay / 12 + decay * decay * decay / 720
                                                       : 1 / decay - 1 / std::expm1(decay);
    return law.shift + length * share;
}

double expected(DiscreteLaw const& law) {
    auto const total = std::accumulate(law.weights.begin(), law.weights.end(), 0.0);
    return std::inner_product(law.values.begin(), law.values.end(), law.weights.begin(), 0.0) / total;
}

double draw(ConstantLaw const& law, Random& /*random*/) { return law.value; }
double draw(UniformLaw const& law, Random& random) { return std::lerp(law.min, law.max, random.uniform()); }

double draw(TriangularLaw const& law, Random& random) {
    auto const width = law.max - law.min;
    if (width == 0) return law.min;
    auto const rank = random.uniform();
    auto const rising = law.mode - law.min;
    if (rank * width < rising) return law.min + std::sqrt(rank * width * rising);
    return law.max - std::sqrt((1 - rank) * width * (law.max - law.mode));
}

double draw(NormalLaw const& law, Random& random) {
    return law.mu +
           law.sigma * draw_bounded_normal((law.min - law.mu) / law.sigma, (law.max - law.mu) / law.sigma, random);
}

double draw(LogNormalLaw const& law, Random& random) {
    if (law.shift == law.max) return law.max;
    auto const bound = (std::log(law.max - law.shift) - law.mu) / law.sigma;
    return law.shift + std::exp(law.mu + law.sigma * draw_bounded_normal(-WITHOUT_END, bound, random));
}

double draw(ExponentialLaw const& law, Random& random) {
    auto const share_below_max = -std::expm1(-law.rate * (law.max - law.shift));
    return law.shift - std::log1p(-random.uniform() * share_below_max) / law.rate;
}

double draw(DiscreteLaw const& law, Random& random) { return law.values[draw_weighted(law.weights, random)]; }

Fault fault_of(Law const& law) {
    return std::visit([](auto const& kind) { return fault(kind); }, law);
}

}  // namespace

std::string_view name_of(Law const& law) {
    return std::visit([]<class Kind>(Kind const&) { return Kind::NAME; }, law);
}

bool is_valid(Law const& law) { return !fault_of(law); }

void require_valid(Law const& law) {
    if (auto const fault = fault_of(law)) throw Exception(std::string(name_of(law)) + ": " + *fault);
}

double minimum(Law const& law) {
    return std::visit([](auto const& kind) { return lowest(kind); }, law);
}

double maximum(Law const& law) {
    return std::visit([](auto const& kind) { return highest(kind); }, law);
}

double mean(Law const& law) {
    require_valid(law);
    auto const value = std::visit([](auto const& kind) { return expected(kind); }, law);
    return std::clamp(value, minimum(law), maximum(law));
}

double sample(Law const& law, Random& random) {
    auto const value = std::visit([&random](auto const& kind) { return draw(kind, random); }, law);
    return std::clamp(value, minimum(law), maximum(law));
}

}  // namespace pedflux::engine
