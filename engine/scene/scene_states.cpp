#include "engine/scene/scene_states.h"

#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/scene/banks.h"
#include "engine/scene/group_states.h"

#include <fmt/format.h>

namespace pedflux::engine {

RefersTo perimeters() { return refers_to<PerimeterState>("a perimeter"); }

void ConnectionState::check(ConnectionState const& self) {
    if (self.priority && self.priority->direction == ConnectionObjectDirection::BOTH_WAYS) {
        Subject{owner_of(self), "priority.direction"}.refuse("one direction", "both ways");
    }
}

void require_whole(Subject const& subject, QueueSpacing const& spacing) {
    bool const by_distance = spacing.type != QueueSpacingType::PERSONAL_SPACE;
    bool const by_personal_space = spacing.type != QueueSpacingType::DISTANCE;
    auto const require_part = [&](std::string const& part, bool is_given, bool is_needed) {
        if (is_given == is_needed) return;
        Subject{subject.owner, subject.property + "." + part}.refuse(
            fmt::format("{} for spacing by {}", is_needed ? "given" : "empty", name_of_value(spacing.type)),
            is_given ? "given" : "empty");
    };
    require_part("distance", spacing.distance != nullptr, by_distance);
    require_part("personalSpaceSelection", spacing.personal_space.has_value(), by_personal_space);
}

void PathState::check(PathState const& self) {
    if (self.queue_spacing) require_whole({owner_of(self), "localAgentQueueSpacing"}, *self.queue_spacing);
}

void WaitSpaceState::check(WaitSpaceState const& self) {
    if (!self.wait_style) return;
    auto const type = self.wait_style->GetWaitStyleTypeId();
    if (type != WaitStyleTypeId::STAND_STILL && type != WaitStyleTypeId::SPREAD_OUT) {
        Subject{owner_of(self), "waitStyle"}.refuse("a StandStillWaitStyle or SpreadOutWaitStyle",
                                                    "one that leads to wait spaces");
    }
}

void CollectionState::check(CollectionState const& self) {
    if (self.weights && self.weights->size() != self.items.size()) {
        Subject{owner_of(self), "weights"}.refuse(
            fmt::format("a list of {} weights, one for each item", self.items.size()),
            fmt::format("one of {}", self.weights->size()));
    }
}

void RouteBankState::check(RouteBankState const& self) { require_unshared_items(self, "connections"); }

}  // namespace pedflux::engine
