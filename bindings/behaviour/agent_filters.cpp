#include "bindings/table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/identifiers.h>
#include <pedflux/timetables.h>
#include <pedflux/transitions.h>

/// The combination of a list of filters.
#define FILTER_OF_LIST(Class, copy)                                                                          \
    CLASS(Class, AgentFilter)                                                                                \
    CONSTRUCTOR_OVERLOAD(Class, 0, std::shared_ptr<AgentFilter> const&, std::shared_ptr<AgentFilter> const&) \
    CONSTRUCTOR_OVERLOAD(Class, 1, std::vector<std::shared_ptr<AgentFilter>> const&)                         \
    COPY_CONSTRUCTOR(Class, copy)                                                                            \
    ADD(Class, ChildFilter)                                                                                  \
    CLEAR(Class, ChildFilters)                                                                               \
    IS(Class, TimeVarying)                                                                                   \
    GET(Class, AgentFilterTypeId)                                                                            \
    METHOD(Class, clone, Clone)                                                                              \
    GET(Class, ChildFilterCount)                                                                             \
    PROPERTY(Class, ChildFilter)                                                                             \
    PROPERTY(Class, ChildFilters)

/// A filter made of others.
#define FILTER_OF_FILTERS(Class, copy) \
    CLASS(Class, AgentFilter)          \
    COPY_CONSTRUCTOR(Class, copy)      \
    IS(Class, TimeVarying)             \
    GET(Class, AgentFilterTypeId)      \
    METHOD(Class, clone, Clone)        \
    GET(Class, ChildFilterCount)       \
    GET(Class, ChildFilter)            \
    GET(Class, ChildFilters)

/// A filter; `copy` numbers its copy constructor.
#define FILTER(Class, copy)       \
    CLASS(Class, AgentFilter)     \
    COPY_CONSTRUCTOR(Class, copy) \
    IS(Class, TimeVarying)        \
    GET(Class, AgentFilterTypeId) \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(AgentFilter)
IS(AgentFilter, TimeVarying)
GET(AgentFilter, AgentFilterTypeId)
METHOD(AgentFilter, clone, Clone)
GET(AgentFilter, ChildFilterCount)
GET(AgentFilter, ChildFilter)
GET(AgentFilter, ChildFilters)
METHOD(AgentFilter, allOf, AllOf)
METHOD(AgentFilter, anyOf, AnyOf)
METHOD(AgentFilter, noneOf, NoneOf)
METHOD(AgentFilter, negated, Negated)
IS(AgentFilter, Ever)
METHOD(AgentFilter, inArea, InArea)
METHOD(AgentFilter, enteredAt, EnteredAt)
METHOD(AgentFilter, exitedAt, ExitedAt)
METHOD(AgentFilter, holdingToken, HoldingToken)
METHOD(AgentFilter, inTrip, InTrip)
METHOD(AgentFilter, and, And)
METHOD(AgentFilter, or, Or)
GET(AgentFilter, AllNestedChildFilters)

FILTER(ActivityFilter, 1)
CONSTRUCTOR_OVERLOAD(ActivityFilter, 0, AgentActivity)
PROPERTY(ActivityFilter, AgentActivity)

FILTER(AllAgentsFilter, 1)
CONSTRUCTOR_OVERLOAD(AllAgentsFilter, 0)

FILTER(AtServerFilter, 1)
CONSTRUCTOR_OVERLOAD(AtServerFilter, 0, GlobalId const&)
PROPERTY(AtServerFilter, Server)

FILTER(AtTransitionFilter, 1)
CONSTRUCTOR_OVERLOAD(AtTransitionFilter, 0, std::shared_ptr<Transition> const&)
PROPERTY(AtTransitionFilter, Transition)

FILTER(CreatedByFilter, 1)
CONSTRUCTOR_OVERLOAD(CreatedByFilter, 0, GlobalId const&)
PROPERTY(CreatedByFilter, Event)

FILTER(EndStateFilter, 1)
CONSTRUCTOR_OVERLOAD(EndStateFilter, 0, AgentStateAtSimulationEnd)
PROPERTY(EndStateFilter, AgentStateAtSimulationEnd)

FILTER(EnteredAtFilter, 1)
CONSTRUCTOR_OVERLOAD(EnteredAtFilter, 0, GlobalId const&)
PROPERTY(EnteredAtFilter, Object)

FILTER(ExitedAtFilter, 1)
CONSTRUCTOR_OVERLOAD(ExitedAtFilter, 0, GlobalId const&)
PROPERTY(ExitedAtFilter, Object)

FILTER(InAreaFilter, 1)
CONSTRUCTOR_OVERLOAD(InAreaFilter, 0, GlobalId const&)
PROPERTY(InAreaFilter, Area)

FILTER(InTripFilter, 1)
CONSTRUCTOR_OVERLOAD(InTripFilter, 0, std::shared_ptr<Trip> const&)
PROPERTY(InTripFilter, Trip)

FILTER(LocalDensityFilter, 2)
CONSTRUCTOR_OVERLOAD(LocalDensityFilter, 0)
CONSTRUCTOR_OVERLOAD(LocalDensityFilter, 1, double, double)
PROPERTY(LocalDensityFilter, RangeMin)
HAS(LocalDensityFilter, RangeMin)
PROPERTY(LocalDensityFilter, RangeMax)
HAS(LocalDensityFilter, RangeMax)
SET(LocalDensityFilter, DensityRange)
CLEAR(LocalDensityFilter, Densities)

FILTER(NamedFilter, 1)
CONSTRUCTOR_OVERLOAD(NamedFilter, 0, GlobalId const&)
PROPERTY(NamedFilter, AgentFilterObject)

FILTER(ProfileFilter, 1)
CONSTRUCTOR_OVERLOAD(ProfileFilter, 0, GlobalId const&)
PROPERTY(ProfileFilter, Profile)

FILTER(ProximityFilter, 1)
CONSTRUCTOR_OVERLOAD(ProximityFilter, 0, double, bool)
PROPERTY(ProximityFilter, Distance)
FLAG(ProximityFilter, IgnoreBarriers)

FILTER(SpeedFilter, 2)
CONSTRUCTOR_OVERLOAD(SpeedFilter, 0)
CONSTRUCTOR_OVERLOAD(SpeedFilter, 1, double, double)
PROPERTY(SpeedFilter, RangeMin)
HAS(SpeedFilter, RangeMin)
PROPERTY(SpeedFilter, RangeMax)
HAS(SpeedFilter, RangeMax)
SET(SpeedFilter, SpeedRange)
CLEAR(SpeedFilter, Speeds)

FILTER(TokenFilter, 1)
CONSTRUCTOR_OVERLOAD(TokenFilter, 0, GlobalId const&)
PROPERTY(TokenFilter, Token)

FILTER_OF_FILTERS(NotFilter, 1)
CONSTRUCTOR_OVERLOAD(NotFilter, 0, std::shared_ptr<AgentFilter> const&)
PROPERTY(NotFilter, NegatedFilter)

FILTER_OF_FILTERS(IsEverFilter, 1)
CONSTRUCTOR_OVERLOAD(IsEverFilter, 0, std::shared_ptr<AgentFilter> const&)
PROPERTY(IsEverFilter, IsEverFilter)

FILTER_OF_FILTERS(CompoundFilter, 1)
CONSTRUCTOR_OVERLOAD(CompoundFilter, 0, std::shared_ptr<AgentFilter> const&, std::shared_ptr<AgentFilter> const&,
                     BooleanOperator)
PROPERTY(CompoundFilter, FirstChildFilter)
PROPERTY(CompoundFilter, SecondChildFilter)
PROPERTY(CompoundFilter, BooleanOperator)

FILTER_OF_LIST(AllOfFilter, 2)

FILTER_OF_LIST(AnyOfFilter, 2)

FILTER_OF_LIST(NoneOfFilter, 2)

CLASS(AgentFilterObject, SimObject)
GET(AgentFilterObject, TypeId)
PROPERTY(AgentFilterObject, AgentFilter)

}  // namespace pedflux::jni
