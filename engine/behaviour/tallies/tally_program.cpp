#include "engine/behaviour/tallies/tally_program.h"

#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/model/node.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cmath>
#include <concepts>
#include <string>
#include <unordered_map>
#include <utility>
#include <variant>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

constexpr double largest = std::numeric_limits<double>::max();

double value_of(ZeroOverZeroValue rule) {
    switch (rule) {
        case ZeroOverZeroValue::ZERO:
            return 0;
        case ZeroOverZeroValue::ONE:
            return 1;
        case ZeroOverZeroValue::INFINITE:
            return largest;
    }
    return 0;
}

// The arithmetic of tallies: always finite.

double sum(double first, double second, double /*unused*/) { return nearest_finite(first + second); }
double difference(double first, double second, double /*unused*/) { return nearest_finite(first - second); }
double product(double first, double second, double /*unused*/) { return nearest_finite(first * second); }
double quotient(double numerator, double denominator, double zero_over_zero) {
    if (denominator != 0) return nearest_finite(numerator / denominator);
    return numerator == 0 ? zero_over_zero : std::copysign(largest, numerator);
}
double greatest(double first, double second, double /*unused*/) { return std::max(first, second); }
double least(double first, double second, double /*unused*/) { return std::min(first, second); }

class Compiler {
    using Step = TallyOperation::Step;

  public:
    Compiler(Document const& project, SymbolTable& symbols) : project_(project), symbols_(symbols) {
        program_.frame_rate = project.settings.frame_rate;
    }

    TallyProgram compile() {
        auto const objects = project_.objects<TallyObjectState>();
        for (auto const* const object : objects) {
            places_.emplace(object->id, static_cast<TallyIndex>(places_.size()));
        }
        for (auto const* const object : objects) program_.tallies.push_back(planned(*object));
        for (auto const* const change : project_.objects<TallyChangeState>()) {
            if (change->enabled) program_.changes.push_back(planned(*change));
        }
        for (auto const& tally : symbols_.tallies) program_.compared.push_back(expression(*tally));
        sort(objects);
        return std::move(program_);
    }

  private:
    std::int64_t frames(int seconds) const { return std::int64_t{seconds} * program_.frame_rate; }

    PlannedTally planned(TallyObjectState const& object) {
        PlannedTally tally;
        tally.id = object.id;
        tally.enabled = object.enabled;
        tally.min = object.min.value_or(tally.min);
        tally.max = object.max.value_or(tally.max);
        tally.start = object.start;
        tally.default_value = object.default_value;
        tally.reset = std::visit([&](auto const& rule) { return reset_rule(rule); }, object.reset);
        std::visit(
            [&]<class Value>(Value const& value) {
                tally.type = Value::TYPE;
                if constexpr (std::derived_from<Value, MadeOfTally>) tally.expression = expression(*value.tally);
                if constexpr (std::derived_from<Value, MadeOfWindow>) tally.window = frames(value.seconds);
                if constexpr (std::same_as<Value, RollingAverageValue>) tally.whole_window = value.whole_window;
                if constexpr (std::same_as<Value, ClockValue>) tally.counts_down = value.counts_down;
            },
            object.value);
        return tally;
    }

    using When = TallyResetRule::When;
    static TallyResetRule reset_rule(NoReset) { return {}; }
    static TallyResetRule reset_rule(EveryFrameReset) { return {.when = When::EVERY_FRAME}; }
    TallyResetRule reset_rule(IntervalReset rule) const {
        return {.when = When::EVERY_INTERVAL, .interval = frames(rule.seconds)};
    }
    TallyResetRule reset_rule(GreaterOrEqualReset const& rule) {
        return {.when = When::GREATER_OR_EQUAL, .compared = expression(*rule.tally)};
    }
    TallyResetRule reset_rule(LessOrEqualReset const& rule) {
        return {.when = When::LESS_OR_EQUAL, .compared = expression(*rule.tally)};
    }

    PlannedTallyChange planned(TallyChangeState const& state) {
        PlannedTallyChange change;
        change.id = state.id;
        change.range = state.range;
        for (auto const& id : state.tally_objects) {
            if (auto const place = places_.find(id); place != places_.end()) change.tallies.push_back(place->second);
        }
        change.resets = state.command.resets;
        change.adds = state.command.adds;
        change.period = frames(state.command.period.value_or(0));
        change.cycle = frames(state.cycle_period.value_or(0));
        change.integers = state.integers;
        change.skip_first = state.skip_first;
        if (auto const* const added = std::get_if<AddedTally>(&state.value)) {
            change.expression = expression(*added->tally);
        } else {
            change.distribution = std::get<AddedDistribution>(state.value).distribution;
        }
        return change;
    }

    TallyExpression expression(Tally const& tally) {
        // A tally outside of projects can be changed until it is compiled, so its extent is checked here.
        require_shallow(node_of(tally));
        auto const first = static_cast<TallyIndex>(program_.operations.size());
        emit(tally);
        return {first, static_cast<TallyIndex>(program_.operations.size()) - first};
    }

    void emit(Tally const& tally) {
        auto const children = children_of(tally);
        for (auto const& child : children) emit(*child);
        program_.operations.push_back(operation(tally, static_cast<TallyIndex>(children.size())));
    }

    TallyOperation operation(Tally const& tally, TallyIndex operands) {
        auto const combined = [&](TallyOperation::Combination combination, double parameter = 0) {
            return TallyOperation{Step::COMBINE, operands, parameter, combination};
        };
        switch (static_cast<TallyType>(type_of(tally))) {
#define TALLY(...)
#define TALLY_OF_PLACES(Class, type, ...) \
    case TallyType::type:                 \
        return measure(PlaceMeasure::type, state_of<Class##State>(tally).value);
#define TALLY_OF_SERVERS(Class, type, ...) \
    case TallyType::type:                  \
        return measure(ServerMeasure::type, state_of<Class##State>(tally).value);
#include "engine/behaviour/tallies/tally_table.def"
            case TallyType::TRANSITION: {
                auto const& transition = state_of<TransitionTallyState>(tally).value;
                return measure(TransitionMeasure{SymbolTable::add(symbols_.transitions, transition)}, {});
            }
            case TallyType::NAMED:
                return {.step = Step::OBJECT, .index = place_of(state_of<NamedTallyState>(tally).value)};
            case TallyType::VARIABLE:
                return {.step = Step::NUMBER, .number = state_of<VariableTallyState>(tally).value};
            case TallyType::SCALE:
                program_.operations.push_back({.step = Step::NUMBER, .number = state_of<ScaleTallyState>(tally).scale});
                return {.step = Step::COMBINE, .index = 2, .combination = product};
            case TallyType::DIVIDE:
                return combined(quotient, value_of(state_of<DivideTallyState>(tally).zero_over_zero));
            case TallyType::SUBTRACT:
                return combined(difference);
            case TallyType::MULTIPLY:
                return combined(product);
            case TallyType::ADD:
                return combined(sum);
            case TallyType::MAX:
                return combined(greatest);
            case TallyType::MIN:
                return combined(least);
        }
        throw Exception(fmt::format("Tally: there is no kind {}", type_of(tally)));
    }

    template <class Kind>
    TallyOperation measure(Kind kind, std::vector<GlobalId> const& objects) {
        TallyMeasure made{kind, {}};
        for (auto const& id : objects) made.objects.push_back(symbols_.object(id));
        program_.measures.push_back(std::move(made));
        return {.step = Step::MEASURE, .index = static_cast<TallyIndex>(program_.measures.size() - 1)};
    }

    TallyIndex place_of(GlobalId const& id) const {
        auto const place = places_.find(id);
        if (place == places_.end()) {
            throw Exception(fmt::format("NamedTally: the project has no tally object with the identifier {}",
                                        GlobalId(id).GetString()));
        }
        return place->second;
    }

    /// Puts each tally object after those that it is made of (Kahn's algorithm). Objects refuse to be made of
    /// themselves, so every one finds its place.
    void sort(std::vector<TallyObjectState const*> const& objects) {
        std::vector<std::vector<TallyIndex>> users(objects.size());
        std::vector<std::size_t> missing(objects.size(), 0);
        for (std::size_t i = 0; i < objects.size(); ++i) {
            auto const [first, count] = program_.tallies[i].expression;
            for (TallyIndex k = first; k < first + count; ++k) {
                if (program_.operations[k].step != Step::OBJECT) continue;
                users[program_.operations[k].index].push_back(static_cast<TallyIndex>(i));
                ++missing[i];
            }
        }
        auto& order = program_.order;
        for (TallyIndex i = 0; i < objects.size(); ++i) {
            if (missing[i] == 0) order.push_back(i);
        }
        for (std::size_t next = 0; next < order.size(); ++next) {
            for (TallyIndex const user : users[order[next]]) {
                if (--missing[user] == 0) order.push_back(user);
            }
        }
        if (order.size() != objects.size()) throw Exception("TallyObject: some tally objects are made of themselves");
    }

    Document const& project_;
    SymbolTable& symbols_;
    TallyProgram program_;
    std::unordered_map<GlobalId, TallyIndex, IdentifierHash, IdentifierEqual> places_;
};

}  // namespace

double nearest_finite(double number) { return std::clamp(number, -largest, largest); }

std::optional<TallyIndex> TallyProgram::find(GlobalId const& id) const {
    auto const found =
        std::ranges::find_if(tallies, [&](PlannedTally const& tally) { return tally.id.InternalEquals(id); });
    if (found == tallies.end()) return std::nullopt;
    return static_cast<TallyIndex>(found - tallies.begin());
}

TallyProgram compile_tallies(Document const& project, SymbolTable& symbols) {
    return Compiler(project, symbols).compile();
}

}  // namespace pedflux::engine
