#pragma once

#include "engine/analysis/asked_run.h"
#include "engine/analysis/table_data.h"

#include <memory>

/// The tables of origins and destinations; the queries of the same names tell what they count.
namespace pedflux::engine {

std::shared_ptr<TableData const> counts_between_portals(AskedRun& asked);
std::shared_ptr<TableData const> times_between_portals(AskedRun& asked);
std::shared_ptr<TableData const> counts_across_area(AskedRun& asked);

}  // namespace pedflux::engine
