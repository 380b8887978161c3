#pragma once

#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/tests/test_program.h"
#include "engine/behaviour/triggers/trigger_run.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

/// What access rules and programs want of things that open and close at two sides: a gate from its ball to its box and
/// back, a server at its entrance and its exit.
namespace pedflux::engine {

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
    std::optional<TestProgram> test{};  ///< whom it concerns; none: all
};

struct AccessControl {
    std::vector<AccessRule> rules;                                 ///< in the order of the project; compiled
    std::vector<std::int64_t> began;                               ///< of each rule, the frame; below 0 while it is off
    std::vector<std::array<std::optional<bool>, 2>> from_program;  ///< of each thing and side; before all rules

    bool is_obeyed(std::size_t rule, std::int64_t frame) const {
        auto const [on, off] = std::pair(rules[rule].on, rules[rule].off);
        return began[rule] >= 0 && (on == 0 || (frame - began[rule]) % (on + off) < on);
    }
    /// Whether a thing is open at a side: as the program says, or else as the rule that began last of those for which
    /// `concerns(rule number)` is true, or else it is.
    template <class Concerns>
    bool is_open(std::size_t thing, std::size_t side, std::int64_t frame, Concerns const& concerns) const;
};

/// Access control of so many things.
AccessControl access_control_of(std::vector<AccessRule> rules, std::size_t thing_count);
/// Notes which rules begin and end in this frame.
void update_ranges(AccessControl& control, TriggerRun const& triggers, std::int64_t frame);
/// The program opens or closes a thing, or leaves it to the rules again.
void set_by_program(AccessControl& control, std::size_t thing, Sides const& sides, std::optional<bool> open);

template <class Concerns>
bool AccessControl::is_open(std::size_t thing, std::size_t side, std::int64_t frame, Concerns const& concerns) const {
    if (auto const by_program = from_program[thing][side]) return *by_program;
    std::optional<std::size_t> last;
    for (std::size_t rule = 0; rule < rules.size(); ++rule) {
        if (!rules[rule].sides[side] || !is_obeyed(rule, frame)) continue;
        if (std::ranges::find(rules[rule].things, thing) == rules[rule].things.end()) continue;
        if ((!last || began[rule] >= began[*last]) && concerns(rule)) last = rule;
    }
    return !last || rules[*last].opens;
}

/// Compiles when a rule is obeyed and what it says; the things are the caller's.
AccessRule access_rule_of(AccessState const& state, int frame_rate, TriggerCompiler& triggers);

}  // namespace pedflux::engine
