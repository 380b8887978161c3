#pragma once

#include "engine/behaviour/compiled/symbol_table.h"
#include "engine/behaviour/tallies/tally_run.h"
#include "engine/behaviour/triggers/trigger_run.h"
#include "engine/simulation/agents/spawning.h"
#include "engine/simulation/events/access_control.h"
#include "engine/simulation/events/tally_measures.h"
#include "engine/simulation/events/transition_counter.h"
#include "engine/simulation/routing/dynamic_walls.h"
#include "engine/simulation/tasks/behaviour_program.h"
#include "engine/simulation/tasks/event_view.h"
#include "engine/simulation/tasks/server_queues.h"

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

/// The project's triggers while a simulation runs, and what depends on them: events, access to gates and servers, and
/// tallies. They are evaluated once when the simulation begins and then at the end of each frame; frame/frame.cpp has
/// the order. What they say is in force in the next frame.
namespace pedflux::engine {

class Document;

inline constexpr std::size_t no_passageway = std::numeric_limits<std::size_t>::max();

/// What is compiled when the simulation is created.
struct EventEngineProgram {
    TriggerProgram triggers;
    TallyProgram tallies;
    std::vector<MomentIndex> change_ranges;  ///< of the tally program's changes
    std::vector<CompiledMeasure> measures;   ///< of the tally program
    std::vector<std::size_t> passageways;    ///< of the symbols' objects; no_passageway for what is none
    std::vector<std::uint32_t> servers;      ///< of the symbols' objects; no_server for what is none
    std::vector<EventIndex> sources;         ///< of the spawning's sources
    std::unordered_map<GlobalId, EventIndex, IdentifierHash, IdentifierEqual> events;  ///< the enabled ones
};

struct EventEngine {
    /// @param program outlives the engine's parts, as it is one of them
    EventEngine(EventEngineProgram compiled, TransitionCounter counter, AccessControl gate_access,
                AccessControl server_access, std::uint64_t seed);
    EventEngine(EventEngine const&) = delete;
    EventEngine& operator=(EventEngine const&) = delete;

    EventEngineProgram const program;
    TriggerRun triggers;
    TallyRun tallies;
    TransitionCounter transitions;
    AccessControl gates;    ///< of the passageways
    AccessControl servers;  ///< of the floor plan's servers
};

/// Compiles the events, triggers, tallies and access rules of a project.
/// @param symbols what others have compiled with; they ask by its numbers
/// @throws Exception that names what simulations do not follow
std::unique_ptr<EventEngine> event_engine_of(Document const& document, World& world, BehaviourProgram const& program,
                                             SymbolTable& symbols);

/// What triggers, tests and tasks ask of the events of a simulation.
class EventFacts final : public TriggerFacts, public EventView {
  public:
    EventFacts(EventEngine const& engine, Spawning const& spawning, Gates const& gates, ServerQueues const& servers)
        : engine_(engine), spawning_(spawning), gates_(gates), servers_(servers) {}

    bool has_people(EventIndex event) const override;
    bool is_gate_open(SymbolIndex gate, GateStateDirection way) const override;
    bool is_server_open(SymbolIndex server, ServerAccessPoint point) const override;
    double tally(SymbolIndex tally) const override { return engine_.tallies.compared(tally); }
    std::int64_t transitions(SymbolIndex transition) const override { return engine_.transitions[transition]; }

    bool is_active(GlobalId const& event) const override;
    std::optional<double> last_start(GlobalId const& event) const override;
    std::size_t start_count(GlobalId const& event) const override;
    double tally_value(SymbolIndex tally) const override { return engine_.tallies.compared(tally); }

  private:
    /// None for an event that is disabled, and for what is no event.
    std::optional<EventIndex> event_of(GlobalId const& id) const;

    EventEngine const& engine_;
    Spawning const& spawning_;
    Gates const& gates_;
    ServerQueues const& servers_;
};

/// Hands the planned requests to the sources of their events, which release them when the events start.
void assign_requests_to_events(Spawning& spawning, std::size_t source_count);
/// Announces the agents of the events whose triggers fire in this frame.
void start_events(EventEngine const& engine, Spawning& spawning, World& world, Clock const& clock);
/// Whether an event may still bring agents that were not announced yet.
bool may_start(EventEngine const& engine, Spawning const& spawning);

/// The tallies take their values at the end of a frame.
void step_tallies(EventEngine& engine, World const& world, Agents const& agents, ServerQueues const& servers);

}  // namespace pedflux::engine
