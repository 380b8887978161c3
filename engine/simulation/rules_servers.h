#pragma once

#include "engine/simulation/floor_plan.h"
#include "engine/simulation/rules_access.h"

#include <pedflux/conditions.h>

#include <optional>

/// Entrances and exits of servers that rules and programs open and close.
namespace pedflux::engine {

struct LiveRun;

/// The entrance and the exit are the sides 0 and 1.
inline constexpr std::size_t entrance_side = 0;
inline constexpr std::size_t exit_side = 1;

/// Compiles the enabled rules. Throws Exception that names those which simulations do not follow.
AccessRules server_rules_of(Document const& document, FloorPlan const& plan, TriggerCompiler& triggers);

/// Opens and closes what the rules want in this frame.
void obey_server_rules(LiveRun& run);
/// The program opens or closes a side of a server, or leaves it to the rules again.
void set_server_by_program(LiveRun& run, std::uint32_t server, std::size_t side, std::optional<bool> open);

/// Whether a server is open at a point, or at both of them. What is no server of the simulation is closed.
bool is_open(LiveRun const& run, std::uint32_t server, ServerAccessPoint point);

}  // namespace pedflux::engine
