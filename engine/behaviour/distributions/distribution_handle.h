#pragma once

#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/model/field_type.h"

#include <pedflux/distributions.h>

#include <memory>

namespace pedflux {

struct Distribution::State {
    engine::DistributionSpec spec;
};

namespace engine {

/// Access to the DistributionSpec of an SDK distribution.
struct DistributionAccess {
    static DistributionSpec& spec(Distribution& distribution) { return distribution.state_->spec; }
    static DistributionSpec const& spec(Distribution const& distribution) { return distribution.state_->spec; }
};

/// What a distribution is made of.
inline DistributionSpec const& spec_of(Distribution const& distribution) {
    return DistributionAccess::spec(distribution);
}

/// A distribution of the class that belongs to `spec`. Throws as the class's constructor does.
std::shared_ptr<Distribution> make_distribution(DistributionSpec const& spec);

template <>
struct SharedValue<Distribution> {
    using Value = DistributionSpec;
    static DistributionSpec const& value(Distribution const& distribution) { return spec_of(distribution); }
    static std::shared_ptr<Distribution> make(DistributionSpec const& spec) { return make_distribution(spec); }
    static void check(Subject const& subject, std::shared_ptr<Distribution> const& distribution, FieldRule const& rule);
};

/// One value of a distribution. Throws for one that is not valid.
double sample(Distribution const& distribution, Random& random);

}  // namespace engine
}  // namespace pedflux
