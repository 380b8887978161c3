#pragma once

#include "engine/simulation/agents/agent_info.h"
#include "engine/simulation/agents/agent_motion.h"
#include "engine/simulation/agents/task_state.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// The agents of a simulation. An agent's number is its place among all who ever entered.
namespace pedflux::engine {

/// The entry of an agent that has left in `Agents::motion_of`.
inline constexpr std::uint32_t gone = std::numeric_limits<std::uint32_t>::max();

struct Agents {
    std::vector<AgentInfo> infos;          ///< of everybody
    std::vector<TaskState> tasks;          ///< of everybody
    std::vector<AgentMotion> motions;      ///< of those who are here, in the order of their numbers
    std::vector<std::uint32_t> motion_of;  ///< of everybody, its place in `motions`, or `gone`
    std::size_t orders = 0;                ///< actions of the tasks that programs have given so far

    bool is_here(std::uint32_t agent) const { return motion_of[agent] != gone; }
    AgentMotion& motion(std::uint32_t agent) { return motions[motion_of[agent]]; }
    AgentMotion const& motion(std::uint32_t agent) const { return motions[motion_of[agent]]; }
};

/// Closes the gaps in `motions` that agents have left who are gone.
void remove_gone(Agents& agents);

}  // namespace pedflux::engine
