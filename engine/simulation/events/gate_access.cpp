#include "engine/simulation/events/gate_access.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/tasks/live_situation.h"

#include <pedflux/exception.h>

#include <algorithm>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// The draws of tests at gates begin here, apart from those of actions.
constexpr std::uint64_t gate_draws = std::uint64_t{1} << 40;

Sides sides_of(ConnectionObjectDirection direction) {
    return {direction != ConnectionObjectDirection::BOX_TO_BALL, direction != ConnectionObjectDirection::BALL_TO_BOX};
}

AccessRule rule_of(GateAccessState const& access, int frame_rate, FloorPlan const& plan,
                   BehaviourProgram const& program, TriggerCompiler& triggers) {
    auto rule = access_rule_of(access, frame_rate, triggers);
    if (access.test) rule.test = program.gate_tests.at(access.id);
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

Opening opening_of(AccessControl const& control, Clock const& clock, Passageway const& directions,
                   std::size_t passageway, std::size_t way) {
    bool const has_its_way = way == 0 ? directions.ball_to_box : directions.box_to_ball;
    if (!has_its_way) return {false, false};
    // Tests may let everybody pass, or nobody.
    auto const open_to = [&](bool those_that_open) {
        return control.is_open(passageway, way, clock.frame, [&](std::size_t number) {
            auto const& rule = control.rules[number];
            return !rule.test || rule.opens == those_that_open;
        });
    };
    return {open_to(true), open_to(false)};
}

GateState wanted_state(AccessControl const& control, Clock const& clock, Passageway const& directions,
                       std::size_t passageway) {
    auto const there = opening_of(control, clock, directions, passageway, 0);
    auto const back = opening_of(control, clock, directions, passageway, 1);
    return {there.to_some, back.to_some, there.to_some && !there.to_all, back.to_some && !back.to_all};
}

/// The ways that are open to some agents, but not to this one.
std::vector<std::uint32_t> closed_to(AccessControl const& control, TaskContext const& context,
                                     AgentMotion const& motion) {
    auto const concerns = [&](std::size_t rule) {
        auto const& test = control.rules[rule].test;
        return !test || passes(*test, LiveSituation(context, motion, gate_draws + rule));
    };
    std::vector<std::uint32_t> closed;
    for (std::size_t i = 0; i < context.gates.states.size(); ++i) {
        auto const& state = context.gates.states[i];
        for (std::size_t way = 0; way < 2; ++way) {
            bool const is_asked = way == 0 ? state.ball_to_box_for_some : state.box_to_ball_for_some;
            if (is_asked && !control.is_open(i, way, context.clock.frame, concerns)) closed.push_back(way_into(i, way));
        }
    }
    return closed;
}

}  // namespace

std::vector<AccessRule> gate_rules_of(Document const& document, FloorPlan const& plan, BehaviourProgram const& program,
                                      TriggerCompiler& triggers) {
    std::vector<AccessRule> rules;
    for (auto const* const access : document.objects<GateAccessState>()) {
        if (!access->enabled) continue;
        try {
            rules.push_back(rule_of(*access, document.settings.frame_rate, plan, program, triggers));
        } catch (Exception const& exception) {
            refuse(fmt::format("{}: {}", title_of(*access), exception.GetMessage()));
        }
    }
    return rules;
}

void obey_gate_rules(AccessControl& control, TriggerRun const& triggers, Clock const& clock, FloorPlan const& plan,
                     Gates& gates, navigation::Navigation& navigation, crowd::Crowd& crowd) {
    if (control.rules.empty()) return;
    update_ranges(control, triggers, clock.frame);
    for (std::size_t i = 0; i < gates.states.size(); ++i) {
        if (!plan.passageways[i].gated) continue;
        auto const wanted = wanted_state(control, clock, plan.passageways[i], i);
        if (wanted != gates.states[i]) set_gate(gates, plan, navigation, crowd, i, wanted);
    }
}

void close_gates_by_tests(AccessControl const& control, TaskContext& context) {
    bool const any_asks =
        std::ranges::any_of(control.rules, [](AccessRule const& rule) { return rule.test.has_value(); });
    if (!any_asks) return;
    for (auto& motion : context.agents.motions) {
        set_closed(context.routes, context.world, context.agents, motion, closed_to(control, context, motion));
    }
}

void set_gate_by_program(AccessControl& control, Clock const& clock, FloorPlan const& plan, Gates& gates,
                         navigation::Navigation& navigation, crowd::Crowd& crowd, std::size_t passageway,
                         ConnectionObjectDirection direction, std::optional<bool> open) {
    set_by_program(control, passageway, sides_of(direction), open);
    auto const wanted = wanted_state(control, clock, plan.passageways[passageway], passageway);
    if (wanted != gates.states[passageway]) set_gate(gates, plan, navigation, crowd, passageway, wanted);
}

}  // namespace pedflux::engine
