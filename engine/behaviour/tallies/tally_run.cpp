#include "engine/behaviour/tallies/tally_run.h"

#include "engine/base/random_streams.h"
#include "engine/behaviour/distributions/distribution_handle.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

namespace {

/// Whether the bounds hold for all that was ever added, and not only for what is shown.
bool is_total(TallyValueType type) {
    return type == TallyValueType::VARIABLE || type == TallyValueType::CLOCK ||
           type == TallyValueType::AGGREGATE_SUM_OVER_TIME;
}

}  // namespace

void RollingSum::push(double value) {
    if (next_ == static_cast<std::size_t>(length_)) {
        for (auto i = values_.size() - 1; i > 0; --i) values_[i - 1] = nearest_finite(values_[i - 1] + values_[i]);
        next_ = 0;
        running_ = 0;
    }
    if (next_ == values_.size()) {
        values_.push_back(value);
    } else {
        values_[next_] = value;
    }
    ++next_;
    running_ = nearest_finite(running_ + value);
    count_ = std::min(count_ + 1, length_);
}

double RollingSum::sum() const {
    // Where no block came before, the values end with the running one.
    return next_ == values_.size() ? running_ : nearest_finite(running_ + values_[next_]);
}

void RollingSum::clear() {
    values_.clear();
    next_ = 0;
    running_ = 0;
    count_ = 0;
}

TallyRun::TallyRun(TallyProgram const& program, std::uint64_t seed)
    : program_(program), compared_(program.compared.size(), 0) {
    for (TallyIndex i = 0; i < program.tallies.size(); ++i) {
        auto const& tally = program.tallies[i];
        auto& running = running_.emplace_back(Running{.random = Random(seed, streams::of_tallies + i)});
        if (tally.window > 0) running.window.emplace(tally.window);
        running.base = tally.start ? *tally.start : sample(*tally.default_value, running.random);
        settle(i);
    }
    for (std::size_t i = 0; i < program.changes.size(); ++i)
        changes_.push_back({.random = Random(seed, streams::of_tally_changes + i)});
}

void TallyRun::step(std::span<double const> measures, std::span<RangeInFrame const> ranges) {
    measures_ = measures;
    ++frame_;
    for (TallyIndex const tally : program_.order) {
        count_clock(tally);
        if (is_reset_due(tally)) reset(tally);
    }
    for (std::size_t i = 0; i < changes_.size(); ++i) carry_out(i, ranges[i]);
    for (TallyIndex const tally : program_.order) {
        measure(tally);
        settle(tally);
    }
    for (TallyIndex const tally : program_.order) compare(tally);
    for (std::size_t i = 0; i < compared_.size(); ++i) compared_[i] = evaluate(program_.compared[i]);
}

void TallyRun::add(TallyIndex tally, double amount) {
    if (!program_.tallies[tally].enabled) return;
    auto& running = running_[tally];
    running.base = nearest_finite(running.base + amount);
    settle(tally);
}

void TallyRun::reset(TallyIndex tally) {
    auto const& planned = program_.tallies[tally];
    if (!planned.enabled) return;
    auto& running = running_[tally];
    running.base = sample(*planned.default_value, running.random);
    running.frames = 0;
    running.extreme.reset();
    if (running.window) running.window->clear();
    if (is_total(planned.type)) running.part = 0;
    settle(tally);
}

void TallyRun::count_clock(TallyIndex tally) {
    auto const& planned = program_.tallies[tally];
    if (planned.type != TallyValueType::CLOCK || !planned.enabled || frame_ == 0) return;
    auto& running = running_[tally];
    ++running.frames;
    double const seconds = static_cast<double>(running.frames) / program_.frame_rate;
    running.part = planned.counts_down ? -seconds : seconds;
    settle(tally);
}

bool TallyRun::is_reset_due(TallyIndex tally) const {
    auto const& rule = program_.tallies[tally].reset;
    if (frame_ == 0) return false;
    switch (rule.when) {
        case ResetCondition::When::NEVER:
            return false;
        case ResetCondition::When::EVERY_FRAME:
            return true;
        case ResetCondition::When::EVERY_INTERVAL:
            return frame_ % rule.interval == 0;
        case ResetCondition::When::GREATER_OR_EQUAL:
        case ResetCondition::When::LESS_OR_EQUAL:
            return running_[tally].reached;
    }
    return false;
}

void TallyRun::carry_out(std::size_t index, RangeInFrame range) {
    auto const& planned = program_.changes[index];
    auto& change = changes_[index];
    if (range.opened) {
        change.frames = 0;
        change.has_added = false;
    }
    if (!range.open) return;
    auto const since_start = change.frames++;
    auto const since_cycle = planned.cycle > 0 ? since_start % planned.cycle : since_start;
    if (since_cycle == 0 && planned.resets) {
        for (TallyIndex const tally : planned.tallies) reset(tally);
    }
    bool const is_due = planned.period > 0 ? since_cycle % planned.period == 0 : since_cycle == 0;
    if (!planned.adds || !is_due) return;
    if (change.has_added || !planned.skip_first) add_all(planned, change.random);
    change.has_added = true;
}

void TallyRun::add_all(PlannedTallyChange const& change, Random& random) {
    double amount = change.distribution ? 0 : evaluate(change.expression);
    for (TallyIndex const tally : change.tallies) {
        if (change.distribution) {
            amount = sample(*change.distribution, random);
            if (change.integers) amount = std::round(amount);
        }
        add(tally, amount);
    }
}

void TallyRun::measure(TallyIndex tally) {
    auto const& planned = program_.tallies[tally];
    if (!planned.enabled || planned.expression.count == 0) return;
    auto& running = running_[tally];
    double const now = evaluate(planned.expression);
    switch (planned.type) {
        case TallyValueType::COUNT:
            running.part = now;
            break;
        case TallyValueType::AGGREGATE_SUM_OVER_TIME:
            running.base = nearest_finite(running.base + now);
            break;
        case TallyValueType::AGGREGATE_MIN_OVER_TIME:
            running.part = *(running.extreme = std::min(running.extreme.value_or(now), now));
            break;
        case TallyValueType::AGGREGATE_MAX_OVER_TIME:
            running.part = *(running.extreme = std::max(running.extreme.value_or(now), now));
            break;
        case TallyValueType::AGGREGATE_ROLLING_SUM:
            running.window->push(now);
            running.part = running.window->sum();
            break;
        case TallyValueType::AGGREGATE_ROLLING_AVERAGE: {
            running.window->push(now);
            auto const frames = planned.whole_window ? planned.window : running.window->count();
            running.part = running.window->sum() / static_cast<double>(frames);
            break;
        }
        case TallyValueType::VARIABLE:
        case TallyValueType::CLOCK:
            break;
    }
}

void TallyRun::settle(TallyIndex tally) {
    auto const& planned = program_.tallies[tally];
    auto& running = running_[tally];
    double const unbounded = nearest_finite(running.base + running.part);
    running.value = std::clamp(unbounded, planned.min, planned.max);
    if (is_total(planned.type) && running.value != unbounded) {
        running.base = running.value;
        running.part = 0;
        running.frames = 0;
    }
}

void TallyRun::compare(TallyIndex tally) {
    auto const& rule = program_.tallies[tally].reset;
    auto& running = running_[tally];
    if (rule.when == ResetCondition::When::GREATER_OR_EQUAL) running.reached = running.value >= evaluate(rule.compared);
    if (rule.when == ResetCondition::When::LESS_OR_EQUAL) running.reached = running.value <= evaluate(rule.compared);
}

double TallyRun::evaluate(TallyExpression expression) {
    using enum TallyOperation::Step;
    auto& stack = stack_;
    auto const pop = [&] {
        double const top = stack.back();
        stack.pop_back();
        return top;
    };
    auto const combined = [&](TallyOperation const& operation) {
        double value = operation.index == 0 ? 0 : pop();
        for (TallyIndex i = 1; i < operation.index; ++i) value = operation.combination(pop(), value, operation.number);
        return value;
    };
    for (TallyIndex i = expression.first; i < expression.first + expression.count; ++i) {
        auto const& operation = program_.operations[i];
        switch (operation.step) {
            case MEASURE:
                stack.push_back(measures_[operation.index]);
                break;
            case OBJECT:
                stack.push_back(running_[operation.index].value);
                break;
            case NUMBER:
                stack.push_back(operation.number);
                break;
            case COMBINE:
                stack.push_back(combined(operation));
                break;
        }
    }
    return pop();
}

}  // namespace pedflux::engine
