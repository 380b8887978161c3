#include "engine/simulation/rules_gates.h"

#include "engine/behaviour/access_rule_states.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/rules_run.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

GateRule rule_of(GateAccessState const& access, FloorPlan const& plan, TriggerCompiler& triggers) {
    if (access.test)
        refuse("gates that open and close by an agent test are not part of simulations of this engine yet");
    GateRule rule;
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

/// Whether the gate is open one way: as the program says, or else as the rule that began last, or else as it stands.
bool is_open(GateRules const& gates, std::size_t passageway, std::size_t way, std::int64_t frame) {
    if (auto const by_program = gates.from_program[passageway][way]) return *by_program;
    GateRule const* last = nullptr;
    for (auto const& rule : gates.rules) {
        if (!rule.ways[way] || !rule.is_obeyed(frame)) continue;
        if (std::ranges::find(rule.gates, passageway) == rule.gates.end()) continue;
        if (!last || rule.began >= last->began) last = &rule;
    }
    return !last || last->opens;
}

void update(LiveRun& run, std::size_t passageway) {
    auto const& gates = run.timed->gates;
    auto const& directions = run.plan.passageways[passageway];
    GateState const wanted{directions.ball_to_box && is_open(gates, passageway, 0, run.frame),
                           directions.box_to_ball && is_open(gates, passageway, 1, run.frame)};
    if (wanted != run.gates[passageway]) set_gate(run, passageway, wanted);
}

}  // namespace

bool has_way(ConnectionObjectDirection direction, std::size_t way) {
    auto const only = way == 0 ? ConnectionObjectDirection::BALL_TO_BOX : ConnectionObjectDirection::BOX_TO_BALL;
    return direction == ConnectionObjectDirection::BOTH_WAYS || direction == only;
}

GateRules gate_rules_of(Document const& document, FloorPlan const& plan, TriggerCompiler& triggers) {
    GateRules gates;
    gates.from_program.resize(plan.passageways.size());
    for (auto const* const access : document.objects<GateAccessState>()) {
        if (!access->enabled) continue;
        try {
            auto& rule = gates.rules.emplace_back(rule_of(*access, plan, triggers));
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

void set_gate_by_program(LiveRun& run, std::size_t passageway, ConnectionObjectDirection direction,
                         std::optional<bool> open) {
    auto& by_program = run.timed->gates.from_program[passageway];
    for (std::size_t way = 0; way < by_program.size(); ++way) {
        if (has_way(direction, way)) by_program[way] = open;
    }
    update(run, passageway);
}

}  // namespace pedflux::engine
