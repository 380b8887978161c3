#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/project/kind_table.h"

namespace pedflux {

KIND(TimeObject, TimeObjects)
KIND(TriggerObject, TriggerObjects)
KIND(GateAccess, GateAccesses)
KIND(ServerAccess, ServerAccesses)
KIND(Token, Tokens)

}  // namespace pedflux
