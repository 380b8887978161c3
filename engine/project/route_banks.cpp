#include "engine/model/properties.h"
#include "engine/scene/banks.h"

#include <pedflux/scene.h>

#include <vector>

namespace pedflux {

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
