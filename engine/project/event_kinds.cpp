#include "engine/behaviour/event_states.h"
#include "engine/project/kind_table.h"

#include <pedflux/events.h>

namespace pedflux {

KIND(Journey, Journeys)
KIND(Evacuation, Evacuations)

}  // namespace pedflux
