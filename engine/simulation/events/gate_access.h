#pragma once

#include "engine/simulation/events/access_control.h"
#include "engine/simulation/world/floor_plan.h"

#include <pedflux/scene.h>

#include <optional>

/// Gates that rules and programs open and close: the passageways, from ball to box and from box to ball.
namespace pedflux::engine {

struct BehaviourProgram;
struct SimulationState;

/// Compiles the enabled rules. Throws Exception that names those which simulations do not follow.
/// @param compiled has the tests
AccessRules gate_rules_of(Document const& document, FloorPlan const& plan, BehaviourProgram const& compiled,
                          TriggerCompiler& triggers);

/// Opens and closes what the rules want in this frame.
void obey_gate_rules(SimulationState& run);
/// Puts the tests of the rules to everybody, and closes the gates that they find closed to their ways. By chance, a
/// rule concerns the same people as long as the simulation runs.
void show_gates(SimulationState& run);
/// The program opens or closes a gate, or leaves it to the rules again.
void set_gate_by_program(SimulationState& run, std::size_t passageway, ConnectionObjectDirection direction,
                         std::optional<bool> open);

}  // namespace pedflux::engine
