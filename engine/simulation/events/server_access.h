#pragma once

#include "engine/simulation/events/access_control.h"
#include "engine/simulation/tasks/server_queues.h"
#include "engine/simulation/world/clock.h"

#include <optional>
#include <vector>

/// Entrances and exits of servers that access rules and programs open and close.
namespace pedflux::engine {

class Document;

/// Compiles the enabled rules of a project. Throws Exception that names those which simulations do not follow.
std::vector<AccessRule> server_rules_of(Document const& document, FloorPlan const& plan, TriggerCompiler& triggers);

/// Opens and closes what the rules want in this frame.
void obey_server_rules(AccessControl& control, TriggerRun const& triggers, Clock const& clock, ServerQueues& servers);
/// The program opens or closes a side of a server, or leaves it to the rules again.
void set_server_by_program(AccessControl& control, Clock const& clock, ServerQueues& servers, std::uint32_t server,
                           std::size_t side, std::optional<bool> open);

}  // namespace pedflux::engine
