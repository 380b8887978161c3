#include "engine/analysis/table_evaluation.h"
#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/scene/group_states.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

bool is_used_as(Document const& document, GlobalId const& id, Role role) {
    return std::ranges::any_of(document.references_to(id), [&](Reference const& use) { return use.role == role; });
}

}  // namespace

std::vector<GlobalId> portals_of(Document const& document, BetweenPortals const& query) {
    std::vector<PortalState const*> portals;
    for (auto const* const portal : document.objects<PortalState>()) {
        if (!query.portals || lists(*query.portals, portal->id)) portals.push_back(portal);
    }
    auto const place_in_list = [&](PortalState const* portal) {
        return std::ranges::find_if(*query.portals, [&](GlobalId const& id) { return id.InternalEquals(portal->id); });
    };
    std::ranges::sort(portals, [&](PortalState const* a, PortalState const* b) {
        return query.sorted || !query.portals ? a->name < b->name : place_in_list(a) < place_in_list(b);
    });
    std::vector<GlobalId> ids;
    for (auto const* const portal : portals) ids.push_back(portal->id);
    return ids;
}

std::vector<GlobalId> portals_used_as(Document const& document, BetweenPortals const& query, Role role) {
    auto portals = portals_of(document, query);
    auto const is_unused = [&](GlobalId const& portal) {
        if (is_used_as(document, portal, role)) return false;
        auto const collections = document.objects<CollectionState>();
        return std::ranges::none_of(collections, [&](CollectionState const* collection) {
            return lists(collection->items, portal) && is_used_as(document, collection->id, role);
        });
    };
    std::erase_if(portals, is_unused);
    return portals;
}

}  // namespace pedflux::engine
