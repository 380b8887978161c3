#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <limits>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Question = NodePointerOf<AgentTest>;
using Tests = NodeList<AgentTest>;

Question always() { return std::make_shared<AlwaysTrueTest>(); }

struct AgentTests : AgentRules {
    std::shared_ptr<AgentTestObject> named = create<AgentTestObjectState>("Named");

    Tests one_of_each() const {
        auto const age = std::make_shared<AgeTest>(12.5F, AgentAgeComparison::YOUNGER_THAN);
        auto const people = std::make_shared<AreaPopulationTally>(volume);
        return {always(),
                age,
                std::make_shared<CreatedByTest>(journey),
                std::make_shared<EnteredAtTest>(std::vector{portal, exit}),
                std::make_shared<EventActiveTest>(std::vector{journey, broadcast}, LogicQuantifier::ANY_OF,
                                                  EventStateActivity::INACTIVE),
                std::make_shared<GateStateTest>(link, LogicQuantifier::NONE_OF, GateStateDirection::BOX_TO_BALL,
                                                AgentAccess::CLOSED),
                std::make_shared<InAreaTest>(std::vector{volume, portal}),
                std::make_shared<InitialExitTest>(exit),
                std::make_shared<NamedTest>(named->GetId()),
                std::make_shared<ProfileTest>(profile),
                std::make_shared<RandomChanceTest>(0.25),
                std::make_shared<ServerStateTest>(server, LogicQuantifier::ANY_OF, ServerAccessPoint::EXIT,
                                                  AgentAccess::CLOSED),
                std::make_shared<TallyTest>(people, ComparisonType::LESS_THAN, people),
                std::make_shared<TimeTest>(TimeReference::AfterEventStart(journey, 60), TimeComparison::BEFORE),
                std::make_shared<TokenTest>(token, LogicQuantifier::NONE_OF),
                std::make_shared<NotTest>(age),
                std::make_shared<CompoundTest>(age, always(), BooleanOperator::OR),
                std::make_shared<AllOfTest>(Tests{age, always(), age}),
                std::make_shared<AnyOfTest>(age, always()),
                std::make_shared<NoneOfTest>(Tests{age})};
    }
};

TEST_F(AgentTests, ComeInAllKindsAndAreCopiedWhole) {
    auto const tests = one_of_each();
    expect_distinct_numbers<AgentTest>();
    expect_one_of_each_kind(tests);
    expect_clones(tests);
}

TEST_F(AgentTests, CopiesAreIndependent) {
    auto const chance = std::make_shared<RandomChanceTest>(0.5);
    NotTest const original(chance);
    NotTest copy(original);
    chance->SetChance(1);
    auto const copied = std::dynamic_pointer_cast<RandomChanceTest>(copy.GetNegatedTest());
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->GetChance(), 0.5F);
}

TEST_F(AgentTests, AreSavedAndOpenedEqual) {
    for (auto const& test : one_of_each()) {
        auto const object = create<AgentTestObjectState>(document.next_unique_name("Test"));
        if (test->GetAgentTestTypeId() == static_cast<int>(AgentTestType::AGE)) {
            // The nearest number of single precision, not the decimal fraction, is what was set.
            std::dynamic_pointer_cast<AgeTest>(test)->SetTestAgeInSeconds(0.1F);
        }
        object->SetAgentTest(test);
        EXPECT_EQ(written(object->GetAgentTest()), written(test));
    }
    auto const opened = from_text(to_text(document), known_kinds());
    EXPECT_THAT(differences(document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    auto const objects = opened->objects<AgentTestObjectState>();
    EXPECT_NE(std::dynamic_pointer_cast<NoneOfTest>(objects.back()->test), nullptr);
    auto const age = std::dynamic_pointer_cast<AgeTest>(objects[2]->test);
    ASSERT_TRUE(age);
    EXPECT_EQ(age->GetTestAgeInSeconds(), 0.1F);
}

TEST_F(AgentTests, KnowTheirChildren) {
    std::map<AgentTestType, int> const with_children{{AgentTestType::NOT, 1},
                                                     {AgentTestType::COMPOUND, 2},
                                                     {AgentTestType::ALL_OF, 3},
                                                     {AgentTestType::ANY_OF, 2},
                                                     {AgentTestType::NONE_OF, 1}};
    for (auto const& test : one_of_each()) {
        auto const entry = with_children.find(static_cast<AgentTestType>(test->GetAgentTestTypeId()));
        int const count = entry == with_children.end() ? 0 : entry->second;
        EXPECT_EQ(test->GetChildTestCount(), count) << written(test);
        auto const children = test->GetChildTests();
        ASSERT_EQ(static_cast<int>(children.size()), count);
        for (int i = 0; i < count; ++i) EXPECT_EQ(test->GetChildTest(i), children[static_cast<std::size_t>(i)]);
        EXPECT_THAT(refusal_of([&] { test->GetChildTest(count); }), HasSubstr("there is no child"));
    }

    auto const inner = std::make_shared<NotTest>(always());
    auto const outer = std::make_shared<AnyOfTest>(inner, always());
    EXPECT_THAT(outer->GetAllNestedChildTests(), ElementsAre(inner, inner->GetNegatedTest(), outer->GetChildTest(1)));
}

TEST_F(AgentTests, OfOneObjectAreTestsOfAListOfOne) {
    struct {
        Question of_one;
        Question of_list;
    } const cases[] = {
        {std::make_shared<CreatedByTest>(journey), std::make_shared<CreatedByTest>(std::vector{journey})},
        {std::make_shared<EventActiveTest>(journey),
         std::make_shared<EventActiveTest>(std::vector{journey}, LogicQuantifier::ALL_OF, EventStateActivity::ACTIVE)},
        {std::make_shared<GateStateTest>(link),
         std::make_shared<GateStateTest>(std::vector{link}, LogicQuantifier::ALL_OF, GateStateDirection::BOTH_WAYS,
                                         AgentAccess::OPEN)},
        {std::make_shared<ServerStateTest>(server),
         std::make_shared<ServerStateTest>(std::vector{server}, LogicQuantifier::ALL_OF,
                                           ServerAccessPoint::ENTRANCE_AND_EXIT, AgentAccess::OPEN)},
        {std::make_shared<TokenTest>(token), std::make_shared<TokenTest>(std::vector{token}, LogicQuantifier::ALL_OF)},
        {std::make_shared<TimeTest>(3600, TimeComparison::BEFORE),
         std::make_shared<TimeTest>(TimeReference::Absolute(3600), TimeComparison::BEFORE)},
    };
    for (auto const& [of_one, of_list] : cases) EXPECT_EQ(written(of_one), written(of_list));
}

TEST_F(AgentTests, ListsAreEditedAllOrNothing) {
    auto const list = std::make_shared<AllOfTest>(Tests{});
    auto const first = always();
    auto const second = always();
    list->AddChildTest(first);
    list->AddChildTest(second);
    list->SetChildTest(1, first);
    EXPECT_THAT(list->GetChildTests(), ElementsAre(first, first));

    auto const holder = std::make_shared<CompoundTest>(list, first, BooleanOperator::AND);
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[&] { list->SetChildTest(-1, first); }, "AllOfTest: there is no child -1, it has 2"},
        {[&] { list->AddChildTest(nullptr); }, "AllOfTest: childTests.2 must be given, not empty"},
        {[&] {
             list->SetChildTests({second, nullptr});
         },
         "childTests.1 must be given, not empty"},
        {[&] { list->AddChildTest(holder); }, "must not be or hold the AllOfTest itself"},
        {[&] { holder->SetSecondChildTest(holder); }, "must not be or hold the CompoundTest itself"},
        {[&] { holder->SetFirstChildTest(nullptr); }, "firstChildTest must be given, not empty"},
    };
    for (auto const& [action, message] : cases) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
        EXPECT_THAT(list->GetChildTests(), ElementsAre(first, first));
        EXPECT_THAT(holder->GetChildTests(), ElementsAre(list, first));
    }
    list->ClearChildTests();
    EXPECT_EQ(list->GetChildTestCount(), 0);
}

TEST_F(AgentTests, RefuseWhatMakesNoSense) {
    auto const nan = std::numeric_limits<double>::quiet_NaN();
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[] { AgeTest(-1, AgentAgeComparison::OLDER_THAN); }, "AgeTest: testAgeInSeconds must be at least 0"},
        {[] { AgeTest(std::numeric_limits<float>::infinity(), AgentAgeComparison::OLDER_THAN); }, "s, not inf"},
        {[] { AgeTest(1, static_cast<AgentAgeComparison>(2)); }, "YOUNGER_THAN (0), OLDER_THAN (1), not 2"},
        {[] { RandomChanceTest(1.0000001); }, "RandomChanceTest: chance must be at least 0 and at most 1"},
        {[] { RandomChanceTest(-0.01); }, "at least 0 and at most 1, not -0.01"},
        {[&] { RandomChanceTest{nan}; }, "at least 0 and at most 1, not nan"},
        {[] { TimeTest(-1, TimeComparison::AFTER); }, "-1"},
        {[] { TimeTest(std::shared_ptr<TimeReference>(), TimeComparison::AFTER); }, "timeReference must be given"},
        {[] { TallyTest(nullptr, ComparisonType::EQUAL, nullptr); }, "firstTally must be given, not empty"},
        {[&] {
             CreatedByTest(std::vector{journey, journey});
         },
         "a list of different objects, not one with"},
        {[] { InAreaTest{GlobalId::INVALID}; }, "InAreaTest: areas.0 must be the identifier of"},
        {[&] { TokenTest(token, static_cast<LogicQuantifier>(3)); }, "ALL_OF (0), ANY_OF (1), NONE_OF (2), not 3"},
        {[&] {
             GateStateTest(link, LogicQuantifier::ALL_OF, GateStateDirection::BOTH_WAYS, static_cast<AgentAccess>(9));
         },
         "agentAccess must be one of OPEN (0), CLOSED (1), not 9"},
    };
    for (auto const& [action, message] : cases) EXPECT_THAT(refusal_of(action), HasSubstr(message));

    RandomChanceTest chance(0.3);
    EXPECT_EQ(chance.GetChance(), 0.3F);
    EXPECT_THAT(refusal_of([&] { chance.SetChance(2); }), HasSubstr("chance must be at least 0 and at most 1, not 2"));
    EXPECT_EQ(chance.GetChance(), 0.3F);
}

TEST_F(AgentTests, ReferToObjectsOfTheRightKind) {
    struct {
        Question test;
        char const* message;
    } const cases[] = {
        {std::make_shared<CreatedByTest>(broadcast),
         "agentTest.events.0 must be the identifier of an event that brings"},
        {std::make_shared<EnteredAtTest>(std::vector{portal, link}), "portals.1 must be the identifier of a portal"},
        {std::make_shared<EventActiveTest>(profile), "must be the identifier of an event, not that of SomeProfile"},
        {std::make_shared<GateStateTest>(portal), "must be the identifier of a connection"},
        {std::make_shared<InAreaTest>(server), "the identifier of a portal, floor, connection, zone or volume"},
        {std::make_shared<InitialExitTest>(volume), "must be the identifier of a portal"},
        {std::make_shared<NamedTest>(token), "must be the identifier of an agent test object"},
        {std::make_shared<ProfileTest>(token), "must be the identifier of a profile"},
        {std::make_shared<ServerStateTest>(portal), "must be the identifier of a server"},
        {std::make_shared<TokenTest>(profile), "must be the identifier of a token"},
        {std::make_shared<TimeTest>(TimeReference::AfterEventStart(token, 0), TimeComparison::AFTER),
         "must be the identifier of an event"},
        {std::make_shared<NotTest>(std::make_shared<ProfileTest>(GlobalId::Generate())),
         "no object of the project has"},
        {nullptr, "AgentTestObject 'Named': agentTest must be given, not empty"},
    };
    auto const before = written(named->GetAgentTest());
    for (auto const& [test, message] : cases) {
        EXPECT_THAT(refusal_of([&, &given = test] { named->SetAgentTest(given); }), HasSubstr(message));
        EXPECT_EQ(written(named->GetAgentTest()), before);
    }

    auto const people = std::make_shared<AreaPopulationTally>(volume);
    named->SetAgentTest(std::make_shared<NotTest>(std::make_shared<TallyTest>(people, ComparisonType::EQUAL, people)));
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(volume)); }), HasSubstr("Named"));
    named->SetAgentTest(always());
    document.remove(*document.find(volume));
    EXPECT_EQ(document.find(volume), nullptr);
}

TEST_F(AgentTests, AnObjectKeepsACopy) {
    EXPECT_EQ(named->GetTypeId(), static_cast<int>(ObjectType::AGENT_TEST_OBJECT));
    EXPECT_EQ(named->GetAgentTest()->GetAgentTestTypeId(), static_cast<int>(AgentTestType::ALWAYS_TRUE));
    auto const chance = std::make_shared<RandomChanceTest>(0.5);
    named->SetAgentTest(chance);
    chance->SetChance(0);
    auto const kept = std::dynamic_pointer_cast<RandomChanceTest>(named->GetAgentTest());
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->GetChance(), 0.5F);
    kept->SetChance(1);
    EXPECT_EQ(std::dynamic_pointer_cast<RandomChanceTest>(named->GetAgentTest())->GetChance(), 0.5F);
}

}  // namespace
}  // namespace pedflux::engine
