#include "engine/analysis/graph_query_states.h"
#include "engine/project/kind_table.h"

namespace pedflux {

PEDFLUX_GRAPH_QUERIES(QUERY_KIND)

}  // namespace pedflux
