#include "engine/behaviour/tallies/tally_object_states.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <pedflux/tallies.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

#include <array>
#include <limits>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using TallyPointer = NodePointerOf<Tally>;
using TallyList = NodeList<Tally>;

TallyPointer number(double value) { return std::make_shared<VariableTally>(value); }

double number_in(TallyPointer const& tally) { return std::dynamic_pointer_cast<VariableTally>(tally)->GetValue(); }

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE_VALUE = std::numeric_limits<double>::infinity();

Kinds kinds() {
    static std::vector<Kind const*> const all = [] {
        std::vector<Kind const*> found(known_kinds().begin(), known_kinds().end());
        found.push_back(&kind_of<TallyObjectState>());
        found.push_back(&kind_of<TallyChangeState>());
        return found;
    }();
    return all;
}

struct Tallies : AgentRules {
    std::shared_ptr<TallyObject> counter = tally_object("Counter");

    Tallies() {
        for (auto* const scene : document.objects<SceneState>()) {
            scene->geometry = MeshGeometry::CreateFlatPolygon(0, {{0, 0}, {2, 0}, {2, 3}});
        }
    }

    std::shared_ptr<TallyObject> tally_object(std::string const& name) { return create<TallyObjectState>(name); }
    std::shared_ptr<TallyChange> tally_change(std::string const& name) { return create<TallyChangeState>(name); }
    void remove(GlobalId const& id) { document.remove(*document.find(id)); }

    TallyList one_of_each() const {
        auto const two = number(2);
        return {std::make_shared<AreaPopulationTally>(std::vector{link, volume}),
                std::make_shared<NamedTally>(counter->GetId()),
                std::make_shared<ServerAvailableCapacityTally>(server),
                std::make_shared<ServerQueueAndApproachTally>(server),
                std::make_shared<ServerQueueTally>(server),
                std::make_shared<SurfaceAreaTally>(link),
                std::make_shared<TransitionTally>(Transition::SimEnter(portal)),
                two,
                std::make_shared<ScaleTally>(two, -2.5),
                std::make_shared<SubtractTally>(two, number(1)),
                std::make_shared<MultiplyTally>(two, two),
                std::make_shared<DivideTally>(two, number(3), ZeroOverZeroValue::ONE),
                std::make_shared<AddTally>(two, number(4)),
                std::make_shared<MaxTally>(TallyList{two, number(5), number(6)}),
                std::make_shared<MinTally>(TallyList{two})};
    }
};

TEST_F(Tallies, ComeInAllKindsAndAreCopiedWhole) {
    auto const tallies = one_of_each();
    expect_distinct_numbers<Tally>();
    expect_one_of_each_kind(tallies);
    expect_clones(tallies);
    for (auto const& tally : tallies) EXPECT_EQ(tally->GetTallyTypeId(), node_of(*tally).kind->type);
}

TEST_F(Tallies, KnowWhatTheyAreMadeOf) {
    std::map<TallyType, int> const with_children{
        {TallyType::SCALE, 1}, {TallyType::SUBTRACT, 2}, {TallyType::DIVIDE, 2}, {TallyType::MULTIPLY, 2},
        {TallyType::ADD, 2},   {TallyType::MAX, 3},      {TallyType::MIN, 1}};
    for (auto const& tally : one_of_each()) {
        auto const entry = with_children.find(static_cast<TallyType>(tally->GetTallyTypeId()));
        int const count = entry == with_children.end() ? 0 : entry->second;
        auto const children = tally->GetChildTallies();
        EXPECT_EQ(tally->GetChildTallyCount(), count) << written(tally);
        ASSERT_EQ(static_cast<int>(children.size()), count) << written(tally);
        for (int i = 0; i < count; ++i) EXPECT_EQ(tally->GetChildTally(i), children[static_cast<std::size_t>(i)]);
        for (int const wrong : {-1, count}) {
            EXPECT_THAT(refusal_of([&] { tally->GetChildTally(wrong); }), HasSubstr(std::to_string(wrong)));
        }
    }

    auto const a = number(1);
    auto const b = number(2);
    auto const sum = std::make_shared<AddTally>(a, b);
    auto const scaled = std::make_shared<ScaleTally>(sum, 2);
    MaxTally greatest(TallyList{scaled, a});
    EXPECT_THAT(greatest.GetAllNestedChildTallies(), ElementsAre(scaled, sum, a, b, a));
}

TEST_F(Tallies, ListsOfTalliesChangeAsAskedOrNotAtAll) {
    auto const tally = std::make_shared<AddTally>(number(1), number(2));
    auto const numbers = [&] {
        std::vector<double> found;
        for (auto const& child : tally->GetChildTallies()) found.push_back(number_in(child));
        return found;
    };
    tally->AddChildTally(number(3));
    tally->SetChildTally(0, number(7));
    EXPECT_THAT(numbers(), ElementsAre(7, 2, 3));

    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] { tally->AddChildTally(nullptr); }, "tallies.3 must be given"},
        {[&] {
             tally->SetChildTallies({number(1), nullptr});
         },
         "tallies.1 must be given"},
        {[&] { tally->SetChildTally(3, number(1)); }, "there is no child 3, it has 3"},
        {[&] { tally->SetChildTally(-1, number(1)); }, "there is no child -1"},
        {[&] { tally->AddChildTally(tally); }, "must not be or hold"},
        {[&] { tally->SetChildTally(1, std::make_shared<ScaleTally>(tally, 2)); }, "must not be or hold"},
    };
    for (auto const& [action, message] : refused) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
        EXPECT_THAT(numbers(), ElementsAre(7, 2, 3)) << message;
    }

    tally->SetChildTallies({number(9)});
    EXPECT_THAT(numbers(), ElementsAre(9));
    tally->ClearChildTallies();
    EXPECT_THAT(numbers(), IsEmpty());
}

TEST_F(Tallies, CopiesHaveTalliesOfTheirOwn) {
    AreaPopulationTally const areas(std::vector{link, volume});
    AreaPopulationTally copied_areas(areas);
    EXPECT_EQ(copied_areas.GetAreas().size(), 2u);
    EXPECT_EQ(AreaPopulationTally(link).GetAreas().size(), 1u);

    auto const two = std::make_shared<VariableTally>(2);
    DivideTally const original(two, number(4), ZeroOverZeroValue::INFINITE);
    DivideTally copy(original);
    two->SetValue(3);
    EXPECT_EQ(number_in(copy.GetNumeratorTally()), 2);
    EXPECT_EQ(number_in(copy.GetDenominatorTally()), 4);
    EXPECT_EQ(copy.GetZeroOverZeroValue(), ZeroOverZeroValue::INFINITE);
}

TEST_F(Tallies, RefuseWhatCanNeverBeRight) {
    auto const one = number(1);
    VariableTally variable(1);
    ScaleTally scale(one, 1);
    DivideTally quotient(one, one, ZeroOverZeroValue::ZERO);
    AreaPopulationTally areas(link);
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] { VariableTally made(NAN_VALUE); }, "VariableTally: value must be finite"},
        {[&] { variable.SetValue(INFINITE_VALUE); }, "VariableTally: value must be finite"},
        {[&] { ScaleTally made(nullptr, 1); }, "ScaleTally: tally must be given"},
        {[&] { scale.SetScaleValue(-INFINITE_VALUE); }, "ScaleTally: scaleValue must be finite"},
        {[&] { SubtractTally made(one, nullptr); }, "SubtractTally: secondTally must be given"},
        {[&] { DivideTally made(one, one, static_cast<ZeroOverZeroValue>(3)); }, "zeroOverZeroValue must be one of"},
        {[&] { quotient.SetNumeratorTally(nullptr); }, "DivideTally: numeratorTally must be given"},
        {[&] { MinTally made(one, nullptr); }, "MinTally: tallies.1 must be given"},
        {[&] { TransitionTally made{std::shared_ptr<Transition>()}; }, "TransitionTally: transition must be given"},
        {[&] {
             areas.SetAreas({link, volume, link});
         },
         "twice"},
        {[&] { areas.SetAreas({GlobalId::INVALID}); }, "areas.0 must be the identifier of"},
        {[&] { NamedTally made(GlobalId::INVALID); }, "NamedTally: tallyObject must be the identifier of"},
    };
    for (auto const& [action, message] : refused) EXPECT_THAT(refusal_of(action), HasSubstr(message));
    EXPECT_EQ(variable.GetValue(), 1);
    EXPECT_THAT(areas.GetAreas().size(), 1u);
}

TEST_F(Tallies, NameObjectsOfTheRightKindOnceAProjectTakesThem) {
    struct {
        TallyPointer tally;
        char const* expected;
    } const cases[] = {
        {std::make_shared<AreaPopulationTally>(token), "portal, floor, connection, zone or volume"},
        {std::make_shared<SurfaceAreaTally>(volume), "walkable object"},
        {std::make_shared<ServerQueueTally>(link), "a server"},
        {std::make_shared<NamedTally>(server), "a tally object"},
        {std::make_shared<ScaleTally>(std::make_shared<AreaPopulationTally>(GlobalId::Generate()), 2),
         "no object of the project has"},
    };
    for (auto const& [tally, expected] : cases) {
        auto const message = refusal_of([&, &given = tally] { counter->SetTallyValueByCount(given); });
        EXPECT_THAT(message, HasSubstr(expected));
        EXPECT_THAT(message, HasSubstr("TallyObject 'Counter'"));
        EXPECT_EQ(counter->GetTallyValueType(), TallyValueType::VARIABLE);
    }
}

// The ways in which the value of a tally object can be made, each with what tells them apart.
struct ValueCase {
    TallyValueType type;
    std::function<void(TallyObject&)> set;
    bool has_tally;
};

std::vector<ValueCase> value_cases(TallyPointer const& tally) {
    using enum TallyValueType;
    return {
        {VARIABLE, [](auto& object) { object.SetTallyValueByVariable(4); }, false},
        {COUNT, [=](auto& object) { object.SetTallyValueByCount(tally); }, true},
        {CLOCK, [](auto& object) { object.SetTallyValueByClockCountingUp(4); }, false},
        {CLOCK, [](auto& object) { object.SetTallyValueByClockCountingDown(4); }, false},
        {AGGREGATE_SUM_OVER_TIME, [=](auto& object) { object.SetTallyValueByAggregateSumOverTime(tally); }, true},
        {AGGREGATE_MIN_OVER_TIME, [=](auto& object) { object.SetTallyValueByAggregateMinOverTime(tally); }, true},
        {AGGREGATE_MAX_OVER_TIME, [=](auto& object) { object.SetTallyValueByAggregateMaxOverTime(tally); }, true},
        {AGGREGATE_ROLLING_SUM, [=](auto& object) { object.SetTallyValueByAggregateRollingSum(tally, 60); }, true},
        {AGGREGATE_ROLLING_AVERAGE,
         [=](auto& object) { object.SetTallyValueByAggregateRollingAverage(tally, 60, true); }, true},
    };
}

TEST_F(Tallies, ObjectsMakeTheirValueInOneWay) {
    EXPECT_EQ(counter->GetTallyValueType(), TallyValueType::VARIABLE);
    EXPECT_EQ(counter->GetDefaultDistributionOnReset()->GetMean(), 0);
    TallyPointer const tally = std::make_shared<AreaPopulationTally>(link);
    for (auto const& [type, set, has_tally] : value_cases(tally)) {
        counter->SetDefaultValueOnReset(0);
        set(*counter);
        EXPECT_EQ(counter->GetTallyValueType(), type);
        EXPECT_EQ(counter->GetTally() != nullptr, has_tally);
        if (has_tally) {
            EXPECT_EQ(written(counter->GetTally()), written(tally));
        }
        // Variables and clocks bring their default value along.
        EXPECT_EQ(counter->GetDefaultDistributionOnReset()->GetMean(), has_tally ? 0 : 4);
    }
    counter->SetTallyValueByClockCountingDown(Distribution::CreateUniform(5, 7));
    EXPECT_TRUE(counter->IsClockCountingDown());
    EXPECT_EQ(counter->GetDefaultDistributionOnReset()->GetMean(), 6);
    counter->SetTallyValueByClockCountingUp(1);
    EXPECT_FALSE(counter->IsClockCountingDown());
}

TEST_F(Tallies, ObjectsKeepWhatTheyHaveWhenAValueIsRefused) {
    counter->SetTallyValueByClockCountingDown(30);
    counter->SetMinValue(0);
    counter->SetMaxValue(100);
    auto const tally = number(1);
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] { counter->SetTallyValueByCount(nullptr); }, "value.tally must be given"},
        {[&] { counter->SetTallyValueByAggregateRollingSum(tally, 0); }, "windowInSeconds must be at least 1 s, not 0"},
        {[&] { counter->SetTallyValueByAggregateRollingAverage(tally, -5, false); }, "at least 1 s, not -5"},
        {[&] { counter->SetTallyValueByVariable(NAN_VALUE); }, "finite"},
        {[&] { counter->SetTallyValueByVariable(std::shared_ptr<Distribution>()); }, "must be given"},
        {[&] { counter->SetTallyValueByClockCountingUp(Distribution::CreateUniform(2, 1)); }, "valid distribution"},
        {[&] { counter->SetMinValue(101); }, "minValue must be at most maxValue, 100, not 101"},
        {[&] { counter->SetMaxValue(-1); }, "minValue must be at most maxValue, -1, not 0"},
        {[&] { counter->SetMaxValue(INFINITE_VALUE); }, "maxValue must be finite"},
        {[&] { counter->SetStartAtCustomValue(NAN_VALUE); }, "startCustomValue must be finite"},
        {[&] { counter->SetAutoResetEveryInterval(0); }, "intervalInSeconds must be at least 1 s, not 0"},
        {[&] { counter->SetAutoResetWhenValueLessOrEqual(nullptr); }, "autoReset.tally must be given"},
        {[&] { counter->SetDefaultValueOnReset(NAN_VALUE); }, "finite"},
        {[&] { counter->GetStartCustomValue(); }, "has no startCustomValue"},
        {[&] { counter->GetAutoResetIntervalInSeconds(); }, "has no autoReset.intervalInSeconds"},
    };
    auto const before = document.copy();
    for (auto const& [action, message] : refused) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
        EXPECT_THAT(differences(document, *before), IsEmpty()) << message;
    }
}

TEST_F(Tallies, ObjectsResetInOneWayOrNotAtAll) {
    struct {
        std::function<void()> set;
        std::array<bool, 5> answers;  // disabled, every frame, every interval, greater or equal, less or equal
    } const cases[] = {
        {[] {}, {true, false, false, false, false}},
        {[&] { counter->SetAutoResetEveryFrame(); }, {false, true, false, false, false}},
        {[&] { counter->SetAutoResetEveryInterval(30); }, {false, false, true, false, false}},
        {[&] { counter->SetAutoResetWhenValueGreaterOrEqual(number(8)); }, {false, false, false, true, false}},
        {[&] { counter->SetAutoResetWhenValueLessOrEqual(number(8)); }, {false, false, false, false, true}},
        {[&] { counter->SetAutoResetDisabled(); }, {true, false, false, false, false}},
    };
    for (auto const& [set, answers] : cases) {
        set();
        EXPECT_EQ((std::array{counter->IsAutoResetDisabled(), counter->IsAutoResetEveryFrame(),
                              counter->IsAutoResetEveryInterval(), counter->IsAutoResetWhenValueGreaterOrEqual(),
                              counter->IsAutoResetWhenValueLessOrEqual()}),
                  answers);
        bool const when_reached = answers[3] || answers[4];
        EXPECT_EQ(counter->IsAutoResetWhenValueReached(), when_reached);
        EXPECT_EQ(counter->GetAutoResetTally() != nullptr, when_reached);
        if (answers[2]) {
            EXPECT_EQ(counter->GetAutoResetIntervalInSeconds(), 30);
        }
    }
}

TEST_F(Tallies, ObjectsKeepCopiesOfTallies) {
    auto const mine = std::make_shared<VariableTally>(1);
    counter->SetTallyValueByCount(mine);
    counter->SetAutoResetWhenValueGreaterOrEqual(mine);
    mine->SetValue(2);
    std::dynamic_pointer_cast<VariableTally>(counter->GetTally())->SetValue(3);
    EXPECT_EQ(number_in(counter->GetTally()), 1);
    EXPECT_EQ(number_in(counter->GetAutoResetTally()), 1);
}

TEST_F(Tallies, ObjectsAreNotMadeOfThemselves) {
    auto const named = [](TallyObject& object) { return std::make_shared<NamedTally>(object.GetId()); };
    auto const first = tally_object("First");
    auto const second = tally_object("Second");
    second->SetTallyValueByAggregateSumOverTime(std::make_shared<ScaleTally>(named(*first), 2));
    counter->SetTallyValueByCount(std::make_shared<AddTally>(named(*second), named(*first)));
    EXPECT_THAT(refusal_of([&] { first->SetTallyValueByCount(named(*first)); }), HasSubstr("not of itself"));
    EXPECT_THAT(
        refusal_of([&] { first->SetTallyValueByCount(std::make_shared<MaxTally>(number(1), named(*counter))); }),
        HasSubstr("TallyObject 'First': value must be made of other tally objects, not of itself by way"));
    EXPECT_EQ(first->GetTallyValueType(), TallyValueType::VARIABLE);
    // What resets a value is compared with it and no part of it.
    first->SetAutoResetWhenValueGreaterOrEqual(named(*counter));

    state_of<TallyObjectState>(*first).value = CountValue{{named(*counter)}};
    EXPECT_THAT(refusal_of([&] { from_text(to_text(document), kinds()); }), HasSubstr("not of itself"));
}

TEST_F(Tallies, CommandsSayWhetherTheyResetAndAdd) {
    auto const change = tally_change("Change");
    struct {
        std::function<void()> set;
        bool resets, adds_once;
        int period;  // 0: does not add repeatedly
    } const cases[] = {
        {[] {}, false, true, 0},
        {[&] { change->SetCommandToAddRepeatedly(5); }, false, false, 5},
        {[&] { change->SetCommandToReset(); }, true, false, 0},
        {[&] { change->SetCommandToResetThenAddOnce(); }, true, true, 0},
        {[&] { change->SetCommandToResetThenAddRepeatedly(7); }, true, false, 7},
        {[&] { change->SetCommandToAddOnce(); }, false, true, 0},
    };
    for (auto const& [set, resets, adds_once, period] : cases) {
        set();
        EXPECT_EQ(change->DoesCommandReset(), resets);
        EXPECT_EQ(change->DoesCommandAdd(), adds_once || period != 0);
        EXPECT_EQ(change->DoesCommandAddOnce(), adds_once);
        EXPECT_EQ(change->DoesCommandAddRepeatedly(), period != 0);
        if (period == 0) {
            EXPECT_THAT(refusal_of([&] { change->GetAddPeriodInSeconds(); }), HasSubstr("has no addPeriodInSeconds"));
        } else {
            EXPECT_EQ(change->GetAddPeriodInSeconds(), period);
        }
    }
}

TEST_F(Tallies, ChangesAddANumberADistributionOrATally) {
    auto const change = tally_change("Change");
    EXPECT_EQ(change->GetValueAsDistribution()->GetMean(), 1);
    struct {
        std::function<void()> set;
        bool is_tally;
        double mean;
    } const cases[] = {
        {[&] { change->SetValueAsTally(number(3)); }, true, 3},
        {[&] { change->SetValueAsConstant(-2.5); }, false, -2.5},
        {[&] { change->SetValueAsDistribution(Distribution::CreateUniform(1, 2)); }, false, 1.5},
    };
    for (auto const& [set, is_tally, mean] : cases) {
        set();
        EXPECT_EQ(change->CanGetValueAsTally(), is_tally);
        EXPECT_EQ(change->CanGetValueAsDistribution(), !is_tally);
        auto const distribution = change->GetValueAsDistribution();
        auto const tally = change->GetValueAsTally();
        ASSERT_EQ(tally != nullptr, is_tally);
        ASSERT_EQ(distribution != nullptr, !is_tally);
        EXPECT_EQ(is_tally ? number_in(tally) : distribution->GetMean(), mean);
    }
}

TEST_F(Tallies, ChangesKeepWhatTheyHaveWhenAValueIsRefused) {
    auto const change = tally_change("Change");
    auto const range = std::make_shared<OverDurationTriggerRange>();
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] { change->SetTallyObjects({link}); },
         "must be the identifier of a tally object, not that of SomeLink 'Link'"},
        {[&] {
             change->SetTallyObjects({counter->GetId(), counter->GetId()});
         },
         "twice"},
        {[&] { change->SetTriggerRange(nullptr); }, "triggerRange must be given"},
        {[&] { change->SetTriggerRange(range); }, "startTrigger must be given"},
        {[&] { change->SetCommandToAddRepeatedly(0); }, "addPeriodInSeconds must be at least 1 s, not 0"},
        {[&] { change->SetCommandToResetThenAddRepeatedly(-1); }, "at least 1 s, not -1"},
        {[&] { change->SetCyclingEnabled(0); }, "cyclePeriodInSeconds must be at least 1 s, not 0"},
        {[&] { change->GetCyclePeriodInSeconds(); }, "has no cyclePeriodInSeconds"},
        {[&] { change->SetValueAsConstant(INFINITE_VALUE); }, "finite"},
        {[&] { change->SetValueAsDistribution(nullptr); }, "value.distribution must be given"},
        {[&] { change->SetValueAsTally(nullptr); }, "value.tally must be given"},
    };
    auto const before = document.copy();
    for (auto const& [action, message] : refused) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
        EXPECT_THAT(differences(document, *before), IsEmpty()) << message;
    }
}

TEST_F(Tallies, AreSavedAndOpenedEqual) {
    for (auto const& tally : one_of_each()) {
        auto const object = tally_object(document.next_unique_name("Tally"));
        object->SetTallyValueByCount(tally);
        EXPECT_EQ(written(object->GetTally()), written(tally));
    }
    for (auto const& value : value_cases(std::make_shared<AreaPopulationTally>(link))) {
        auto const object = tally_object(document.next_unique_name("Value"));
        value.set(*object);
        object->SetMinValue(-1);
        object->SetMaxValue(1000);
        object->SetStartAtCustomValue(2);
        object->SetAutoResetWhenValueLessOrEqual(number(3));
    }
    document.find<TallyObjectState>(std::string("Value"))->reset = IntervalReset{20};
    auto const change = tally_change("Change");
    change->SetTallyObjects({counter->GetId()});
    change->SetTriggerRange(
        std::make_shared<OverDurationTriggerRange>(std::make_shared<SimulationStartTrigger>(30), 60));
    change->SetCommandToResetThenAddRepeatedly(5);
    change->SetValueAsTally(number(2));
    change->SetCyclingEnabled(30);
    change->SetSkipFirstAddition(true);
    auto const drawn = tally_change("Drawn");
    drawn->SetValueAsDistribution(Distribution::CreateUniform(0, 9));
    drawn->SetValueDistributionUsesIntegers(true);

    auto const opened = from_text(to_text(document), kinds());
    EXPECT_THAT(differences(document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    auto const* const value = opened->find<TallyObjectState>(std::string("Value"));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(std::get<IntervalReset>(value->reset).seconds, 20);
    EXPECT_NE(
        dynamic_cast<OverDurationTriggerRange*>(opened->find<TallyChangeState>(std::string("Change"))->range.get()),
        nullptr);
}

TEST_F(Tallies, WhatTheyNameStays) {
    counter->SetTallyValueByCount(
        std::make_shared<AddTally>(std::make_shared<AreaPopulationTally>(volume),
                                   std::make_shared<TransitionTally>(Transition::SimEnter(portal))));
    auto const change = tally_change("Change");
    change->SetTallyObjects({counter->GetId()});
    EXPECT_THAT(refusal_of([&] { remove(volume); }), HasSubstr("Counter"));
    EXPECT_THAT(refusal_of([&] { remove(portal); }), HasSubstr("Counter"));
    EXPECT_THAT(refusal_of([&] { remove(counter->GetId()); }), HasSubstr("Change"));
    remove(change->GetId());
    remove(counter->GetId());
    remove(volume);
    EXPECT_THAT(document.objects<TallyObjectState>(), IsEmpty());
}

}  // namespace
}  // namespace pedflux::engine
