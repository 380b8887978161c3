#include "engine/behaviour/event_states.h"
#include "engine/behaviour/population_face.h"
#include "engine/geometry/checks.h"
#include "engine/model/kind.h"
#include "engine/model/properties.h"

#include <pedflux/events.h>

#include <numeric>

namespace pedflux {

using engine::EvacuationState;
using engine::EventState;
using engine::get;
using engine::set;
using engine::state_of;

std::shared_ptr<PopulationSource> SinglePopulationEvent::GetPopulationSource() {
    return engine::make_source(get(*this, &EventState::population));
}
void SinglePopulationEvent::SetPopulationSource(std::shared_ptr<PopulationSource> const& source) {
    if (!source) engine::refuse(title_of(state_of<EventState>(*this)) + ": the population source must not be empty");
    set(*this, &EventState::population, engine::population_of(*source));
}

GlobalId SinglePopulationEvent::GetProfile() { return state_of<EventState>(*this).profile.value_or(GlobalId::INVALID); }
void SinglePopulationEvent::SetProfile(GlobalId const& profile) {
    set(*this, &EventState::profile, profile.IsValid() ? std::optional(profile) : std::nullopt);
}

EventColorSchemeType SinglePopulationEvent::GetColorSchemeType() { return get(*this, &EventState::color_scheme); }
Color SinglePopulationEvent::GetColorSchemeColor() { return engine::agent_color_of(state_of<EventState>(*this)); }
void SinglePopulationEvent::SetColorSchemeEventColor() {
    set(*this, &EventState::color_scheme, EventColorSchemeType::EVENT_COLOR);
}
void SinglePopulationEvent::SetColorSchemeSpecified(Color color) {
    set(*this, &EventState::specified_color, color);
    set(*this, &EventState::color_scheme, EventColorSchemeType::SPECIFIED);
}
void SinglePopulationEvent::SetColorSchemeLighter() {
    set(*this, &EventState::color_scheme, EventColorSchemeType::LIGHTER);
}
void SinglePopulationEvent::SetColorSchemeDarker() {
    set(*this, &EventState::color_scheme, EventColorSchemeType::DARKER);
}

std::vector<GlobalId> Evacuation::GetZones() { return get(*this, &EvacuationState::zones); }
void Evacuation::SetZones(std::vector<GlobalId> const& zones) { set(*this, &EvacuationState::zones, zones); }
void Evacuation::ClearZones() { SetZones({}); }

std::shared_ptr<Distribution> Evacuation::GetPreMovementWaitDistribution() {
    return engine::get_copy(*this, &EvacuationState::pre_movement_wait);
}
void Evacuation::SetPreMovementWaitDistribution(std::shared_ptr<Distribution> const& wait) {
    engine::set_copy(*this, &EvacuationState::pre_movement_wait, wait);
}

namespace engine {
namespace {

Color mixed(Color color, Color other) {
    return {std::midpoint(color.GetRed(), other.GetRed()), std::midpoint(color.GetGreen(), other.GetGreen()),
            std::midpoint(color.GetBlue(), other.GetBlue()), color.GetAlpha()};
}

}  // namespace

Color agent_color_of(EventState const& event) {
    switch (event.color_scheme) {
        case EventColorSchemeType::EVENT_COLOR:
            return event.color;
        case EventColorSchemeType::SPECIFIED:
            return event.specified_color;
        case EventColorSchemeType::LIGHTER:
            return mixed(event.color, Color::WHITE);
        case EventColorSchemeType::DARKER:
            return mixed(event.color, Color::BLACK);
    }
    return event.color;
}

}  // namespace engine
}  // namespace pedflux
