#pragma once

#include "engine/behaviour/symbol_table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/conditions.h>

#include <cstdint>

/// What compiled tests and filters ask about one agent at one moment. Who runs them answers. Objects, tallies, times
/// and the like are numbers of `SymbolTable`.
namespace pedflux::engine {

/// What tests and filters both ask.
struct AgentFacts {
    AgentFacts() = default;
    AgentFacts(AgentFacts const&) = delete;
    AgentFacts& operator=(AgentFacts const&) = delete;
    virtual ~AgentFacts() = default;

    virtual bool was_created_by(SymbolIndex event) const = 0;
    /// Whether the agent came in at a portal, walkable object or zone.
    virtual bool entered_at(SymbolIndex place) const = 0;
    virtual bool has_profile(SymbolIndex profile) const = 0;
    virtual bool is_in(SymbolIndex area) const = 0;
    virtual bool holds(SymbolIndex token) const = 0;
};

/// One draw of chance: the same numbers give the same draw on every platform and in every order of asking.
struct ChanceKey {
    std::uint64_t seed;
    std::uint64_t agent;
    std::uint64_t step;
};

/// A test's questions.
struct TestSituation : AgentFacts {
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

/// A filter's questions. In a running simulation the answers about the end are those of an end at this moment.
struct FilterSituation : AgentFacts {
    virtual AgentStateAtSimulationEnd end_state() const = 0;
    /// Whether the agent left at a portal, walkable object or zone.
    virtual bool exited_at(SymbolIndex place) const = 0;

    virtual AgentActivity activity() const = 0;
    /// Whether the agent queues at the server or is served by it.
    virtual bool is_at(SymbolIndex server) const = 0;
    /// Whether the agent makes the transition in this step.
    virtual bool makes(SymbolIndex transition) const = 0;
    // NOLINTNEXTLINE(bugprone-virtual-near-miss): a trip is another thing than an area.
    virtual bool is_on(SymbolIndex trip) const = 0;
    /// Metres per second.
    virtual double speed() const = 0;
    /// Persons per square metre around the agent.
    virtual double local_density() const = 0;
    /// Whether another agent is at most so many metres away; behind walls and barriers only if those are ignored.
    virtual bool has_neighbor_within(double distance, bool ignore_barriers) const = 0;
};

}  // namespace pedflux::engine
