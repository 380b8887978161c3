#include "engine/analysis/map_query_states.h"
#include "engine/project/kind_table.h"

namespace pedflux {

PEDFLUX_MAP_QUERIES(QUERY_KIND)

}  // namespace pedflux
