#include "bindings/table.h"

#include <pedflux/distributions.h>
#include <pedflux/identifiers.h>
#include <pedflux/tallies.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

/// The combination of a list of tallies.
#define TALLY_OF_LIST(Class, copy)                                                               \
    CLASS(Class, Tally)                                                                          \
    CONSTRUCTOR_OVERLOAD(Class, 0, std::shared_ptr<Tally> const&, std::shared_ptr<Tally> const&) \
    CONSTRUCTOR_OVERLOAD(Class, 1, std::vector<std::shared_ptr<Tally>> const&)                   \
    COPY_CONSTRUCTOR(Class, copy)                                                                \
    GET(Class, TallyTypeId)                                                                      \
    METHOD(Class, clone, Clone)                                                                  \
    GET(Class, ChildTallyCount)                                                                  \
    PROPERTY(Class, ChildTally)                                                                  \
    PROPERTY(Class, ChildTallies)                                                                \
    ADD(Class, ChildTally)                                                                       \
    CLEAR(Class, ChildTallies)

/// A tally; `copy` numbers its copy constructor.
#define TALLY(Class, copy)        \
    CLASS(Class, Tally)           \
    COPY_CONSTRUCTOR(Class, copy) \
    GET(Class, TallyTypeId)       \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(Tally)
GET(Tally, TallyTypeId)
METHOD(Tally, clone, Clone)
GET(Tally, ChildTallyCount)
GET(Tally, ChildTally)
GET(Tally, ChildTallies)
GET(Tally, AllNestedChildTallies)

TALLY(AreaPopulationTally, 1)
CONSTRUCTOR_OVERLOAD(AreaPopulationTally, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(AreaPopulationTally, 2, std::vector<GlobalId> const&)
PROPERTY(AreaPopulationTally, Areas)

TALLY(NamedTally, 1)
CONSTRUCTOR_OVERLOAD(NamedTally, 0, GlobalId const&)
PROPERTY(NamedTally, TallyObject)

TALLY(ServerAvailableCapacityTally, 2)
CONSTRUCTOR_OVERLOAD(ServerAvailableCapacityTally, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ServerAvailableCapacityTally, 1, std::vector<GlobalId> const&)
PROPERTY(ServerAvailableCapacityTally, Servers)

TALLY(ServerQueueAndApproachTally, 2)
CONSTRUCTOR_OVERLOAD(ServerQueueAndApproachTally, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ServerQueueAndApproachTally, 1, std::vector<GlobalId> const&)
PROPERTY(ServerQueueAndApproachTally, Servers)

TALLY(ServerQueueTally, 2)
CONSTRUCTOR_OVERLOAD(ServerQueueTally, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(ServerQueueTally, 1, std::vector<GlobalId> const&)
PROPERTY(ServerQueueTally, Servers)

TALLY(SurfaceAreaTally, 2)
CONSTRUCTOR_OVERLOAD(SurfaceAreaTally, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(SurfaceAreaTally, 1, std::vector<GlobalId> const&)
PROPERTY(SurfaceAreaTally, WalkableObjects)

TALLY(TransitionTally, 1)
CONSTRUCTOR_OVERLOAD(TransitionTally, 0, std::shared_ptr<Transition> const&)
PROPERTY(TransitionTally, Transition)

TALLY(VariableTally, 1)
CONSTRUCTOR_OVERLOAD(VariableTally, 0, double)
PROPERTY(VariableTally, Value)

TALLY(ScaleTally, 1)
CONSTRUCTOR_OVERLOAD(ScaleTally, 0, std::shared_ptr<Tally> const&, double)
GET(ScaleTally, ChildTallyCount)
GET(ScaleTally, ChildTally)
PROPERTY(ScaleTally, Tally)
PROPERTY(ScaleTally, ScaleValue)

TALLY(SubtractTally, 1)
CONSTRUCTOR_OVERLOAD(SubtractTally, 0, std::shared_ptr<Tally> const&, std::shared_ptr<Tally> const&)
GET(SubtractTally, ChildTallyCount)
GET(SubtractTally, ChildTally)
GET(SubtractTally, ChildTallies)
PROPERTY(SubtractTally, FirstTally)
PROPERTY(SubtractTally, SecondTally)

TALLY(MultiplyTally, 1)
CONSTRUCTOR_OVERLOAD(MultiplyTally, 0, std::shared_ptr<Tally> const&, std::shared_ptr<Tally> const&)
GET(MultiplyTally, ChildTallyCount)
GET(MultiplyTally, ChildTally)
GET(MultiplyTally, ChildTallies)
PROPERTY(MultiplyTally, FirstTally)
PROPERTY(MultiplyTally, SecondTally)

TALLY(DivideTally, 1)
CONSTRUCTOR_OVERLOAD(DivideTally, 0, std::shared_ptr<Tally> const&, std::shared_ptr<Tally> const&, ZeroOverZeroValue)
GET(DivideTally, ChildTallyCount)
GET(DivideTally, ChildTally)
GET(DivideTally, ChildTallies)
PROPERTY(DivideTally, NumeratorTally)
PROPERTY(DivideTally, DenominatorTally)
PROPERTY(DivideTally, ZeroOverZeroValue)

TALLY_OF_LIST(AddTally, 2)

TALLY_OF_LIST(MaxTally, 2)

TALLY_OF_LIST(MinTally, 2)

CLASS(TallyObject, SimObject)
GET(TallyObject, TypeId)
GET(TallyObject, Tally)
GET(TallyObject, TallyValueType)
SET(TallyObject, TallyValueByCount)
OVERLOAD(TallyObject, setTallyValueByVariable, 0, SetTallyValueByVariable, double)
OVERLOAD(TallyObject, setTallyValueByVariable, 1, SetTallyValueByVariable, std::shared_ptr<Distribution> const&)
OVERLOAD(TallyObject, setTallyValueByClockCountingUp, 0, SetTallyValueByClockCountingUp, double)
OVERLOAD(TallyObject, setTallyValueByClockCountingUp, 1, SetTallyValueByClockCountingUp,
         std::shared_ptr<Distribution> const&)
OVERLOAD(TallyObject, setTallyValueByClockCountingDown, 0, SetTallyValueByClockCountingDown, double)
OVERLOAD(TallyObject, setTallyValueByClockCountingDown, 1, SetTallyValueByClockCountingDown,
         std::shared_ptr<Distribution> const&)
SET(TallyObject, TallyValueByAggregateSumOverTime)
SET(TallyObject, TallyValueByAggregateMinOverTime)
SET(TallyObject, TallyValueByAggregateMaxOverTime)
SET(TallyObject, TallyValueByAggregateRollingSum)
SET(TallyObject, TallyValueByAggregateRollingAverage)
IS(TallyObject, ClockCountingDown)
OPTIONAL(TallyObject, MinValue)
OPTIONAL(TallyObject, MaxValue)
FLAG(TallyObject, StartAtDefaultValue)
FLAG(TallyObject, StartAtCustomValue)
GET(TallyObject, StartCustomValue)
FLAG(TallyObject, AutoResetDisabled)
FLAG(TallyObject, AutoResetEveryFrame)
FLAG(TallyObject, AutoResetEveryInterval)
IS(TallyObject, AutoResetWhenValueReached)
FLAG(TallyObject, AutoResetWhenValueGreaterOrEqual)
FLAG(TallyObject, AutoResetWhenValueLessOrEqual)
GET(TallyObject, AutoResetIntervalInSeconds)
GET(TallyObject, AutoResetTally)
SET(TallyObject, DefaultValueOnReset)
GET(TallyObject, DefaultDistributionOnReset)

CLASS(TallyChange, SimObject)
GET(TallyChange, TypeId)
PROPERTY(TallyChange, TallyObjects)
PROPERTY(TallyChange, TriggerRange)
SET(TallyChange, CommandToAddOnce)
SET(TallyChange, CommandToAddRepeatedly)
SET(TallyChange, CommandToReset)
SET(TallyChange, CommandToResetThenAddOnce)
SET(TallyChange, CommandToResetThenAddRepeatedly)
METHOD(TallyChange, doesCommandAdd, DoesCommandAdd)
METHOD(TallyChange, doesCommandAddOnce, DoesCommandAddOnce)
METHOD(TallyChange, doesCommandAddRepeatedly, DoesCommandAddRepeatedly)
METHOD(TallyChange, doesCommandReset, DoesCommandReset)
GET(TallyChange, AddPeriodInSeconds)
SET(TallyChange, ValueAsConstant)
METHOD(TallyChange, canGetValueAsDistribution, CanGetValueAsDistribution)
PROPERTY(TallyChange, ValueAsDistribution)
METHOD(TallyChange, canGetValueAsTally, CanGetValueAsTally)
PROPERTY(TallyChange, ValueAsTally)
SET(TallyChange, ValueDistributionUsesIntegers)
METHOD(TallyChange, doesValueDistributionUseIntegers, DoesValueDistributionUseIntegers)
SET(TallyChange, CyclingDisabled)
FLAG(TallyChange, CyclingEnabled)
GET(TallyChange, CyclePeriodInSeconds)
FLAG(TallyChange, SkipFirstAddition)

}  // namespace pedflux::jni
