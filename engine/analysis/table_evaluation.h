#pragma once

#include "engine/analysis/table_data.h"
#include "engine/analysis/table_query_states.h"

#include <memory>
#include <vector>

namespace pedflux::engine {

/// The table of a query. Throws Exception as `TableQuery::Evaluate` does.
std::shared_ptr<TableData const> table_of(Document const& document, TableQueryState const& query, TableQueryType type);

/// The portals of a table of origins and destinations, in the order in which it shows them.
std::vector<GlobalId> portals_of(Document const& document, BetweenPortals const& query);

/// Of these, the ones in which an event of the project, or a collection that it names, sees an origin or a destination.
std::vector<GlobalId> portals_used_as(Document const& document, BetweenPortals const& query, Role role);

}  // namespace pedflux::engine
