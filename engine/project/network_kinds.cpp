#include "engine/project/kind_table.h"
#include "engine/scene/network_state.h"

#include <pedflux/networks.h>

namespace pedflux {

KIND(Network, Networks)

}  // namespace pedflux
