#pragma once

#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/tests/test_program.h"
#include "engine/behaviour/triggers/trigger_run.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// What rules and programs want of things that open and close at two sides: a gate from its ball to its box and back, a
/// server at its entrance and its exit.
namespace pedflux::engine {

class EventEngine;

/// Of each of the two sides.
using Sides = std::array<bool, 2>;

/// A rule that opens or closes things while its range holds.
struct AccessRule {
    std::vector<std::size_t> things;
    Sides sides{};  ///< that it concerns
    MomentIndex range = 0;
    bool opens = true;
    std::int64_t on = 0;                ///< frames; 0: without a cycle
    std::int64_t off = 0;               ///< frames
    std::int64_t began = -1;            ///< frame; below 0 while the range does not hold
    std::optional<TestProgram> test{};  ///< whom it concerns; none: all

    bool is_obeyed(std::int64_t frame) const { return began >= 0 && (on == 0 || (frame - began) % (on + off) < on); }
};

struct AccessRules {
    std::vector<AccessRule> rules;                                 ///< in the order of the project
    std::vector<std::array<std::optional<bool>, 2>> from_program;  ///< of each thing and side; before all rules

    /// Whether a thing is open at a side to those whom the rules concern that are asked for: as the program says, or
    /// else as the rule that began last, or else it is.
    template <class Concerns>
    bool is_open(std::size_t thing, std::size_t side, std::int64_t frame, Concerns const& concerns) const;
    /// Looks at which rules begin and end in this frame.
    void step(EventEngine const& run, std::int64_t frame);
    /// The program opens or closes a thing, or leaves it to the rules again.
    void obey_program(std::size_t thing, Sides const& sides, std::optional<bool> open);
};

template <class Concerns>
bool AccessRules::is_open(std::size_t thing, std::size_t side, std::int64_t frame, Concerns const& concerns) const {
    if (auto const by_program = from_program[thing][side]) return *by_program;
    AccessRule const* last = nullptr;
    for (auto const& rule : rules) {
        if (!rule.sides[side] || !rule.is_obeyed(frame)) continue;
        if (std::ranges::find(rule.things, thing) == rule.things.end()) continue;
        if ((!last || rule.began >= last->began) && concerns(rule)) last = &rule;
    }
    return !last || last->opens;
}

/// Compiles when a rule is obeyed and what it says; the things are the caller's.
AccessRule access_rule_of(AccessState const& state, int frame_rate, TriggerCompiler& triggers);

}  // namespace pedflux::engine
