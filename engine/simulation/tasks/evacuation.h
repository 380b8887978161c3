#pragma once

#include <cstddef>
#include <vector>

namespace pedflux::engine {

struct TaskContext;

/// Sends those out who are in the zones of evacuations that have started since the last call.
/// @param starts of the event of each clearance, how many were obeyed
void clear_zones(TaskContext& context, std::vector<std::size_t>& starts);

}  // namespace pedflux::engine
