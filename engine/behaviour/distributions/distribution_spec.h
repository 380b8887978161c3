#pragma once

#include "engine/base/random.h"
#include "engine/model/node_table.h"
#include "engine/model/rules.h"

#include <pedflux/distributions.h>

#include <string_view>
#include <variant>
#include <vector>

namespace pedflux::engine {

/// The specifications of the SDK's distributions as plain data, with the fields that files hold: see
/// distribution_table.def. Each stores whatever finite numbers it was given; `is_valid` tells whether they fit
/// together, and only then do `mean` and `sample` have a meaning.
///
/// Constant: always the same value. Uniform: equal density from min to max. Triangular: density rising in a straight
/// line from min to the mode and falling to max. Normal: of mean mu and standard deviation sigma, truncated to min and
/// max. LogNormal: shift + exp(Y) with Y normal of mean mu and standard deviation sigma, truncated at max. Exponential:
/// shift + Y with Y exponential of the given rate, truncated at max.
#define DISTRIBUTION(Kind, type, ...)                                    \
    struct Kind##Spec {                                                  \
        static constexpr DistributionType TYPE = DistributionType::type; \
        static constexpr std::string_view NAME = #Kind "Distribution";   \
        PEDFLUX_PROPERTIES(__VA_ARGS__)                                  \
    };
#define DISTRIBUTION_OF_ITS_OWN(...)
#include "engine/behaviour/distributions/distribution_table.def"

/// One of the values, with a chance proportional to its weight.
struct DiscreteSpec {
    static constexpr DistributionType TYPE = DistributionType::DISCRETE;
    static constexpr std::string_view NAME = "DiscreteDistribution";

    std::vector<double> values;
    std::vector<double> weights;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("values", self.values);
        field("weights", self.weights, not_negative);
    }
};

/// A variant of all but the first type.
template <class First, class... Specs>
using VariantAfter = std::variant<Specs...>;

using DistributionSpec = VariantAfter<void
#define DISTRIBUTION(Kind, ...) , Kind##Spec
#include "engine/behaviour/distributions/distribution_table.def"
                                      >;

/// The name of the distribution's class in the SDK, for messages and files.
std::string_view name_of(DistributionSpec const& spec);

/// Whether the parameters fit together.
bool is_valid(DistributionSpec const& spec);

/// Throws Exception that names the distribution and the rule that its parameters break, when they do not fit together.
void require_valid(DistributionSpec const& spec);

/// The bounds of the values as they are given, even while they are not valid. A discrete one without a
/// value of positive weight has none and throws.
double minimum(DistributionSpec const& spec);
double maximum(DistributionSpec const& spec);

/// The expected value of what `sample` draws. Throws for a specification that is not valid.
double mean(DistributionSpec const& spec);

/// One value drawn by a valid specification, always within its bounds.
double sample(DistributionSpec const& spec, Random& random);

}  // namespace pedflux::engine
