#pragma once

#include "engine/simulation/world/places.h"

#include <pedflux/color.h>
#include <pedflux/identifiers.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace pedflux::engine {

class Document;

inline constexpr std::uint32_t no_source = std::numeric_limits<std::uint32_t>::max();

/// A person before it enters. Its random choices were made when the simulation was created, so they do not depend on
/// when there is room for it. Lengths in metres, speeds in metres per second, times in seconds since the start.
struct SpawnRequest {
    double due = 0;                    ///< of those who are planned: after their event starts
    std::uint32_t source = no_source;  ///< its event's number among the enabled ones with people
    std::uint32_t key = 0;             ///< the person's number among all who were planned
    PlaceIndex origin = no_place;
    PlaceIndex destination = no_place;  ///< none: the person stays where it starts
    std::uint32_t choices = no_place;   ///< which of the choices below it takes the nearest of
    double wait = 0;                    ///< before it walks
    double speed = 1.34;
    double radius = 0.2;
    double side_bias = 0;
    std::optional<GlobalId> network;  ///< none: all ways
    double climbing = 1;              ///< what a metre on stairs and slopes counts as on its routes, in metres
    double waiting = 1;               ///< what a second in a queue counts as, in seconds of walking
    GlobalId event;                   ///< that brings it; invalid for those whom a program asked for
    GlobalId profile;
    std::optional<GlobalId> avatar;
    Color color;
};

/// Everyone who is to come.
struct SpawnRequests {
    std::vector<std::vector<SpawnRequest>> by_origin;  ///< of each place, in the order in which they are due
    std::vector<std::vector<PlaceIndex>> choices;      ///< sets of destinations of which people take the nearest
    std::size_t count = 0;
};

/// Plans the people of all enabled events. Throws Exception in one sentence when there are none.
SpawnRequests spawn_requests_of(Document const& document, Places& places, std::uint64_t seed);

/// Plans the people of a further start of an event, with numbers of their own. The first start was planned with all.
/// @param source the event's number
/// @param start from 1
/// @param first_key the first person's number
std::vector<SpawnRequest> people_of_start(Document const& document, Places& places, std::uint64_t seed,
                                          GlobalId const& event, std::uint32_t source, std::uint32_t start,
                                          std::size_t first_key);

/// A person of a profile, or of a default profile where there is none; nothing else of it is set.
SpawnRequest person_of(Document const& document, GlobalId const& profile, std::uint64_t seed, std::uint32_t key);

}  // namespace pedflux::engine
