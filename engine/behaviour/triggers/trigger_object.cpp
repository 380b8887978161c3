#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"

#include <pedflux/triggers.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace pedflux {
namespace engine {
namespace {

/// Throws Exception when a trigger leads to the object by the names in it, in the triggers that they name and so on.
void require_no_way_to(TriggerObjectState const& object, std::shared_ptr<Trigger> const& trigger) {
    std::vector<std::shared_ptr<Trigger>> pending{trigger};
    std::unordered_set<ObjectState const*> followed;
    while (!pending.empty()) {
        auto const next = std::move(pending.back());
        pending.pop_back();
        std::ranges::move(children_of(*next), std::back_inserter(pending));
        if (type_of(*next) != static_cast<int>(TriggerType::NAMED)) continue;
        auto const* const named =
            object.document->find<TriggerObjectState>(get(*next, &NamedTriggerState::trigger_object));
        if (named == &object) {
            Subject{owner_of(object), "trigger"}.refuse("one that does not lead back to the object itself",
                                                        "one that does by a NamedTrigger");
        }
        if (named != nullptr && followed.insert(named).second) pending.push_back(named->trigger);
    }
}

}  // namespace

void TriggerObjectState::check(TriggerObjectState const& self) { require_no_way_to(self, self.trigger); }

}  // namespace engine

std::shared_ptr<Trigger> TriggerObject::GetTrigger() {
    return engine::get_copy(*this, &engine::TriggerObjectState::trigger);
}
void TriggerObject::SetTrigger(std::shared_ptr<Trigger> const& trigger) {
    auto const& state = engine::state_of<engine::TriggerObjectState>(*this);
    if (trigger && state.document != nullptr) {
        engine::require_shallow(engine::node_of(*trigger));
        engine::require_no_way_to(state, trigger);
    }
    engine::set_copy(*this, &engine::TriggerObjectState::trigger, trigger);
}

}  // namespace pedflux
