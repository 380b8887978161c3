#pragma once

#include "engine/analysis/query_context.h"
#include "engine/analysis/table_data.h"

#include <memory>

/// The tables of origins and destinations; the queries of the same names tell what they count.
namespace pedflux::engine {

std::shared_ptr<TableData const> counts_between_portals(QueryContext& context);
std::shared_ptr<TableData const> times_between_portals(QueryContext& context);
std::shared_ptr<TableData const> counts_across_area(QueryContext& context);

}  // namespace pedflux::engine
