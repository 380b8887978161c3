#pragma once

#include "engine/analysis/graph_data.h"
#include "engine/analysis/graph_query_states.h"

#include <memory>

namespace pedflux::engine {

/// The graph of a query. Throws Exception as `GraphQuery::Evaluate` does.
std::shared_ptr<GraphData const> graph_of(Document const& document, GraphQueryState const& query, GraphQueryType type);

}  // namespace pedflux::engine
