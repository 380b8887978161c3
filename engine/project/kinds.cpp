#include "engine/project/kinds.h"

#include "engine/analysis/graph_query_list.h"
#include "engine/analysis/map_query_list.h"
#include "engine/analysis/table_query_list.h"
#include "engine/model/state.h"
#include "engine/project/kind_list.h"

namespace pedflux::engine {

#define PEDFLUX_KINDS(KIND)     \
    PEDFLUX_OBJECT_KINDS(KIND)  \
    PEDFLUX_MAP_QUERIES(KIND)   \
    PEDFLUX_GRAPH_QUERIES(KIND) \
    PEDFLUX_TABLE_QUERIES(KIND)

#define DECLARE(Class, ...) struct Class##State;
PEDFLUX_KINDS(DECLARE)

Kinds object_kinds() {
#define ENTRY(Class, ...) &kind_of<Class##State>(),
    static Kind const* const table[] = {PEDFLUX_KINDS(ENTRY)};
    return table;
}

}  // namespace pedflux::engine
