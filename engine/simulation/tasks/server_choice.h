#pragma once

#include "engine/simulation/world/places.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// Agents that choose among stations: servers, dispatches, portals and areas. Choosing puts tests to the agent and may
/// draw random numbers.
namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;

/// Chooses the stations that an agent goes to rather than to others, and returns their numbers in the list: of the
/// servers those whose required test it passes; of these those that are open and have room, if any; of these those
/// whose preferred test it passes, if any. What is no server has no tests, but always room; a dispatch has as much as
/// its sinks.
std::vector<std::size_t> choose_best_stations(TaskContext& context, AgentMotion const& motion,
                                              std::span<PlaceIndex const> stations);

/// Chooses among process starts for an agent: of the best, one by the weights. None when it may use none of them.
/// @param drawn the one that was drawn among all by the weights
/// @param weights one for each place, or none for equal chances
std::optional<PlaceIndex> choose_start(TaskContext& context, AgentMotion const& motion,
                                       std::span<PlaceIndex const> starts, std::size_t drawn,
                                       std::span<double const> weights);

}  // namespace pedflux::engine
