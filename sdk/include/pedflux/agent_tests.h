#pragma once

#include <pedflux/agent_filters.h>
#include <pedflux/api.h>
#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

/// Conditions on an agent at the moment in which they are evaluated: its age, where it entered, whether events are
/// active, gates are open or a tally is high, or chance. Conditional actions and access rules depend on the answer.
///
/// Tests nest, and outside of a project a part can be changed by everything that holds it. An object to which a test is
/// given keeps a copy. A test refers to objects by identifiers; that they name objects of the right kind is checked
/// when an object of a project takes the test. Where a filter names one object, the test names a list of them, each of
/// them once. A test without any objects is not passed, unless it asks for something of all of them.
namespace pedflux {

class Tally;
class TimeReference;

/// The kinds of agent test, see `AgentTest::GetAgentTestTypeId`.
enum class AgentTestType : int {
    ALWAYS_TRUE = 0,     ///< `AlwaysTrueTest`
    AGE = 1,             ///< `AgeTest`
    CREATED_BY = 2,      ///< `CreatedByTest`
    ENTERED_AT = 3,      ///< `EnteredAtTest`
    EVENT_ACTIVE = 4,    ///< `EventActiveTest`
    GATE_STATE = 5,      ///< `GateStateTest`
    IN_AREA = 6,         ///< `InAreaTest`
    INITIAL_EXIT = 7,    ///< `InitialExitTest`
    NAMED = 8,           ///< `NamedTest`
    PROFILE = 9,         ///< `ProfileTest`
    RANDOM_CHANCE = 10,  ///< `RandomChanceTest`
    SERVER_STATE = 11,   ///< `ServerStateTest`
    TALLY = 12,          ///< `TallyTest`
    TIME = 13,           ///< `TimeTest`
    TOKEN = 14,          ///< `TokenTest`
    NOT = 15,            ///< `NotTest`
    COMPOUND = 16,       ///< `CompoundTest`
    ALL_OF = 17,         ///< `AllOfTest`
    ANY_OF = 18,         ///< `AnyOfTest`
    NONE_OF = 19,        ///< `NoneOfTest`
};

/// How an agent's age, the time since it came into the simulation, compares with that of a test.
enum class AgentAgeComparison : int {
    YOUNGER_THAN = 0,  ///< less than the test's age
    OLDER_THAN = 1,    ///< the test's age or more
};

/// Of how many objects of a list something must hold.
enum class LogicQuantifier : int {
    ALL_OF = 0,   ///< of each; holds for an empty list
    ANY_OF = 1,   ///< of at least one
    NONE_OF = 2,  ///< of none; holds for an empty list
};

/// How the time of day compares with that of a test.
enum class TimeComparison : int {
    BEFORE = 0,  ///< earlier than the test's time
    AFTER = 1,   ///< the test's time or later
};

/// A condition on an agent.
class PEDFLUX_API AgentTest {
  public:
    /// Used by the library.
    explicit AgentTest(engine::NodePointer node);
    AgentTest(AgentTest const& other);
    AgentTest& operator=(AgentTest const&) = delete;
    virtual ~AgentTest();

    /// The kind, an `AgentTestType`.
    virtual int GetAgentTestTypeId();
    /// The direct children of this test.
    virtual int GetChildTestCount();
    /// @param index from 0 on
    /// @throws Exception for an index that no child has
    virtual std::shared_ptr<AgentTest> GetChildTest(int index);
    virtual std::vector<std::shared_ptr<AgentTest>> GetChildTests();
    /// A copy that shares nothing.
    virtual std::shared_ptr<AgentTest> Clone();

    /// The children, their children and so on, each before its own.
    std::vector<std::shared_ptr<AgentTest>> GetAllNestedChildTests();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// Whether the agent has been in the simulation for less than a time, or for longer.
class PEDFLUX_API AgeTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    /// @param age 0 or more seconds
    AgeTest(float age, AgentAgeComparison comparison);

    float GetTestAgeInSeconds();
    /// @param age 0 or more seconds
    void SetTestAgeInSeconds(float age);
    AgentAgeComparison GetAgentAgeComparison();
    void SetAgentAgeComparison(AgentAgeComparison comparison);
};

/// Every agent passes.
class PEDFLUX_API AlwaysTrueTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    AlwaysTrueTest();
};

/// Whether one of the events created the agent.
class PEDFLUX_API CreatedByTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit CreatedByTest(GlobalId const& event);
    explicit CreatedByTest(std::vector<GlobalId> const& events);

    std::vector<GlobalId> GetEvents();
    void SetEvents(std::vector<GlobalId> const& events);
};

/// Whether the agent entered the simulation through one of the portals.
class PEDFLUX_API EnteredAtTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit EnteredAtTest(GlobalId const& portal);
    explicit EnteredAtTest(std::vector<GlobalId> const& portals);

    std::vector<GlobalId> GetPortals();
    void SetPortals(std::vector<GlobalId> const& portals);
};

/// Whether all, any or none of the events are active.
class PEDFLUX_API EventActiveTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    /// Whether the event is active.
    explicit EventActiveTest(GlobalId const& event);
    /// Whether all of the events are active.
    explicit EventActiveTest(std::vector<GlobalId> const& events);
    EventActiveTest(GlobalId const& event, LogicQuantifier quantifier, EventStateActivity activity);
    EventActiveTest(std::vector<GlobalId> const& events, LogicQuantifier quantifier, EventStateActivity activity);

    std::vector<GlobalId> GetEvents();
    void SetEvents(std::vector<GlobalId> const& events);
    LogicQuantifier GetLogicQuantifier();
    void SetLogicQuantifier(LogicQuantifier quantifier);
    EventStateActivity GetEventStateActivity();
    void SetEventStateActivity(EventStateActivity activity);
};

/// Whether all, any or none of the gates are open, or closed, in a direction. Any connection can be a gate.
class PEDFLUX_API GateStateTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    /// Whether the gate is open both ways.
    explicit GateStateTest(GlobalId const& gatedObject);
    /// Whether all of the gates are open both ways.
    explicit GateStateTest(std::vector<GlobalId> const& gatedObjects);
    GateStateTest(GlobalId const& gatedObject, LogicQuantifier quantifier, GateStateDirection direction,
                  AgentAccess access);
    GateStateTest(std::vector<GlobalId> const& gatedObjects, LogicQuantifier quantifier, GateStateDirection direction,
                  AgentAccess access);

    std::vector<GlobalId> GetGatedObjects();
    void SetGatedObjects(std::vector<GlobalId> const& gatedObjects);
    LogicQuantifier GetLogicQuantifier();
    void SetLogicQuantifier(LogicQuantifier quantifier);
    GateStateDirection GetGateStateDirection();
    void SetGateStateDirection(GateStateDirection direction);
    AgentAccess GetAgentAccess();
    void SetAgentAccess(AgentAccess access);
};

/// Whether the agent is in one of the areas: portals, walkable objects, zones or volumes.
class PEDFLUX_API InAreaTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit InAreaTest(GlobalId const& area);
    explicit InAreaTest(std::vector<GlobalId> const& areas);

    std::vector<GlobalId> GetAreas();
    void SetAreas(std::vector<GlobalId> const& areas);
};

/// Whether the exit that the agent was given when it entered the simulation is one of the portals.
class PEDFLUX_API InitialExitTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit InitialExitTest(GlobalId const& portal);
    explicit InitialExitTest(std::vector<GlobalId> const& portals);

    std::vector<GlobalId> GetPortals();
    void SetPortals(std::vector<GlobalId> const& portals);
};

/// Whether the agent has one of the profiles.
class PEDFLUX_API ProfileTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit ProfileTest(GlobalId const& profile);
    explicit ProfileTest(std::vector<GlobalId> const& profiles);

    std::vector<GlobalId> GetProfiles();
    void SetProfiles(std::vector<GlobalId> const& profiles);
};

/// Whether all, any or none of the servers are open, or closed, at a point.
class PEDFLUX_API ServerStateTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    /// Whether the server is open at both its entrance and its exit.
    explicit ServerStateTest(GlobalId const& server);
    /// Whether all of the servers are open at both their entrances and their exits.
    explicit ServerStateTest(std::vector<GlobalId> const& servers);
    ServerStateTest(GlobalId const& server, LogicQuantifier quantifier, ServerAccessPoint point, AgentAccess access);
    ServerStateTest(std::vector<GlobalId> const& servers, LogicQuantifier quantifier, ServerAccessPoint point,
                    AgentAccess access);

    std::vector<GlobalId> GetServers();
    void SetServers(std::vector<GlobalId> const& servers);
    LogicQuantifier GetLogicQuantifier();
    void SetLogicQuantifier(LogicQuantifier quantifier);
    ServerAccessPoint GetServerAccessPoint();
    void SetServerAccessPoint(ServerAccessPoint point);
    AgentAccess GetAgentAccess();
    void SetAgentAccess(AgentAccess access);
};

/// Whether the agent holds all, any or none of the tokens.
class PEDFLUX_API TokenTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    /// Whether the agent holds the token.
    explicit TokenTest(GlobalId const& token);
    /// Whether the agent holds all of the tokens.
    explicit TokenTest(std::vector<GlobalId> const& tokens);
    TokenTest(GlobalId const& token, LogicQuantifier quantifier);
    TokenTest(std::vector<GlobalId> const& tokens, LogicQuantifier quantifier);

    std::vector<GlobalId> GetTokens();
    void SetTokens(std::vector<GlobalId> const& tokens);
    LogicQuantifier GetLogicQuantifier();
    void SetLogicQuantifier(LogicQuantifier quantifier);
};

/// Whether a random draw succeeds. It is drawn anew whenever the agent is tested.
class PEDFLUX_API RandomChanceTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    /// @param chance from 0, never, to 1, always
    explicit RandomChanceTest(double chance);

    /// In single precision.
    float GetChance();
    /// @param chance from 0, never, to 1, always
    void SetChance(double chance);
};

/// How the values of two tallies compare: first < second, for example.
class PEDFLUX_API TallyTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    TallyTest(std::shared_ptr<Tally> const& first, ComparisonType comparison, std::shared_ptr<Tally> const& second);

    std::shared_ptr<Tally> GetFirstTally();
    void SetFirstTally(std::shared_ptr<Tally> const& tally);
    std::shared_ptr<Tally> GetSecondTally();
    void SetSecondTally(std::shared_ptr<Tally> const& tally);
    ComparisonType GetComparisonType();
    void SetComparisonType(ComparisonType comparison);
};

/// Whether it is before or after a time.
class PEDFLUX_API TimeTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    TimeTest(std::shared_ptr<TimeReference> const& time, TimeComparison comparison);
    /// @param seconds after midnight
    TimeTest(int seconds, TimeComparison comparison);

    std::shared_ptr<TimeReference> GetTimeReference();
    void SetTimeReference(std::shared_ptr<TimeReference> const& time);
    TimeComparison GetTimeComparison();
    void SetTimeComparison(TimeComparison comparison);
};

/// Whether the agent passes the test of an `AgentTestObject`.
class PEDFLUX_API NamedTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit NamedTest(GlobalId const& testObject);

    GlobalId GetAgentTestObject();
    void SetAgentTestObject(GlobalId const& testObject);
};

/// Whether the agent does not pass another test.
class PEDFLUX_API NotTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    explicit NotTest(std::shared_ptr<AgentTest> const& test);

    std::shared_ptr<AgentTest> GetNegatedTest();
    void SetNegatedTest(std::shared_ptr<AgentTest> const& test);
};

/// Two tests and how their answers are combined.
class PEDFLUX_API CompoundTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    CompoundTest(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second,
                 BooleanOperator combination);

    std::shared_ptr<AgentTest> GetFirstChildTest();
    void SetFirstChildTest(std::shared_ptr<AgentTest> const& test);
    std::shared_ptr<AgentTest> GetSecondChildTest();
    void SetSecondChildTest(std::shared_ptr<AgentTest> const& test);
    BooleanOperator GetBooleanOperator();
    void SetBooleanOperator(BooleanOperator combination);
};

/// Whether the agent passes all of a list of tests; it does when there are none.
class PEDFLUX_API AllOfTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    AllOfTest(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second);
    explicit AllOfTest(std::vector<std::shared_ptr<AgentTest>> const& tests);

    void AddChildTest(std::shared_ptr<AgentTest> const& test);
    void ClearChildTests();
    /// @throws Exception for an index that no child has
    void SetChildTest(int index, std::shared_ptr<AgentTest> const& test);
    void SetChildTests(std::vector<std::shared_ptr<AgentTest>> const& tests);
};

/// Whether the agent passes at least one of a list of tests; it does not when there are none.
class PEDFLUX_API AnyOfTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    AnyOfTest(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second);
    explicit AnyOfTest(std::vector<std::shared_ptr<AgentTest>> const& tests);

    void AddChildTest(std::shared_ptr<AgentTest> const& test);
    void ClearChildTests();
    /// @throws Exception for an index that no child has
    void SetChildTest(int index, std::shared_ptr<AgentTest> const& test);
    void SetChildTests(std::vector<std::shared_ptr<AgentTest>> const& tests);
};

/// Whether the agent passes none of a list of tests; it does when there are none.
class PEDFLUX_API NoneOfTest : public AgentTest {
  public:
    using AgentTest::AgentTest;
    NoneOfTest(std::shared_ptr<AgentTest> const& first, std::shared_ptr<AgentTest> const& second);
    explicit NoneOfTest(std::vector<std::shared_ptr<AgentTest>> const& tests);

    void AddChildTest(std::shared_ptr<AgentTest> const& test);
    void ClearChildTests();
    /// @throws Exception for an index that no child has
    void SetChildTest(int index, std::shared_ptr<AgentTest> const& test);
    void SetChildTests(std::vector<std::shared_ptr<AgentTest>> const& tests);
};

/// A test with a name, to which `NamedTest`s refer.
class PEDFLUX_API AgentTestObject : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy of the test; `AlwaysTrueTest` unless set.
    std::shared_ptr<AgentTest> GetAgentTest();
    /// @param test the object keeps a copy; one that leads back to this object by names cannot be evaluated
    void SetAgentTest(std::shared_ptr<AgentTest> const& test);
};

}  // namespace pedflux
