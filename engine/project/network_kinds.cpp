#include "engine/model/network_state.h"
#include "engine/project/kind_table.h"

#include <pedflux/networks.h>

namespace pedflux {

KIND(Network, Networks)

}  // namespace pedflux
