#pragma once

#include "engine/behaviour/actions/action_stack.h"

#include <cstdint>

/// Agents that visit servers.
namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;

/// Sends an agent to a server; it leaves the one that it was at.
void visit_server(TaskContext& context, AgentMotion const& motion, std::uint32_t server, ActionTask const& task);
/// Takes a visitor away from its server: it leaves the line, and does what the server says on release. An agent that
/// has been served has passed this station of its process. Nothing happens to others.
void leave_server(TaskContext& context, std::uint32_t agent);

/// Lets agents come to the servers, be served and leave them.
void step_servers(TaskContext& context);

}  // namespace pedflux::engine
