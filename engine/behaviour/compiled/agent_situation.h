#pragma once

#include "engine/behaviour/compiled/symbol_table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/conditions.h>

#include <cstdint>

/// What compiled tests and filters ask about one agent at one moment; simulations and stored runs answer. Objects,
/// tallies, times and the like are numbers of `SymbolTable`.
namespace pedflux::engine {

/// One draw of chance: the same numbers give the same draw on every platform and in every order of asking.
struct ChanceKey {
    std::uint64_t seed;
    std::uint64_t agent;
    std::uint64_t step;
};

/// What both tests and filters ask.
struct AgentSituation {
    AgentSituation() = default;
    AgentSituation(AgentSituation const&) = delete;
    AgentSituation& operator=(AgentSituation const&) = delete;
    virtual ~AgentSituation() = default;

    virtual bool was_created_by(SymbolIndex event) const = 0;
    /// Whether the agent came in at a portal, walkable object or zone.
    virtual bool entered_at(SymbolIndex place) const = 0;
    virtual bool has_profile(SymbolIndex profile) const = 0;
    virtual bool is_in(SymbolIndex area) const = 0;
    virtual bool holds(SymbolIndex token) const = 0;
};

/// What only tests ask.
struct TestSituation : AgentSituation {
    /// Seconds since the agent came in.
    virtual double age() const = 0;
    /// Whether the first exit that the agent was given is the portal.
    virtual bool initial_exit_is(SymbolIndex portal) const = 0;
    virtual ChanceKey chance_key() const = 0;

    virtual bool is_active(SymbolIndex event) const = 0;
    /// @param way BALL_TO_BOX or BOX_TO_BALL
    virtual bool is_gate_open(SymbolIndex gate, GateStateDirection way) const = 0;
    /// @param point ENTRANCE or EXIT
    virtual bool is_server_open(SymbolIndex server, ServerAccessPoint point) const = 0;
    virtual double tally(SymbolIndex tally) const = 0;
    /// Seconds after midnight.
    virtual double clock() const = 0;
    /// Seconds after midnight; infinity while it is not known because the event that it depends on has not started.
    virtual double time(SymbolIndex time) const = 0;
};

/// What only filters ask, about an agent in one frame. Trips, transitions and the like are numbers of `FilterProgram`.
struct FilterSituation : AgentSituation {
    virtual bool exited_at(SymbolIndex place) const = 0;
    virtual bool is_at_server(SymbolIndex server) const = 0;
    virtual bool is_on_trip(SymbolIndex trip) const = 0;
    virtual bool makes_transition(SymbolIndex transition) const = 0;
    virtual bool is_close_to_others(SymbolIndex proximity) const = 0;
    /// Whether the agent passes the filter in any frame.
    virtual bool ever_passes(SymbolIndex filter) const = 0;
    virtual AgentActivity activity() const = 0;
    virtual AgentStateAtSimulationEnd end_state() const = 0;
    /// Persons per square metre.
    virtual double density() const = 0;
    /// Metres per second.
    virtual double speed() const = 0;
};

}  // namespace pedflux::engine
