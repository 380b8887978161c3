#include "engine/simulation/events/gate_access.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

/// Draws of tests at gates, apart from those of actions.
constexpr std::uint64_t gate_draws = std::uint64_t{1} << 40;

Sides sides_of(ConnectionObjectDirection direction) {
    return {direction != ConnectionObjectDirection::BOX_TO_BALL, direction != ConnectionObjectDirection::BALL_TO_BOX};
}

AccessRule rule_of(GateAccessState const& access, int frame_rate, FloorPlan const& plan,
                   BehaviourProgram const& compiled, TriggerCompiler& triggers) {
    auto rule = access_rule_of(access, frame_rate, triggers);
    if (access.test) rule.test = compiled.gate_tests.at(access.id);
    for (std::size_t i = 0; i < plan.passageways.size(); ++i) {
        auto const& id = plan.surfaces[plan.passageways[i].region].id;
        auto const is_gate = [&](GlobalId const& gate) { return gate.InternalEquals(id); };
        if (plan.passageways[i].gated && std::ranges::any_of(access.gates, is_gate)) rule.things.push_back(i);
    }
    rule.sides = sides_of(access.direction);
    return rule;
}

/// To whom the gate may be open one way.
struct Opening {
    bool to_some = true;
    bool to_all = true;
};

Opening opening_of(SimulationState const& run, std::size_t passageway, std::size_t way) {
    auto const& gates = run.events->gates;
    bool const has_its_way =
        way == 0 ? run.plan.passageways[passageway].ball_to_box : run.plan.passageways[passageway].box_to_ball;
    if (!has_its_way) return {false, false};
    // Tests may let everybody pass, or nobody.
    auto const open_to = [&](bool those_that_open) {
        return gates.is_open(passageway, way, run.frame,
                             [&](AccessRule const& rule) { return !rule.test || rule.opens == those_that_open; });
    };
    return {open_to(true), open_to(false)};
}

void update(SimulationState& run, std::size_t passageway) {
    auto const there = opening_of(run, passageway, 0);
    auto const back = opening_of(run, passageway, 1);
    GateState const wanted{there.to_some, back.to_some, there.to_some && !there.to_all, back.to_some && !back.to_all};
    if (wanted != run.gates[passageway]) set_gate(run, passageway, wanted);
}

/// The ways that are open to some, but not to the walker.
std::vector<std::uint32_t> closed_to(SimulationState const& run, AgentMotion const& motion) {
    auto const& gates = run.events->gates;
    auto const concerns = [&](AccessRule const& rule) {
        if (!rule.test) return true;
        auto const number = static_cast<std::uint64_t>(&rule - gates.rules.data());
        return passes(*rule.test, LiveSituation(run, motion, gate_draws + number));
    };
    std::vector<std::uint32_t> closed;
    for (std::size_t i = 0; i < run.gates.size(); ++i) {
        auto const& state = run.gates[i];
        for (std::size_t way = 0; way < 2; ++way) {
            bool const is_asked = way == 0 ? state.ball_to_box_for_some : state.box_to_ball_for_some;
            if (is_asked && !gates.is_open(i, way, run.frame, concerns)) closed.push_back(way_into(i, way));
        }
    }
    return closed;
}

}  // namespace

AccessRules gate_rules_of(Document const& document, FloorPlan const& plan, BehaviourProgram const& compiled,
                          TriggerCompiler& triggers) {
    AccessRules gates;
    gates.from_program.resize(plan.passageways.size());
    for (auto const* const access : document.objects<GateAccessState>()) {
        if (!access->enabled) continue;
        try {
            gates.rules.push_back(rule_of(*access, document.settings.frame_rate, plan, compiled, triggers));
        } catch (Exception const& exception) {
            refuse(title_of(*access) + ": " + exception.GetMessage());
        }
    }
    return gates;
}

void obey_gate_rules(SimulationState& run) {
    auto& gates = run.events->gates;
    if (gates.rules.empty()) return;
    gates.step(*run.events, run.frame);
    for (std::size_t i = 0; i < run.gates.size(); ++i) {
        if (run.plan.passageways[i].gated) update(run, i);
    }
}

void show_gates(SimulationState& run) {
    bool const any_asks =
        std::ranges::any_of(run.events->gates.rules, [](AccessRule const& rule) { return rule.test.has_value(); });
    if (!any_asks) return;
    for (auto& motion : run.motions) set_closed(run, motion, closed_to(run, motion));
}

void set_gate_by_program(SimulationState& run, std::size_t passageway, ConnectionObjectDirection direction,
                         std::optional<bool> open) {
    run.events->gates.obey_program(passageway, sides_of(direction), open);
    update(run, passageway);
}

}  // namespace pedflux::engine
