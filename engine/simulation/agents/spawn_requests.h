#pragma once

#include "engine/simulation/world/places.h"

#include <pedflux/color.h>
#include <pedflux/identifiers.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

/// The agents that are to enter.
namespace pedflux::engine {

struct SpawnProgram;

inline constexpr std::uint32_t no_source = std::numeric_limits<std::uint32_t>::max();

/// An agent before it enters. Its random choices are made when it is planned, so they do not depend on when there is
/// room for it. Lengths in metres, speeds in metres per second, times in seconds since the start.
struct SpawnRequest {
    double due = 0;                    ///< of a planned agent: after the start of its event
    std::uint32_t source = no_source;  ///< its event, among those of the SpawnProgram
    std::uint32_t key = 0;             ///< of its random numbers; unique
    PlaceIndex origin = no_place;
    PlaceIndex destination = no_place;  ///< none: the agent stays where it enters
    std::uint32_t choices = no_place;   ///< the set in SpawnRequests::choices of which it takes the nearest
    double wait = 0;                    ///< before it walks
    double speed = 1.34;
    double radius = 0.2;
    double side_bias = 0;
    std::optional<GlobalId> network;  ///< none: all ways
    double climbing = 1;              ///< cost of a metre on stairs and slopes, in metres on the level
    double waiting = 1;               ///< cost of a second in a queue, in seconds of walking
    GlobalId event;                   ///< invalid for agents that a program requested
    GlobalId profile;
    std::optional<GlobalId> avatar;
    Color color;
};

/// All agents that are to enter.
struct SpawnRequests {
    std::vector<std::vector<SpawnRequest>> by_origin;  ///< of each place, in the order in which they are due
    std::vector<std::vector<PlaceIndex>> choices;      ///< sets of destinations of which agents take the nearest
    std::size_t count = 0;
};

/// Plans the agents of the first start of all events. Throws Exception in one sentence when a population makes no
/// sense.
SpawnRequests spawn_requests_of(SpawnProgram const& program, Places& places, std::uint64_t seed);

/// Plans the agents of a further start of an event, in the order of their keys.
/// @param source the event's number
/// @param start from 1
/// @param first_key the first agent's key
std::vector<SpawnRequest> people_of_start(SpawnProgram const& program, Places& places, std::uint64_t seed,
                                          std::uint32_t source, std::uint32_t start, std::size_t first_key);

/// An agent of a profile, or of the default profile where the identifier is invalid; nothing else of it is set. Throws
/// Exception when the program has no such profile.
SpawnRequest person_of(SpawnProgram const& program, GlobalId const& profile, std::uint64_t seed, std::uint32_t key);

}  // namespace pedflux::engine
