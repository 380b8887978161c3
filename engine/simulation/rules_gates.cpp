#include "engine/simulation/rules_gates.h"

#include "engine/behaviour/access_rule_states.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/agent_situation_live.h"
#include "engine/simulation/rules_run.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

/// Draws of tests at gates, apart from those of actions.
constexpr std::uint64_t gate_draws = std::uint64_t{1} << 40;

GateRule rule_of(GateAccessState const& access, FloorPlan const& plan, AgentRules const& compiled,
                 TriggerCompiler& triggers) {
    GateRule rule;
    if (access.test) rule.test = compiled.gate_tests.at(access.id);
    for (std::size_t i = 0; i < plan.passageways.size(); ++i) {
        auto const& id = plan.surfaces[plan.passageways[i].region].id;
        auto const is_gate = [&](GlobalId const& gate) { return gate.InternalEquals(id); };
        if (plan.passageways[i].gated && std::ranges::any_of(access.gates, is_gate)) rule.gates.push_back(i);
    }
    rule.range = triggers.add(*access.range);
    rule.opens = access.opens;
    for (std::size_t way = 0; way < rule.ways.size(); ++way) rule.ways[way] = has_way(access.direction, way);
    return rule;
}

/// Whether the gate is open one way to those whom the rules concern that are asked for: as the program says, or else as
/// the rule that began last, or else as it stands.
template <class Concerns>
bool is_open(GateRules const& gates, std::size_t passageway, std::size_t way, std::int64_t frame,
             Concerns const& concerns) {
    if (auto const by_program = gates.from_program[passageway][way]) return *by_program;
    GateRule const* last = nullptr;
    for (auto const& rule : gates.rules) {
        if (!rule.ways[way] || !rule.is_obeyed(frame)) continue;
        if (std::ranges::find(rule.gates, passageway) == rule.gates.end()) continue;
        if ((!last || rule.began >= last->began) && concerns(rule)) last = &rule;
    }
    return !last || last->opens;
}

/// To whom the gate may be open one way.
struct Opening {
    bool to_some = true;
    bool to_all = true;
};

Opening opening_of(LiveRun const& run, std::size_t passageway, std::size_t way) {
    auto const& gates = run.timed->gates;
    bool const has_its_way =
        way == 0 ? run.plan.passageways[passageway].ball_to_box : run.plan.passageways[passageway].box_to_ball;
    if (!has_its_way) return {false, false};
    // Tests may let everybody pass, or nobody.
    auto const open_to = [&](bool those_that_open) {
        return is_open(gates, passageway, way, run.frame,
                       [&](GateRule const& rule) { return !rule.test || rule.opens == those_that_open; });
    };
    return {open_to(true), open_to(false)};
}

void update(LiveRun& run, std::size_t passageway) {
    auto const there = opening_of(run, passageway, 0);
    auto const back = opening_of(run, passageway, 1);
    GateState const wanted{there.to_some, back.to_some, there.to_some && !there.to_all, back.to_some && !back.to_all};
    if (wanted != run.gates[passageway]) set_gate(run, passageway, wanted);
}

/// The ways that are open to some, but not to the walker.
std::vector<std::uint32_t> closed_to(LiveRun const& run, Walker const& walker) {
    auto const& gates = run.timed->gates;
    auto const concerns = [&](GateRule const& rule) {
        if (!rule.test) return true;
        auto const number = static_cast<std::uint64_t>(&rule - gates.rules.data());
        return passes(*rule.test, LiveSituation(run, walker, gate_draws + number));
    };
    std::vector<std::uint32_t> closed;
    for (std::size_t i = 0; i < run.gates.size(); ++i) {
        auto const& state = run.gates[i];
        for (std::size_t way = 0; way < 2; ++way) {
            bool const is_asked = way == 0 ? state.ball_to_box_for_some : state.box_to_ball_for_some;
            if (is_asked && !is_open(gates, i, way, run.frame, concerns)) closed.push_back(way_into(i, way));
        }
    }
    return closed;
}

}  // namespace

bool has_way(ConnectionObjectDirection direction, std::size_t way) {
    auto const only = way == 0 ? ConnectionObjectDirection::BALL_TO_BOX : ConnectionObjectDirection::BOX_TO_BALL;
    return direction == ConnectionObjectDirection::BOTH_WAYS || direction == only;
}

GateRules gate_rules_of(Document const& document, FloorPlan const& plan, AgentRules const& compiled,
                        TriggerCompiler& triggers) {
    GateRules gates;
    gates.from_program.resize(plan.passageways.size());
    for (auto const* const access : document.objects<GateAccessState>()) {
        if (!access->enabled) continue;
        try {
            auto& rule = gates.rules.emplace_back(rule_of(*access, plan, compiled, triggers));
            if (!access->cycle) continue;
            rule.on = std::int64_t{access->cycle->on} * document.settings.frame_rate;
            rule.off = std::int64_t{access->cycle->off} * document.settings.frame_rate;
        } catch (Exception const& exception) {
            refuse(title_of(*access) + ": " + exception.GetMessage());
        }
    }
    for (auto const* const access : document.objects<ServerAccessState>()) {
        if (access->enabled && !access->servers.empty()) {
            refuse(title_of(*access) + ": servers are not part of simulations of this engine yet");
        }
    }
    return gates;
}

void obey_gate_rules(LiveRun& run) {
    auto& gates = run.timed->gates;
    if (gates.rules.empty()) return;
    for (auto& rule : gates.rules) {
        auto const range = run.timed->moment(rule.range);
        if (range.fires) rule.began = run.frame;
        if (!range.holds) rule.began = -1;
    }
    for (std::size_t i = 0; i < run.gates.size(); ++i) {
        if (run.plan.passageways[i].gated) update(run, i);
    }
}

void show_gates(LiveRun& run) {
    bool const any_asks =
        std::ranges::any_of(run.timed->gates.rules, [](GateRule const& rule) { return rule.test.has_value(); });
    if (!any_asks) return;
    for (auto& walker : run.walkers) set_closed(run, walker, closed_to(run, walker));
}

void set_gate_by_program(LiveRun& run, std::size_t passageway, ConnectionObjectDirection direction,
                         std::optional<bool> open) {
    auto& by_program = run.timed->gates.from_program[passageway];
    for (std::size_t way = 0; way < by_program.size(); ++way) {
        if (has_way(direction, way)) by_program[way] = open;
    }
    update(run, passageway);
}

}  // namespace pedflux::engine
