#pragma once

#include "engine/behaviour/agent_situation.h"
#include "engine/simulation/frame/simulation_state.h"

#include <optional>

/// What tests ask about an agent of a simulation.
namespace pedflux::engine {

/// So near to the line of a portal (metres, besides its radius) an agent is at it. Closed lines keep bodies off.
inline constexpr double beside_line = 0.2;

/// Whether an agent is at a portal's line or in an area.
bool is_at(SimulationState const& run, AgentMotion const& motion, PlaceIndex place);

/// The point of space that decides in which volumes an agent is.
Vector point_in_space(SimulationState const& run, AgentMotion const& motion);

/// Seconds since midnight; none while it is not known.
std::optional<double> clock_time(SimulationState const& run, TimeInFrame const& time);

class LiveSituation : public TestSituation {
  public:
    /// @param draw tells the times apart at which tests are put to the agent
    LiveSituation(SimulationState const& run, AgentMotion const& motion, std::uint64_t draw)
        : run_(run), person_(run.infos[motion.agent]), walker_(motion), draw_(draw) {}

    bool was_created_by(SymbolIndex event) const override { return person_.origin.event.InternalEquals(id(event)); }
    bool entered_at(SymbolIndex place) const override;
    bool has_profile(SymbolIndex profile) const override { return person_.origin.profile.InternalEquals(id(profile)); }
    bool is_in(SymbolIndex area) const override;
    bool holds(SymbolIndex token) const override;
    double age() const override;
    bool initial_exit_is(SymbolIndex portal) const override;
    ChanceKey chance_key() const override { return {run_.seed, person_.origin.key, draw_}; }
    bool is_active(SymbolIndex event) const override;
    bool is_gate_open(SymbolIndex gate, GateStateDirection way) const override;
    bool is_server_open(SymbolIndex server, ServerAccessPoint point) const override;
    double tally(SymbolIndex tally) const override;
    double clock() const override { return run_.start_time + run_.seconds(); }
    double time(SymbolIndex time) const override;

  private:
    GlobalId const& id(SymbolIndex object) const { return run_.rules.symbols.objects[object]; }

    SimulationState const& run_;
    AgentInfo const& person_;
    AgentMotion const& walker_;
    std::uint64_t draw_;
};

}  // namespace pedflux::engine
