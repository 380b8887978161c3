#include "engine/model/scene_states.h"

#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/model/group_states.h"
#include "engine/model/lists.h"

namespace pedflux::engine {

RefersTo perimeters() { return refers_to<PerimeterState>("a perimeter"); }

void ConnectionState::check(ConnectionState const& self) {
    if (self.priority && self.priority->direction == ConnectionObjectDirection::BOTH_WAYS) {
        Subject{owner_of(self), "priority.direction"}.refuse("one direction", "both ways");
    }
}

void CollectionState::check(CollectionState const& self) {
    if (self.weights && self.weights->size() != self.items.size()) {
        Subject{owner_of(self), "weights"}.refuse(
            "a list of " + std::to_string(self.items.size()) + " weights, one for each item",
            "one of " + std::to_string(self.weights->size()));
    }
}

void RouteBankState::check(RouteBankState const& self) {
    for (auto const* const other : std::as_const(*self.document).objects<RouteBankState>()) {
        if (other == &self) return;  // those that follow check against this one
        for (GlobalId item : self.items) {
            if (lists(other->items, item)) {
                Subject{owner_of(self), "items"}.refuse("connections that are in no other bank",
                                                        "one with " + item.GetString() + " of " + title_of(*other));
            }
        }
    }
}

}  // namespace pedflux::engine
