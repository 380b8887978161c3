#pragma once

#include "engine/behaviour/laws.h"
#include "engine/model/codec.h"

#include <pedflux/distributions.h>

#include <memory>

namespace pedflux {

struct Distribution::State {
    engine::Law law;
};

namespace engine {

/// The way from an SDK distribution to its law.
struct DistributionAccess {
    static Law& law(Distribution& distribution) { return distribution.state_->law; }
    static Law const& law(Distribution const& distribution) { return distribution.state_->law; }
};

/// The law of a distribution.
inline Law const& law_of(Distribution const& distribution) { return DistributionAccess::law(distribution); }

/// A distribution of the class that belongs to the law. Throws as the class's constructor does.
std::shared_ptr<Distribution> make_distribution(Law const& law);

template <>
struct SharedValue<Distribution> {
    using Value = Law;
    static Law const& value(Distribution const& distribution) { return law_of(distribution); }
    static std::shared_ptr<Distribution> make(Law const& law) { return make_distribution(law); }
};

/// One value of a distribution. Throws for one that is not valid.
double sample(Distribution const& distribution, Random& random);

}  // namespace engine
}  // namespace pedflux
