#include "bindings/table.h"

#include <pedflux/agent_tests.h>
#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/tallies.h>
#include <pedflux/time_references.h>

/// The combination of a list of tests.
#define TEST_OF_LIST(Class, copy)                                                                        \
    CLASS(Class, AgentTest)                                                                              \
    CONSTRUCTOR_OVERLOAD(Class, 0, std::shared_ptr<AgentTest> const&, std::shared_ptr<AgentTest> const&) \
    CONSTRUCTOR_OVERLOAD(Class, 1, std::vector<std::shared_ptr<AgentTest>> const&)                       \
    COPY_CONSTRUCTOR(Class, copy)                                                                        \
    ADD(Class, ChildTest)                                                                                \
    CLEAR(Class, ChildTests)                                                                             \
    GET(Class, AgentTestTypeId)                                                                          \
    METHOD(Class, clone, Clone)                                                                          \
    GET(Class, ChildTestCount)                                                                           \
    PROPERTY(Class, ChildTest)                                                                           \
    PROPERTY(Class, ChildTests)

/// A test; `copy` numbers its copy constructor.
#define TEST(Class, copy)         \
    CLASS(Class, AgentTest)       \
    COPY_CONSTRUCTOR(Class, copy) \
    GET(Class, AgentTestTypeId)   \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(AgentTest)
GET(AgentTest, AgentTestTypeId)
METHOD(AgentTest, clone, Clone)
GET(AgentTest, ChildTestCount)
GET(AgentTest, ChildTest)
GET(AgentTest, ChildTests)
GET(AgentTest, AllNestedChildTests)

TEST(AgeTest, 1)
CONSTRUCTOR_OVERLOAD(AgeTest, 0, float, AgentAgeComparison)
PROPERTY(AgeTest, TestAgeInSeconds)
PROPERTY(AgeTest, AgentAgeComparison)

TEST(AlwaysTrueTest, 1)
CONSTRUCTOR_OVERLOAD(AlwaysTrueTest, 0)

TEST(CreatedByTest, 2)
CONSTRUCTOR_OVERLOAD(CreatedByTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(CreatedByTest, 1, std::vector<GlobalId> const&)
PROPERTY(CreatedByTest, Events)

TEST(EnteredAtTest, 2)
CONSTRUCTOR_OVERLOAD(EnteredAtTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(EnteredAtTest, 1, std::vector<GlobalId> const&)
PROPERTY(EnteredAtTest, Portals)

TEST(EventActiveTest, 4)
CONSTRUCTOR_OVERLOAD(EventActiveTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(EventActiveTest, 1, std::vector<GlobalId> const&)
CONSTRUCTOR_OVERLOAD(EventActiveTest, 2, GlobalId const&, LogicQuantifier, EventStateActivity)
CONSTRUCTOR_OVERLOAD(EventActiveTest, 3, std::vector<GlobalId> const&, LogicQuantifier, EventStateActivity)
PROPERTY(EventActiveTest, Events)
PROPERTY(EventActiveTest, LogicQuantifier)
PROPERTY(EventActiveTest, EventStateActivity)

TEST(GateStateTest, 4)
CONSTRUCTOR_OVERLOAD(GateStateTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(GateStateTest, 1, std::vector<GlobalId> const&)
CONSTRUCTOR_OVERLOAD(GateStateTest, 2, GlobalId const&, LogicQuantifier, GateStateDirection, AgentAccess)
CONSTRUCTOR_OVERLOAD(GateStateTest, 3, std::vector<GlobalId> const&, LogicQuantifier, GateStateDirection, AgentAccess)
PROPERTY(GateStateTest, GatedObjects)
PROPERTY(GateStateTest, LogicQuantifier)
PROPERTY(GateStateTest, GateStateDirection)
PROPERTY(GateStateTest, AgentAccess)

TEST(InAreaTest, 2)
CONSTRUCTOR_OVERLOAD(InAreaTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(InAreaTest, 1, std::vector<GlobalId> const&)
PROPERTY(InAreaTest, Areas)

TEST(InitialExitTest, 2)
CONSTRUCTOR_OVERLOAD(InitialExitTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(InitialExitTest, 1, std::vector<GlobalId> const&)
PROPERTY(InitialExitTest, Portals)

TEST(NamedTest, 1)
CONSTRUCTOR_OVERLOAD(NamedTest, 0, GlobalId const&)
PROPERTY(NamedTest, AgentTestObject)

TEST(ProfileTest, 2)
CONSTRUCTOR_OVERLOAD(ProfileTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ProfileTest, 1, std::vector<GlobalId> const&)
PROPERTY(ProfileTest, Profiles)

TEST(RandomChanceTest, 1)
CONSTRUCTOR_OVERLOAD(RandomChanceTest, 0, double)
PROPERTY(RandomChanceTest, Chance)

TEST(ServerStateTest, 4)
CONSTRUCTOR_OVERLOAD(ServerStateTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ServerStateTest, 1, std::vector<GlobalId> const&)
CONSTRUCTOR_OVERLOAD(ServerStateTest, 2, GlobalId const&, LogicQuantifier, ServerAccessPoint, AgentAccess)
CONSTRUCTOR_OVERLOAD(ServerStateTest, 3, std::vector<GlobalId> const&, LogicQuantifier, ServerAccessPoint, AgentAccess)
PROPERTY(ServerStateTest, Servers)
PROPERTY(ServerStateTest, LogicQuantifier)
PROPERTY(ServerStateTest, ServerAccessPoint)
PROPERTY(ServerStateTest, AgentAccess)

TEST(TallyTest, 1)
CONSTRUCTOR_OVERLOAD(TallyTest, 0, std::shared_ptr<Tally> const&, ComparisonType, std::shared_ptr<Tally> const&)
PROPERTY(TallyTest, FirstTally)
PROPERTY(TallyTest, SecondTally)
PROPERTY(TallyTest, ComparisonType)

TEST(TimeTest, 2)
CONSTRUCTOR_OVERLOAD(TimeTest, 0, std::shared_ptr<TimeReference> const&, TimeComparison)
CONSTRUCTOR_OVERLOAD(TimeTest, 1, int, TimeComparison)
PROPERTY(TimeTest, TimeReference)
PROPERTY(TimeTest, TimeComparison)

TEST(TokenTest, 4)
CONSTRUCTOR_OVERLOAD(TokenTest, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(TokenTest, 1, std::vector<GlobalId> const&)
CONSTRUCTOR_OVERLOAD(TokenTest, 2, GlobalId const&, LogicQuantifier)
CONSTRUCTOR_OVERLOAD(TokenTest, 3, std::vector<GlobalId> const&, LogicQuantifier)
PROPERTY(TokenTest, Tokens)
PROPERTY(TokenTest, LogicQuantifier)

TEST(NotTest, 1)
CONSTRUCTOR_OVERLOAD(NotTest, 0, std::shared_ptr<AgentTest> const&)
PROPERTY(NotTest, NegatedTest)
GET(NotTest, ChildTestCount)
GET(NotTest, ChildTest)

TEST(CompoundTest, 1)
CONSTRUCTOR_OVERLOAD(CompoundTest, 0, std::shared_ptr<AgentTest> const&, std::shared_ptr<AgentTest> const&,
                     BooleanOperator)
PROPERTY(CompoundTest, FirstChildTest)
PROPERTY(CompoundTest, SecondChildTest)
PROPERTY(CompoundTest, BooleanOperator)
GET(CompoundTest, ChildTestCount)
GET(CompoundTest, ChildTest)
GET(CompoundTest, ChildTests)

TEST_OF_LIST(AllOfTest, 2)

TEST_OF_LIST(AnyOfTest, 2)

TEST_OF_LIST(NoneOfTest, 2)

CLASS(AgentTestObject, SimObject)
GET(AgentTestObject, TypeId)
PROPERTY(AgentTestObject, AgentTest)

}  // namespace pedflux::jni
