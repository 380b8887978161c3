#include "engine/behaviour/area.h"

#include "engine/model/lists.h"
#include "engine/scene/scene_states.h"

namespace pedflux::engine {

namespace {

/// Whether a connection ends at two or more of the floors.
bool joins_two(SurfaceTable const& table, SurfaceIndex connection, std::vector<bool> const& floors) {
    std::optional<SurfaceIndex> first;
    for (auto const& [joining, floor] : table.joins) {
        if (joining != connection || !floors[floor]) continue;
        if (first && first != floor) return true;
        first = floor;
    }
    return false;
}

}  // namespace

std::vector<bool> surfaces_of(ZoneState const& zone, SurfaceTable const& table) {
    std::vector<bool> members;
    for (auto const& id : table.ids) members.push_back(lists(zone.base_members, id));
    if (zone.membership != ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS) return members;
    auto surfaces = members;
    for (auto const& [connection, floor] : table.joins) {
        surfaces[connection] = surfaces[connection] || joins_two(table, connection, members);
    }
    return surfaces;
}

}  // namespace pedflux::engine
