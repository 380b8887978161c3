#pragma once

#include "engine/analysis/graph_query_list.h"
#include "engine/analysis/map_query_list.h"
#include "engine/analysis/table_query_list.h"
#include "engine/project/kind_list.h"

/// Every kind of object, queries included. The first argument of each line is the class; the others differ by list.
#define PEDFLUX_KINDS(KIND)     \
    PEDFLUX_OBJECT_KINDS(KIND)  \
    PEDFLUX_MAP_QUERIES(KIND)   \
    PEDFLUX_GRAPH_QUERIES(KIND) \
    PEDFLUX_TABLE_QUERIES(KIND)
