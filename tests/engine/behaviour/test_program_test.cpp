#include "engine/behaviour/tests/test_program.h"

#include "engine/base/random.h"
#include "tests/engine/behaviour/agent_moments.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Question = NodePointerOf<AgentTest>;
using Questions = NodeList<AgentTest>;

struct AgentTestPlans : AgentRules {
    GlobalId other_token = document.add<SomeTokenState>("Other token").id;
    GlobalId third_token = document.add<SomeTokenState>("Third token").id;

    std::shared_ptr<AgentTestObject> name(std::string const& title, Question const& test) {
        auto object = create<AgentTestObjectState>(title);
        object->SetAgentTest(test);
        return object;
    }
    static Question by_name(AgentTestObject& object) { return std::make_shared<NamedTest>(object.GetId()); }
    Question holds_token() const { return std::make_shared<TokenTest>(token); }
};

TEST_F(AgentTestPlans, AskWhatTheirKindSays) {
    using Arrange = std::function<void(TestMoment&)>;
    auto const people = std::make_shared<AreaPopulationTally>(volume);
    auto const events = std::vector{journey, broadcast};
    auto const tokens = std::vector{token, other_token};
    auto const gate = [&](GateStateDirection direction, AgentAccess access) {
        return std::make_shared<GateStateTest>(link, LogicQuantifier::ALL_OF, direction, access);
    };
    auto const desk = [&](ServerAccessPoint point, AgentAccess access) {
        return std::make_shared<ServerStateTest>(server, LogicQuantifier::ALL_OF, point, access);
    };
    Arrange const nothing = [](TestMoment&) {};
    Arrange const is_old = [](TestMoment& moment) { moment.seconds_here = 30; };
    Arrange const has_one = [&](TestMoment& moment) { moment.add("holds", other_token); };
    Arrange const has_both = [&](TestMoment& moment) {
        moment.add("holds", token);
        moment.add("holds", other_token);
    };
    Arrange const one_active = [&](TestMoment& moment) { moment.add("active", journey); };
    Arrange const open_forth = [&](TestMoment& moment) { moment.add("open forth", link); };
    Arrange const entrance_open = [&](TestMoment& moment) { moment.add("entrance open", server); };
    Arrange const counted = [](TestMoment& moment) { moment.tallies = {{0, 3}, {1, 4}}; };
    Arrange const at_noon = [](TestMoment& moment) {
        moment.now = 43'200;
        moment.times = {{0, 43'200}};
    };
    Arrange const before_event = [](TestMoment& moment) {
        moment.now = 43'200;
        moment.times = {{0, std::numeric_limits<double>::infinity()}};
    };
    struct {
        Question test;
        Arrange arrange;
        bool passes;
    } const cases[] = {
        {std::make_shared<AlwaysTrueTest>(), nothing, true},
        {std::make_shared<AgeTest>(30.0F, AgentAgeComparison::OLDER_THAN), is_old, true},
        {std::make_shared<AgeTest>(30.0F, AgentAgeComparison::YOUNGER_THAN), is_old, false},
        {std::make_shared<AgeTest>(30.5F, AgentAgeComparison::YOUNGER_THAN), is_old, true},
        {std::make_shared<RandomChanceTest>(0), nothing, false},
        {std::make_shared<RandomChanceTest>(1), nothing, true},

        {std::make_shared<CreatedByTest>(journey), [&](auto& moment) { moment.add("created by", journey); }, true},
        {std::make_shared<EnteredAtTest>(std::vector{portal, exit}),
         [&](auto& moment) { moment.add("entered at", exit); }, true},
        {std::make_shared<EnteredAtTest>(portal), [&](auto& moment) { moment.add("entered at", exit); }, false},
        {std::make_shared<InAreaTest>(volume), [&](auto& moment) { moment.add("in", volume); }, true},
        {std::make_shared<InitialExitTest>(exit), [&](auto& moment) { moment.add("first exit", exit); }, true},
        {std::make_shared<InitialExitTest>(exit), [&](auto& moment) { moment.add("entered at", exit); }, false},
        {std::make_shared<ProfileTest>(profile), [&](auto& moment) { moment.add("has profile", profile); }, true},
        {std::make_shared<ProfileTest>(std::vector<GlobalId>{}), nothing, false},

        {std::make_shared<TokenTest>(tokens, LogicQuantifier::ALL_OF), has_both, true},
        {std::make_shared<TokenTest>(tokens, LogicQuantifier::ALL_OF), has_one, false},
        {std::make_shared<TokenTest>(tokens, LogicQuantifier::ANY_OF), has_one, true},
        {std::make_shared<TokenTest>(tokens, LogicQuantifier::ANY_OF), nothing, false},
        {std::make_shared<TokenTest>(tokens, LogicQuantifier::NONE_OF), has_one, false},
        {std::make_shared<TokenTest>(tokens, LogicQuantifier::NONE_OF), nothing, true},
        {std::make_shared<TokenTest>(std::vector<GlobalId>{}, LogicQuantifier::ALL_OF), nothing, true},
        {std::make_shared<TokenTest>(std::vector<GlobalId>{}, LogicQuantifier::ANY_OF), nothing, false},

        {std::make_shared<EventActiveTest>(journey), one_active, true},
        {std::make_shared<EventActiveTest>(events), one_active, false},
        {std::make_shared<EventActiveTest>(events, LogicQuantifier::ANY_OF, EventStateActivity::INACTIVE), one_active,
         true},
        {std::make_shared<EventActiveTest>(events, LogicQuantifier::NONE_OF, EventStateActivity::INACTIVE), one_active,
         false},

        {gate(GateStateDirection::BOTH_WAYS, AgentAccess::OPEN), open_forth, false},
        {gate(GateStateDirection::BOTH_WAYS, AgentAccess::CLOSED), open_forth, false},
        {gate(GateStateDirection::BOTH_WAYS, AgentAccess::CLOSED), nothing, true},
        {gate(GateStateDirection::EITHER_WAY, AgentAccess::OPEN), open_forth, true},
        {gate(GateStateDirection::EITHER_WAY, AgentAccess::CLOSED), open_forth, true},
        {gate(GateStateDirection::BALL_TO_BOX, AgentAccess::OPEN), open_forth, true},
        {gate(GateStateDirection::BALL_TO_BOX, AgentAccess::CLOSED), open_forth, false},
        {gate(GateStateDirection::BOX_TO_BALL, AgentAccess::CLOSED), open_forth, true},

        {desk(ServerAccessPoint::ENTRANCE, AgentAccess::OPEN), entrance_open, true},
        {desk(ServerAccessPoint::EXIT, AgentAccess::OPEN), entrance_open, false},
        {desk(ServerAccessPoint::EXIT, AgentAccess::CLOSED), entrance_open, true},
        {desk(ServerAccessPoint::ENTRANCE_AND_EXIT, AgentAccess::OPEN), entrance_open, false},
        {desk(ServerAccessPoint::ENTRANCE_AND_EXIT, AgentAccess::CLOSED), entrance_open, false},
        {desk(ServerAccessPoint::ENTRANCE_AND_EXIT, AgentAccess::CLOSED), nothing, true},

        {std::make_shared<TallyTest>(people, ComparisonType::LESS_THAN, people), counted, true},
        {std::make_shared<TallyTest>(people, ComparisonType::GREATER_THAN_OR_EQUAL, people), counted, false},

        {std::make_shared<TimeTest>(43'200, TimeComparison::AFTER), at_noon, true},
        {std::make_shared<TimeTest>(43'200, TimeComparison::BEFORE), at_noon, false},
        {std::make_shared<TimeTest>(TimeReference::AfterEventStart(journey, 0), TimeComparison::BEFORE), before_event,
         true},
    };
    for (auto const& [test, arrange, expected] : cases) {
        for (bool const negated : {false, true}) {
            Question const asked = negated ? std::make_shared<NotTest>(test) : test;
            SymbolTable symbols;
            auto const plan = compile(*asked, document, symbols);
            TestMoment moment(symbols);
            arrange(moment);
            EXPECT_EQ(passes(plan, moment), expected != negated) << written(asked);
        }
    }
}

/// What a test of tokens answers, straight from its definition.
bool answer(AgentTest& test, std::set<std::string> const& tokens) {
    auto const children = test.GetChildTests();
    auto const holds = [&](Question const& child) { return answer(*child, tokens); };
    switch (static_cast<AgentTestType>(test.GetAgentTestTypeId())) {
        case AgentTestType::TOKEN:
            return tokens.contains(dynamic_cast<TokenTest&>(test).GetTokens().at(0).GetString());
        case AgentTestType::NOT:
            return !holds(children.at(0));
        case AgentTestType::COMPOUND:
            return dynamic_cast<CompoundTest&>(test).GetBooleanOperator() == BooleanOperator::AND
                       ? holds(children.at(0)) && holds(children.at(1))
                       : holds(children.at(0)) || holds(children.at(1));
        case AgentTestType::ALL_OF:
            return std::ranges::all_of(children, holds);
        case AgentTestType::ANY_OF:
            return std::ranges::any_of(children, holds);
        case AgentTestType::NONE_OF:
            return std::ranges::none_of(children, holds);
        default:
            return true;
    }
}

Question random_test(std::vector<GlobalId> const& tokens, Random& random, std::uint32_t depth) {
    auto const child = [&] { return random_test(tokens, random, depth - 1); };
    auto const children = [&] {
        Questions list(random.below(4));
        for (auto& each : list) each = child();
        return list;
    };
    switch (depth == 0 ? random.below(2) : random.below(8)) {
        case 0:
            return std::make_shared<AlwaysTrueTest>();
        case 1:
        case 2:
            return std::make_shared<TokenTest>(tokens[random.below(static_cast<std::uint32_t>(tokens.size()))]);
        case 3:
            return std::make_shared<NotTest>(child());
        case 4:
            return std::make_shared<CompoundTest>(child(), child(), static_cast<BooleanOperator>(random.below(2)));
        case 5:
            return std::make_shared<AllOfTest>(children());
        case 6:
            return std::make_shared<AnyOfTest>(children());
        default:
            return std::make_shared<NoneOfTest>(children());
    }
}

TEST_F(AgentTestPlans, AnswerAsTheTreesThatTheyAreMadeOf) {
    std::vector const tokens{token, other_token, third_token};
    Random random(7, 0);
    int yes = 0;
    int no = 0;
    for (int round = 0; round < 400; ++round) {
        auto const test = random_test(tokens, random, 4);
        SymbolTable symbols;
        auto const plan = compile(*test, document, symbols);
        for (DecisionIndex i = 0; i < plan.decisions.size(); ++i) {
            for (auto const next : {plan.decisions[i].if_yes, plan.decisions[i].if_no}) {
                EXPECT_TRUE(next < i || next == YES || next == NO);
            }
        }
        for (unsigned held = 0; held < 8; ++held) {
            TestMoment moment(symbols);
            std::set<std::string> names;
            for (std::size_t i = 0; i < tokens.size(); ++i) {
                if ((held >> i & 1U) == 0) continue;
                moment.add("holds", tokens[i]);
                names.insert(GlobalId(tokens[i]).GetString());
            }
            bool const expected = answer(*test, names);
            ++(expected ? yes : no);
            ASSERT_EQ(passes(plan, moment), expected) << written(test) << " with tokens " << held;
        }
    }
    EXPECT_GT(yes, 500);
    EXPECT_GT(no, 500);
}

TEST_F(AgentTestPlans, ShareTheNumbersOfWhatTheyMention) {
    SymbolTable symbols;
    auto const both = std::make_shared<TokenTest>(std::vector{token, other_token});
    compile(*both, document, symbols);
    compile(*std::make_shared<TokenTest>(std::vector{third_token, token}), document, symbols);
    ASSERT_EQ(symbols.objects.size(), 3U);
    EXPECT_TRUE(symbols.objects[0].InternalEquals(token));
    EXPECT_TRUE(symbols.objects[1].InternalEquals(other_token));
    EXPECT_TRUE(symbols.objects[2].InternalEquals(third_token));
}

TEST_F(AgentTestPlans, DrawChancesByNumbersAlone) {
    constexpr std::uint64_t agents = 20'000;
    auto const rare = std::make_shared<RandomChanceTest>(0.25);
    auto const even = std::make_shared<RandomChanceTest>(0.5);
    SymbolTable symbols;
    auto const rare_plan = compile(*rare, document, symbols);
    auto const both_plan = compile(AllOfTest(rare, even), document, symbols);
    EXPECT_EQ(symbols.chances, 3U);
    TestMoment moment(symbols);
    int rarely = 0;
    int both = 0;
    int again = 0;
    for (moment.key.agent = 0; moment.key.agent < agents; ++moment.key.agent) {
        moment.key.step = 10;
        bool const lucky = passes(rare_plan, moment);
        EXPECT_EQ(passes(rare_plan, moment), lucky);
        rarely += lucky ? 1 : 0;
        both += passes(both_plan, moment) ? 1 : 0;
        moment.key.step = 11;
        again += lucky && passes(rare_plan, moment) ? 1 : 0;
    }
    // Within four standard deviations of a binomial distribution.
    auto const expect_share = [&](int count, double share) {
        auto const n = static_cast<double>(agents);
        EXPECT_NEAR(count, n * share, 4 * std::sqrt(n * share * (1 - share)));
    };
    expect_share(rarely, 0.25);
    expect_share(both, 0.125);
    expect_share(again, 0.0625);
    EXPECT_EQ(draw({1, 2, 3}, 4), draw({1, 2, 3}, 4));
    std::set<double> const draws{draw({1, 2, 3}, 4), draw({9, 2, 3}, 4), draw({1, 9, 3}, 4), draw({1, 2, 9}, 4),
                                 draw({1, 2, 3}, 9), draw({2, 1, 3}, 4), draw({1, 3, 2}, 4)};
    EXPECT_EQ(draws.size(), 7U);
}

TEST_F(AgentTestPlans, TakeNamedTestsAsTheyAreWhenCompiled) {
    auto const inner = name("Inner", holds_token());
    auto const outer = name("Outer", std::make_shared<NotTest>(by_name(*inner)));
    SymbolTable symbols;
    auto const plan = compile(AllOfTest(by_name(*outer), by_name(*outer)), document, symbols);
    inner->SetAgentTest(std::make_shared<AlwaysTrueTest>());
    TestMoment moment(symbols);
    EXPECT_TRUE(passes(plan, moment));
    moment.add("holds", token);
    EXPECT_FALSE(passes(plan, moment));
}

TEST_F(AgentTestPlans, RefuseNamesThatLeadNowhere) {
    auto const a = name("A", std::make_shared<AlwaysTrueTest>());
    auto const b = name("B", std::make_shared<NotTest>(by_name(*a)));
    auto const c = name("C", std::make_shared<AnyOfTest>(holds_token(), by_name(*b)));
    a->SetAgentTest(by_name(*c));
    SymbolTable symbols;
    EXPECT_THAT(refusal_of([&] { compile(*by_name(*b), document, symbols); }),
                HasSubstr("AgentTestObject 'B' leads back to itself by names: 'B' -> 'A' -> 'C' -> 'B'"));
    a->SetAgentTest(by_name(*a));
    EXPECT_THAT(refusal_of([&] { compile(*by_name(*c), document, symbols); }), HasSubstr("'A' -> 'A'"));
    EXPECT_THAT(refusal_of([&] { compile(NamedTest(GlobalId::Generate()), document, symbols); }),
                HasSubstr("AgentTestObject: the project has none with the identifier"));

    // Each names the one before twice, so that the whole doubles with every name.
    auto last = name("Doubling 0", std::make_shared<AlwaysTrueTest>());
    for (int i = 1; i <= 20; ++i) {
        last = name("Doubling " + std::to_string(i), std::make_shared<AnyOfTest>(by_name(*last), by_name(*last)));
    }
    EXPECT_THAT(refusal_of([&] { compile(*by_name(*last), document, symbols); }), HasSubstr("more than 100000 parts"));
    for (int i = 0; i < 1'000; ++i) last = name("Link " + std::to_string(i), by_name(*last));
    EXPECT_THAT(refusal_of([&] { compile(*by_name(*last), document, symbols); }), HasSubstr("deeper than 1000 levels"));
}

}  // namespace
}  // namespace pedflux::engine
