#include "engine/analysis/query_states.h"

#include "engine/base/checks.h"

namespace pedflux::engine {

void refuse_unevaluated(QueryState const& query) {
    refuse(title_of(query) + " is of a kind that cannot be evaluated yet");
}

}  // namespace pedflux::engine
