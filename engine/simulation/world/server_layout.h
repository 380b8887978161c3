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

/// Where a server and its queue are in the building. Lengths in metres.
struct ServerLayout {
    GlobalId id;
    std::string title;
    navigation::RegionIndex region = navigation::none;
    std::vector<Point> line;              ///< of the queue, from where agents are served on; neighbouring points differ
    double spacing = 0;                   ///< from one agent in the queue to the next
    std::optional<std::size_t> capacity;  ///< greatest number in the queue, including the one that is served
    std::string problem;                  ///< why it cannot be reached; empty when it can
};

/// The enabled servers, in the order of the project.
std::vector<ServerLayout> server_layouts_of(Document const& document, FloorPlan const& plan);

/// The number of a server in the plan; no_server for other objects and disabled servers.
std::uint32_t server_of(FloorPlan const& plan, GlobalId const& object);

/// The parts of the queue's line that can be walked on, as the destination of routes to the server.
std::vector<navigation::RegionLine> lines_to_go_to(ServerLayout const& server, FloorPlan const& plan);

}  // namespace pedflux::engine
