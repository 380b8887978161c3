#pragma once

#include "engine/behaviour/condition_names.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/object_rules.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"

#include <pedflux/agent_tests.h>
#include <pedflux/tallies.h>

#include <limits>
#include <memory>
#include <string_view>
#include <vector>

/// The states of agent tests: see engine/model/node.h.
namespace pedflux::engine {

PEDFLUX_NAMES(AgentAgeComparison,
              {{AgentAgeComparison::YOUNGER_THAN, "YOUNGER_THAN"}, {AgentAgeComparison::OLDER_THAN, "OLDER_THAN"}});
PEDFLUX_NAMES(LogicQuantifier, {{LogicQuantifier::ALL_OF, "ALL_OF"},
                                {LogicQuantifier::ANY_OF, "ANY_OF"},
                                {LogicQuantifier::NONE_OF, "NONE_OF"}});
PEDFLUX_NAMES(TimeComparison, {{TimeComparison::BEFORE, "BEFORE"}, {TimeComparison::AFTER, "AFTER"}});

struct AlwaysTrueTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::ALWAYS_TRUE;
    static constexpr std::string_view NAME = "AlwaysTrueTest";
    using Handle = AlwaysTrueTest;

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct AgeTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::AGE;
    static constexpr std::string_view NAME = "AgeTest";
    using Handle = AgeTest;

    static constexpr double MOST_SECONDS = static_cast<double>(std::numeric_limits<float>::max());

    double age = 0;  ///< seconds; a number of single precision
    AgentAgeComparison comparison = AgentAgeComparison::OLDER_THAN;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("testAgeInSeconds", self.age, Range{0, MOST_SECONDS, "s"});
        field("agentAgeComparison", self.comparison);
    }
};

struct RandomChanceTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::RANDOM_CHANCE;
    static constexpr std::string_view NAME = "RandomChanceTest";
    using Handle = RandomChanceTest;

    double chance = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("chance", self.chance, Range{0, 1});
    }
};

/// The state of a test whether one of a list of objects is the agent's: its kind, the list's name in files, and what it
/// holds.
#define TEST_BY(Class, KIND, name, rule)                           \
    struct Class##State : NodeState {                              \
        static constexpr AgentTestType TYPE = AgentTestType::KIND; \
        static constexpr std::string_view NAME = #Class;           \
        using Handle = Class;                                      \
                                                                   \
        std::vector<GlobalId> objects;                             \
                                                                   \
        template <class Self, class Field>                         \
        static void fields(Self& self, Field&& field) {            \
            field(name, self.objects, rule);                       \
        }                                                          \
    };

TEST_BY(CreatedByTest, CREATED_BY, "events", AN_EVENT_WITH_PEOPLE)
TEST_BY(EnteredAtTest, ENTERED_AT, "portals", A_PORTAL)
TEST_BY(InAreaTest, IN_AREA, "areas", AN_AREA)
TEST_BY(InitialExitTest, INITIAL_EXIT, "portals", A_PORTAL)
TEST_BY(ProfileTest, PROFILE, "profiles", A_PROFILE)
#undef TEST_BY

struct EventActiveTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::EVENT_ACTIVE;
    static constexpr std::string_view NAME = "EventActiveTest";
    using Handle = EventActiveTest;

    std::vector<GlobalId> objects;
    LogicQuantifier quantifier = LogicQuantifier::ALL_OF;
    EventStateActivity activity = EventStateActivity::ACTIVE;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("events", self.objects, AN_EVENT);
        field("logicQuantifier", self.quantifier);
        field("eventStateActivity", self.activity);
    }
};

struct GateStateTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::GATE_STATE;
    static constexpr std::string_view NAME = "GateStateTest";
    using Handle = GateStateTest;

    std::vector<GlobalId> objects;
    LogicQuantifier quantifier = LogicQuantifier::ALL_OF;
    GateStateDirection direction = GateStateDirection::BOTH_WAYS;
    AgentAccess access = AgentAccess::OPEN;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("gatedObjects", self.objects, A_GATE);
        field("logicQuantifier", self.quantifier);
        field("gateStateDirection", self.direction);
        field("agentAccess", self.access);
    }
};

struct ServerStateTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::SERVER_STATE;
    static constexpr std::string_view NAME = "ServerStateTest";
    using Handle = ServerStateTest;

    std::vector<GlobalId> objects;
    LogicQuantifier quantifier = LogicQuantifier::ALL_OF;
    ServerAccessPoint point = ServerAccessPoint::ENTRANCE_AND_EXIT;
    AgentAccess access = AgentAccess::OPEN;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("servers", self.objects, A_SERVER);
        field("logicQuantifier", self.quantifier);
        field("serverAccessPoint", self.point);
        field("agentAccess", self.access);
    }
};

struct TokenTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::TOKEN;
    static constexpr std::string_view NAME = "TokenTest";
    using Handle = TokenTest;

    std::vector<GlobalId> objects;
    LogicQuantifier quantifier = LogicQuantifier::ALL_OF;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("tokens", self.objects, A_TOKEN);
        field("logicQuantifier", self.quantifier);
    }
};

struct TallyTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::TALLY;
    static constexpr std::string_view NAME = "TallyTest";
    using Handle = TallyTest;

    std::shared_ptr<Tally> first;
    ComparisonType comparison = ComparisonType::EQUAL;
    std::shared_ptr<Tally> second;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("firstTally", self.first, must_be_given);
        field("comparisonType", self.comparison);
        field("secondTally", self.second, must_be_given);
    }
};

struct TimeTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::TIME;
    static constexpr std::string_view NAME = "TimeTest";
    using Handle = TimeTest;

    std::shared_ptr<TimeReference> time;
    TimeComparison comparison = TimeComparison::AFTER;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("timeReference", self.time, must_be_given);
        field("timeComparison", self.comparison);
    }
};

struct NamedTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::NAMED;
    static constexpr std::string_view NAME = "NamedTest";
    using Handle = NamedTest;

    GlobalId object;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("agentTestObject", self.object, A_TEST_OBJECT);
    }
};

struct NotTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::NOT;
    static constexpr std::string_view NAME = "NotTest";
    using Handle = NotTest;

    std::shared_ptr<AgentTest> child;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("negatedTest", self.child, must_be_given);
    }
};

struct CompoundTestState : NodeState {
    static constexpr AgentTestType TYPE = AgentTestType::COMPOUND;
    static constexpr std::string_view NAME = "CompoundTest";
    using Handle = CompoundTest;

    std::shared_ptr<AgentTest> first;
    std::shared_ptr<AgentTest> second;
    BooleanOperator combination = BooleanOperator::AND;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("firstChildTest", self.first, must_be_given);
        field("secondChildTest", self.second, must_be_given);
        field("booleanOperator", self.combination);
    }
};

struct TestListState : NodeState {
    std::vector<std::shared_ptr<AgentTest>> children;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("childTests", self.children, must_be_given);
    }
};

struct AllOfTestState : TestListState {
    static constexpr AgentTestType TYPE = AgentTestType::ALL_OF;
    static constexpr std::string_view NAME = "AllOfTest";
    using Handle = AllOfTest;
};

struct AnyOfTestState : TestListState {
    static constexpr AgentTestType TYPE = AgentTestType::ANY_OF;
    static constexpr std::string_view NAME = "AnyOfTest";
    using Handle = AnyOfTest;
};

struct NoneOfTestState : TestListState {
    static constexpr AgentTestType TYPE = AgentTestType::NONE_OF;
    static constexpr std::string_view NAME = "NoneOfTest";
    using Handle = NoneOfTest;
};

struct AgentTestObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::AGENT_TEST_OBJECT;
    static constexpr std::string_view NAME = "AgentTestObject";
    using Handle = AgentTestObject;

    std::shared_ptr<AgentTest> test = std::make_shared<AlwaysTrueTest>();  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("agentTest", self.test, must_be_given);
    }
};

}  // namespace pedflux::engine
