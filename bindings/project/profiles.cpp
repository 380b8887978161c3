#include "bindings/table.h"

#include <pedflux/distributions.h>
#include <pedflux/identifiers.h>
#include <pedflux/profiles.h>

namespace pedflux::jni {

CLASS(Profile, SimObject)
CLEAR(Profile, Avatar)
CLEAR(Profile, Network)
CLEAR(Profile, PersonalSpace)
PROPERTY(Profile, AccelerationForwardMax)
PROPERTY(Profile, AgentDirectionBias)
PROPERTY(Profile, Avatar)
PROPERTY(Profile, HorizontalCostDistribution)
PROPERTY(Profile, Network)
PROPERTY(Profile, PersonalSpaceDistribution)
PROPERTY(Profile, ProcessingCostDistribution)
PROPERTY(Profile, QueueCostDistribution)
PROPERTY(Profile, RadiusDistribution)
PROPERTY(Profile, SpeedDistribution)
PROPERTY(Profile, SpeedShuffleFactor)
PROPERTY(Profile, TurnRateCapInDegreesAtMaxSpeed)
GET(Profile, TypeId)
PROPERTY(Profile, VerticalCostDistribution)
HAS(Profile, Avatar)
HAS(Profile, Network)
IS(Profile, PersonalSpaceEnabled)
SET(Profile, PersonalSpace)
SET(Profile, Radius)

}  // namespace pedflux::jni
