#pragma once

#include "engine/behaviour/compiled/agent_situation.h"
#include "engine/behaviour/compiled/decisions.h"
#include "engine/behaviour/compiled/symbol_table.h"

#include <pedflux/agent_filters.h>

#include <functional>
#include <memory>
#include <set>
#include <vector>

/// Agent filters compiled for a run.
namespace pedflux::engine {

/// One question of a filter about an agent.
using FilterQuestion = std::function<bool(FilterSituation const& situation)>;

struct ProximityRange {
    double distance;  ///< metres
    bool ignore_barriers;
};

/// A filter with all filters that it is made of or names. Questions refer to the entries of its lists by their numbers.
struct FilterProgram {
    Decisions<FilterQuestion> decisions;
    DecisionIndex entry = YES;
    std::set<AgentFilterType> kinds;  ///< of the questions
    SymbolTable symbols;              ///< of objects and transitions
    std::vector<SymbolIndex> areas;   ///< the objects that are asked for as areas
    std::vector<std::shared_ptr<Trip>> trips;
    std::vector<ProximityRange> proximities;
    std::vector<FilterProgram> ever;  ///< the filters that an agent may pass in any frame
};

/// Compiles a filter. Named filters are those of the project at this moment.
/// @throws Exception when a name leads back to itself or to nothing, or when the filters are too many or nest too deep
FilterProgram compile(AgentFilter const& filter, Document const& project);

/// Whether an agent is selected.
bool passes(FilterProgram const& program, FilterSituation const& situation);

}  // namespace pedflux::engine
