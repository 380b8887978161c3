#include "engine/behaviour/tallies/tally_run.h"

#include "engine/behaviour/tallies/tally_object_states.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

using Values = std::vector<double>;
using Set = std::function<void(TallyObject&)>;

constexpr double LARGEST = std::numeric_limits<double>::max();

std::shared_ptr<Tally> number(double value) { return std::make_shared<VariableTally>(value); }

struct TallyRuns : AgentRules {
    TallyRuns() { document.settings.frame_rate = 1; }

    std::shared_ptr<Tally> population() const { return std::make_shared<AreaPopulationTally>(link); }
    static std::shared_ptr<Tally> named(TallyObject& object) { return std::make_shared<NamedTally>(object.GetId()); }

    std::shared_ptr<TallyObject> object(std::string const& name) { return create<TallyObjectState>(name); }

    /// The object's value in each frame, when the measures have the given values and ranges are open from the first
    /// frame on.
    Values run(TallyObject& wanted, Values const& measured, std::uint64_t seed = 1) {
        return run(wanted, measured, "|" + std::string(measured.size() - 1, '-'), seed);
    }
    /// The same with what the ranges do in each frame: '|' a span begins, '-' it goes on, ' ' none is open.
    Values run(TallyObject& wanted, Values const& measured, std::string const& spans, std::uint64_t seed = 1) {
        SymbolTable symbols;
        TallyProgram const plan = compile_tallies(document, symbols);
        TallyRun running(plan, seed);
        Values values;
        for (std::size_t i = 0; i < measured.size(); ++i) {
            Values const measures(plan.measures.size(), measured[i]);
            std::vector<RangeInFrame> const ranges(plan.changes.size(), {spans[i] != ' ', spans[i] == '|'});
            running.step(measures, ranges);
            values.push_back(running.value(*plan.find(wanted.GetId())));
        }
        return values;
    }
};

TEST(RollingSums, AreThoseOfTheLastValues) {
    std::mt19937 generator(5);
    for (std::int64_t const length : {1, 2, 3, 7, 100}) {
        RollingSum rolling(length);
        std::vector<double> values;
        for (int i = 0; i < 350; ++i) {
            if (i == 210) {
                rolling.clear();
                values.clear();
            }
            // Now and then a number so large that the others vanish in a sum with it.
            values.push_back(i % 97 == 13 ? 1e18 : static_cast<double>(generator() % 1000) / 8);
            rolling.push(values.back());
            auto const count = std::min<std::size_t>(values.size(), static_cast<std::size_t>(length));
            double const expected =
                std::accumulate(values.end() - static_cast<std::ptrdiff_t>(count), values.end(), 0.0);
            EXPECT_EQ(rolling.count(), static_cast<std::int64_t>(count));
            // Sums of eighths are exact, unless the large number is among them.
            EXPECT_NEAR(rolling.sum(), expected, expected > 1e17 ? 1e5 : 0) << length << ", value " << i;
        }
    }
}

TEST_F(TallyRuns, ValuesAreMadeInEveryWay) {
    Values const people{3, 5, 2, 4, 1, 0};
    auto const tally = population();
    struct {
        int frame_rate;
        Set set;
        Values expected;
    } const cases[] = {
        {1, [&](auto& o) { o.SetTallyValueByVariable(4); }, {4, 4, 4, 4, 4, 4}},
        {1, [&](auto& o) { o.SetTallyValueByCount(tally); }, {3, 5, 2, 4, 1, 0}},
        {1, [&](auto& o) { o.SetTallyValueByClockCountingUp(4); }, {4, 5, 6, 7, 8, 9}},
        {2, [&](auto& o) { o.SetTallyValueByClockCountingUp(0); }, {0, 0.5, 1, 1.5, 2, 2.5}},
        {1, [&](auto& o) { o.SetTallyValueByClockCountingDown(4); }, {4, 3, 2, 1, 0, -1}},
        {1, [&](auto& o) { o.SetTallyValueByAggregateSumOverTime(tally); }, {3, 8, 10, 14, 15, 15}},
        {1, [&](auto& o) { o.SetTallyValueByAggregateMinOverTime(tally); }, {3, 3, 2, 2, 1, 0}},
        {1, [&](auto& o) { o.SetTallyValueByAggregateMaxOverTime(tally); }, {3, 5, 5, 5, 5, 5}},
        {1, [&](auto& o) { o.SetTallyValueByAggregateRollingSum(tally, 3); }, {3, 8, 10, 11, 7, 5}},
        {2, [&](auto& o) { o.SetTallyValueByAggregateRollingSum(tally, 1); }, {3, 8, 7, 6, 5, 1}},
        {1, [&](auto& o) { o.SetTallyValueByAggregateRollingAverage(tally, 2, false); }, {3, 4, 3.5, 3, 2.5, 0.5}},
        {1, [&](auto& o) { o.SetTallyValueByAggregateRollingAverage(tally, 2, true); }, {1.5, 4, 3.5, 3, 2.5, 0.5}},
    };
    auto const made = object("Made");
    for (auto const& [frame_rate, set, expected] : cases) {
        document.settings.frame_rate = frame_rate;
        made->SetDefaultValueOnReset(0);
        set(*made);
        EXPECT_THAT(run(*made, people), ElementsAreArray(expected));
    }
}

TEST_F(TallyRuns, ClocksDoNotDrift) {
    document.settings.frame_rate = 10;
    auto const clock = object("Clock");
    clock->SetTallyValueByClockCountingUp(0);
    EXPECT_EQ(run(*clock, Values(36'001, 0)).back(), 3600);
}

TEST_F(TallyRuns, BoundsStartsAndResetsHold) {
    Values const people{3, 5, 2, 4, 1, 0};
    auto const tally = population();
    auto const limit = object("Limit");
    limit->SetTallyValueByVariable(3);
    struct {
        char const* what;
        Set set;
        Values expected;
    } const cases[] = {
        {"count in bounds",
         [&](auto& o) {
             o.SetTallyValueByCount(tally);
             o.SetMinValue(2);
             o.SetMaxValue(4);
         },
         {3, 4, 2, 4, 2, 2}},
        {"total stays at its maximum",
         [&](auto& o) {
             o.SetTallyValueByAggregateSumOverTime(tally);
             o.SetMaxValue(9);
         },
         {3, 8, 9, 9, 9, 9}},
        {"clock stops at its minimum",
         [&](auto& o) {
             o.SetTallyValueByClockCountingDown(2);
             o.SetMinValue(0);
         },
         {2, 1, 0, 0, 0, 0}},
        {"start within the bounds",
         [&](auto& o) {
             o.SetStartAtCustomValue(50);
             o.SetMaxValue(8);
         },
         {8, 8, 8, 8, 8, 8}},
        {"every frame, from the second one on",
         [&](auto& o) {
             o.SetTallyValueByVariable(4);
             o.SetStartAtCustomValue(10);
             o.SetAutoResetEveryFrame();
         },
         {10, 4, 4, 4, 4, 4}},
        {"sum every 2 s",
         [&](auto& o) {
             o.SetTallyValueByAggregateSumOverTime(tally);
             o.SetStartAtCustomValue(100);
             o.SetAutoResetEveryInterval(2);
         },
         {103, 108, 2, 6, 1, 1}},
        {"least every 3 s, on top of a default value",
         [&](auto& o) {
             o.SetTallyValueByAggregateMinOverTime(tally);
             o.SetDefaultValueOnReset(10);
             o.SetStartAtCustomValue(0);
             o.SetAutoResetEveryInterval(3);
         },
         {3, 3, 2, 14, 11, 10}},
        {"rolling average every 3 s",
         [&](auto& o) {
             o.SetTallyValueByAggregateRollingAverage(tally, 2, false);
             o.SetAutoResetEveryInterval(3);
         },
         {3, 4, 3.5, 4, 2.5, 0.5}},
        {"clock every 2 s",
         [&](auto& o) {
             o.SetTallyValueByClockCountingUp(0);
             o.SetAutoResetEveryInterval(2);
         },
         {0, 1, 0, 1, 0, 1}},
        {"clock up to another tally object",
         [&](auto& o) {
             o.SetTallyValueByClockCountingUp(0);
             o.SetAutoResetWhenValueGreaterOrEqual(named(*limit));
         },
         {0, 1, 2, 3, 0, 1}},
        {"clock down to a number",
         [&](auto& o) {
             o.SetTallyValueByClockCountingDown(2);
             o.SetAutoResetWhenValueLessOrEqual(number(0));
         },
         {2, 1, 0, 2, 1, 0}},
        {"not enabled",
         [&](auto& o) {
             o.SetTallyValueByClockCountingUp(0);
             o.SetStartAtCustomValue(6);
             o.SetAutoResetEveryFrame();
             o.Disable();
         },
         {6, 6, 6, 6, 6, 6}},
    };
    for (auto const& [what, set, expected] : cases) {
        auto const made = object(document.next_unique_name("Made"));
        set(*made);
        EXPECT_THAT(run(*made, people), ElementsAreArray(expected)) << what;
    }
}

TEST_F(TallyRuns, WhatIsAddedStaysUntilAReset) {
    auto const total = object("Total");
    total->SetTallyValueByAggregateSumOverTime(population());
    total->SetMaxValue(9);
    auto const count = object("Count");
    count->SetTallyValueByCount(population());
    count->SetMaxValue(9);
    auto const clock = object("Clock");
    clock->SetTallyValueByClockCountingDown(2);
    clock->SetMinValue(0);

    SymbolTable symbols;
    TallyProgram const plan = compile_tallies(document, symbols);
    TallyRun running(plan, 1);
    auto const values = [&] { return Values{running.value(0), running.value(1), running.value(2)}; };
    auto const step = [&](double people) { running.step(Values{people, people}, {}); };

    for (int i = 0; i < 5; ++i) step(4);
    EXPECT_THAT(values(), ElementsAre(9, 4, 0));
    for (TallyIndex const tally : {0u, 1u, 2u}) running.add(tally, 7);
    EXPECT_THAT(values(), ElementsAre(9, 9, 7)) << "totals and counts keep to their bounds";
    for (TallyIndex const tally : {0u, 1u, 2u}) running.add(tally, -1);
    EXPECT_THAT(values(), ElementsAre(8, 9, 6)) << "a total leaves its bound, a count has 4 + 7 - 1";
    step(0);
    EXPECT_THAT(values(), ElementsAre(8, 6, 5));
    for (TallyIndex const tally : {0u, 1u, 2u}) running.reset(tally);
    step(1);
    EXPECT_THAT(values(), ElementsAre(1, 1, 1));
}

TEST_F(TallyRuns, ExpressionsAreFiniteNumbers) {
    auto const quotient = [](double numerator, double denominator, ZeroOverZeroValue rule) {
        return std::make_shared<DivideTally>(number(numerator), number(denominator), rule);
    };
    using List = NodeList<Tally>;
    using enum ZeroOverZeroValue;
    struct {
        std::shared_ptr<Tally> tally;
        double expected;
    } const cases[] = {
        {population(), 6},
        {std::make_shared<ServerQueueTally>(server), 6},
        {std::make_shared<TransitionTally>(Transition::SimEnter(portal)), 6},
        {std::make_shared<ScaleTally>(population(), -0.5), -3},
        {std::make_shared<SubtractTally>(number(2), population()), -4},
        {std::make_shared<MultiplyTally>(number(2), number(-4)), -8},
        {quotient(3, 4, ZERO), 0.75},
        {quotient(0, 0, ZERO), 0},
        {quotient(0, 0, ONE), 1},
        {quotient(0, 0, INFINITE), LARGEST},
        {quotient(-2, 0, ONE), -LARGEST},
        {quotient(-2, -0.0, ONE), -LARGEST},
        {quotient(1e300, 1e-300, ZERO), LARGEST},
        {std::make_shared<AddTally>(List{number(1), number(2), population()}), 9},
        {std::make_shared<AddTally>(number(LARGEST), number(LARGEST)), LARGEST},
        {std::make_shared<SubtractTally>(quotient(1, 0, ZERO), quotient(1, 0, ZERO)), 0},
        {std::make_shared<AddTally>(List{}), 0},
        {std::make_shared<MaxTally>(List{number(-3), number(-1), number(-2)}), -1},
        {std::make_shared<MinTally>(List{number(-1), number(-3), number(-2)}), -3},
        {std::make_shared<MaxTally>(List{}), 0},
        {std::make_shared<SubtractTally>(
             std::make_shared<AddTally>(List{number(1), std::make_shared<ScaleTally>(number(3), 2), number(5)}),
             std::make_shared<MinTally>(number(4), number(8))),
         8},
    };
    SymbolTable symbols;
    for (auto const& entry : cases) symbols.tallies.push_back(entry.tally);
    TallyProgram const plan = compile_tallies(document, symbols);
    TallyRun running(plan, 1);
    running.step(Values(plan.measures.size(), 6), {});
    for (SymbolIndex i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(running.compared(i), cases[i].expected) << written(cases[i].tally);
    }
}

TEST_F(TallyRuns, MeasuresSayWhatTheyAreOf) {
    SymbolTable symbols;
    symbols.tallies = {std::make_shared<AddTally>(
        std::make_shared<ServerQueueTally>(server),
        std::make_shared<AddTally>(std::make_shared<AreaPopulationTally>(std::vector{volume, link}),
                                   std::make_shared<TransitionTally>(Transition::SimEnter(portal))))};
    auto const plan = compile_tallies(document, symbols);
    ASSERT_EQ(plan.measures.size(), 3u);
    auto const named_by = [&](TallyMeasure const& measure) {
        std::vector<std::string> names;
        for (auto const object : measure.objects) names.push_back(document.find(symbols.objects[object])->name);
        return names;
    };
    EXPECT_EQ(std::get<ServerMeasure>(plan.measures[0].kind), ServerMeasure::SERVER_QUEUE);
    EXPECT_THAT(named_by(plan.measures[0]), ElementsAre("Server"));
    EXPECT_EQ(std::get<PlaceMeasure>(plan.measures[1].kind), PlaceMeasure::AREA_POPULATION);
    EXPECT_THAT(named_by(plan.measures[1]), ElementsAre("Volume", "Link"));
    ASSERT_EQ(symbols.transitions.size(), 1u);
    EXPECT_EQ(std::get<TransitionMeasure>(plan.measures[2].kind).transition, 0u);

    symbols.tallies = {std::make_shared<NamedTally>(GlobalId::Generate())};
    EXPECT_THAT(refusal_of([&] { compile_tallies(document, symbols); }), testing::HasSubstr("no tally object"));
}

TEST_F(TallyRuns, NamedTalliesHaveTheValueOfTheSameFrame) {
    // Each is made of one that comes later in the project.
    auto const twice = object("Twice");
    auto const sum = object("Sum");
    auto const count = object("Count");
    twice->SetTallyValueByCount(std::make_shared<AddTally>(named(*sum), named(*sum)));
    sum->SetTallyValueByAggregateSumOverTime(named(*count));
    count->SetTallyValueByCount(population());
    EXPECT_THAT(run(*twice, {1, 2, 3}), ElementsAre(2, 6, 12));
}

TEST_F(TallyRuns, ChangesHappenWhileTheirRangeIsOpen) {
    using Configure = std::function<void(TallyChange&)>;
    struct {
        char const* what;
        Configure set;
        std::string spans;
        Values expected;  // of a variable that starts with 7 and is reset to 0
    } const cases[] = {
        {"add once", [](auto&) {}, " |----", {7, 8, 8, 8, 8, 8}},
        {"never open", [](auto&) {}, "      ", {7, 7, 7, 7, 7, 7}},
        {"once in each span", [](auto&) {}, " |- |-", {7, 8, 8, 8, 9, 9}},
        {"spans that follow each other", [](auto&) {}, " |-|--", {7, 8, 8, 9, 9, 9}},
        {"repeatedly", [](auto& c) { c.SetCommandToAddRepeatedly(2); }, " |----", {7, 8, 8, 9, 9, 10}},
        {"repeatedly until the end", [](auto& c) { c.SetCommandToAddRepeatedly(1); }, " |-   ", {7, 8, 9, 9, 9, 9}},
        {"skip the first",
         [](auto& c) {
             c.SetCommandToAddRepeatedly(2);
             c.SetSkipFirstAddition(true);
         },
         " |----",
         {7, 7, 7, 8, 8, 9}},
        {"skip the first of each span",
         [](auto& c) {
             c.SetCommandToAddRepeatedly(1);
             c.SetSkipFirstAddition(true);
         },
         "|-- |-",
         {7, 8, 9, 9, 9, 10}},
        {"reset", [](auto& c) { c.SetCommandToReset(); }, "  |---", {7, 7, 0, 0, 0, 0}},
        {"reset then add", [](auto& c) { c.SetCommandToResetThenAddOnce(); }, "  |---", {7, 7, 1, 1, 1, 1}},
        {"reset then add repeatedly, in cycles",
         [](auto& c) {
             c.SetCommandToResetThenAddRepeatedly(2);
             c.SetCyclingEnabled(3);
         },
         "|-----",
         {1, 1, 2, 1, 1, 2}},
        {"add once in each cycle, but not in the first",
         [](auto& c) {
             c.SetCyclingEnabled(2);
             c.SetSkipFirstAddition(true);
         },
         "|-----",
         {7, 7, 8, 8, 9, 9}},
        {"a tally's value",
         [this](auto& c) {
             c.SetCommandToAddRepeatedly(1);
             c.SetValueAsTally(population());
         },
         "|-----",
         {8, 10, 13, 17, 22, 28}},
        {"drawn integers",
         [](auto& c) {
             c.SetCommandToAddRepeatedly(1);
             c.SetValueAsDistribution(Distribution::CreateUniform(1.6, 2.4));
             c.SetValueDistributionUsesIntegers(true);
         },
         "|-----",
         {9, 11, 13, 15, 17, 19}},
        {"not enabled", [](auto& c) { c.Disable(); }, "|-----", {7, 7, 7, 7, 7, 7}},
    };
    auto const variable = object("Variable");
    variable->SetStartAtCustomValue(7);
    for (auto const& [what, set, spans, expected] : cases) {
        auto const change = create<TallyChangeState>("Change");
        change->SetTallyObjects({variable->GetId()});
        set(*change);
        EXPECT_THAT(run(*variable, {1, 2, 3, 4, 5, 6}, spans), ElementsAreArray(expected)) << what;
        document.remove(*document.find(change->GetId()));
    }
}

TEST_F(TallyRuns, DrawsFollowTheSeed) {
    auto const drawn = object("Drawn");
    drawn->SetTallyValueByVariable(Distribution::CreateUniform(10, 20));
    drawn->SetAutoResetEveryFrame();
    Values const frames(50, 0);
    auto const values = run(*drawn, frames, 3);
    EXPECT_THAT(values, Each(testing::AllOf(testing::Ge(10), testing::Le(20))));
    EXPECT_EQ(values, run(*drawn, frames, 3));
    EXPECT_NE(values, run(*drawn, frames, 4));
    EXPECT_NE(values.front(), values.back());
}

}  // namespace
}  // namespace pedflux::engine
