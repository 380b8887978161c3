#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"

#include <pedflux/events.h>

namespace pedflux {

PEDFLUX_EVENT_KINDS(OBJECT_KIND)

}  // namespace pedflux
