#pragma once

#include "engine/behaviour/symbol_table.h"
#include "engine/behaviour/tallies/tally_run.h"
#include "engine/behaviour/triggers/trigger_run.h"
#include "engine/simulation/events/gate_access.h"
#include "engine/simulation/events/server_access.h"
#include "engine/simulation/events/transition_counter.h"
#include "engine/simulation/frame/simulation_state.h"

#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

/// The project's rules while a simulation runs: triggers, the events that they start, tallies and gates.
///
/// They are looked at once when the simulation begins and then at the end of each frame, in this order: triggers and
/// ranges, which see tallies, gates and servers as they were left; events that start; gates and servers; tallies. What
/// they say is in force in the next frame.
namespace pedflux::engine {

/// What a tally measures, as the simulation knows it.
struct RuleMeasure {
    std::vector<navigation::RegionIndex> regions;  ///< whose people are counted
    std::vector<std::size_t> volumes;              ///< likewise
    std::vector<std::uint32_t> servers;            ///< whose numbers are summed
    ServerMeasure of_servers{};                    ///< which number of the servers
    std::optional<SymbolIndex> transition;
    double constant = 0;  ///< what never changes
};

inline constexpr std::size_t no_passageway = std::numeric_limits<std::size_t>::max();

/// What is compiled when the simulation is created.
struct EventProgram {
    TriggerProgram triggers;
    TallyProgram tallies;
    std::vector<MomentIndex> change_ranges;  ///< of the tally plan's changes
    std::vector<RuleMeasure> measures;       ///< of the tally plan
    std::vector<std::size_t> passageways;    ///< of the mentioned objects; no_passageway for what is none
    std::vector<std::uint32_t> servers;      ///< of the mentioned objects; no_server for what is none
    std::vector<EventIndex> sources;         ///< the enabled events with people, in the order of the project
};

class EventEngine final : public TriggerFacts {
  public:
    EventEngine(SimulationState& run, EventProgram plan, Crossings crossings, AccessRules gates, AccessRules servers);

    /// The rules at the simulation's start, or at the end of a frame.
    void step();

    bool has_people(EventIndex event) const override;
    bool is_gate_open(SymbolIndex gate, GateStateDirection way) const override;
    bool is_server_open(SymbolIndex server, ServerAccessPoint point) const override;
    double tally(SymbolIndex tally) const override { return tallies.compared(tally); }
    std::int64_t transitions(SymbolIndex transition) const override { return crossings.count(transition); }

    Moment moment(MomentIndex index) const { return triggers_[index]; }
    /// Whether an event has started and has not ended: of its people, some are still to come or there; a broadcast's
    /// range is on. One that is disabled never starts.
    bool is_active(GlobalId const& event) const;
    /// Seconds since the simulation's start at which an event started last; none when it has not.
    std::optional<double> last_start(GlobalId const& event) const;
    /// How often an event has started.
    std::size_t start_count(GlobalId const& event) const;
    /// Whether an event may still bring people who were not announced yet.
    bool may_start() const;

    /// Where somebody is now; asked for after each of its steps.
    void is_at(AgentMotion const& motion) {
        if (crossings.is_any()) crossings.is_at(motion.agent, whereabouts_of(motion));
    }
    void came_in(AgentMotion const& motion, std::uint32_t doorway);
    void went_out(std::uint32_t agent, std::uint32_t doorway);

  private:
    /// The people of one of the plan's sources.
    struct Source {
        EventIndex event;
        std::vector<SpawnRequest> planned{};  ///< of its first start; their times count from it
        std::size_t here_or_coming = 0;
        std::uint32_t starts = 0;
        bool brings_people = false;
    };

    /// None for an event that is disabled, and for what is no event.
    std::optional<EventIndex> event_of(GlobalId const& id) const;
    Whereabouts whereabouts_of(AgentMotion const& motion) const;
    /// How many people are in areas and volumes, each counted once.
    int count_in(RuleMeasure const& measure, std::vector<int> const& population) const;
    void start(std::uint32_t source);
    void step_tallies();

    SimulationState& run_;
    EventProgram const plan_;
    std::unordered_map<GlobalId, EventIndex, IdentifierHash, IdentifierEqual> events_;
    std::vector<Source> sources_;
    TriggerRun triggers_;

  public:
    TallyRun tallies;
    Crossings crossings;
    AccessRules gates;
    AccessRules servers;

    TallyProgram const& tally_plan() const { return plan_.tallies; }
};

/// Compiles the rules of a project for a run that has its world and its people, and takes their first look.
/// @param mentions what others have compiled with; they ask by its numbers
/// @throws Exception that names what simulations do not follow
std::unique_ptr<EventEngine> event_engine_of(SimulationState& run, Document const& document, SymbolTable& symbols);

}  // namespace pedflux::engine
