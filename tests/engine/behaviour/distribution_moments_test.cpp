#include "engine/base/random.h"
#include "engine/behaviour/distributions/distribution_handle.h"

#include <pedflux/distributions.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

struct Moments {
    double mean = 0;
    double deviation = 0;  ///< standard deviation
};

using Function = std::function<double(double)>;

/// A law as weights over a parameter t: the value is x(t), and its density over t is proportional to exp(log_weight).
struct Weighted {
    double from;
    double to;
    Function log_weight;
    Function x = [](double t) { return t; };
};

/// By Simpson's rule, with the heaviest weight taken as 1 and values measured from the middle, so that neither far
/// tails nor narrow intervals cancel. Uses none of the formulas under test.
Moments moments_of(Weighted const& spec) {
    constexpr int steps = 200000;
    auto const at = [&](int k) { return spec.from + (spec.to - spec.from) * k / steps; };
    double heaviest = -std::numeric_limits<double>::infinity();
    for (int k = 0; k <= steps; ++k) heaviest = std::max(heaviest, spec.log_weight(at(k)));
    auto const integral_of = [&](Function const& function) {
        double sum = 0;
        for (int k = 0; k <= steps; ++k) {
            int const factor = k == 0 || k == steps ? 1 : (k % 2 == 1 ? 4 : 2);
            sum += factor * function(spec.x(at(k))) * std::exp(spec.log_weight(at(k)) - heaviest);
        }
        return sum;
    };
    double const origin = spec.x(at(steps / 2));
    double const mass = integral_of([](double) { return 1; });
    double const mean = integral_of([&](double x) { return x - origin; }) / mass;
    double const square = integral_of([&](double x) { return (x - origin - mean) * (x - origin - mean); }) / mass;
    return {origin + mean, std::sqrt(square)};
}

struct Subject {
    std::string name;
    std::shared_ptr<Distribution> spec;
    Moments expected;
};

std::string text(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%g", value);
    return digits;
}

Subject uniform(double min, double max) {
    return {"uniform " + text(min) + " to " + text(max), Distribution::CreateUniform(min, max),
            moments_of({min, max, [](double) { return 0; }})};
}

Subject triangular(double min, double mode, double max) {
    auto const log_weight = [=](double x) {
        return std::log(x < mode || mode == max ? (x - min) / (mode - min) : (max - x) / (max - mode));
    };
    return {"triangular " + text(min) + ", " + text(mode) + ", " + text(max),
            Distribution::CreateTriangular(min, mode, max), moments_of({min, max, log_weight})};
}

/// Beyond `to` the law has no weight worth counting.
Subject normal(double mu, double sigma, double min, double max, double to) {
    auto const log_weight = [=](double x) { return -0.5 * (x - mu) * (x - mu) / (sigma * sigma); };
    return {"normal " + text(mu) + ", " + text(sigma) + " in " + text(min) + " to " + text(max),
            Distribution::CreateNormal(mu, sigma, min, max), moments_of({min, to, log_weight})};
}
Subject normal(double mu, double sigma, double min, double max) { return normal(mu, sigma, min, max, max); }

Subject log_normal(double mu, double sigma, double shift, double max) {
    double const bound = std::log(max - shift);
    auto const log_weight = [=](double t) { return -0.5 * (t - mu) * (t - mu) / (sigma * sigma); };
    return {"log-normal " + text(mu) + ", " + text(sigma) + " from " + text(shift) + " to " + text(max),
            Distribution::CreateLogNormal(mu, sigma, shift, max),
            moments_of({std::min(mu, bound) - 12 * sigma, std::min(bound, mu + 16 * sigma), log_weight,
                        [=](double t) { return shift + std::exp(t); }})};
}

Subject exponential(double rate, double shift, double max) {
    return {"exponential " + text(rate) + " from " + text(shift) + " to " + text(max),
            Distribution::CreateExponential(rate, shift, max),
            moments_of({0, std::min(max - shift, 50 / rate), [=](double t) { return -rate * t; },
                        [=](double t) { return shift + t; }})};
}

Subject discrete(std::vector<double> const& values, std::vector<double> const& weights) {
    double total = 0;
    Moments moments;
    for (double const weight : weights) total += weight;
    for (std::size_t i = 0; i < values.size(); ++i) moments.mean += values[i] * weights[i] / total;
    for (std::size_t i = 0; i < values.size(); ++i) {
        moments.deviation += weights[i] / total * std::pow(values[i] - moments.mean, 2);
    }
    moments.deviation = std::sqrt(moments.deviation);
    return {"discrete, " + std::to_string(values.size()) + " values", Distribution::CreateDiscrete(values, weights),
            moments};
}

std::vector<Subject> subjects() {
    return {{"constant 4.2", Distribution::CreateConstant(4.2), {4.2, 0}},
            uniform(-2, 5),
            uniform(1e6, 1e6 + 0.001),
            triangular(1, 2, 5),
            triangular(0, 4, 4),
            triangular(0, 0, 4),
            normal(1.34, 0.26, 0.5, 2.2),
            normal(0, 1, -0.5, 3),
            normal(0, 1, -0.2, 0.3),
            normal(10, 2, 0, 6),
            normal(0, 1, 2, 2.1),
            normal(0, 1, 8, 20, 12),
            normal(0, 1, -20, -8),
            normal(0, 1, 1000, 2000, 1000.04),
            normal(0, 1, 30, 30.001),
            log_normal(3, 0.5, 5, 200),
            log_normal(3, 0.5, 0, 15),
            log_normal(0, 2, 0, 1000),
            log_normal(0, 1, -1, 1),
            log_normal(50, 1, 0, 1),
            exponential(0.1, 2, 40),
            exponential(0.001, 0, 10),
            exponential(1e6, 3, 5),
            discrete({10, -4, 7}, {1, 0, 3}),
            discrete({0, 1, 2, 60}, {900, 80, 19, 1})};
}

struct Sampled {
    Moments moments;
    double least = std::numeric_limits<double>::infinity();
    double greatest = -least;
    double error_of_mean = 0;
    double error_of_deviation = 0;
};

/// Moments around the expected mean, and their standard errors: that of a variance is √((m₄ - σ⁴) / n).
Sampled sampled(Distribution& spec, double around, int count) {
    Random random(20, 3);
    Sampled found;
    double sums[4] = {};
    for (int k = 0; k < count; ++k) {
        double const value = sample(spec, random);
        found.least = std::min(found.least, value);
        found.greatest = std::max(found.greatest, value);
        double power = 1;
        for (auto& sum : sums) sum += power *= value - around;
    }
    for (auto& sum : sums) sum /= count;
    double const variance = sums[1] - sums[0] * sums[0];
    found.moments = {around + sums[0], std::sqrt(std::max(0.0, variance))};
    found.error_of_mean = std::sqrt(std::max(0.0, variance) / count);
    double const error_of_variance = std::sqrt(std::max(0.0, sums[3] - variance * variance) / count);
    found.error_of_deviation = variance > 0 ? error_of_variance / (2 * found.moments.deviation) : 0;
    return found;
}

// The means that the laws tell, and the standard deviations that follow from their definitions, against a million
// samples each: 4 standard errors, which one of these figures misses by chance for one seed in 300.
TEST(DistributionMoments, AreThoseOfAMillionSamples) {
    constexpr int count = 1000000;
    constexpr double errors = 4;
    std::printf("%-38s %13s %13s %6s %11s %11s %6s %13s %13s\n", "law", "mean", "sampled", "errors", "deviation",
                "sampled", "errors", "least", "greatest");
    for (auto const& [name, spec, expected] : subjects()) {
        double const mean = spec->GetMean();
        auto const found = sampled(*spec, expected.mean, count);
        auto const in_errors = [](double difference, double error) { return error > 0 ? difference / error : 0; };
        std::printf("%-38s %13.8g %13.8g %6.2f %11.6g %11.6g %6.2f %13.8g %13.8g\n", name.c_str(), mean,
                    found.moments.mean, in_errors(found.moments.mean - mean, found.error_of_mean), expected.deviation,
                    found.moments.deviation,
                    in_errors(found.moments.deviation - expected.deviation, found.error_of_deviation), found.least,
                    found.greatest);
        double const rounding = 1e-15 * std::abs(mean);
        EXPECT_NEAR(mean, expected.mean, 1e-9 * expected.deviation + 4 * rounding) << name;
        EXPECT_NEAR(found.moments.mean, mean, errors * found.error_of_mean + rounding) << name;
        EXPECT_NEAR(found.moments.deviation, expected.deviation, errors * found.error_of_deviation + rounding) << name;
        EXPECT_GE(found.least, spec->GetMin()) << name;
        EXPECT_LE(found.greatest, spec->GetMax()) << name;
    }
}

}  // namespace
}  // namespace pedflux::engine
