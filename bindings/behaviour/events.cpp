#include "bindings/table.h"

#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/identifiers.h>
#include <pedflux/population_sources.h>

namespace pedflux::jni {

CLASS(SinglePopulationEvent, SimObject)
PROPERTY(SinglePopulationEvent, PopulationSource)
PROPERTY(SinglePopulationEvent, Profile)
GET(SinglePopulationEvent, ColorSchemeType)
GET(SinglePopulationEvent, ColorSchemeColor)
SET(SinglePopulationEvent, ColorSchemeEventColor)
SET(SinglePopulationEvent, ColorSchemeLighter)
SET(SinglePopulationEvent, ColorSchemeDarker)
SET(SinglePopulationEvent, ColorSchemeSpecified)

CLASS(Journey, SinglePopulationEvent)
GET(Journey, TypeId)

CLASS(Evacuation, SinglePopulationEvent)
GET(Evacuation, TypeId)
PROPERTY(Evacuation, Zones)
CLEAR(Evacuation, Zones)
PROPERTY(Evacuation, PreMovementWaitDistribution)

}  // namespace pedflux::jni
