#pragma once

#include "engine/analysis/table_data.h"
#include "engine/analysis/table_query_states.h"

#include <memory>
#include <vector>

namespace pedflux::engine {

/// The table of a query. Throws Exception as `TableQuery::Evaluate` does.
std::shared_ptr<TableData const> table_of(Document const& document, TableQueryState const& query, TableQueryType type);

/// The portals of a table of origins and destinations, in the order of its rows and columns.
std::vector<GlobalId> portals_of(Document const& document, BetweenPortals const& query);

/// Those that an event of the project uses as origin or as destination, by itself or through a collection.
std::vector<GlobalId> portals_used_as(Document const& document, BetweenPortals const& query, Role role);

}  // namespace pedflux::engine
