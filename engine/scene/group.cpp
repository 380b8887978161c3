#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/model/properties.h"
#include "engine/scene/group_states.h"

#include <pedflux/objects.h>

namespace pedflux {

using engine::Document;
using engine::get;
using engine::GroupState;
using engine::ObjectState;

namespace {

void set_each(Group& group, bool ObjectState::*property, bool value) {
    Document const& document = engine::document_of(engine::state_of<ObjectState>(group));
    for (auto const& item : group.GetItems()) {
        if (ObjectState* const object = document.find(item)) object->*property = value;
    }
}

}  // namespace

bool Group::HasItem(GlobalId const& item) { return engine::lists(get(*this, &GroupState::items), item); }
std::vector<GlobalId> Group::GetItems() { return get(*this, &GroupState::items); }

void Group::ShowItems() { set_each(*this, &ObjectState::visible, true); }
void Group::HideItems() { set_each(*this, &ObjectState::visible, false); }
void Group::EnableItems() { set_each(*this, &ObjectState::enabled, true); }
void Group::DisableItems() { set_each(*this, &ObjectState::enabled, false); }

}  // namespace pedflux
