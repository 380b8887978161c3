#include "engine/base/list_checks.h"

#include <pedflux/identifiers.h>

#include <algorithm>
#include <set>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

std::string numbered(std::string_view element, std::size_t index) { return fmt::format("{} {}", element, index); }

struct BeforeInText {
    bool operator()(GlobalId const& left, GlobalId const& right) const { return left.InternalCompare(right) < 0; }
};

}  // namespace

void require_all_finite(std::string_view element, std::vector<double> const& values) {
    for (std::size_t index = 0; index < values.size(); ++index) require_finite(numbered(element, index), values[index]);
}

void require_none_negative(std::string_view element, std::vector<double> const& values) {
    for (std::size_t index = 0; index < values.size(); ++index)
        require_not_negative(numbered(element, index), values[index]);
}

void require_weights(std::string_view element, std::vector<double> const& weights) {
    require_none_negative(element, weights);
    auto const all_zero = std::all_of(weights.begin(), weights.end(), [](double weight) { return weight == 0; });
    if (!weights.empty() && all_zero) refuse(fmt::format("{}s are all 0; at least one must be above 0", element));
}

void require_equal_lengths(std::string_view list, std::size_t length, std::string_view other_list,
                           std::size_t other_length) {
    if (length == other_length) return;
    refuse(fmt::format("{} number {}, {} {}; there must be as many of one as of the other", list, length, other_list,
                       other_length));
}

void require_distinct(std::string_view element, std::vector<GlobalId> const& identifiers) {
    std::set<GlobalId, BeforeInText> seen;
    for (std::size_t index = 0; index < identifiers.size(); ++index) {
        auto identifier = identifiers[index];
        if (!identifier.IsValid())
            refuse(fmt::format("{} {} is the invalid identifier; it must be that of an object", element, index));
        if (!seen.insert(identifier).second)
            refuse(fmt::format("{} {} is {}, which the list holds already; each may occur once", element, index,
                               identifier.GetString()));
    }
}

}  // namespace pedflux::engine
