#include "bindings/table.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>
#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/identifiers.h>
#include <pedflux/population_sources.h>
#include <pedflux/time_references.h>
#include <pedflux/triggers.h>

namespace pedflux::jni {

CLASS(SinglePopulationEvent, SimObject)
PROPERTY(SinglePopulationEvent, PopulationSource)
PROPERTY(SinglePopulationEvent, StartTrigger)
PROPERTY(SinglePopulationEvent, Profile)
HAS(SinglePopulationEvent, InitialAction)
GET(SinglePopulationEvent, InitialActionCopy)
SET(SinglePopulationEvent, InitialAction)
GET(SinglePopulationEvent, ColorSchemeType)
GET(SinglePopulationEvent, ColorSchemeColor)
SET(SinglePopulationEvent, ColorSchemeEventColor)
SET(SinglePopulationEvent, ColorSchemeLighter)
SET(SinglePopulationEvent, ColorSchemeDarker)
SET(SinglePopulationEvent, ColorSchemeSpecified)
SET(SinglePopulationEvent, ColorSchemeRules)
GET(SinglePopulationEvent, ColorSchemeRuleCount)
GET(SinglePopulationEvent, ColorSchemeRuleAgentTest)
GET(SinglePopulationEvent, ColorSchemeRuleColor)

CLASS(Journey, SinglePopulationEvent)
GET(Journey, TypeId)

CLASS(Evacuation, SinglePopulationEvent)
GET(Evacuation, TypeId)
PROPERTY(Evacuation, Zones)
CLEAR(Evacuation, Zones)
PROPERTY(Evacuation, PreMovementWaitDistribution)
PROPERTY(Evacuation, PreMovementWaitStyle)

CLASS(Broadcast, SimObject)
GET(Broadcast, TypeId)
PROPERTY(Broadcast, TriggerRange)
PROPERTY(Broadcast, AgentAction)
OPTIONAL(Broadcast, AgentTest)
OPTIONAL(Broadcast, Zone)

CLASS(Circulate, SinglePopulationEvent)
GET(Circulate, TypeId)
PROPERTY(Circulate, CirculatePortals)
GET(Circulate, CirculationCommand)
METHOD(Circulate, circulateEntireSimulation, CirculateEntireSimulation)
METHOD(Circulate, circulateForCount, CirculateForCount)
METHOD(Circulate, circulateForDuration, CirculateForDuration)
METHOD(Circulate, circulateForCountOrDuration, CirculateForCountOrDuration)
METHOD(Circulate, circulateUntilTime, CirculateUntilTime)
METHOD(Circulate, circulateUntilTimeOrCount, CirculateUntilTimeOrCount)

CLASS(Dispatch, SimObject)
GET(Dispatch, TypeId)
SET(Dispatch, Source)
SET(Dispatch, Sources)
SET(Dispatch, Sink)
SET(Dispatch, Sinks)
SET(Dispatch, Position)
METHOD(Dispatch, reposition, Reposition)

}  // namespace pedflux::jni
