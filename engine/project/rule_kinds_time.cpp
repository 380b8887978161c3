#include "engine/behaviour/access_rule_states.h"
#include "engine/behaviour/time_reference.h"
#include "engine/behaviour/trigger_states.h"
#include "engine/project/kind_table.h"

namespace pedflux {

KIND(TimeObject, TimeObjects)
KIND(TriggerObject, TriggerObjects)
KIND(GateAccess, GateAccesses)
KIND(ServerAccess, ServerAccesses)
KIND(Token, Tokens)

}  // namespace pedflux
