#include "bindings/table.h"

#include <pedflux/distributions.h>
#include <pedflux/identifiers.h>
#include <pedflux/profiles.h>

namespace pedflux::jni {

CLASS(Profile, SimObject)
CLEAR(Profile, PersonalSpace)
PROPERTY(Profile, AccelerationForwardMax)
PROPERTY(Profile, AgentDirectionBias)
OPTIONAL(Profile, Avatar)
PROPERTY(Profile, HorizontalCostDistribution)
GET(Profile, InitialActionCopy)
OPTIONAL(Profile, Network)
PROPERTY(Profile, PersonalSpaceDistribution)
PROPERTY(Profile, ProcessingCostDistribution)
PROPERTY(Profile, QueueCostDistribution)
PROPERTY(Profile, RadiusDistribution)
PROPERTY(Profile, SpeedDistribution)
PROPERTY(Profile, SpeedShuffleFactor)
PROPERTY(Profile, TurnRateCapInDegreesAtMaxSpeed)
GET(Profile, TypeId)
PROPERTY(Profile, VerticalCostDistribution)
HAS(Profile, InitialAction)
IS(Profile, PersonalSpaceEnabled)
SET(Profile, InitialAction)
SET(Profile, PersonalSpace)
SET(Profile, Radius)

}  // namespace pedflux::jni
