#include "engine/analysis/places.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/scene/scene_states.h"

#include <algorithm>
#include <map>
#include <set>

namespace pedflux::engine {

namespace {

/// The connections that join at least two of the place's floors.
void add_connections(RunPlace& place, RunReader const& reader) {
    std::map<std::uint16_t, std::set<std::uint16_t>> joined;
    for (auto const& [connection, floor] : reader.project().joins) {
        if (place.has(floor)) joined[connection].insert(floor);
    }
    for (auto const& [connection, floors] : joined) {
        if (floors.size() >= 2) place.surfaces[connection] = true;
    }
}

/// Whether somebody came from the object or went to it, as the run tells.
bool is_used(RunReader const& reader, GlobalId const& id) {
    return std::ranges::any_of(reader.agents(), [&](AgentRecord const& person) {
        return person.origin.InternalEquals(id) || person.destination.InternalEquals(id);
    });
}

}  // namespace

RunPlace place_of(Document const& document, RunReader const& reader, GlobalId const& id) {
    auto const* const object = document.find(id);
    auto const surface_there = reader.surface_of(id);
    if (!object && (surface_there || is_used(reader, id))) {
        std::string const name = surface_there ? reader.surfaces()[*surface_there].name : GlobalId(id).GetString();
        RunPlace place{id, name, std::vector(reader.surfaces().size(), false)};
        if (surface_there) place.surfaces[*surface_there] = true;
        return place;
    }
    auto const* const zone = dynamic_cast<ZoneState const*>(object);
    if (!zone && !dynamic_cast<NetworkObjectState const*>(object)) {
        refuse((object ? title_of(*object) : "'" + GlobalId(id).GetString() + "'") +
               " is not a place that a stored run tells of: a floor, connection, zone or portal");
    }
    bool const with_connections = zone && zone->membership == ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS;
    if (with_connections) require_doings(reader, "which floors connections join, as " + title_of(*zone) + " needs");
    RunPlace place{id, object->name, std::vector(reader.surfaces().size(), false)};
    auto const add = [&](GlobalId const& part) {
        if (auto const surface = reader.surface_of(part)) place.surfaces[*surface] = true;
    };
    add(id);
    if (zone) {
        for (auto const& member : zone->base_members) add(member);
    }
    if (with_connections) add_connections(place, reader);
    return place;
}

RunPlace everywhere(RunReader const& reader) { return {{}, "All", std::vector(reader.surfaces().size(), true)}; }

}  // namespace pedflux::engine
