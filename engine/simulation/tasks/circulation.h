#pragma once

#include <cstdint>

/// Agents that walk from portal to portal.
namespace pedflux::engine {

struct AgentInfo;
struct AgentMotion;
struct TaskContext;

/// Draws for how long an agent circulates that enters; nothing happens for `no_place`.
void begin_circulation(TaskContext& context, AgentMotion const& motion, std::uint32_t circulation);

/// Sends an agent on to the next portal when it is at one, and ends its circulation when it has lasted long enough.
void circulate(TaskContext& context, AgentMotion& motion);

}  // namespace pedflux::engine
