#pragma once

#include "engine/behaviour/tallies/tally_program.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/events/transition_counter.h"
#include "engine/simulation/tasks/server_queues.h"
#include "engine/simulation/world/world.h"

#include <optional>
#include <vector>

/// What tallies measure in a simulation.
namespace pedflux::engine {

class Document;

/// A measure of the tally program, as the world knows its objects.
struct CompiledMeasure {
    std::vector<navigation::RegionIndex> regions;  ///< whose agents are counted
    std::vector<std::size_t> volumes;              ///< likewise
    std::vector<std::uint32_t> servers;            ///< whose numbers are summed
    ServerMeasure of_servers{};                    ///< which number of the servers
    std::optional<SymbolIndex> transition;
    double constant = 0;  ///< what never changes
};

CompiledMeasure compiled_measure_of(TallyMeasure const& measure, Document const& document, World& world,
                                    SymbolTable const& symbols);

/// The values of all measures at the end of a frame.
std::vector<double> measured(std::span<CompiledMeasure const> measures, World const& world, Agents const& agents,
                             ServerQueues const& servers, TransitionCounter const& transitions);

}  // namespace pedflux::engine
