#pragma once

#include "engine/navigation/navigation_input.h"

#include <pedflux/identifiers.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace pedflux::engine {

class Document;
struct FloorPlan;

inline constexpr std::uint32_t no_server = std::numeric_limits<std::uint32_t>::max();

/// A server as it stands in the building. Lengths in metres.
struct ServerLayout {
    GlobalId id;
    std::string title;
    navigation::RegionIndex region = navigation::none;
    std::vector<Point> line;  ///< along which people queue, from where they are served on; neighbours differ
    double spacing = 0;       ///< from one who queues to the next
    std::optional<std::size_t> capacity;  ///< most who queue, with the one who is served
    std::string problem;                  ///< why nobody can go there; empty when all is well
};

/// The enabled servers, in the order of the project.
std::vector<ServerLayout> server_plans_of(Document const& document, FloorPlan const& plan);

/// The number of a server in the plan; no_server for what is none or not enabled.
std::uint32_t server_of(FloorPlan const& plan, GlobalId const& object);

/// The parts of the line that can be walked on, for routes to the server.
std::vector<navigation::RegionLine> lines_to_go_to(ServerLayout const& server, FloorPlan const& plan);

}  // namespace pedflux::engine
