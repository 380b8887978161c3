#pragma once

#include "engine/base/random.h"
#include "engine/behaviour/tallies/tally_program.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// Tallies while a simulation runs.
namespace pedflux::engine {

/// The sum of the last values. Nothing is ever subtracted, so that rounding does not build up: the values are kept in
/// blocks of the window's length, the running block from its start and the block before it as sums up to its end.
class RollingSum {
  public:
    /// @param length the number of values of the window, at least 1
    explicit RollingSum(std::int64_t length) : length_(length) {}

    /// Takes the next value in and lets the oldest one go.
    void push(double value);
    double sum() const;
    /// How many values are in the window, at most its length.
    std::int64_t count() const { return count_; }
    void clear();

  private:
    std::int64_t length_;
    std::int64_t count_ = 0;
    std::size_t next_ = 0;  ///< place of the next value
    double running_ = 0;    ///< sum of the values before `next_`
    /// The running block's values up to `next_`, from there on the sums from each place to the end of the block before.
    std::vector<double> values_;
};

/// Whether the range of a tally change is open in a frame.
struct RangeInFrame {
    bool open = false;
    bool opened = false;  ///< a span of it begins with this frame; another one may have ended with it
};

/// The values of a program's tallies, frame by frame.
///
/// A frame happens in this order: clocks move on; what resets by itself is reset; tally changes are carried out in the
/// order of the project, each seeing the measures of this frame and the values of tally objects as those before left
/// them; every tally object takes its value, each after those that it is made of; last, the tallies of the symbol
/// table take theirs. Between frames agents add to tally objects: the object's own value changes at once, what is made
/// of it in the next frame.
class TallyRun {
  public:
    /// Every tally object has its start value. The program outlives the run.
    TallyRun(TallyProgram const& program, std::uint64_t seed);

    /// One frame. The first one is that of the start, in which no time has passed.
    /// @param measures one value for each measure of the program
    /// @param ranges one for each change of the program
    void step(std::span<double const> measures, std::span<RangeInFrame const> ranges);

    /// The place of a tally object; none if the project had no such object.
    std::optional<TallyIndex> find(GlobalId const& id) const { return program_.find(id); }
    /// The value of a tally object.
    double value(TallyIndex tally) const { return running_[tally].value; }
    /// The value of a tally of the symbol table in the last frame.
    double compared(SymbolIndex tally) const { return compared_[tally]; }

    void add(TallyIndex tally, double amount);
    void reset(TallyIndex tally);

  private:
    struct Running {
        double base = 0;          ///< what was added since the last reset, from the default value on
        double part = 0;          ///< what the clock or the expression puts on it
        double value = 0;         ///< both together, within the bounds
        std::int64_t frames = 0;  ///< that a clock has counted
        std::optional<double> extreme{};
        std::optional<RollingSum> window{};
        bool reached = false;  ///< what resets it in the next frame
        Random random;
    };
    struct Change {
        std::int64_t frames = 0;  ///< since the range opened
        bool has_added = false;
        Random random;
    };

    void count_clock(TallyIndex tally);
    bool is_reset_due(TallyIndex tally) const;
    void carry_out(std::size_t change, RangeInFrame range);
    void add_all(PlannedTallyChange const& change, Random& random);
    void measure(TallyIndex tally);
    void settle(TallyIndex tally);
    void compare(TallyIndex tally);
    double evaluate(TallyExpression expression);

    TallyProgram const& program_;
    std::int64_t frame_ = -1;
    std::vector<Running> running_;
    std::vector<Change> changes_;
    std::vector<double> compared_;
    std::span<double const> measures_;  ///< of the frame that is being stepped
    std::vector<double> stack_;
};

}  // namespace pedflux::engine
