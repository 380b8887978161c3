#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/project/kind_table.h"

#include <pedflux/events.h>

namespace pedflux {

KIND(Journey, Journeys)
KIND(Evacuation, Evacuations)
KIND(Circulate, Circulates)
KIND(Broadcast, Broadcasts)
KIND_WITH(Dispatch, Dispatches, Vec3d, position)
KIND(AgentActionObject, AgentActionObjects)

}  // namespace pedflux
