#include "engine/analysis/places.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/scene/scene_states.h"

namespace pedflux::engine {

RunPlaces::RunPlaces(Document const& document, RunReader const& reader)
    : document_(document), reader_(reader), connections_(reader.surfaces().size()) {
    for (SurfaceIndex i = 0; i < reader.surfaces().size(); ++i) {
        auto const& id = reader.surfaces()[i].id;
        surfaces_.ids.push_back(id);
        connections_[i] = dynamic_cast<ConnectionState const*>(document.find(id)) != nullptr;
    }
    for (auto const& [connection, floor] : reader.project().joins) {
        surfaces_.joins.emplace_back(connection, floor);
        connections_[connection] = true;
    }
    for (auto const& person : reader.agents()) {
        for (auto const& id : {person.origin, person.destination}) {
            if (GlobalId(id).IsValid()) portals_.emplace(id, static_cast<std::uint32_t>(portals_.size()));
        }
    }
}

std::optional<std::uint32_t> RunPlaces::portal(GlobalId const& id) const {
    auto const found = portals_.find(id);
    return found == portals_.end() ? std::nullopt : std::optional(found->second);
}

RunPlace RunPlaces::operator[](GlobalId const& id) const {
    auto const* const object = document_.find(id);
    auto const surface = reader_.surface_of(id);
    RunPlace place{object ? object->name : GlobalId(id).GetString(), {}};
    place.area.surfaces.resize(connections_.size());
    if (surface) {
        if (!object) place.name = reader_.surfaces()[*surface].name;
        place.area.surfaces[*surface] = true;
        return place;
    }
    if (!object && portal(id)) {
        place.area.portal = portal(id);
        return place;
    }
    auto const* const zone = dynamic_cast<ZoneState const*>(object);
    if (!zone && !dynamic_cast<NetworkObjectState const*>(object)) {
        refuse((object ? title_of(*object) : "'" + place.name + "'") +
               " is not a place that a stored run tells of: a floor, connection, zone or portal");
    }
    if (object->kind->type == ObjectType::PORTAL) place.area.portal = portal(id);
    if (!zone || !zone->enabled) return place;
    if (zone->membership == ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS) {
        require_doings(reader_, "which floors connections join, as " + title_of(*zone) + " needs");
    }
    place.area.surfaces = surfaces_of(*zone, surfaces_);
    return place;
}

RunPlace RunPlaces::everywhere() const { return {"All", {.surfaces = std::vector(connections_.size(), true)}}; }

}  // namespace pedflux::engine
