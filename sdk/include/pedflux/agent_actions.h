#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>
#include <pedflux/objects.h>
#include <pedflux/population_sources.h>

#include <memory>
#include <vector>

/// What agents are told to do: where to go, how to wait, what to change, and how such instructions are combined.
///
/// An action that takes time (going somewhere, waiting) becomes the agent's task until it is done; the others happen at
/// once. Actions that are not part of a project share what they are given: tests, distributions, wait styles and other
/// actions. An object of a project keeps a copy and hands out copies. Copies are deep.
///
/// Lists of identifiers hold each of them once. What is refused throws Exception and changes nothing: a negative
/// weight, lists of unequal length, destinations whose weights are all 0, a distribution that is not valid or out of
/// its range, a part that is empty. Whether the identifiers belong to objects of the right kind is checked when an
/// object of a project takes the action.
namespace pedflux {

class AgentTest;
class Distribution;
class TimeReference;
class WaitStyle;

/// What `AgentAction::GetAgentActionTypeId` returns.
enum class AgentActionTypeId : int {
    DO_NOTHING = 0,       ///< `DoNothingAction`
    NAMED = 1,            ///< `NamedAction`
    EXIT_SIMULATION = 2,  ///< `ExitSimulationAction`

    SEEK_AREA = 100,           ///< `SeekAreaAction`
    SEEK_PORTAL = 101,         ///< `SeekPortalAction`
    SEEK_PROCESS_START = 102,  ///< `SeekProcessStartAction`
    SEEK_ZONE = 103,           ///< `SeekZoneAction`
    SEEK_INITIAL_GOAL = 104,   ///< `SeekInitialGoalAction`
    SEEK_ORIGIN = 105,         ///< `SeekOriginAction`
    EVACUATE_ZONE = 106,       ///< `EvacuateZoneAction`
    FOLLOW_SIGN = 107,         ///< `FollowSignAction`

    WAIT_FOR_DURATION = 200,     ///< `WaitForDurationAction`
    WAIT_FOREVER = 201,          ///< `WaitForeverAction`
    WAIT_UNTIL_TIME = 202,       ///< `WaitUntilTimeAction`
    WAIT_WHILE_TEST_TRUE = 203,  ///< `WaitWhileTestTrueAction`

    ADD_TO_TALLY = 300,   ///< `AddToTallyAction`
    ADD_TOKENS = 301,     ///< `AddTokensAction`
    CLEAR_TOKENS = 302,   ///< `ClearTokensAction`
    SET_AVATAR = 303,     ///< `SetAvatarAction`
    CLEAR_AVATAR = 304,   ///< `ClearAvatarAction`
    SET_COLOR = 305,      ///< `SetColorAction`
    CLEAR_COLOR = 306,    ///< `ClearColorAction`
    SET_NETWORK = 307,    ///< `SetNetworkAction`
    CLEAR_NETWORK = 308,  ///< `ClearNetworkAction`
    CLEAR_HISTORY = 309,  ///< `ClearHistoryAction`
    CLEAR_TASKS = 310,    ///< `ClearTasksAction`

    LIST = 400,                    ///< `ListAction`
    CHOOSE_FROM_SET = 401,         ///< `ChooseFromSetAction`
    APPLY_ACTION = 402,            ///< `ApplyActionAction`
    IF_THEN = 403,                 ///< `IfThenAction`
    IF_THEN_ELSE = 404,            ///< `IfThenElseAction`
    DO_UNTIL_DURATION_ENDS = 405,  ///< `DoUntilDurationEndsAction`
    DO_UNTIL_TEST_FAILS = 406,     ///< `DoUntilTestFailsAction`
    DO_UNTIL_TIME = 407,           ///< `DoUntilTimeAction`
    REPEAT_FOR_COUNT = 408,        ///< `RepeatForCountAction`
    REPEAT_FOR_DURATION = 409,     ///< `RepeatForDurationAction`
    REPEAT_FOREVER = 410,          ///< `RepeatForeverAction`
    REPEAT_UNTIL_TIME = 411,       ///< `RepeatUntilTimeAction`
    REPEAT_WHILE_TEST_TRUE = 412,  ///< `RepeatWhileTestTrueAction`
};

/// In which order an agent does the actions of a `ListAction`.
enum class ListActionAssignment : int {
    IN_ORDER = 0,         ///< as they stand in the list
    IN_RANDOM_ORDER = 1,  ///< in an order that is drawn each time
};

/// An instruction to an agent.
class PEDFLUX_API AgentAction {
  public:
    /// Used by the library.
    explicit AgentAction(engine::NodePointer node);
    AgentAction(AgentAction const& other);
    AgentAction& operator=(AgentAction const&) = delete;
    virtual ~AgentAction();

    /// The kind, an `AgentActionTypeId`.
    virtual int GetAgentActionTypeId();
    virtual int GetChildActionCount();
    /// The child with a number from 0 on, in the order of `GetChildActions`.
    virtual std::shared_ptr<AgentAction> GetChildAction(int index);
    /// The direct children of this action.
    virtual std::vector<std::shared_ptr<AgentAction>> GetChildActions();
    /// A copy that shares nothing.
    virtual std::shared_ptr<AgentAction> Clone();

    /// The children, their children and so on, each before its own.
    std::vector<std::shared_ptr<AgentAction>> GetAllNestedChildActions();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// An action of a project that others refer to by `NamedAction`. A new one does nothing.
class PEDFLUX_API AgentActionObject : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy of the action.
    std::shared_ptr<AgentAction> GetAgentAction();
    /// Replaces the action by a copy. Refused when it would lead back to this object by way of named actions.
    void SetAgentAction(std::shared_ptr<AgentAction> const& action);
};

/// Nothing happens.
class PEDFLUX_API DoNothingAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    DoNothingAction();
};

/// Does what an `AgentActionObject` says at the time.
class PEDFLUX_API NamedAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit NamedAction(GlobalId const& actionObject);

    GlobalId GetAgentActionObject();
    void SetAgentActionObject(GlobalId const& actionObject);
};

/// The agent leaves the simulation from where it is.
class PEDFLUX_API ExitSimulationAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ExitSimulationAction();
};

// Going somewhere. The task is done when the agent arrives. Erasing the route history makes the agent forget what it
// has passed, so that it may take the same way again.

/// The agent goes to one of several areas: floors, connections or zones.
class PEDFLUX_API SeekAreaAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// To one of the areas, drawn with equal chances.
    SeekAreaAction(std::vector<GlobalId> const& areas, bool eraseRouteHistory);
    /// To one of the areas, drawn with chances in proportion to the weights, one for each area.
    SeekAreaAction(std::vector<GlobalId> const& areas, std::vector<double> const& weights, bool eraseRouteHistory);

    std::vector<GlobalId> GetAreas();
    /// One for each area; none unless weights were given.
    std::vector<double> GetManualWeights();
    bool UsesManualWeights();
    DestinationAssignment GetDestinationAssignment();
    /// To one of the areas, drawn with equal chances.
    void SetAssignedAreas(std::vector<GlobalId> const& areas);
    /// To one of the areas, drawn with chances in proportion to the weights, one for each area.
    void SetAssignedAreas(std::vector<GlobalId> const& areas, std::vector<double> const& weights);
    /// To the area that is the easiest to reach.
    void SetLowestCostAreas(std::vector<GlobalId> const& areas);

    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent goes to one of several portals.
class PEDFLUX_API SeekPortalAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// To one of the portals, drawn with equal chances.
    SeekPortalAction(std::vector<GlobalId> const& portals, bool eraseRouteHistory);
    /// To one of the portals, drawn with chances in proportion to the weights, one for each portal.
    SeekPortalAction(std::vector<GlobalId> const& portals, std::vector<double> const& weights, bool eraseRouteHistory);

    std::vector<GlobalId> GetPortals();
    /// One for each portal; none unless weights were given.
    std::vector<double> GetManualWeights();
    bool UsesManualWeights();
    DestinationAssignment GetDestinationAssignment();
    /// To one of the portals, drawn with equal chances.
    void SetAssignedPortals(std::vector<GlobalId> const& portals);
    /// To one of the portals, drawn with chances in proportion to the weights, one for each portal.
    void SetAssignedPortals(std::vector<GlobalId> const& portals, std::vector<double> const& weights);
    /// To the portal that is the easiest to reach.
    void SetLowestCostPortals(std::vector<GlobalId> const& portals);

    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent goes to the start of one of several processes: to a server, or to a dispatch that sends it on to one.
class PEDFLUX_API SeekProcessStartAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// To one of the starts, drawn with equal chances.
    SeekProcessStartAction(std::vector<GlobalId> const& processStarts, bool eraseRouteHistory);
    /// To one of the starts, drawn with chances in proportion to the weights, one for each start.
    SeekProcessStartAction(std::vector<GlobalId> const& processStarts, std::vector<double> const& weights,
                           bool eraseRouteHistory);

    std::vector<GlobalId> GetProcessStarts();
    /// One for each start; none unless weights were given.
    std::vector<double> GetManualWeights();
    bool UsesManualWeights();
    DestinationAssignment GetDestinationAssignment();
    /// To one of the starts, drawn with equal chances.
    void SetAssignedProcessStarts(std::vector<GlobalId> const& processStarts);
    /// To one of the starts, drawn with chances in proportion to the weights, one for each start.
    void SetAssignedProcessStarts(std::vector<GlobalId> const& processStarts, std::vector<double> const& weights);

    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent goes to a zone.
class PEDFLUX_API SeekZoneAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// Keeps the route history.
    explicit SeekZoneAction(GlobalId const& zone);
    SeekZoneAction(GlobalId const& zone, bool eraseRouteHistory);

    GlobalId GetZone();
    void SetZone(GlobalId const& zone);
    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent leaves a zone by the easiest way. Done at once when it is not in the zone.
class PEDFLUX_API EvacuateZoneAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// Keeps the route history.
    explicit EvacuateZoneAction(GlobalId const& zone);
    EvacuateZoneAction(GlobalId const& zone, bool eraseRouteHistory);

    GlobalId GetZone();
    void SetZone(GlobalId const& zone);
    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent goes to the destination that its event gave it.
class PEDFLUX_API SeekInitialGoalAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit SeekInitialGoalAction(bool eraseRouteHistory);

    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent goes back to where it came from.
class PEDFLUX_API SeekOriginAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit SeekOriginAction(bool eraseRouteHistory);

    bool IsEraseRouteHistory();
    void SetEraseRouteHistory(bool erase);
};

/// The agent takes the way that a sign shows: it passes route objects (floors, connections, portals) on its way. The
/// task is done when it has passed the last of them.
class PEDFLUX_API FollowSignAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// By one of the route objects, drawn with equal chances.
    explicit FollowSignAction(std::vector<GlobalId> const& routeObjects);
    /// By one of the route objects, drawn with chances in proportion to the weights, one for each route object.
    FollowSignAction(std::vector<GlobalId> const& routeObjects, std::vector<double> const& weights);

    std::vector<GlobalId> GetRouteObjects();
    /// One for each route object; none unless weights were given.
    std::vector<double> GetManualWeights();
    bool UsesManualWeights();
    DestinationAssignment GetDestinationAssignment();
    /// By one of the route objects, drawn with equal chances.
    void SetAssignedRouteObjects(std::vector<GlobalId> const& routeObjects);
    /// By one of the route objects, drawn with chances in proportion to the weights, one for each route object.
    void SetAssignedRouteObjects(std::vector<GlobalId> const& routeObjects, std::vector<double> const& weights);
    /// By the route object that is the easiest to reach.
    void SetLowestCostRouteObjects(std::vector<GlobalId> const& routeObjects);
    /// By all route objects, one after the other.
    void SetRouteObjectSequence(std::vector<GlobalId> const& routeObjects);
};

// Waiting.

/// The agent waits for a time that is drawn for it.
class PEDFLUX_API WaitForDurationAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// @param duration 0 or more seconds
    WaitForDurationAction(std::shared_ptr<Distribution> const& duration, std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<Distribution> GetDurationDistribution();
    /// @param duration 0 or more seconds
    void SetDurationDistribution(std::shared_ptr<Distribution> const& duration);
    /// The same time for all.
    /// @param seconds 0 or more
    void SetDurationInSeconds(int seconds);
    std::shared_ptr<WaitStyle> GetWaitStyle();
    void SetWaitStyle(std::shared_ptr<WaitStyle> const& style);
};

/// The agent waits until something else becomes its task.
class PEDFLUX_API WaitForeverAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit WaitForeverAction(std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<WaitStyle> GetWaitStyle();
    void SetWaitStyle(std::shared_ptr<WaitStyle> const& style);
};

/// The agent waits until a time. Done at once when the time has passed.
class PEDFLUX_API WaitUntilTimeAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    WaitUntilTimeAction(std::shared_ptr<TimeReference> const& time, std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<TimeReference> GetTimeReference();
    void SetTimeReference(std::shared_ptr<TimeReference> const& time);
    /// @param seconds after midnight, 0 or more
    void SetAbsoluteTimeInSeconds(int seconds);
    std::shared_ptr<WaitStyle> GetWaitStyle();
    void SetWaitStyle(std::shared_ptr<WaitStyle> const& style);
};

/// The agent waits as long as a test is true for it. Done at once when it is not.
class PEDFLUX_API WaitWhileTestTrueAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    WaitWhileTestTrueAction(std::shared_ptr<AgentTest> const& test, std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<AgentTest> GetAgentTest();
    void SetAgentTest(std::shared_ptr<AgentTest> const& test);
    std::shared_ptr<WaitStyle> GetWaitStyle();
    void SetWaitStyle(std::shared_ptr<WaitStyle> const& style);
};

// What happens at once.

/// Adds a value to tallies.
class PEDFLUX_API AddToTallyAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    AddToTallyAction(GlobalId const& tallyObject, double value);
    AddToTallyAction(std::vector<GlobalId> const& tallyObjects, double value);

    std::vector<GlobalId> GetTallyObjects();
    void SetTallyObjects(std::vector<GlobalId> const& tallyObjects);
    double GetValueToAdd();
    /// @param value any finite number; a negative one is taken off
    void SetValueToAdd(double value);
};

/// Gives tokens to the agent. A token that it holds already is kept.
class PEDFLUX_API AddTokensAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit AddTokensAction(GlobalId const& token);
    explicit AddTokensAction(std::vector<GlobalId> const& tokens);

    std::vector<GlobalId> GetTokens();
    void SetTokens(std::vector<GlobalId> const& tokens);
};

/// Takes tokens from the agent.
class PEDFLUX_API ClearTokensAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit ClearTokensAction(GlobalId const& token);
    explicit ClearTokensAction(std::vector<GlobalId> const& tokens);

    std::vector<GlobalId> GetTokens();
    void SetTokens(std::vector<GlobalId> const& tokens);
};

/// The agent gets another avatar.
class PEDFLUX_API SetAvatarAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit SetAvatarAction(GlobalId const& avatar);

    GlobalId GetAvatar();
    void SetAvatar(GlobalId const& avatar);
};

/// The agent has the avatar of its profile again.
class PEDFLUX_API ClearAvatarAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ClearAvatarAction();
};

/// The agent has a colour of its own.
class PEDFLUX_API SetColorAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// White.
    SetColorAction();
    explicit SetColorAction(Color color);

    Color GetColor();
    void SetColor(Color color);
};

/// The agent has the colour of its event again.
class PEDFLUX_API ClearColorAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ClearColorAction();
};

/// The agent is routed in a network of its own.
class PEDFLUX_API SetNetworkAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// The network of all walkable objects.
    SetNetworkAction();
    explicit SetNetworkAction(GlobalId const& network);

    /// @throws Exception for an action without a network of its own
    GlobalId GetCustomNetwork();
    /// Sets the network; an invalid identifier takes it away.
    void SetCustomNetwork(GlobalId const& network);
    bool HasCustomNetwork();
};

/// The agent is routed in the network of its profile again.
class PEDFLUX_API ClearNetworkAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ClearNetworkAction();
};

/// The agent forgets what it has passed.
class PEDFLUX_API ClearHistoryAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ClearHistoryAction();
};

/// The agent drops all its tasks, including those of the actions that contain this one.
class PEDFLUX_API ClearTasksAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ClearTasksAction();
};

// Actions made of actions.

/// Several actions.
class PEDFLUX_API ListAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    ListAction(std::vector<std::shared_ptr<AgentAction>> const& actions, ListActionAssignment assignment);

    ListActionAssignment GetListActionAssignment();
    void SetListActionAssignment(ListActionAssignment assignment);
};

/// One of several actions, drawn with chances in proportion to their weights. Nothing when all weights are 0.
class PEDFLUX_API ChooseFromSetAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// @param weights one for each action
    ChooseFromSetAction(std::vector<std::shared_ptr<AgentAction>> const& actions, std::vector<double> const& weights);

    void AddChildAction(std::shared_ptr<AgentAction> const& action, double weight);
    void ClearChildActions();
    /// Replaces the child with a number from 0 on; its weight stays.
    void SetChildAction(int index, std::shared_ptr<AgentAction> const& action);
    /// Replaces all children. If there are as many as before the weights stay, or else each gets a weight of 1.
    void SetChildActions(std::vector<std::shared_ptr<AgentAction>> const& actions);
    double GetWeight(int index) const;
    void SetWeight(int index, double weight);
    std::vector<double> GetWeights();
    /// @param weights one for each child
    void SetWeights(std::vector<double> const& weights);
};

/// Starts another action. The agent interrupts what it was told before, and resumes it when the applied action is done.
class PEDFLUX_API ApplyActionAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit ApplyActionAction(std::shared_ptr<AgentAction> const& action);

    std::shared_ptr<AgentAction> GetAppliedAction();
    void SetAppliedAction(std::shared_ptr<AgentAction> const& action);
};

/// An action for agents that pass a test.
class PEDFLUX_API IfThenAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    IfThenAction(IfThenAction const& other) = default;
    IfThenAction(std::shared_ptr<AgentTest> const& test, std::shared_ptr<AgentAction> const& thenAction);

    std::shared_ptr<AgentTest> GetIfTest();
    void SetIfTest(std::shared_ptr<AgentTest> const& test);
    std::shared_ptr<AgentAction> GetThenAction();
    void SetThenAction(std::shared_ptr<AgentAction> const& action);
};

/// An action for agents that pass a test, and another one for all others.
class PEDFLUX_API IfThenElseAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    IfThenElseAction(IfThenElseAction const& other) = default;
    IfThenElseAction(std::shared_ptr<AgentTest> const& test, std::shared_ptr<AgentAction> const& thenAction,
                     std::shared_ptr<AgentAction> const& elseAction);

    std::shared_ptr<AgentTest> GetIfTest();
    void SetIfTest(std::shared_ptr<AgentTest> const& test);
    std::shared_ptr<AgentAction> GetThenAction();
    void SetThenAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<AgentAction> GetElseAction();
    void SetElseAction(std::shared_ptr<AgentAction> const& action);
};

// Until something happens the agent does an action, which is broken off if it is not done by then. If it is done early
// the agent waits for the rest, when a wait style is set; otherwise the whole is done as well.

/// Does an action for a time that is drawn.
class PEDFLUX_API DoUntilDurationEndsAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// Does not wait when the action is done early.
    /// @param duration 0 or more seconds
    DoUntilDurationEndsAction(std::shared_ptr<AgentAction> const& action,
                              std::shared_ptr<Distribution> const& duration);
    /// Waits when the action is done early.
    DoUntilDurationEndsAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<Distribution> const& duration,
                              std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<AgentAction> GetDoAction();
    void SetDoAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<Distribution> GetDurationDistribution();
    /// @param duration 0 or more seconds
    void SetDurationDistribution(std::shared_ptr<Distribution> const& duration);
    /// @param seconds 0 or more
    void SetDurationInSeconds(int seconds);
    /// How the agent waits when the action is done early; empty when it does not.
    std::shared_ptr<WaitStyle> GetWaitStyle();
    bool IsWaitIfDoActionDoneEarly() const;
    void SetWaitIfDoActionDoneEarly(std::shared_ptr<WaitStyle> const& style);
    void ClearWaitIfDoActionDoneEarly();
};

/// Does an action as long as a test is true.
class PEDFLUX_API DoUntilTestFailsAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// Does not wait when the action is done early.
    DoUntilTestFailsAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<AgentTest> const& test);
    /// Waits when the action is done early.
    DoUntilTestFailsAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<AgentTest> const& test,
                           std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<AgentAction> GetDoAction();
    void SetDoAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<AgentTest> GetAgentTest();
    void SetAgentTest(std::shared_ptr<AgentTest> const& test);
    /// How the agent waits when the action is done early; empty when it does not.
    std::shared_ptr<WaitStyle> GetWaitStyle();
    bool IsWaitIfDoActionDoneEarly() const;
    void SetWaitIfDoActionDoneEarly(std::shared_ptr<WaitStyle> const& style);
    void ClearWaitIfDoActionDoneEarly();
};

/// Does an action until a time.
class PEDFLUX_API DoUntilTimeAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// Does not wait when the action is done early.
    DoUntilTimeAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<TimeReference> const& time);
    /// Waits when the action is done early.
    DoUntilTimeAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<TimeReference> const& time,
                      std::shared_ptr<WaitStyle> const& style);

    std::shared_ptr<AgentAction> GetDoAction();
    void SetDoAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<TimeReference> GetTimeReference();
    void SetTimeReference(std::shared_ptr<TimeReference> const& time);
    /// @param seconds after midnight, 0 or more
    void SetAbsoluteTimeInSeconds(int seconds);
    /// How the agent waits when the action is done early; empty when it does not.
    std::shared_ptr<WaitStyle> GetWaitStyle();
    bool IsWaitIfDoActionDoneEarly() const;
    void SetWaitIfDoActionDoneEarly(std::shared_ptr<WaitStyle> const& style);
    void ClearWaitIfDoActionDoneEarly();
};

// Repeating. Whether to go on is asked before each turn: a turn that has begun is finished.

/// Does an action a number of times, which is drawn.
class PEDFLUX_API RepeatForCountAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// @param count 0 or more times, rounded to a whole number
    RepeatForCountAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<Distribution> const& count);

    std::shared_ptr<AgentAction> GetRepeatAction();
    void SetRepeatAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<Distribution> GetCountDistribution();
    /// @param count 0 or more times, rounded to a whole number
    void SetCountDistribution(std::shared_ptr<Distribution> const& count);
    /// @param count 0 or more
    void SetCount(int count);
};

/// Does an action again and again for a time that is drawn.
class PEDFLUX_API RepeatForDurationAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    /// @param duration 0 or more seconds
    RepeatForDurationAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<Distribution> const& duration);

    std::shared_ptr<AgentAction> GetRepeatAction();
    void SetRepeatAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<Distribution> GetDurationDistribution();
    /// @param duration 0 or more seconds
    void SetDurationDistribution(std::shared_ptr<Distribution> const& duration);
    /// @param seconds 0 or more
    void SetDurationInSeconds(int seconds);
};

/// Does an action again and again.
class PEDFLUX_API RepeatForeverAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    explicit RepeatForeverAction(std::shared_ptr<AgentAction> const& action);

    std::shared_ptr<AgentAction> GetRepeatAction();
    void SetRepeatAction(std::shared_ptr<AgentAction> const& action);
};

/// Does an action again and again until a time.
class PEDFLUX_API RepeatUntilTimeAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    RepeatUntilTimeAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<TimeReference> const& time);

    std::shared_ptr<AgentAction> GetRepeatAction();
    void SetRepeatAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<TimeReference> GetTimeReference();
    void SetTimeReference(std::shared_ptr<TimeReference> const& time);
    /// @param seconds after midnight, 0 or more
    void SetAbsoluteTimeInSeconds(int seconds);
};

/// Does an action again and again as long as a test is true.
class PEDFLUX_API RepeatWhileTestTrueAction : public AgentAction {
  public:
    using AgentAction::AgentAction;
    RepeatWhileTestTrueAction(std::shared_ptr<AgentAction> const& action, std::shared_ptr<AgentTest> const& test);

    std::shared_ptr<AgentAction> GetRepeatAction();
    void SetRepeatAction(std::shared_ptr<AgentAction> const& action);
    std::shared_ptr<AgentTest> GetAgentTest();
    void SetAgentTest(std::shared_ptr<AgentTest> const& test);
};

}  // namespace pedflux
