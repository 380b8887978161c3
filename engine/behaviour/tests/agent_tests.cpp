#include "engine/behaviour/tests/agent_test_states.h"
#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"

#include <pedflux/agent_tests.h>

namespace pedflux {

using engine::change;
using engine::get;
using engine::make_node;
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

AlwaysTrueTest::AlwaysTrueTest() : AgentTest(make_node<AgentTest, engine::AlwaysTrueTestState>()) {}

/// The accessors of one field of a test's state.

/// A test of a list of objects; the list can be given as one object.
#define TEST_BY(Class, Names)                                                                                     \
    Class::Class(GlobalId const& object) : Class(std::vector<GlobalId>{object}) {}                                \
    Class::Class(std::vector<GlobalId> const& objects)                                                            \
        : AgentTest(make_node<AgentTest, engine::Class##State>([&](auto& state) { state.objects = objects; })) {} \
    PROPERTY(Class, std::vector<GlobalId>, Names, objects)

TEST_BY(CreatedByTest, Events)
TEST_BY(EnteredAtTest, Portals)
TEST_BY(InAreaTest, Areas)
TEST_BY(InitialExitTest, Portals)
TEST_BY(ProfileTest, Profiles)
TEST_BY(EventActiveTest, Events)
TEST_BY(GateStateTest, GatedObjects)
TEST_BY(ServerStateTest, Servers)
TEST_BY(TokenTest, Tokens)

VALUE_PROPERTY(EventActiveTest, LogicQuantifier, LogicQuantifier, quantifier)
VALUE_PROPERTY(GateStateTest, LogicQuantifier, LogicQuantifier, quantifier)
VALUE_PROPERTY(ServerStateTest, LogicQuantifier, LogicQuantifier, quantifier)
VALUE_PROPERTY(TokenTest, LogicQuantifier, LogicQuantifier, quantifier)

EventActiveTest::EventActiveTest(GlobalId const& event, LogicQuantifier quantifier, EventStateActivity activity)
    : EventActiveTest(std::vector<GlobalId>{event}, quantifier, activity) {}
EventActiveTest::EventActiveTest(std::vector<GlobalId> const& events, LogicQuantifier quantifier,
                                 EventStateActivity activity)
    : AgentTest(make_node<AgentTest, engine::EventActiveTestState>([&](auto& state) {
          state.objects = events;
          state.quantifier = quantifier;
          state.activity = activity;
      })) {}
VALUE_PROPERTY(EventActiveTest, EventStateActivity, EventStateActivity, activity)

GateStateTest::GateStateTest(GlobalId const& gatedObject, LogicQuantifier quantifier, GateStateDirection direction,
                             AgentAccess access)
    : GateStateTest(std::vector<GlobalId>{gatedObject}, quantifier, direction, access) {}
GateStateTest::GateStateTest(std::vector<GlobalId> const& gatedObjects, LogicQuantifier quantifier,
                             GateStateDirection direction, AgentAccess access)
    : AgentTest(make_node<AgentTest, engine::GateStateTestState>([&](auto& state) {
          state.objects = gatedObjects;
          state.quantifier = quantifier;
          state.direction = direction;
          state.access = access;
      })) {}
VALUE_PROPERTY(GateStateTest, GateStateDirection, GateStateDirection, direction)
VALUE_PROPERTY(GateStateTest, AgentAccess, AgentAccess, access)

ServerStateTest::ServerStateTest(GlobalId const& server, LogicQuantifier quantifier, ServerAccessPoint point,
                                 AgentAccess access)
    : ServerStateTest(std::vector<GlobalId>{server}, quantifier, point, access) {}
ServerStateTest::ServerStateTest(std::vector<GlobalId> const& servers, LogicQuantifier quantifier,
                                 ServerAccessPoint point, AgentAccess access)
    : AgentTest(make_node<AgentTest, engine::ServerStateTestState>([&](auto& state) {
          state.objects = servers;
          state.quantifier = quantifier;
          state.point = point;
          state.access = access;
      })) {}
VALUE_PROPERTY(ServerStateTest, ServerAccessPoint, ServerAccessPoint, point)
VALUE_PROPERTY(ServerStateTest, AgentAccess, AgentAccess, access)

TokenTest::TokenTest(GlobalId const& token, LogicQuantifier quantifier)
    : TokenTest(std::vector<GlobalId>{token}, quantifier) {}
TokenTest::TokenTest(std::vector<GlobalId> const& tokens, LogicQuantifier quantifier)
    : AgentTest(make_node<AgentTest, engine::TokenTestState>([&](auto& state) {
          state.objects = tokens;
          state.quantifier = quantifier;
      })) {}

AgeTest::AgeTest(float age, AgentAgeComparison comparison)
    : AgentTest(make_node<AgentTest, engine::AgeTestState>([&](auto& state) {
          state.age = static_cast<double>(age);
          state.comparison = comparison;
      })) {}
float AgeTest::GetTestAgeInSeconds() { return static_cast<float>(get(*this, &engine::AgeTestState::age)); }
void AgeTest::SetTestAgeInSeconds(float age) { set(*this, &engine::AgeTestState::age, static_cast<double>(age)); }
VALUE_PROPERTY(AgeTest, AgentAgeComparison, AgentAgeComparison, comparison)

RandomChanceTest::RandomChanceTest(double chance)
    : AgentTest(make_node<AgentTest, engine::RandomChanceTestState>([&](auto& state) { state.chance = chance; })) {}
float RandomChanceTest::GetChance() { return static_cast<float>(get(*this, &engine::RandomChanceTestState::chance)); }
void RandomChanceTest::SetChance(double chance) { set(*this, &engine::RandomChanceTestState::chance, chance); }

TallyTest::TallyTest(std::shared_ptr<Tally> const& first, ComparisonType comparison,
                     std::shared_ptr<Tally> const& second)
    : AgentTest(make_node<AgentTest, engine::TallyTestState>([&](auto& state) {
          state.first = first;
          state.comparison = comparison;
          state.second = second;
      })) {}
PROPERTY(TallyTest, std::shared_ptr<Tally>, FirstTally, first)
PROPERTY(TallyTest, std::shared_ptr<Tally>, SecondTally, second)
VALUE_PROPERTY(TallyTest, ComparisonType, ComparisonType, comparison)

TimeTest::TimeTest(std::shared_ptr<TimeReference> const& time, TimeComparison comparison)
    : AgentTest(make_node<AgentTest, engine::TimeTestState>([&](auto& state) {
          state.time = time;
          state.comparison = comparison;
      })) {}
TimeTest::TimeTest(int seconds, TimeComparison comparison) : TimeTest(TimeReference::Absolute(seconds), comparison) {}
PROPERTY(TimeTest, std::shared_ptr<TimeReference>, TimeReference, time)
VALUE_PROPERTY(TimeTest, TimeComparison, TimeComparison, comparison)

NamedTest::NamedTest(GlobalId const& testObject)
    : AgentTest(make_node<AgentTest, engine::NamedTestState>([&](auto& state) { state.object = testObject; })) {}
PROPERTY(NamedTest, GlobalId, AgentTestObject, object)

NotTest::NotTest(std::shared_ptr<AgentTest> const& test)
    : AgentTest(make_node<AgentTest, engine::NotTestState>([&](auto& state) { state.child = test; })) {}
PROPERTY(NotTest, std::shared_ptr<AgentTest>, NegatedTest, child)

CompoundTest::CompoundTest(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second,
                           BooleanOperator combination)
    : AgentTest(make_node<AgentTest, engine::CompoundTestState>([&](auto& state) {
          state.first = first;
          state.second = second;
          state.combination = combination;
      })) {}
PROPERTY(CompoundTest, std::shared_ptr<AgentTest>, FirstChildTest, first)
PROPERTY(CompoundTest, std::shared_ptr<AgentTest>, SecondChildTest, second)
VALUE_PROPERTY(CompoundTest, BooleanOperator, BooleanOperator, combination)

using List = engine::TestListState;

#define LIST_TEST(Class)                                                                                         \
    Class::Class(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second)              \
        : Class(std::vector<std::shared_ptr<AgentTest>>{first, second}) {}                                       \
    Class::Class(std::vector<std::shared_ptr<AgentTest>> const& tests)                                           \
        : AgentTest(make_node<AgentTest, engine::Class##State>([&](auto& state) { state.children = tests; })) {} \
    void Class::AddChildTest(std::shared_ptr<AgentTest> const& test) {                                           \
        change<List>(*this, [&](List& list) { list.children.push_back(test); });                                 \
    }                                                                                                            \
    void Class::ClearChildTests() { SetChildTests({}); }                                                         \
    void Class::SetChildTest(int index, std::shared_ptr<AgentTest> const& test) {                                \
        change<List>(*this, [&](List& list) {                                                                    \
            list.children[engine::checked_index(list, "child", index, list.children.size())] = test;             \
        });                                                                                                      \
    }                                                                                                            \
    void Class::SetChildTests(std::vector<std::shared_ptr<AgentTest>> const& tests) {                            \
        change<List>(*this, [&](List& list) { list.children = tests; });                                         \
    }

LIST_TEST(AllOfTest)
LIST_TEST(AnyOfTest)
LIST_TEST(NoneOfTest)

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
        &node_kind<AgentTest, AlwaysTrueTestState>(),   &node_kind<AgentTest, AgeTestState>(),
        &node_kind<AgentTest, CreatedByTestState>(),    &node_kind<AgentTest, EnteredAtTestState>(),
        &node_kind<AgentTest, EventActiveTestState>(),  &node_kind<AgentTest, GateStateTestState>(),
        &node_kind<AgentTest, InAreaTestState>(),       &node_kind<AgentTest, InitialExitTestState>(),
        &node_kind<AgentTest, NamedTestState>(),        &node_kind<AgentTest, ProfileTestState>(),
        &node_kind<AgentTest, RandomChanceTestState>(), &node_kind<AgentTest, ServerStateTestState>(),
        &node_kind<AgentTest, TallyTestState>(),        &node_kind<AgentTest, TimeTestState>(),
        &node_kind<AgentTest, TokenTestState>(),        &node_kind<AgentTest, NotTestState>(),
        &node_kind<AgentTest, CompoundTestState>(),     &node_kind<AgentTest, AllOfTestState>(),
        &node_kind<AgentTest, AnyOfTestState>(),        &node_kind<AgentTest, NoneOfTestState>()};
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
