#pragma once

#include "engine/simulation/events/access_control.h"
#include "engine/simulation/world/floor_plan.h"

#include <pedflux/conditions.h>

#include <optional>

/// Entrances and exits of servers that rules and programs open and close.
namespace pedflux::engine {

struct SimulationState;

/// The entrance and the exit are the sides 0 and 1.
inline constexpr std::size_t entrance_side = 0;
inline constexpr std::size_t exit_side = 1;

/// Compiles the enabled rules. Throws Exception that names those which simulations do not follow.
AccessRules server_rules_of(Document const& document, FloorPlan const& plan, TriggerCompiler& triggers);

/// Opens and closes what the rules want in this frame.
void obey_server_rules(SimulationState& run);
/// The program opens or closes a side of a server, or leaves it to the rules again.
void set_server_by_program(SimulationState& run, std::uint32_t server, std::size_t side, std::optional<bool> open);

/// Whether a server is open at a point, or at both of them. What is no server of the simulation is closed.
bool is_open(SimulationState const& run, std::uint32_t server, ServerAccessPoint point);

}  // namespace pedflux::engine
