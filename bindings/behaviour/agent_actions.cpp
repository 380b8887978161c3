#include "bindings/table.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/identifiers.h>
#include <pedflux/time_references.h>
#include <pedflux/wait_styles.h>

/// An action that lets another one go on until something ends it; who is done before may wait.
#define DO_UNTIL(Class, copy)            \
    CLASS(Class, AgentAction)            \
    COPY_CONSTRUCTOR(Class, copy)        \
    GET(Class, AgentActionTypeId)        \
    GET(Class, ChildActionCount)         \
    GET(Class, ChildAction)              \
    GET(Class, ChildActions)             \
    METHOD(Class, clone, Clone)          \
    PROPERTY(Class, DoAction)            \
    GET(Class, WaitStyle)                \
    FLAG(Class, WaitIfDoActionDoneEarly) \
    CLEAR(Class, WaitIfDoActionDoneEarly)

/// An action made of others.
#define ACTION_OF_ACTIONS(Class, copy) \
    CLASS(Class, AgentAction)          \
    COPY_CONSTRUCTOR(Class, copy)      \
    GET(Class, AgentActionTypeId)      \
    GET(Class, ChildActionCount)       \
    GET(Class, ChildAction)            \
    GET(Class, ChildActions)           \
    METHOD(Class, clone, Clone)

/// An action; `copy` numbers its copy constructor.
#define ACTION(Class, copy)       \
    CLASS(Class, AgentAction)     \
    COPY_CONSTRUCTOR(Class, copy) \
    GET(Class, AgentActionTypeId) \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(AgentAction)
GET(AgentAction, AgentActionTypeId)
GET(AgentAction, ChildActionCount)
GET(AgentAction, ChildAction)
GET(AgentAction, ChildActions)
METHOD(AgentAction, clone, Clone)
GET(AgentAction, AllNestedChildActions)

ACTION(AddToTallyAction, 2)
CONSTRUCTOR_OVERLOAD(AddToTallyAction, 0, GlobalId const&, double)
CONSTRUCTOR_OVERLOAD(AddToTallyAction, 1, std::vector<GlobalId> const&, double)
PROPERTY(AddToTallyAction, TallyObjects)
PROPERTY(AddToTallyAction, ValueToAdd)

ACTION(AddTokensAction, 2)
CONSTRUCTOR_OVERLOAD(AddTokensAction, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(AddTokensAction, 1, std::vector<GlobalId> const&)
PROPERTY(AddTokensAction, Tokens)

ACTION(ClearAvatarAction, 1)
CONSTRUCTOR_OVERLOAD(ClearAvatarAction, 0)

ACTION(ClearColorAction, 1)
CONSTRUCTOR_OVERLOAD(ClearColorAction, 0)

ACTION(ClearHistoryAction, 1)
CONSTRUCTOR_OVERLOAD(ClearHistoryAction, 0)

ACTION(ClearNetworkAction, 1)
CONSTRUCTOR_OVERLOAD(ClearNetworkAction, 0)

ACTION(ClearTasksAction, 1)
CONSTRUCTOR_OVERLOAD(ClearTasksAction, 0)

ACTION(ClearTokensAction, 2)
CONSTRUCTOR_OVERLOAD(ClearTokensAction, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ClearTokensAction, 1, std::vector<GlobalId> const&)
PROPERTY(ClearTokensAction, Tokens)

ACTION(DoNothingAction, 1)
CONSTRUCTOR_OVERLOAD(DoNothingAction, 0)

ACTION(EvacuateZoneAction, 2)
CONSTRUCTOR_OVERLOAD(EvacuateZoneAction, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(EvacuateZoneAction, 1, GlobalId const&, bool)
PROPERTY(EvacuateZoneAction, Zone)
FLAG(EvacuateZoneAction, EraseRouteHistory)

ACTION(ExitSimulationAction, 1)
CONSTRUCTOR_OVERLOAD(ExitSimulationAction, 0)

ACTION(FollowSignAction, 2)
CONSTRUCTOR_OVERLOAD(FollowSignAction, 0, std::vector<GlobalId> const&)
CONSTRUCTOR_OVERLOAD(FollowSignAction, 1, std::vector<GlobalId> const&, std::vector<double> const&)
GET(FollowSignAction, RouteObjects)
GET(FollowSignAction, ManualWeights)
METHOD(FollowSignAction, usesManualWeights, UsesManualWeights)
GET(FollowSignAction, DestinationAssignment)
OVERLOAD(FollowSignAction, setAssignedRouteObjects, 0, SetAssignedRouteObjects, std::vector<GlobalId> const&)
OVERLOAD(FollowSignAction, setAssignedRouteObjects, 1, SetAssignedRouteObjects, std::vector<GlobalId> const&,
         std::vector<double> const&)
SET(FollowSignAction, LowestCostRouteObjects)
SET(FollowSignAction, RouteObjectSequence)

ACTION(NamedAction, 1)
CONSTRUCTOR_OVERLOAD(NamedAction, 0, GlobalId const&)
PROPERTY(NamedAction, AgentActionObject)

ACTION(SeekAreaAction, 2)
CONSTRUCTOR_OVERLOAD(SeekAreaAction, 0, std::vector<GlobalId> const&, bool)
CONSTRUCTOR_OVERLOAD(SeekAreaAction, 1, std::vector<GlobalId> const&, std::vector<double> const&, bool)
GET(SeekAreaAction, Areas)
GET(SeekAreaAction, ManualWeights)
METHOD(SeekAreaAction, usesManualWeights, UsesManualWeights)
GET(SeekAreaAction, DestinationAssignment)
OVERLOAD(SeekAreaAction, setAssignedAreas, 0, SetAssignedAreas, std::vector<GlobalId> const&)
OVERLOAD(SeekAreaAction, setAssignedAreas, 1, SetAssignedAreas, std::vector<GlobalId> const&,
         std::vector<double> const&)
SET(SeekAreaAction, LowestCostAreas)
FLAG(SeekAreaAction, EraseRouteHistory)

ACTION(SeekInitialGoalAction, 1)
CONSTRUCTOR_OVERLOAD(SeekInitialGoalAction, 0, bool)
FLAG(SeekInitialGoalAction, EraseRouteHistory)

ACTION(SeekOriginAction, 1)
CONSTRUCTOR_OVERLOAD(SeekOriginAction, 0, bool)
FLAG(SeekOriginAction, EraseRouteHistory)

ACTION(SeekPortalAction, 2)
CONSTRUCTOR_OVERLOAD(SeekPortalAction, 0, std::vector<GlobalId> const&, bool)
CONSTRUCTOR_OVERLOAD(SeekPortalAction, 1, std::vector<GlobalId> const&, std::vector<double> const&, bool)
GET(SeekPortalAction, Portals)
GET(SeekPortalAction, ManualWeights)
METHOD(SeekPortalAction, usesManualWeights, UsesManualWeights)
GET(SeekPortalAction, DestinationAssignment)
OVERLOAD(SeekPortalAction, setAssignedPortals, 0, SetAssignedPortals, std::vector<GlobalId> const&)
OVERLOAD(SeekPortalAction, setAssignedPortals, 1, SetAssignedPortals, std::vector<GlobalId> const&,
         std::vector<double> const&)
SET(SeekPortalAction, LowestCostPortals)
FLAG(SeekPortalAction, EraseRouteHistory)

ACTION(SeekProcessStartAction, 2)
CONSTRUCTOR_OVERLOAD(SeekProcessStartAction, 0, std::vector<GlobalId> const&, bool)
CONSTRUCTOR_OVERLOAD(SeekProcessStartAction, 1, std::vector<GlobalId> const&, std::vector<double> const&, bool)
GET(SeekProcessStartAction, ProcessStarts)
GET(SeekProcessStartAction, ManualWeights)
METHOD(SeekProcessStartAction, usesManualWeights, UsesManualWeights)
GET(SeekProcessStartAction, DestinationAssignment)
OVERLOAD(SeekProcessStartAction, setAssignedProcessStarts, 0, SetAssignedProcessStarts, std::vector<GlobalId> const&)
OVERLOAD(SeekProcessStartAction, setAssignedProcessStarts, 1, SetAssignedProcessStarts, std::vector<GlobalId> const&,
         std::vector<double> const&)
FLAG(SeekProcessStartAction, EraseRouteHistory)

ACTION(SeekZoneAction, 2)
CONSTRUCTOR_OVERLOAD(SeekZoneAction, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(SeekZoneAction, 1, GlobalId const&, bool)
PROPERTY(SeekZoneAction, Zone)
FLAG(SeekZoneAction, EraseRouteHistory)

ACTION(SetAvatarAction, 1)
CONSTRUCTOR_OVERLOAD(SetAvatarAction, 0, GlobalId const&)
PROPERTY(SetAvatarAction, Avatar)

ACTION(SetColorAction, 2)
CONSTRUCTOR_OVERLOAD(SetColorAction, 0)
CONSTRUCTOR_OVERLOAD(SetColorAction, 1, Color)
PROPERTY(SetColorAction, Color)

ACTION(SetNetworkAction, 2)
CONSTRUCTOR_OVERLOAD(SetNetworkAction, 0)
CONSTRUCTOR_OVERLOAD(SetNetworkAction, 1, GlobalId const&)
PROPERTY(SetNetworkAction, CustomNetwork)
HAS(SetNetworkAction, CustomNetwork)

ACTION(WaitForDurationAction, 1)
CONSTRUCTOR_OVERLOAD(WaitForDurationAction, 0, std::shared_ptr<Distribution> const&, std::shared_ptr<WaitStyle> const&)
PROPERTY(WaitForDurationAction, DurationDistribution)
SET(WaitForDurationAction, DurationInSeconds)
PROPERTY(WaitForDurationAction, WaitStyle)

ACTION(WaitForeverAction, 1)
CONSTRUCTOR_OVERLOAD(WaitForeverAction, 0, std::shared_ptr<WaitStyle> const&)
PROPERTY(WaitForeverAction, WaitStyle)

ACTION(WaitUntilTimeAction, 1)
CONSTRUCTOR_OVERLOAD(WaitUntilTimeAction, 0, std::shared_ptr<TimeReference> const&, std::shared_ptr<WaitStyle> const&)
PROPERTY(WaitUntilTimeAction, TimeReference)
SET(WaitUntilTimeAction, AbsoluteTimeInSeconds)
PROPERTY(WaitUntilTimeAction, WaitStyle)

ACTION(WaitWhileTestTrueAction, 1)
CONSTRUCTOR_OVERLOAD(WaitWhileTestTrueAction, 0, std::shared_ptr<AgentTest> const&, std::shared_ptr<WaitStyle> const&)
PROPERTY(WaitWhileTestTrueAction, AgentTest)
PROPERTY(WaitWhileTestTrueAction, WaitStyle)

ACTION_OF_ACTIONS(ApplyActionAction, 1)
CONSTRUCTOR_OVERLOAD(ApplyActionAction, 0, std::shared_ptr<AgentAction> const&)
PROPERTY(ApplyActionAction, AppliedAction)

ACTION(ChooseFromSetAction, 1)
CONSTRUCTOR_OVERLOAD(ChooseFromSetAction, 0, std::vector<std::shared_ptr<AgentAction>> const&,
                     std::vector<double> const&)
GET(ChooseFromSetAction, ChildActionCount)
PROPERTY(ChooseFromSetAction, ChildAction)
PROPERTY(ChooseFromSetAction, ChildActions)
ADD(ChooseFromSetAction, ChildAction)
CLEAR(ChooseFromSetAction, ChildActions)
PROPERTY(ChooseFromSetAction, Weight)
PROPERTY(ChooseFromSetAction, Weights)

DO_UNTIL(DoUntilDurationEndsAction, 1)
CONSTRUCTOR_OVERLOAD(DoUntilDurationEndsAction, 0, std::shared_ptr<AgentAction> const&,
                     std::shared_ptr<Distribution> const&)
CONSTRUCTOR_OVERLOAD(DoUntilDurationEndsAction, 2, std::shared_ptr<AgentAction> const&,
                     std::shared_ptr<Distribution> const&, std::shared_ptr<WaitStyle> const&)
PROPERTY(DoUntilDurationEndsAction, DurationDistribution)
SET(DoUntilDurationEndsAction, DurationInSeconds)

DO_UNTIL(DoUntilTestFailsAction, 1)
CONSTRUCTOR_OVERLOAD(DoUntilTestFailsAction, 0, std::shared_ptr<AgentAction> const&, std::shared_ptr<AgentTest> const&)
CONSTRUCTOR_OVERLOAD(DoUntilTestFailsAction, 2, std::shared_ptr<AgentAction> const&, std::shared_ptr<AgentTest> const&,
                     std::shared_ptr<WaitStyle> const&)
PROPERTY(DoUntilTestFailsAction, AgentTest)

DO_UNTIL(DoUntilTimeAction, 1)
CONSTRUCTOR_OVERLOAD(DoUntilTimeAction, 0, std::shared_ptr<AgentAction> const&, std::shared_ptr<TimeReference> const&)
CONSTRUCTOR_OVERLOAD(DoUntilTimeAction, 2, std::shared_ptr<AgentAction> const&, std::shared_ptr<TimeReference> const&,
                     std::shared_ptr<WaitStyle> const&)
PROPERTY(DoUntilTimeAction, TimeReference)
SET(DoUntilTimeAction, AbsoluteTimeInSeconds)

ACTION_OF_ACTIONS(IfThenAction, 0)
CONSTRUCTOR_OVERLOAD(IfThenAction, 1, std::shared_ptr<AgentTest> const&, std::shared_ptr<AgentAction> const&)
PROPERTY(IfThenAction, IfTest)
PROPERTY(IfThenAction, ThenAction)

ACTION_OF_ACTIONS(IfThenElseAction, 0)
CONSTRUCTOR_OVERLOAD(IfThenElseAction, 1, std::shared_ptr<AgentTest> const&, std::shared_ptr<AgentAction> const&,
                     std::shared_ptr<AgentAction> const&)
PROPERTY(IfThenElseAction, IfTest)
PROPERTY(IfThenElseAction, ThenAction)
PROPERTY(IfThenElseAction, ElseAction)

ACTION_OF_ACTIONS(ListAction, 1)
CONSTRUCTOR_OVERLOAD(ListAction, 0, std::vector<std::shared_ptr<AgentAction>> const&, ListActionAssignment)
PROPERTY(ListAction, ListActionAssignment)

ACTION_OF_ACTIONS(RepeatForCountAction, 1)
CONSTRUCTOR_OVERLOAD(RepeatForCountAction, 0, std::shared_ptr<AgentAction> const&, std::shared_ptr<Distribution> const&)
PROPERTY(RepeatForCountAction, RepeatAction)
PROPERTY(RepeatForCountAction, CountDistribution)
SET(RepeatForCountAction, Count)

ACTION_OF_ACTIONS(RepeatForDurationAction, 1)
CONSTRUCTOR_OVERLOAD(RepeatForDurationAction, 0, std::shared_ptr<AgentAction> const&,
                     std::shared_ptr<Distribution> const&)
PROPERTY(RepeatForDurationAction, RepeatAction)
PROPERTY(RepeatForDurationAction, DurationDistribution)
SET(RepeatForDurationAction, DurationInSeconds)

ACTION_OF_ACTIONS(RepeatForeverAction, 1)
CONSTRUCTOR_OVERLOAD(RepeatForeverAction, 0, std::shared_ptr<AgentAction> const&)
PROPERTY(RepeatForeverAction, RepeatAction)

ACTION_OF_ACTIONS(RepeatUntilTimeAction, 1)
CONSTRUCTOR_OVERLOAD(RepeatUntilTimeAction, 0, std::shared_ptr<AgentAction> const&,
                     std::shared_ptr<TimeReference> const&)
PROPERTY(RepeatUntilTimeAction, RepeatAction)
PROPERTY(RepeatUntilTimeAction, TimeReference)
SET(RepeatUntilTimeAction, AbsoluteTimeInSeconds)

ACTION_OF_ACTIONS(RepeatWhileTestTrueAction, 1)
CONSTRUCTOR_OVERLOAD(RepeatWhileTestTrueAction, 0, std::shared_ptr<AgentAction> const&,
                     std::shared_ptr<AgentTest> const&)
PROPERTY(RepeatWhileTestTrueAction, RepeatAction)
PROPERTY(RepeatWhileTestTrueAction, AgentTest)

CLASS(AgentActionObject, SimObject)
PROPERTY(AgentActionObject, AgentAction)
GET(AgentActionObject, TypeId)

}  // namespace pedflux::jni
