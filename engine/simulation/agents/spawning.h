#pragma once

#include "engine/simulation/agents/spawn_program.h"
#include "engine/simulation/agents/spawn_requests.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Who is still to enter, and how many agents each event has.
namespace pedflux::engine {

/// An enabled event that brings agents.
struct SpawnSource {
    std::vector<SpawnRequest> planned;  ///< of its first start; their times count from it
    std::size_t here_or_coming = 0;
    std::uint32_t starts = 0;
    bool brings_agents = false;
};

struct Spawning {
    SpawnProgram program;  ///< const once compiled
    SpawnRequests requests;
    std::vector<std::size_t> next_request;  ///< of each place, in its list of requests
    std::vector<std::uint32_t> entered_at;  ///< of each doorway, how many entered there
    std::size_t waiting_to_enter = 0;
    std::vector<SpawnSource> sources;  ///< of each enabled event with people, in the order of the project
};

}  // namespace pedflux::engine
