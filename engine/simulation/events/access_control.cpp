#include "engine/simulation/events/access_control.h"

#include <utility>

namespace pedflux::engine {

AccessControl access_control_of(std::vector<AccessRule> rules, std::size_t thing_count) {
    AccessControl control;
    control.began.resize(rules.size(), -1);
    control.rules = std::move(rules);
    control.from_program.resize(thing_count);
    return control;
}

void update_ranges(AccessControl& control, TriggerRun const& triggers, std::int64_t frame) {
    for (std::size_t rule = 0; rule < control.rules.size(); ++rule) {
        auto const range = triggers[control.rules[rule].range];
        if (range.fires) control.began[rule] = frame;
        if (!range.holds) control.began[rule] = -1;
    }
}

void set_by_program(AccessControl& control, std::size_t thing, Sides const& sides, std::optional<bool> open) {
    for (std::size_t side = 0; side < sides.size(); ++side) {
        if (sides[side]) control.from_program[thing][side] = open;
    }
}

AccessRule access_rule_of(AccessState const& state, int frame_rate, TriggerCompiler& triggers) {
    AccessRule rule;
    rule.range = triggers.add(*state.range);
    rule.opens = state.opens;
    if (state.cycle) {
        rule.on = std::int64_t{state.cycle->on} * frame_rate;
        rule.off = std::int64_t{state.cycle->off} * frame_rate;
    }
    return rule;
}

}  // namespace pedflux::engine
