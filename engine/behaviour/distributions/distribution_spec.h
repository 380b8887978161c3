#pragma once

#include "engine/base/random.h"
#include "engine/model/rules.h"

#include <string_view>
#include <variant>
#include <vector>

namespace pedflux::engine {

// The laws of the SDK's distributions as plain data, with the fields that files hold. Each stores whatever finite
// numbers it was given; `is_valid` tells whether they make a law together, and only then do `mean` and `sample` have a
// meaning.

/// Always the same value.
struct ConstantSpec {
    static constexpr std::string_view NAME = "ConstantDistribution";

    double value = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("value", self.value);
    }
};

/// Equal density from min to max.
struct UniformSpec {
    static constexpr std::string_view NAME = "UniformDistribution";

    double min = 0;
    double max = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("min", self.min);
        field("max", self.max);
    }
};

/// Density rising in a straight line from min to the mode and falling to max.
struct TriangularSpec {
    static constexpr std::string_view NAME = "TriangularDistribution";

    double min = 0;
    double mode = 0;
    double max = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("min", self.min);
        field("mode", self.mode);
        field("max", self.max);
    }
};

/// The normal law of mean mu and standard deviation sigma, given that the value lies between min and max.
struct NormalSpec {
    static constexpr std::string_view NAME = "NormalDistribution";

    double mu = 0;
    double sigma = 1;
    double min = 0;
    double max = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("mu", self.mu);
        field("sigma", self.sigma, above_zero);
        field("min", self.min);
        field("max", self.max);
    }
};

/// shift + exp(Y) with Y normal of mean mu and standard deviation sigma, given that the value is at most max.
struct LogNormalSpec {
    static constexpr std::string_view NAME = "LogNormalDistribution";

    double mu = 0;
    double sigma = 1;
    double shift = 0;
    double max = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("mu", self.mu);
        field("sigma", self.sigma, above_zero);
        field("shift", self.shift);
        field("max", self.max);
    }
};

/// shift + Y with Y exponential of the given rate, given that the value is at most max.
struct ExponentialSpec {
    static constexpr std::string_view NAME = "ExponentialDistribution";

    double rate = 1;
    double shift = 0;
    double max = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("rate", self.rate, above_zero);
        field("shift", self.shift);
        field("max", self.max);
    }
};

/// One of the values, with a chance proportional to its weight.
struct DiscreteSpec {
    static constexpr std::string_view NAME = "DiscreteDistribution";

    std::vector<double> values;
    std::vector<double> weights;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("values", self.values);
        field("weights", self.weights, not_negative);
    }
};

/// The order of the kinds is that of `DistributionType`.
using DistributionSpec =
    std::variant<ConstantSpec, UniformSpec, TriangularSpec, NormalSpec, LogNormalSpec, ExponentialSpec, DiscreteSpec>;

/// The name of the law's class in the SDK, for messages and files.
std::string_view name_of(DistributionSpec const& spec);

/// Whether the parameters make a law together.
bool is_valid(DistributionSpec const& spec);

/// Throws an Exception that names the law and the rule that its parameters break, when they make no law.
void require_valid(DistributionSpec const& spec);

/// The bounds of the values as they are given, also while the law is not valid. A discrete law without a value of
/// positive weight has none and throws.
double minimum(DistributionSpec const& spec);
double maximum(DistributionSpec const& spec);

/// The expected value of what `sample` draws. Throws for a law that is not valid.
double mean(DistributionSpec const& spec);

/// One value drawn by a valid law, always within its bounds.
double sample(DistributionSpec const& spec, Random& random);

}  // namespace pedflux::engine
