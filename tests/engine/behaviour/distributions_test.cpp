#include "engine/behaviour/distributions/bounded_normal.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/codec.h"
#include "engine/model/properties.h"
#include "tests/engine/refusal.h"

#include <pedflux/distributions.h>
#include <pedflux/exception.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Function = std::function<double(double)>;

double below(double x) { return normal_probability_below(x); }

// A continuous law with its distribution function before truncation, which tells everything about the truncated one.
struct Continuous {
    char const* name;
    std::shared_ptr<Distribution> distribution;
    Function untruncated;
};

std::vector<Continuous> continuous_laws() {
    auto const normal = [](double mu, double sigma) { return [=](double x) { return below((x - mu) / sigma); }; };
    auto const log_normal = [](double mu, double sigma, double shift) {
        return [=](double x) { return x <= shift ? 0 : below((std::log(x - shift) - mu) / sigma); };
    };
    auto const exponential = [](double rate, double shift) {
        return [=](double x) { return -std::expm1(-rate * (x - shift)); };
    };
    auto const triangular = [](double min, double mode, double max) {
        return [=](double x) {
            return x <= mode ? (x - min) * (x - min) / ((max - min) * (mode - min))
                             : 1 - (max - x) * (max - x) / ((max - min) * (max - mode));
        };
    };
    return {
        {"uniform", Distribution::CreateUniform(-2, 5), [](double x) { return (x + 2) / 7; }},
        {"triangular", Distribution::CreateTriangular(1, 2, 5), triangular(1, 2, 5)},
        {"triangle without a falling side", Distribution::CreateTriangular(0, 4, 4), triangular(0, 4, 4)},
        {"normal, loosely bounded", Distribution::CreateNormal(1.34, 0.26, 0.5, 2.2), normal(1.34, 0.26)},
        {"normal, asymmetric", Distribution::CreateNormal(0, 1, -0.5, 3), normal(0, 1)},
        {"normal, narrow around the mean", Distribution::CreateNormal(0, 1, -0.2, 0.3), normal(0, 1)},
        {"normal, upper tail", Distribution::CreateNormal(0, 1, 2, 4), normal(0, 1)},
        {"normal, narrow in the tail", Distribution::CreateNormal(0, 1, 2, 2.1), normal(0, 1)},
        {"normal, lower tail", Distribution::CreateNormal(10, 2, 0, 6), normal(10, 2)},
        {"log-normal, loosely bounded", Distribution::CreateLogNormal(3, 0.5, 5, 200), log_normal(3, 0.5, 5)},
        {"log-normal, bound below the median", Distribution::CreateLogNormal(3, 0.5, 0, 15), log_normal(3, 0.5, 0)},
        {"log-normal, bound above the median", Distribution::CreateLogNormal(0, 1, -1, 1), log_normal(0, 1, -1)},
        {"exponential", Distribution::CreateExponential(0.1, 2, 40), exponential(0.1, 2)},
        {"exponential, almost even", Distribution::CreateExponential(0.001, 0, 10), exponential(0.001, 0)},
    };
}

// E[X] = max - ∫ F over the bounds, with F the truncated distribution function; by Simpson's rule.
double mean_by_quadrature(Continuous const& spec) {
    auto const min = spec.distribution->GetMin();
    auto const max = spec.distribution->GetMax();
    auto const base = spec.untruncated(min);
    auto const mass = spec.untruncated(max) - base;
    constexpr int steps = 200000;
    auto const width = (max - min) / steps;
    double integral = 0;
    for (int k = 0; k <= steps; ++k) {
        auto const factor = k == 0 || k == steps ? 1 : (k % 2 == 1 ? 4 : 2);
        integral += factor * (spec.untruncated(min + k * width) - base) / mass;
    }
    return max - integral * width / 3;
}

TEST(Distributions, MeansAreThoseOfTheBoundedLaws) {
    for (auto const& spec : continuous_laws()) {
        auto const expected = mean_by_quadrature(spec);
        EXPECT_NEAR(spec.distribution->GetMean(), expected, 1e-7 * std::max(1.0, std::abs(expected))) << spec.name;
    }
}

TEST(Distributions, SamplesFollowTheLawAndItsMean) {
    constexpr int count = 20000;
    for (auto const& spec : continuous_laws()) {
        Random random(7, 1);
        std::vector<double> values(count);
        std::generate(values.begin(), values.end(), [&] { return sample(*spec.distribution, random); });
        std::sort(values.begin(), values.end());
        ASSERT_GE(values.front(), spec.distribution->GetMin()) << spec.name;
        ASSERT_LE(values.back(), spec.distribution->GetMax()) << spec.name;

        auto const base = spec.untruncated(spec.distribution->GetMin());
        auto const mass = spec.untruncated(spec.distribution->GetMax()) - base;
        double greatest_gap = 0;  // Kolmogorov and Smirnov's
        double sum = 0;
        double squares = 0;
        for (int k = 0; k < count; ++k) {
            auto const value = values[static_cast<std::size_t>(k)];
            auto const chance = (spec.untruncated(value) - base) / mass;
            greatest_gap = std::max(
                {greatest_gap, chance - static_cast<double>(k) / count, static_cast<double>(k + 1) / count - chance});
            sum += value;
            squares += value * value;
        }
        constexpr double gap_of_one_chance_in_a_thousand = 1.95;
        EXPECT_LT(greatest_gap * std::sqrt(count), gap_of_one_chance_in_a_thousand) << spec.name;
        auto const mean = sum / count;
        auto const standard_error = std::sqrt((squares / count - mean * mean) / count);
        EXPECT_NEAR(mean, spec.distribution->GetMean(), 3.5 * standard_error) << spec.name;
    }
}

// Where the straightforward formulas are 0 / 0, the means are still exact; the references follow from the asymptotic
// series of Mills' ratio and from the even law that remains over a narrow interval.
TEST(Distributions, MeansStayExactWhereChancesVanish) {
    struct Case {
        double mean;
        double expected;
        double tolerance;
    };
    auto const a = 1000.0;
    Case const cases[]{
        {Distribution::CreateNormal(0, 1, a, 2 * a)->GetMean(), a + 1 / a - 2 / (a * a * a), 1e-12},
        {Distribution::CreateNormal(0, 1, -2 * a, -a)->GetMean(), -(a + 1 / a - 2 / (a * a * a)), 1e-12},
        {Distribution::CreateNormal(0, 1, 30, 30 + 1e-9)->GetMean(), 30 + 0.5e-9, 1e-14},
        {Distribution::CreateNormal(0, 1e6, -1, 3)->GetMean(), 1, 1e-9},
        {Distribution::CreateLogNormal(0, 1, 0, std::exp(-a))->GetMean(), 0, 1e-300},
        {Distribution::CreateLogNormal(50, 1, 0, 1)->GetMean(), mills_ratio(51) / mills_ratio(50), 1e-14},
        {Distribution::CreateExponential(1e-12, 3, 5)->GetMean(), 4, 1e-9},
        {Distribution::CreateExponential(1e6, 3, 5)->GetMean(), 3 + 1e-6, 1e-14},
        {mills_ratio(4.9999999), mills_ratio(5.0000001), 1e-7},
        {mills_ratio(1e8), 1e-8, 1e-20},
        {Distribution::CreateNormal(2, 1, 7, 7)->GetMean(), 7, 0},
        {Distribution::CreateLogNormal(2, 1, 7, 7)->GetMean(), 7, 0},
        {Distribution::CreateExponential(2, 7, 7)->GetMean(), 7, 0},
        {Distribution::CreateTriangular(7, 7, 7)->GetMean(), 7, 1e-14},
        {Distribution::CreateDiscrete({1, 5, 100}, {3, 1, 0})->GetMean(), 2, 1e-15},
    };
    for (auto const& each : cases) EXPECT_NEAR(each.mean, each.expected, each.tolerance);
}

// Bounds far out in a tail would starve a sampler that only throws away what is out of bounds.
TEST(Distributions, SamplingReachesEveryTail) {
    std::shared_ptr<Distribution> const laws[]{
        Distribution::CreateNormal(0, 1, 1000, 1001),   Distribution::CreateNormal(0, 1, -1001, -1000),
        Distribution::CreateLogNormal(50, 1, 0, 1),     Distribution::CreateNormal(2, 1, 7, 7),
        Distribution::CreateLogNormal(2, 1, 7, 7),      Distribution::CreateExponential(2, 7, 7),
        Distribution::CreateTriangular(7, 7, 7),        Distribution::CreateConstant(-3),
        Distribution::CreateExponential(1e-300, 0, 10), Distribution::CreateNormal(0, 1e-9, -5, 5),
    };
    for (auto const& spec : laws) {
        Random random(11, 0);
        double sum = 0;
        for (int k = 0; k < 1000; ++k) {
            auto const value = sample(*spec, random);
            ASSERT_TRUE(spec->GetMin() <= value && value <= spec->GetMax());
            sum += value;
        }
        auto const width = spec->GetMax() - spec->GetMin();
        EXPECT_NEAR(sum / 1000, spec->GetMean(), 0.05 * width);
    }
}

TEST(Distributions, DiscreteDrawsItsValuesByWeight) {
    auto const spec = Distribution::CreateDiscrete({10, -4, 7}, {1, 0, 3});
    EXPECT_EQ(spec->GetMin(), 7);
    EXPECT_EQ(spec->GetMax(), 10);
    Random random(12, 0);
    int tens = 0;
    for (int k = 0; k < 10000; ++k) {
        auto const value = sample(*spec, random);
        ASSERT_TRUE(value == 10 || value == 7);
        tens += value == 10 ? 1 : 0;
    }
    EXPECT_NEAR(tens, 2500, 4 * std::sqrt(10000 * 3.0 / 16));
}

TEST(Distributions, AreValidWhenTheirParametersFitTogether) {
    struct Case {
        std::shared_ptr<Distribution> distribution;
        DistributionType type;
        bool valid;
        double min;
        double max;
    };
    using enum DistributionType;
    Case const cases[]{
        {Distribution::CreateConstant(4), CONSTANT, true, 4, 4},
        {Distribution::CreateUniform(1, 1), UNIFORM, true, 1, 1},
        {Distribution::CreateUniform(2, 1), UNIFORM, false, 2, 1},
        {Distribution::CreateTriangular(1, 2, 3), TRIANGULAR, true, 1, 3},
        {Distribution::CreateTriangular(1, 0, 3), TRIANGULAR, false, 1, 3},
        {Distribution::CreateTriangular(1, 4, 3), TRIANGULAR, false, 1, 3},
        {Distribution::CreateNormal(0, 1, -1, 1), NORMAL, true, -1, 1},
        {Distribution::CreateNormal(0, 1, 1, -1), NORMAL, false, 1, -1},
        {Distribution::CreateLogNormal(0, 1, 2, 3), LOG_NORMAL, true, 2, 3},
        {Distribution::CreateLogNormal(0, 1, 3, 2), LOG_NORMAL, false, 3, 2},
        {Distribution::CreateExponential(1, 2, 3), EXPONENTIAL, true, 2, 3},
        {Distribution::CreateExponential(1, 3, 2), EXPONENTIAL, false, 3, 2},
    };
    Random random(1, 1);
    for (auto const& each : cases) {
        EXPECT_EQ(each.distribution->GetDistributionType(), each.type);
        EXPECT_EQ(each.distribution->IsValid(), each.valid);
        EXPECT_EQ(each.distribution->GetMin(), each.min);
        EXPECT_EQ(each.distribution->GetMax(), each.max);
        if (each.valid) continue;
        EXPECT_THROW(each.distribution->GetMean(), Exception);
        EXPECT_THROW(sample(*each.distribution, random), Exception);
    }
    for (auto const& discrete : {Distribution::CreateDiscrete({}, {}), Distribution::CreateDiscrete({1, 2}, {0, 0})}) {
        EXPECT_FALSE(discrete->IsValid());
        EXPECT_THROW(discrete->GetMin(), Exception);
        EXPECT_THROW(discrete->GetMax(), Exception);
        EXPECT_THROW(discrete->GetMean(), Exception);
    }
}

TEST(Distributions, RefuseWhatCanNeverBeRightAndStayAsTheyAre) {
    NormalDistribution normal(1, 2, 0, 3);
    ExponentialDistribution exponential(1, 2, 3);
    DiscreteDistribution discrete({1, 2}, {3, 4});
    struct Case {
        std::function<void()> action;
        char const* message;
    };
    Case const cases[]{
        {[&] { normal.SetSigma(0); }, "NormalDistribution: sigma is 0; it must be a finite number above 0"},
        {[&] { normal.SetMax(nan); }, "NormalDistribution: max is nan; it must be a finite number"},
        {[&] { normal.SetMu(infinity); }, "NormalDistribution: mu is inf; it must be a finite number"},
        {[&] { exponential.SetRate(-1); }, "ExponentialDistribution: rate is -1; it must be a finite number above 0"},
        {[&] { exponential.SetScale(0); }, "ExponentialDistribution: scale is 0; it must be a finite number above 0"},
        {[&] {
             discrete.SetValuesAndWeights({1, 2, 3}, {1});
         },
         "DiscreteDistribution: values number 3, weights 1; there must be as many of one as of the other"},
        {[&] {
             discrete.SetValuesAndWeights({1, 2}, {1, -1});
         },
         "DiscreteDistribution: weight 1 is -1; it must be a finite number of 0 or more"},
        {[&] { discrete.SetValuesAndWeights({nan}, {1}); },
         "DiscreteDistribution: value 0 is nan; it must be a finite number"},
        {[] { ConstantDistribution const refused(nan); },
         "ConstantDistribution: value is nan; it must be a finite number"},
        {[] { LogNormalDistribution const refused(0, -1, 0, 1); },
         "LogNormalDistribution: sigma is -1; it must be a finite number above 0"},
    };
    for (auto const& each : cases) EXPECT_EQ(refusal_of(each.action), each.message);
    EXPECT_EQ(normal.GetSigma(), 2);
    EXPECT_EQ(normal.GetMax(), 3);
    EXPECT_EQ(exponential.GetScale(), 1);
    EXPECT_EQ(discrete.GetWeights(), (std::vector<double>{3, 4}));
    exponential.SetScale(4);
    EXPECT_EQ(exponential.GetRate(), 0.25);
}

// Files and copies keep the class and every parameter.
TEST(Distributions, SurviveCopyingAndFiles) {
    std::vector<Issue> warnings;
    Reading reading{warnings, ""};
    auto laws = continuous_laws();
    laws.push_back({"discrete", Distribution::CreateDiscrete({1, 2}, {3, 4}), {}});
    laws.push_back({"constant", Distribution::CreateConstant(1e-9), {}});
    for (auto const& spec : laws) {
        using Shared = std::shared_ptr<Distribution>;
        auto const json = json_of<Shared>(spec.distribution);
        Shared opened;
        read_json(opened, Json::parse(json.dump()), reading);
        EXPECT_EQ(json_of<Shared>(opened), json) << spec.name;
        auto const copy = copy_of(spec.distribution);
        EXPECT_NE(copy, spec.distribution);
        EXPECT_EQ(json_of<Shared>(copy), json) << spec.name;
        EXPECT_EQ(copy->GetDistributionType(), spec.distribution->GetDistributionType()) << spec.name;
    }
    EXPECT_TRUE(warnings.empty());
    std::shared_ptr<Distribution> opened;
    auto const damaged = Json::parse(R"({"kind":"NormalDistribution","mu":0,"sigma":-1,"min":0,"max":1})");
    EXPECT_THROW(read_json(opened, damaged, reading), Exception);
}

}  // namespace
}  // namespace pedflux::engine
