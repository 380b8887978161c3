#include "engine/analysis/places.h"

#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/scene_states.h"

namespace pedflux::engine {

RunPlace place_of(Document const& document, RunReader const& reader, GlobalId const& id) {
    auto const* const object = document.find(id);
    auto const* const zone = dynamic_cast<ZoneState const*>(object);
    if (!zone && !dynamic_cast<NetworkObjectState const*>(object)) {
        refuse((object ? title_of(*object) : "'" + GlobalId(id).GetString() + "'") +
               " is not a place that a stored run tells of: a floor, connection, zone or portal");
    }
    if (zone && zone->membership == ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS) {
        refuse(title_of(*zone) + " holds the connections between its members, of which a stored run does not tell; " +
               "queries take zones of base members alone");
    }
    RunPlace place{id, object->name, std::vector(reader.surfaces().size(), false)};
    auto const add = [&](GlobalId const& part) {
        if (auto const surface = reader.surface_of(part)) place.surfaces[*surface] = true;
    };
    add(id);
    if (zone) {
        for (auto const& member : zone->base_members) add(member);
    }
    return place;
}

RunPlace everywhere(RunReader const& reader) { return {{}, "All", std::vector(reader.surfaces().size(), true)}; }

}  // namespace pedflux::engine
