#pragma once

#include "engine/behaviour/compiled/agent_situation.h"
#include "engine/simulation/tasks/task_context.h"

#include <cstdint>

/// What tests ask about an agent of a simulation.
namespace pedflux::engine {

/// An agent is at a portal within this distance of its line (metres, besides its radius). Closed lines keep bodies off.
inline constexpr double beside_line = 0.2;

/// Whether an agent is at a portal's line or in an area.
bool is_at(World const& world, Agents const& agents, AgentMotion const& motion, PlaceIndex place);

/// The point of space that decides in which volumes an agent is.
Vector point_in_space(FloorPlan const& plan, AgentMotion const& motion);

/// Puts a test to an agent, and returns whether it passes. Each time draws anew.
bool put_test(TaskContext& context, AgentMotion const& motion, TestProgram const& test);

class LiveSituation final : public TestSituation {
  public:
    /// @param draw tells the times apart at which tests are put to the agent
    LiveSituation(TaskContext const& context, AgentMotion const& motion, std::uint64_t draw)
        : context_(context), info_(context.agents.infos[motion.agent]), motion_(motion), draw_(draw) {}

    bool was_created_by(SymbolIndex event) const override { return info_.origin.event.InternalEquals(id(event)); }
    bool entered_at(SymbolIndex place) const override;
    bool has_profile(SymbolIndex profile) const override { return info_.origin.profile.InternalEquals(id(profile)); }
    bool is_in(SymbolIndex area) const override;
    bool holds(SymbolIndex token) const override;
    double age() const override;
    bool initial_exit_is(SymbolIndex portal) const override;
    ChanceKey chance_key() const override { return {context_.world.seed, info_.origin.key, draw_}; }
    bool is_active(SymbolIndex event) const override;
    bool is_gate_open(SymbolIndex gate, GateStateDirection way) const override;
    bool is_server_open(SymbolIndex server, ServerAccessPoint point) const override;
    double tally(SymbolIndex tally) const override;
    double clock() const override { return context_.clock.time_of_day(); }
    double time(SymbolIndex time) const override;

  private:
    GlobalId const& id(SymbolIndex object) const { return context_.program.symbols.objects[object]; }
    SymbolTarget const& target(SymbolIndex object) const { return context_.program.symbol_targets[object]; }

    TaskContext const& context_;
    AgentInfo const& info_;
    AgentMotion const& motion_;
    std::uint64_t draw_;
};

}  // namespace pedflux::engine
