#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/project/kind_table.h"

#include <pedflux/tallies.h>

namespace pedflux {

KIND(TallyChange, TallyChanges)
KIND(TallyObject, TallyObjects)

}  // namespace pedflux
