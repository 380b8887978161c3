#pragma once

#include "engine/base/checks.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pedflux {
class GlobalId;
}

// Checks of the lists in distributions and population sources. Each throws an Exception that names the list
// ("DiscreteDistribution: weight"), the index of the first invalid element, and what is allowed.
namespace pedflux::engine {

void require_all_finite(std::string_view element, std::vector<double> const& values);

/// All finite and none negative.
void require_none_negative(std::string_view element, std::vector<double> const& values);

/// None negative, and at least one above 0 unless the list is empty.
void require_weights(std::string_view element, std::vector<double> const& weights);

void require_equal_lengths(std::string_view list, std::size_t length, std::string_view other_list,
                           std::size_t other_length);

/// Every identifier names an object, and none occurs twice.
void require_distinct(std::string_view element, std::vector<GlobalId> const& identifiers);

}  // namespace pedflux::engine
