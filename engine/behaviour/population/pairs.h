#pragma once

#include "engine/behaviour/population/population.h"

#include <pedflux/value_pairs.h>

#include <vector>

namespace pedflux::engine {

/// The periods as the SDK's pairs, and back.
std::vector<DurationValuePair> pairs_of(std::vector<Period> const& periods);
std::vector<Period> periods_of(std::vector<DurationValuePair> const& pairs);

/// Identifiers and numbers as two lists of equal length.
struct IdValueLists {
    std::vector<GlobalId> ids;
    std::vector<double> values;
};
IdValueLists lists_of(std::vector<IdValuePair> const& pairs);

/// One pair for each value; the two lists are of equal length, or there are no values and so no pairs.
std::vector<IdValuePair> pairs_of(std::vector<GlobalId> const& ids, std::vector<double> const& values);

}  // namespace pedflux::engine
