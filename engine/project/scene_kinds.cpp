#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_table.h"
#include "engine/scene/group_states.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/server_states.h"

#include <pedflux/scene.h>
#include <pedflux/servers.h>
#include <pedflux/transform.h>

namespace pedflux {

KIND_WITH_MESH(Floor, Floors)
KIND_WITH_MESH(Portal, Portals)
KIND_WITH_MESH(Link, Links)
KIND_WITH_MESH(Stair, Stairs)
KIND_WITH_MESH(Ramp, Ramps)
KIND_WITH_MESH(Escalator, Escalators)
KIND_WITH_GEOMETRY(Path, Paths, PolylineGeometry)
KIND_WITH_MESH(Barrier, Barriers)
KIND_WITH_GEOMETRY(Server, Servers, PolylineGeometry)
KIND_WITH_MESH(Cordon, Cordons)
KIND_WITH_MESH(WaitSpace, WaitSpaces)
KIND_WITH_MESH(Volume, Volumes)
KIND_WITH(Zone, Zones, std::vector<GlobalId>, base_members)
KIND_WITH(Collection, Collections, std::vector<GlobalId>, items)
KIND(Perimeter, Perimeters)
KIND(RouteBank, RouteBanks)
KIND(Transform, Transforms)

std::shared_ptr<Server> Project::CreateServer(std::string const& name, std::vector<Vec3d> const& points) {
    return CreateServer(name, PolylineGeometry::Create(points));
}

}  // namespace pedflux
