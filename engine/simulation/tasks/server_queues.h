#pragma once

#include "engine/behaviour/actions/action_program.h"
#include "engine/behaviour/actions/action_stack.h"
#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/behaviour/tests/test_program.h"
#include "engine/simulation/world/places.h"
#include "engine/simulation/world/server_layout.h"

#include <pedflux/tallies.h>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

/// Servers while a simulation runs.
///
/// Who seeks a server is one of its visitors until it leaves it. Those who have come to the queue stand in line, each
/// at its place behind the one before, first come first served. The first one is served at the head of the line when
/// the entrance is open, and makes room for the next when it has been served and the exit is open.
namespace pedflux::engine {

struct SimulationState;
struct AgentMotion;

/// What a server tells those who come, compiled when the simulation is created.
struct ServerRules {
    std::optional<TestProgram> required;
    std::optional<TestProgram> preferred;
    std::vector<std::pair<TestProgram, DistributionSpec>>
        contact_rules;                             ///< the first test that passes gives the seconds
    std::optional<DistributionSpec> contact_time;  ///< seconds for all others
    int processed_action = NONE;
    int release_action = NONE;
};

struct ServerQueue {
    std::array<bool, 2> open{true, true};  ///< entrance and exit
    std::vector<Point> places;             ///< to stand at, from where people are served on; more stand at the last one
    std::vector<std::uint32_t> line;       ///< of agents, the first one served first
    bool serves = false;                   ///< the first one is being served, or stays as the exit is closed
    bool has_served = false;               ///< the first one stays as the exit is closed
    double ends = 0;                       ///< seconds at which the first one has been served
    double free_since = 0;                 ///< seconds
    double open_since = 0;                 ///< seconds at which the entrance was opened last
    std::size_t visitors = 0;              ///< those in line and those on the way
};

/// The servers of the plan with their places, which keep clear of walls. The line goes on straight beyond its end as
/// long as there is room.
std::vector<ServerQueue> server_queues_of(SimulationState const& run);

/// What a kind of server tally says of a server.
double server_number(SimulationState const& run, std::uint32_t server, TallyType kind);

/// How many are at a server or on the way there; nobody for another place.
std::size_t visitors_of(SimulationState const& run, PlaceIndex place);

/// Those of some stations that an agent goes to rather than to others: of the servers those whose required test it
/// passes; of these those that are open and have room, if any; of these those whose preferred test it passes, if any.
/// What is no server has no tests, but always room; a dispatch has as much as its sinks.
std::vector<std::size_t> best_stations(SimulationState& run, AgentMotion const& motion,
                                       std::span<PlaceIndex const> stations);

/// Chooses among process starts for an agent: of the best, one by the weights. None when it may use none of them.
/// @param drawn the one that was drawn among all by the weights
/// @param weights one for each place, or none for equal chances
std::optional<PlaceIndex> choose_start(SimulationState& run, AgentMotion const& motion,
                                       std::span<PlaceIndex const> starts, std::size_t drawn,
                                       std::span<double const> weights);

/// Sends somebody to a server; it leaves the one that it was at.
void visit_server(SimulationState& run, AgentMotion const& motion, std::uint32_t server, ActionTask const& task);
/// Takes a visitor away from its server: it leaves the line, and does what the server says on release. Who has been
/// served has passed this station of its process. Nothing happens to others.
void leave_server(SimulationState& run, std::uint32_t agent);

/// Lets people come to the servers, be served and leave them.
void step_servers(SimulationState& run);

}  // namespace pedflux::engine
