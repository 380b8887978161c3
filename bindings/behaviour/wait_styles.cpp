#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/wait_styles.h>

/// A wait style; `copy` numbers its copy constructor.
#define WAIT_STYLE(Class, copy)   \
    CLASS(Class, WaitStyle)       \
    COPY_CONSTRUCTOR(Class, copy) \
    GET(Class, WaitStyleTypeId)   \
    METHOD(Class, clone, Clone)

namespace pedflux::jni {

CLASS(WaitStyle)
GET(WaitStyle, WaitStyleTypeId)
METHOD(WaitStyle, clone, Clone)
METHOD(WaitStyle, standStill, StandStill)
METHOD(WaitStyle, spreadOut, SpreadOut)
METHOD(WaitStyle, lowestCostWaitSpace, LowestCostWaitSpace)
OVERLOAD(WaitStyle, assignedWaitSpace, 0, AssignedWaitSpace, std::vector<GlobalId> const&)
OVERLOAD(WaitStyle, assignedWaitSpace, 1, AssignedWaitSpace, std::vector<GlobalId> const&, std::vector<double> const&)

WAIT_STYLE(StandStillWaitStyle, 1)
CONSTRUCTOR_OVERLOAD(StandStillWaitStyle, 0)

WAIT_STYLE(SpreadOutWaitStyle, 1)
CONSTRUCTOR_OVERLOAD(SpreadOutWaitStyle, 0)

WAIT_STYLE(AssignedWaitSpaceWaitStyle, 2)
CONSTRUCTOR_OVERLOAD(AssignedWaitSpaceWaitStyle, 0, std::vector<GlobalId> const&)
CONSTRUCTOR_OVERLOAD(AssignedWaitSpaceWaitStyle, 1, std::vector<GlobalId> const&, std::vector<double> const&)
GET(AssignedWaitSpaceWaitStyle, FallbackWaitStyleId)
SET(AssignedWaitSpaceWaitStyle, FallbackWaitStyleStandStill)
SET(AssignedWaitSpaceWaitStyle, FallbackWaitStyleSpreadOut)

WAIT_STYLE(LowestCostWaitSpaceWaitStyle, 1)
CONSTRUCTOR_OVERLOAD(LowestCostWaitSpaceWaitStyle, 0, std::vector<GlobalId> const&)
GET(LowestCostWaitSpaceWaitStyle, FallbackWaitStyleId)
SET(LowestCostWaitSpaceWaitStyle, FallbackWaitStyleStandStill)
SET(LowestCostWaitSpaceWaitStyle, FallbackWaitStyleSpreadOut)

}  // namespace pedflux::jni
