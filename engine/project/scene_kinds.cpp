#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"
#include "engine/scene/group_states.h"
#include "engine/scene/network_state.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/server_states.h"

#include <pedflux/networks.h>
#include <pedflux/scene.h>
#include <pedflux/servers.h>
#include <pedflux/transform.h>

namespace pedflux {

PEDFLUX_SCENE_KINDS(OBJECT_KIND)

std::shared_ptr<Server> Project::CreateServer(std::string const& name, std::vector<Vec3d> const& points) {
    return CreateServer(name, PolylineGeometry::Create(points));
}

}  // namespace pedflux
