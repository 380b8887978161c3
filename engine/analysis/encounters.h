#pragma once

#include "engine/analysis/query_context.h"
#include "engine/analysis/table_data.h"

#include <memory>

namespace pedflux::engine {

/// The table of an `AgentProximityTableQuery`.
std::shared_ptr<TableData const> encounters(QueryContext& context);

}  // namespace pedflux::engine
