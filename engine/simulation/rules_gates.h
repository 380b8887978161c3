#pragma once

#include "engine/behaviour/agent_test_plan.h"
#include "engine/behaviour/trigger_run.h"
#include "engine/simulation/floor_plan.h"

#include <pedflux/scene.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

/// Gates that rules and programs open and close.
namespace pedflux::engine {

struct AgentRules;
struct LiveRun;

/// A rule that opens or closes gates while its range holds.
struct GateRule {
    std::vector<std::size_t> gates;
    MomentIndex range = 0;
    bool opens = true;
    std::array<bool, 2> ways{};      ///< that it concerns: from ball to box, from box to ball
    std::int64_t on = 0;             ///< frames; 0: without a cycle
    std::int64_t off = 0;            ///< frames
    std::int64_t began = -1;         ///< frame; below 0 while the range does not hold
    std::optional<TestPlan> test{};  ///< whom it concerns; none: all

    bool is_obeyed(std::int64_t frame) const { return began >= 0 && (on == 0 || (frame - began) % (on + off) < on); }
};

/// What the project's rules and the program want of the gates.
struct GateRules {
    std::vector<GateRule> rules;                                   ///< in the order of the project
    std::vector<std::array<std::optional<bool>, 2>> from_program;  ///< of each passageway and way; before all rules
};

/// Compiles the enabled rules. Throws Exception that names those which simulations do not follow.
/// @param compiled has the tests
GateRules gate_rules_of(Document const& document, FloorPlan const& plan, AgentRules const& compiled,
                        TriggerCompiler& triggers);

/// Whether a direction has a way; ways are numbered as above.
bool has_way(ConnectionObjectDirection direction, std::size_t way);

/// Opens and closes what the rules want in this frame.
void obey_gate_rules(LiveRun& run);
/// Puts the tests of the rules to everybody, and closes the gates that they find closed to their ways. By chance, a
/// rule concerns the same people as long as the simulation runs.
void show_gates(LiveRun& run);
/// The program opens or closes a gate, or leaves it to the rules again.
void set_gate_by_program(LiveRun& run, std::size_t passageway, ConnectionObjectDirection direction,
                         std::optional<bool> open);

}  // namespace pedflux::engine
