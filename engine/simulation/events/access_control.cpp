#include "engine/simulation/events/access_control.h"

#include "engine/simulation/events/event_engine.h"

namespace pedflux::engine {

void AccessRules::step(EventEngine const& run, std::int64_t frame) {
    for (auto& rule : rules) {
        auto const range = run.moment(rule.range);
        if (range.fires) rule.began = frame;
        if (!range.holds) rule.began = -1;
    }
}

void AccessRules::obey_program(std::size_t thing, Sides const& sides, std::optional<bool> open) {
    for (std::size_t side = 0; side < sides.size(); ++side) {
        if (sides[side]) from_program[thing][side] = open;
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
