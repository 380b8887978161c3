#include "engine/project/route_banks.h"

#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/model/properties.h"

#include <pedflux/scene.h>

#include <vector>

namespace pedflux {

namespace engine {

RouteBankState* bank_of(ConnectionState const& connection) {
    if (connection.document == nullptr) return nullptr;
    for (auto* const bank : connection.document->objects<RouteBankState>()) {
        if (lists(bank->items, connection.id)) return bank;
    }
    return nullptr;
}

void claim_items(RouteBankState const& bank) {
    for (auto* const other : bank.document->objects<RouteBankState>()) {
        if (other == &bank) continue;
        std::erase_if(other->items, [&](GlobalId const& item) { return lists(bank.items, item); });
    }
}

}  // namespace engine

using engine::RouteBankState;

void RouteBank::SetItems(std::vector<GlobalId> const& items) {
    engine::set(*this, &RouteBankState::items, items);
    engine::claim_items(engine::state_of<RouteBankState>(*this));
}

void RouteBank::AddItems(std::vector<GlobalId> const& items) {
    engine::add_to_list(*this, &RouteBankState::items, items);
    engine::claim_items(engine::state_of<RouteBankState>(*this));
}

void RouteBank::AddItem(GlobalId const& item) { AddItems({item}); }

}  // namespace pedflux
