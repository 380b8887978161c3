#pragma once

#include "engine/simulation/events/access_control.h"
#include "engine/simulation/tasks/task_context.h"

#include <pedflux/scene.h>

#include <optional>
#include <vector>

/// Gates that access rules and programs open and close: the passageways, from ball to box and from box to ball.
namespace pedflux::engine {

class Document;

/// Compiles the enabled rules of a project. Throws Exception that names those which simulations do not follow.
/// @param program has the tests
std::vector<AccessRule> gate_rules_of(Document const& document, FloorPlan const& plan, BehaviourProgram const& program,
                                      TriggerCompiler& triggers);

/// Opens and closes what the rules want in this frame.
void obey_gate_rules(AccessControl& control, TriggerRun const& triggers, Clock const& clock, FloorPlan const& plan,
                     Gates& gates, navigation::Navigation& navigation, crowd::Crowd& crowd);
/// Puts the tests of the rules to all agents, and closes the gates on the routes of those to whom they are closed. By
/// chance, a rule concerns the same agents as long as the simulation runs.
void close_gates_by_tests(AccessControl const& control, TaskContext& context);
/// The program opens or closes a gate, or leaves it to the rules again.
void set_gate_by_program(AccessControl& control, Clock const& clock, FloorPlan const& plan, Gates& gates,
                         navigation::Navigation& navigation, crowd::Crowd& crowd, std::size_t passageway,
                         ConnectionObjectDirection direction, std::optional<bool> open);

}  // namespace pedflux::engine
