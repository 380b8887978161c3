#include "engine/model/network_state.h"
#include "engine/project/kind_table.h"

#include <pedflux/networks.h>

namespace pedflux {

// The state has another name than the class, which the table's words would not find.
namespace engine {
template Kind const& kind_of<NetworkOfObjectsState>();
}
std::shared_ptr<Network> Project::CreateNetwork(std::string const& name) {
    return engine::create<engine::NetworkOfObjectsState>(*this, name);
}
LOOKUPS(Network, Network, Networks)

}  // namespace pedflux
