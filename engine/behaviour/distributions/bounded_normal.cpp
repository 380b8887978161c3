#include "engine/behaviour/distributions/bounded_normal.h"

#include <array>
#include <cmath>
#include <numbers>

namespace pedflux::engine {
namespace {

double density(double x) { return std::exp(-0.5 * x * x) * std::numbers::inv_sqrtpi / std::numbers::sqrt2; }

// How much smaller the density is at the upper bound than at the lower one, as a logarithm. Factored, because the
// squares of two close bounds cancel.
double log_density_drop(double lower, double upper) {
    return std::isinf(upper) ? upper : 0.5 * (upper - lower) * (upper + lower);
}

double mean_over_narrow_interval(double lower, double upper) {
    struct Node {
        double position;
        double weight;
    };
    constexpr std::array<Node, 4> nodes{{{0.1834346424956498, 0.3626837833783620},
                                         {0.5255324099163290, 0.3137066458778873},
                                         {0.7966664774136267, 0.2223810344533745},
                                         {0.9602898564975363, 0.1012285362903763}}};
    auto const middle = 0.5 * (lower + upper);
    auto const half = 0.5 * (upper - lower);
    double mass = 0;
    double moment = 0;
    for (auto const& node : nodes) {
        for (auto const offset : {-half * node.position, half * node.position}) {
            auto const share = node.weight * std::exp(-offset * (middle + 0.5 * offset));
            mass += share;
            moment += share * offset;
        }
    }
    return middle + moment / mass;
}

double mean_in_upper_tail(double lower, double upper) {
    auto const drop = log_density_drop(lower, upper);
    if (drop < 1) return mean_over_narrow_interval(lower, upper);
    auto const beyond = std::isinf(upper) ? 0.0 : std::exp(-drop) * mills_ratio(upper);
    return -std::expm1(-drop) / (mills_ratio(lower) - beyond);
}

// Marsaglia's polar method: one normal variable of every accepted point of the disc.
double draw_normal(Random& random) {
    for (;;) {
        auto const x = 2 * random.uniform() - 1;
        auto const y = 2 * random.uniform() - 1;
        auto const square = x * x + y * y;
        if (square < 1 && square > 0) return x * std::sqrt(-2 * std::log(square) / square);
    }
}

double draw_around_zero(double lower, double upper, Random& random) {
    auto const width_of_equal_chance = std::sqrt(2 * std::numbers::pi);
    if (upper - lower > width_of_equal_chance) {
        for (;;) {
            auto const candidate = draw_normal(random);
            if (lower <= candidate && candidate <= upper) return candidate;
        }
    }
    for (;;) {
        auto const candidate = std::lerp(lower, upper, random.uniform());
        if (random.uniform() <= std::exp(-0.5 * candidate * candidate)) return candidate;
    }
}

double draw_in_upper_tail(double lower, double upper, Random& random) {
    if (log_density_drop(lower, upper) < 1) {
        for (;;) {
            auto const candidate = std::lerp(lower, upper, random.uniform());
            if (random.uniform() <= std::exp(-log_density_drop(lower, candidate))) return candidate;
        }
    }
    auto const rate = 0.5 * (lower + std::sqrt(lower * lower + 4));
    for (;;) {
        auto const candidate = lower - std::log(random.uniform()) / rate;
        auto const miss = candidate - rate;
        if (candidate <= upper && random.uniform() <= std::exp(-0.5 * miss * miss)) return candidate;
    }
}

}  // namespace

double normal_probability_below(double x) { return 0.5 * std::erfc(-x / std::numbers::sqrt2); }

double mills_ratio(double x) {
    constexpr double erfc_is_precise_below = 5;
    if (x < erfc_is_precise_below) return normal_probability_below(-x) / density(x);
    // Laplace's continued fraction 1/(x + 1/(x + 2/(x + 3/…))), from the innermost term outwards.
    double denominator = x;
    for (int term = 60; term > 0; --term) denominator = x + term / denominator;
    return 1 / denominator;
}

double inverse_mills_ratio(double x) { return x < 0 ? 1 / mills_ratio(-x) : density(x) / normal_probability_below(x); }

double mean_of_bounded_normal(double lower, double upper) {
    if (lower + upper < 0) return -mean_of_bounded_normal(-upper, -lower);
    if (lower > 0) return mean_in_upper_tail(lower, upper);
    if (std::isinf(lower)) return 0;
    if (lower == upper) return lower;
    auto const mass = 0.5 * (std::erf(upper / std::numbers::sqrt2) - std::erf(lower / std::numbers::sqrt2));
    return -density(lower) * std::expm1(-log_density_drop(lower, upper)) / mass;
}

double draw_bounded_normal(double lower, double upper, Random& random) {
    if (lower == upper) return lower;
    if (lower > 0) return draw_in_upper_tail(lower, upper, random);
    if (upper < 0) return -draw_in_upper_tail(-upper, -lower, random);
    return draw_around_zero(lower, upper, random);
}

}  // namespace pedflux::engine
