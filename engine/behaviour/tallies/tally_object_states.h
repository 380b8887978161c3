#pragma once

#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/tallies/tally_states.h"
#include "engine/model/check.h"
#include "engine/model/state.h"

#include <pedflux/distributions.h>
#include <pedflux/tallies.h>
#include <pedflux/triggers.h>

#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

/// The states of the objects that run tallies and change them: see engine/model/state.h.
namespace pedflux::engine {

/// The expression of a value that is made of one.
struct MadeOfTally {
    std::shared_ptr<Tally> tally;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("tally", self.tally, must_be_given);
    }
};

struct MadeOfWindow : MadeOfTally {
    int seconds = 1;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        MadeOfTally::fields(self, field);
        field("windowInSeconds", self.seconds, Range{1, unlimited, "s"});
    }
};

struct CountValue : MadeOfTally {
    static constexpr TallyValueType TYPE = TallyValueType::COUNT;
    static constexpr std::string_view NAME = "Count";
};

struct VariableValue {
    static constexpr TallyValueType TYPE = TallyValueType::VARIABLE;
    static constexpr std::string_view NAME = "Variable";

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct ClockValue {
    static constexpr TallyValueType TYPE = TallyValueType::CLOCK;
    static constexpr std::string_view NAME = "Clock";

    bool counts_down = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("countsDown", self.counts_down);
    }
};

struct SumOverTimeValue : MadeOfTally {
    static constexpr TallyValueType TYPE = TallyValueType::AGGREGATE_SUM_OVER_TIME;
    static constexpr std::string_view NAME = "SumOverTime";
};

struct MinOverTimeValue : MadeOfTally {
    static constexpr TallyValueType TYPE = TallyValueType::AGGREGATE_MIN_OVER_TIME;
    static constexpr std::string_view NAME = "MinOverTime";
};

struct MaxOverTimeValue : MadeOfTally {
    static constexpr TallyValueType TYPE = TallyValueType::AGGREGATE_MAX_OVER_TIME;
    static constexpr std::string_view NAME = "MaxOverTime";
};

struct RollingSumValue : MadeOfWindow {
    static constexpr TallyValueType TYPE = TallyValueType::AGGREGATE_ROLLING_SUM;
    static constexpr std::string_view NAME = "RollingSum";
};

struct RollingAverageValue : MadeOfWindow {
    static constexpr TallyValueType TYPE = TallyValueType::AGGREGATE_ROLLING_AVERAGE;
    static constexpr std::string_view NAME = "RollingAverage";

    bool whole_window = false;  ///< time before the start or the last reset counts as 0

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        MadeOfWindow::fields(self, field);
        field("wholeWindow", self.whole_window);
    }
};

using TallyValue = std::variant<VariableValue, CountValue, ClockValue, SumOverTimeValue, MinOverTimeValue,
                                MaxOverTimeValue, RollingSumValue, RollingAverageValue>;

/// The expression of a value; none of variables and clocks.
std::shared_ptr<Tally> expression_of(TallyValue const& value);

struct NoReset {
    static constexpr std::string_view NAME = "None";

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct EveryFrameReset {
    static constexpr std::string_view NAME = "EveryFrame";

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct IntervalReset {
    static constexpr std::string_view NAME = "EveryInterval";

    int seconds = 1;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("intervalInSeconds", self.seconds, Range{1, unlimited, "s"});
    }
};

struct GreaterOrEqualReset : MadeOfTally {
    static constexpr std::string_view NAME = "WhenGreaterOrEqual";
};

struct LessOrEqualReset : MadeOfTally {
    static constexpr std::string_view NAME = "WhenLessOrEqual";
};

using TallyReset = std::variant<NoReset, EveryFrameReset, IntervalReset, GreaterOrEqualReset, LessOrEqualReset>;

/// A distribution of any finite values.
inline constexpr RequiredRange ANY_VALUES{};

struct TallyObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TALLY_OBJECT;
    static constexpr std::string_view NAME = "TallyObject";
    using Handle = TallyObject;

    TallyValue value;
    std::optional<double> min;
    std::optional<double> max;
    std::optional<double> start;  ///< none: the default value
    TallyReset reset;
    std::shared_ptr<Distribution> default_value = Distribution::CreateConstant(0);  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("value", self.value);
        field("minValue", self.min);
        field("maxValue", self.max);
        field("startCustomValue", self.start);
        field("autoReset", self.reset);
        field("defaultValueOnReset", self.default_value, ANY_VALUES);
    }
    /// Throws Exception when the bounds are in the wrong order or the value is made of itself.
    static void check(TallyObjectState const& self);
};

/// The tally objects that a value is made of, directly.
std::vector<TallyObjectState const*> tally_objects_in(TallyObjectState const& owner, TallyValue const& value);

/// Throws Exception when the minimum is above the maximum.
void require_ordered_bounds(TallyObjectState const& object);

/// Throws Exception when a value of a tally object would be made of that tally object, directly or by others.
void require_acyclic(TallyObjectState const& owner, TallyValue const& value);

struct TallyCommand {
    bool resets = false;
    bool adds = true;
    std::optional<int> period;  ///< seconds between additions; none: once

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("resets", self.resets);
        field("adds", self.adds);
        field("addPeriodInSeconds", self.period, Range{1, unlimited, "s"});
    }
};

struct AddedDistribution {
    static constexpr std::string_view NAME = "Distribution";

    std::shared_ptr<Distribution> distribution = Distribution::CreateConstant(1);  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("distribution", self.distribution, ANY_VALUES);
    }
};

struct AddedTally : MadeOfTally {
    static constexpr std::string_view NAME = "Tally";
};

using AddedValue = std::variant<AddedDistribution, AddedTally>;

struct TallyChangeState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TALLY_CHANGE;
    static constexpr std::string_view NAME = "TallyChange";
    using Handle = TallyChange;

    std::vector<GlobalId> tally_objects;
    std::shared_ptr<TriggerRange> range = std::make_shared<AllSimulationTriggerRange>();
    TallyCommand command;
    AddedValue value;
    bool integers = false;            ///< what is drawn of a distribution is rounded
    std::optional<int> cycle_period;  ///< seconds; none: no cycling
    bool skip_first = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("tallyObjects", self.tally_objects, A_TALLY_OBJECT);
        field("triggerRange", self.range, must_be_given);
        field("command", self.command);
        field("value", self.value);
        field("valueDistributionUsesIntegers", self.integers);
        field("cyclePeriodInSeconds", self.cycle_period, Range{1, unlimited, "s"});
        field("skipFirstAddition", self.skip_first);
    }
    /// Throws Exception when the command neither resets nor adds.
    static void check(TallyChangeState const& self);
};

}  // namespace pedflux::engine
