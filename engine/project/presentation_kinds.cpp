#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"
#include "engine/scene/presentation_states.h"

#include <pedflux/presentation.h>

namespace pedflux {

PEDFLUX_PRESENTATION_KINDS(OBJECT_KIND)

}  // namespace pedflux
