#pragma once

#include "engine/analysis/asked_run.h"
#include "engine/analysis/table_data.h"

#include <memory>

namespace pedflux::engine {

/// The table of an `AgentProximityTableQuery`.
std::shared_ptr<TableData const> encounters(AskedRun& asked);

}  // namespace pedflux::engine
