#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"

namespace pedflux {

PEDFLUX_TIME_RULE_KINDS(OBJECT_KIND)

}  // namespace pedflux
