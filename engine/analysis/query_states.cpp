#include "engine/analysis/query_states.h"

#include "engine/base/checks.h"

#include <fmt/format.h>

namespace pedflux::engine {

void refuse_unevaluated(QueryState const& query) {
    refuse(fmt::format("{} is of a kind that cannot be evaluated yet", title_of(query)));
}

}  // namespace pedflux::engine
