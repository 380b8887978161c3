#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"

#include <pedflux/tallies.h>

namespace pedflux {

PEDFLUX_TALLY_KINDS(OBJECT_KIND)

}  // namespace pedflux
