#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/transitions.h>

/// A transition; `copy` numbers its copy constructor.
#define TRANSITION(Class, copy)   \
    CLASS(Class, Transition)      \
    COPY_CONSTRUCTOR(Class, copy) \
    GET(Class, TransitionType)    \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(Transition)
GET(Transition, TransitionType)
METHOD(Transition, clone, Clone)
GET(Transition, ChildTransitionCount)
GET(Transition, ChildTransitions)
GET(Transition, ChildTransition)
METHOD(Transition, anyOf, AnyOf)
METHOD(Transition, areaEnter, AreaEnter)
METHOD(Transition, areaExit, AreaExit)
METHOD(Transition, atPortal, AtPortal)
METHOD(Transition, serverEnter, ServerEnter)
METHOD(Transition, serverExit, ServerExit)
METHOD(Transition, simEnter, SimEnter)
METHOD(Transition, simExit, SimExit)
METHOD(Transition, channelTransition, ChannelTransition)

TRANSITION(AtPortalTransition, 1)
CONSTRUCTOR_OVERLOAD(AtPortalTransition, 0, GlobalId const&)
PROPERTY(AtPortalTransition, Portal)

TRANSITION(CordonTransition, 1)
CONSTRUCTOR_OVERLOAD(CordonTransition, 0, GlobalId const&)
PROPERTY(CordonTransition, Cordon)

TRANSITION(EnterAreaTransition, 1)
CONSTRUCTOR_OVERLOAD(EnterAreaTransition, 0, GlobalId const&)
PROPERTY(EnterAreaTransition, Area)

TRANSITION(ExitAreaTransition, 1)
CONSTRUCTOR_OVERLOAD(ExitAreaTransition, 0, GlobalId const&)
PROPERTY(ExitAreaTransition, Area)

TRANSITION(EnterServerTransition, 1)
CONSTRUCTOR_OVERLOAD(EnterServerTransition, 0, GlobalId const&)
PROPERTY(EnterServerTransition, Server)

TRANSITION(ExitServerTransition, 1)
CONSTRUCTOR_OVERLOAD(ExitServerTransition, 0, GlobalId const&)
PROPERTY(ExitServerTransition, Server)

TRANSITION(EnterSimulationTransition, 1)
CONSTRUCTOR_OVERLOAD(EnterSimulationTransition, 0, GlobalId const&)
PROPERTY(EnterSimulationTransition, Object)

TRANSITION(ExitSimulationTransition, 1)
CONSTRUCTOR_OVERLOAD(ExitSimulationTransition, 0, GlobalId const&)
PROPERTY(ExitSimulationTransition, Object)

TRANSITION(BetweenObjectsTransition, 1)
CONSTRUCTOR_OVERLOAD(BetweenObjectsTransition, 0, GlobalId const&, GlobalId const&)
PROPERTY(BetweenObjectsTransition, FromObject)
PROPERTY(BetweenObjectsTransition, ToObject)

TRANSITION(AnyOfTransition, 2)
CONSTRUCTOR_OVERLOAD(AnyOfTransition, 0, std::shared_ptr<Transition> const&, std::shared_ptr<Transition> const&)
CONSTRUCTOR_OVERLOAD(AnyOfTransition, 1, std::vector<std::shared_ptr<Transition>> const&)
GET(AnyOfTransition, ChildTransitionCount)
PROPERTY(AnyOfTransition, ChildTransitions)
PROPERTY(AnyOfTransition, ChildTransition)
ADD(AnyOfTransition, ChildTransition)
CLEAR(AnyOfTransition, ChildTransitions)

}  // namespace pedflux::jni
