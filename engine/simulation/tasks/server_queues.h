#pragma once

#include "engine/behaviour/tallies/tally_program.h"
#include "engine/navigation/navigation.h"
#include "engine/simulation/world/places.h"
#include "engine/simulation/world/server_layout.h"

#include <pedflux/conditions.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Servers while a simulation runs.
///
/// An agent that seeks a server is one of its visitors until it leaves it. Those who have come to the queue stand in
/// line, each at its place behind the one before, first come first served. The first one is served at the head of the
/// line when the entrance is open, and makes room for the next when it has been served and the exit is open.
namespace pedflux::engine {

/// The entrance and the exit are the sides 0 and 1.
inline constexpr std::size_t entrance_side = 0;
inline constexpr std::size_t exit_side = 1;

struct ServerQueue {
    std::array<bool, 2> open{true, true};  ///< entrance and exit
    std::vector<Point> places;             ///< to stand at, from the head of the line on; more stand at the last one
    std::vector<std::uint32_t> line;       ///< of agents, the first one served first
    bool serves = false;                   ///< the first one is being served, or stays as the exit is closed
    bool has_served = false;               ///< the first one stays as the exit is closed
    double ends = 0;                       ///< seconds at which the first one has been served
    double free_since = 0;                 ///< seconds
    double open_since = 0;                 ///< seconds at which the entrance was opened last
    std::size_t visitors = 0;              ///< those in line and those on the way
};

struct ServerQueues {
    std::vector<ServerQueue> queues;  ///< of the floor plan's servers
};

/// The servers of the plan with their places, which keep clear of walls. The line goes on straight beyond its end as
/// long as there is room.
ServerQueues server_queues_of(FloorPlan const& plan, navigation::Navigation const& navigation);

/// Whether a server is open at a point, or at both of them. What is no server of the simulation is closed.
bool is_open(ServerQueues const& servers, std::uint32_t server, ServerAccessPoint point);

/// What a tally measures of a server.
double server_number(ServerQueues const& servers, FloorPlan const& plan, std::uint32_t server, ServerMeasure measure);

/// How many agents are at a server or on the way there; 0 for another place.
std::size_t visitors_of(ServerQueues const& servers, Places const& places, PlaceIndex place);

}  // namespace pedflux::engine
