#pragma once

#include "engine/behaviour/agent_situation.h"
#include "engine/behaviour/decisions.h"
#include "engine/behaviour/symbol_table.h"

#include <pedflux/agent_filters.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <variant>
#include <vector>

/// Agent filters compiled for a simulation or for the analysis of a run.
namespace pedflux::engine {

namespace ask {

struct Activity {
    AgentActivity activity;
};
struct EndState {
    AgentStateAtSimulationEnd state;
};
/// Whether the agent has to do with an object, transition or trip in a way.
struct Related {
    bool (FilterSituation::*relation)(SymbolIndex other) const;
    SymbolIndex other;
};
/// Whether a quantity lies in a range, both ends included.
struct Within {
    double (FilterSituation::*quantity)() const;
    double min = 0;
    double max = std::numeric_limits<double>::infinity();
};
struct Proximity {
    double distance;  ///< metres
    bool ignore_barriers;
};
/// Whether a filter has ever selected the agent.
struct Ever {
    std::size_t number;
};

}  // namespace ask

using FilterQuestion = std::variant<ask::Activity, ask::EndState, ask::Related, ask::Within, ask::Proximity, ask::Ever>;

/// A filter with all filters that it is made of or names.
struct FilterPlan {
    Decisions<FilterQuestion> decisions;
    DecisionIndex entry = YES;
    /// The first questions of the filters of which it matters whether they ever select an agent; each stands after
    /// those that it is made of.
    std::vector<DecisionIndex> ever;
};

/// What `observe` remembers of one agent: for each of the plan's `ever` whether it has selected the agent. All 0 at
/// first.
using EverSelected = std::span<std::uint8_t>;

/// Compiles a filter. Named filters are those of the project at this moment.
/// @throws Exception when a name leads back to itself or to nothing, or when the filters are too many or nest too deep
FilterPlan compile(AgentFilter const& filter, Document const& project, SymbolTable& symbols);

/// Takes note of an agent's moment. A plan with `ever` observes each moment before it selects: all moments up to now in
/// a running simulation, all of a stored run.
void observe(FilterPlan const& plan, FilterSituation const& situation, EverSelected memory);

/// Whether an agent is selected.
bool selects(FilterPlan const& plan, FilterSituation const& situation, std::span<std::uint8_t const> memory);

}  // namespace pedflux::engine
