#include "engine/behaviour/tests/agent_test_states.h"
#include "engine/model/node_handles.h"

#include <pedflux/agent_tests.h>

namespace pedflux {

using engine::change;
using engine::get;
using engine::set;

AgentTest::AgentTest(engine::NodePointer node) : node_(std::move(node)) {}
AgentTest::AgentTest(AgentTest const& other) : node_(engine::copy_of(engine::node_of(other))) {}
AgentTest::~AgentTest() = default;

int AgentTest::GetAgentTestTypeId() { return engine::type_of(*this); }
int AgentTest::GetChildTestCount() { return static_cast<int>(engine::children_of(*this).size()); }
std::shared_ptr<AgentTest> AgentTest::GetChildTest(int index) { return engine::child_of(*this, index); }
std::vector<std::shared_ptr<AgentTest>> AgentTest::GetChildTests() { return engine::children_of(*this); }
std::shared_ptr<AgentTest> AgentTest::Clone() { return engine::clone_of(*this); }
std::vector<std::shared_ptr<AgentTest>> AgentTest::GetAllNestedChildTests() {
    return engine::nested_children_of(*this);
}

/// A list of tests that make one up.
#define PEDFLUX_ACCESS_CHILDREN(Class, Type, Name, member)                                          \
    void Class::AddChildTest(std::shared_ptr<AgentTest> const& test) {                              \
        change<engine::Class##State>(*this, [&](auto& state) { state.member.push_back(test); });    \
    }                                                                                               \
    void Class::ClearChildTests() { SetChildTests({}); }                                            \
    void Class::SetChildTest(int index, std::shared_ptr<AgentTest> const& test) {                   \
        change<engine::Class##State>(*this, [&](auto& state) {                                      \
            state.member[engine::checked_index(state, "child", index, state.member.size())] = test; \
        });                                                                                         \
    }                                                                                               \
    void Class::SetChildTests(Type const& tests) {                                                  \
        change<engine::Class##State>(*this, [&](auto& state) { state.member = tests; });            \
    }

#define AGENT_TEST(Class, type, ...)                   \
    PEDFLUX_CONSTRUCTOR(AgentTest, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define AGENT_TEST_OF_OBJECTS(Class, type, ...) \
    AGENT_TEST(Class, type, __VA_ARGS__)        \
    Class::Class(GlobalId const& object) : Class(std::vector{object}) {}
#define AGENT_TEST_WITH_CONSTRUCTORS(Class, type, ...) PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#include "engine/behaviour/tests/agent_test_table.def"

// What the table does not tell.

/// Only the list of objects is given, or one of them; the rest is as it is by default.
#define OF_OBJECTS(Class)                                                                                           \
    Class::Class(std::vector<GlobalId> const& objects)                                                              \
        : AgentTest(                                                                                                \
              engine::make_node<AgentTest, engine::Class##State>([&](auto& state) { state.objects = objects; })) {} \
    Class::Class(GlobalId const& object) : Class(std::vector{object}) {}
OF_OBJECTS(EventActiveTest)
OF_OBJECTS(GateStateTest)
OF_OBJECTS(ServerStateTest)
OF_OBJECTS(TokenTest)

EventActiveTest::EventActiveTest(GlobalId const& event, LogicQuantifier quantifier, EventStateActivity activity)
    : EventActiveTest(std::vector{event}, quantifier, activity) {}
GateStateTest::GateStateTest(GlobalId const& gatedObject, LogicQuantifier quantifier, GateStateDirection direction,
                             AgentAccess access)
    : GateStateTest(std::vector{gatedObject}, quantifier, direction, access) {}
ServerStateTest::ServerStateTest(GlobalId const& server, LogicQuantifier quantifier, ServerAccessPoint point,
                                 AgentAccess access)
    : ServerStateTest(std::vector{server}, quantifier, point, access) {}
TokenTest::TokenTest(GlobalId const& token, LogicQuantifier quantifier) : TokenTest(std::vector{token}, quantifier) {}

AgeTest::AgeTest(float age, AgentAgeComparison comparison)
    : AgentTest(engine::make_node<AgentTest, engine::AgeTestState>([&](auto& state) {
          state.age = static_cast<double>(age);
          state.comparison = comparison;
      })) {}
float AgeTest::GetTestAgeInSeconds() { return static_cast<float>(get(*this, &engine::AgeTestState::age)); }
void AgeTest::SetTestAgeInSeconds(float age) { set(*this, &engine::AgeTestState::age, static_cast<double>(age)); }

float RandomChanceTest::GetChance() { return static_cast<float>(get(*this, &engine::RandomChanceTestState::chance)); }
void RandomChanceTest::SetChance(double chance) { set(*this, &engine::RandomChanceTestState::chance, chance); }

TimeTest::TimeTest(int seconds, TimeComparison comparison) : TimeTest(TimeReference::Absolute(seconds), comparison) {}

#define OF_TWO(Class)                                                                               \
    Class::Class(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second) \
        : Class(std::vector{first, second}) {}
OF_TWO(AllOfTest)
OF_TWO(AnyOfTest)
OF_TWO(NoneOfTest)

std::shared_ptr<AgentTest> AgentTestObject::GetAgentTest() {
    return engine::get_copy(*this, &engine::AgentTestObjectState::test);
}
void AgentTestObject::SetAgentTest(std::shared_ptr<AgentTest> const& test) {
    engine::set_copy(*this, &engine::AgentTestObjectState::test, test);
}

namespace engine {

template <>
std::span<KindOfNode<AgentTest> const* const> kinds_of<AgentTest>() {
    static KindOfNode<AgentTest> const* const kinds[] = {
#define AGENT_TEST(Class, ...) &node_kind<AgentTest, Class##State>(),
#include "engine/behaviour/tests/agent_test_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
