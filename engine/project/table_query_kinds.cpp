#include "engine/analysis/table_query_states.h"
#include "engine/project/kind_table.h"

namespace pedflux {

PEDFLUX_TABLE_QUERIES(QUERY_KIND)

}  // namespace pedflux
