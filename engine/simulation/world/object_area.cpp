#include "engine/simulation/world/object_area.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"

#include <fmt/format.h>

namespace pedflux::engine {

Area object_area_of(Document const& document, World& world, GlobalId const& id) {
    auto const* const object = document.find(id);
    if (object == nullptr) refuse(fmt::format("'{}' is no object of the project", GlobalId(id).GetString()));
    Area area{.surfaces = std::vector<bool>(world.plan.surfaces.size())};
    if (!object->enabled) return area;
    if (object->kind->type == ObjectType::VOLUME) {
        area.volume = volume_number(world.volumes, id);
        return area;
    }
    auto const& place = world.places[world.places.of(id)];
    if (place.is_portal()) area.portal = place.doorway;
    for (auto const region : place.regions) area.surfaces[region] = true;
    return area;
}

}  // namespace pedflux::engine
