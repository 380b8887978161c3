#include "engine/model/document.h"
#include "engine/model/names.h"
#include "engine/model/properties.h"

#include <pedflux/exception.h>
#include <pedflux/objects.h>

#include <utility>

namespace pedflux {

using engine::get;
using engine::ObjectState;
using engine::set;

SimObject::SimObject(std::shared_ptr<ObjectState> state) : state_(std::move(state)) {}
SimObject::~SimObject() = default;

int SimObject::GetTypeId() { return static_cast<int>(state_->kind->type); }
GlobalId SimObject::GetId() { return state_->id; }

std::string SimObject::GetName() { return state_->name; }
void SimObject::SetName(std::string const& name) { engine::document_of(*state_).rename(*state_, name); }
bool SimObject::S_IsValidName(std::string const& name) { return engine::is_valid_name(name); }

Color SimObject::GetColor() { return get(*this, &ObjectState::color); }
void SimObject::SetColor(Color color) { set(*this, &ObjectState::color, color); }

bool SimObject::IsVisible() { return get(*this, &ObjectState::visible); }
void SimObject::SetVisible(bool visible) { set(*this, &ObjectState::visible, visible); }
void SimObject::Show() { SetVisible(true); }
void SimObject::Hide() { SetVisible(false); }

bool SimObject::IsEnabled() { return get(*this, &ObjectState::enabled); }
void SimObject::SetEnabled(bool enabled) { set(*this, &ObjectState::enabled, enabled); }
void SimObject::Enable() { SetEnabled(true); }
void SimObject::Disable() { SetEnabled(false); }

}  // namespace pedflux
