#include "engine/base/checks.h"
#include "engine/base/list_checks.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/population/population_handle.h"
#include "engine/geometry/vector.h"
#include "engine/model/accessors.h"
#include "engine/model/document.h"
#include "engine/scene/scene_states.h"

#include <pedflux/events.h>

#include <numeric>

#include <fmt/format.h>

namespace pedflux {

using engine::BroadcastState;
using engine::CirculateState;
using engine::clear;
using engine::copy_of;
using engine::DispatchState;
using engine::EvacuationState;
using engine::EventState;
using engine::get;
using engine::get_copy;
using engine::has;
using engine::set;
using engine::set_copy;
using engine::state_of;

// The objects of the project keep copies of what is shared outside of it.

std::shared_ptr<PopulationSource> SinglePopulationEvent::GetPopulationSource() {
    return engine::make_source(get(*this, &EventState::population));
}
void SinglePopulationEvent::SetPopulationSource(std::shared_ptr<PopulationSource> const& source) {
    if (!source)
        engine::refuse(
            fmt::format("{}: the population source must not be empty", title_of(state_of<EventState>(*this))));
    set(*this, &EventState::population, engine::population_of(*source));
}

COPIED_PROPERTY_OF(SinglePopulationEvent, EventState, Trigger, StartTrigger, start_trigger)

GlobalId SinglePopulationEvent::GetProfile() { return state_of<EventState>(*this).profile.value_or(GlobalId::INVALID); }
void SinglePopulationEvent::SetProfile(GlobalId const& profile) {
    set(*this, &EventState::profile, profile.IsValid() ? std::optional(profile) : std::nullopt);
}

ACTION_PROPERTY_OF(SinglePopulationEvent, EventState, InitialAction, initial_action)

namespace {

void set_scheme(SinglePopulationEvent& event, EventColorSchemeType scheme) {
    set(event, &EventState::color_rules, std::vector<engine::ColorRule>());
    set(event, &EventState::color_scheme, scheme);
}

engine::ColorRule const& rule_at(SinglePopulationEvent& event, int index) {
    auto const& rules = get(event, &EventState::color_rules);
    if (index < 0 || static_cast<std::size_t>(index) >= rules.size()) {
        engine::refuse(fmt::format("{}: there is no colour rule {}, it has {}", title_of(state_of<EventState>(event)),
                                   index, rules.size()));
    }
    return rules[static_cast<std::size_t>(index)];
}

}  // namespace

EventColorSchemeType SinglePopulationEvent::GetColorSchemeType() { return get(*this, &EventState::color_scheme); }
Color SinglePopulationEvent::GetColorSchemeColor() { return engine::agent_color_of(state_of<EventState>(*this)); }
void SinglePopulationEvent::SetColorSchemeEventColor() { set_scheme(*this, EventColorSchemeType::EVENT_COLOR); }
void SinglePopulationEvent::SetColorSchemeSpecified(Color color) {
    set(*this, &EventState::specified_color, color);
    set_scheme(*this, EventColorSchemeType::SPECIFIED);
}
void SinglePopulationEvent::SetColorSchemeLighter() { set_scheme(*this, EventColorSchemeType::LIGHTER); }
void SinglePopulationEvent::SetColorSchemeDarker() { set_scheme(*this, EventColorSchemeType::DARKER); }

void SinglePopulationEvent::SetColorSchemeRules(std::vector<std::shared_ptr<AgentTest>> const& tests,
                                                std::vector<Color> const& colors, Color fallback) {
    engine::require_equal_lengths(fmt::format("{}: tests", title_of(state_of<EventState>(*this))), tests.size(),
                                  "colours", colors.size());
    std::vector<engine::ColorRule> rules;
    for (std::size_t index = 0; index < tests.size(); ++index) rules.push_back({copy_of(tests[index]), colors[index]});
    set(*this, &EventState::color_rules, std::move(rules));
    set(*this, &EventState::fallback_color, fallback);
    set(*this, &EventState::color_scheme, EventColorSchemeType::RULES);
}
int SinglePopulationEvent::GetColorSchemeRuleCount() {
    return static_cast<int>(get(*this, &EventState::color_rules).size());
}
std::shared_ptr<AgentTest> SinglePopulationEvent::GetColorSchemeRuleAgentTest(int index) {
    return copy_of(rule_at(*this, index).test);
}
Color SinglePopulationEvent::GetColorSchemeRuleColor(int index) { return rule_at(*this, index).color; }

std::vector<GlobalId> Evacuation::GetZones() { return get(*this, &EvacuationState::zones); }
void Evacuation::SetZones(std::vector<GlobalId> const& zones) { set(*this, &EvacuationState::zones, zones); }
void Evacuation::ClearZones() { SetZones({}); }

COPIED_PROPERTY(Evacuation, Distribution, PreMovementWaitDistribution, pre_movement_wait)
COPIED_PROPERTY(Evacuation, WaitStyle, PreMovementWaitStyle, pre_movement_wait_style)

std::vector<GlobalId> Circulate::GetCirculatePortals() { return get(*this, &CirculateState::portals); }
void Circulate::SetCirculatePortals(std::vector<GlobalId> const& portals) {
    set(*this, &CirculateState::portals, portals);
}
CirculationCommand Circulate::GetCirculationCommand() {
    return static_cast<CirculationCommand>(get(*this, &CirculateState::circulation).index());
}

namespace {

void set_circulation(Circulate& event, engine::Circulation circulation) {
    set(event, &CirculateState::circulation, std::move(circulation));
}

}  // namespace

void Circulate::CirculateEntireSimulation() { set_circulation(*this, engine::EntireSimulation{}); }
void Circulate::CirculateForCount(std::shared_ptr<Distribution> const& count) {
    set_circulation(*this, engine::ForCount{copy_of(count)});
}
void Circulate::CirculateForDuration(std::shared_ptr<Distribution> const& duration) {
    set_circulation(*this, engine::ForDuration{copy_of(duration)});
}
void Circulate::CirculateForCountOrDuration(std::shared_ptr<Distribution> const& count,
                                            std::shared_ptr<Distribution> const& duration, bool untilBoth) {
    set_circulation(*this, engine::ForCountOrDuration{{{copy_of(count)}, {copy_of(duration)}, untilBoth}});
}
void Circulate::CirculateUntilTime(std::shared_ptr<TimeReference> time) {
    set_circulation(*this, engine::UntilTime{copy_of(time)});
}
void Circulate::CirculateUntilTimeOrCount(std::shared_ptr<TimeReference> time,
                                          std::shared_ptr<Distribution> const& count, bool untilBoth) {
    set_circulation(*this, engine::UntilTimeOrCount{{{copy_of(time)}, {copy_of(count)}, untilBoth}});
}

COPIED_PROPERTY(Broadcast, TriggerRange, TriggerRange, trigger_range)
COPIED_PROPERTY(Broadcast, AgentAction, AgentAction, action)
COPIED_PROPERTY(Broadcast, AgentTest, AgentTest, test)
bool Broadcast::HasAgentTest() { return has(*this, &BroadcastState::test); }
void Broadcast::ClearAgentTest() { clear(*this, &BroadcastState::test); }
GlobalId Broadcast::GetZone() { return get(*this, &BroadcastState::zone); }
void Broadcast::SetZone(GlobalId const& zone) { set(*this, &BroadcastState::zone, zone); }
bool Broadcast::HasZone() { return has(*this, &BroadcastState::zone); }
void Broadcast::ClearZone() { clear(*this, &BroadcastState::zone); }

void Dispatch::SetSource(GlobalId const& source) { SetSources({source}); }
void Dispatch::SetSources(std::vector<GlobalId> const& sources) { set(*this, &DispatchState::sources, sources); }
void Dispatch::SetSink(GlobalId const& sink) { SetSinks({sink}); }
void Dispatch::SetSinks(std::vector<GlobalId> const& sinks) { set(*this, &DispatchState::sinks, sinks); }
void Dispatch::SetPosition(Vec3d const& position) { set(*this, &DispatchState::position, position); }
void Dispatch::Reposition() {
    auto& state = state_of<DispatchState>(*this);
    if (auto const middle = engine::middle_of_stations(document_of(state), state)) state.position = *middle;
}

namespace engine {
namespace {

Color mixed(Color color, Color other) {
    return {std::midpoint(color.GetRed(), other.GetRed()), std::midpoint(color.GetGreen(), other.GetGreen()),
            std::midpoint(color.GetBlue(), other.GetBlue()), color.GetAlpha()};
}

/// The centre of an object's shape, or of the shapes of a zone's members.
void append_centres(Document const& document, GlobalId const& id, std::vector<Vector>& centres) {
    auto const* const object = document.find(id);
    if (auto const* const zone = dynamic_cast<ZoneState const*>(object)) {
        for (auto const& member : zone->base_members) append_centres(document, member, centres);
    } else if (auto const* const scene = dynamic_cast<SceneState const*>(object); scene && scene->geometry) {
        centres.push_back(vector_of(scene->geometry->GetBoundingBox().GetCenter()));
    }
}

}  // namespace

std::optional<Vec3d> middle_of_stations(Document const& document, DispatchState const& dispatch) {
    std::vector<Vector> centres;
    for (auto const* const stations : {&dispatch.sources, &dispatch.sinks}) {
        for (auto const& station : *stations) append_centres(document, station, centres);
    }
    if (centres.empty()) return std::nullopt;
    auto const sum = std::accumulate(centres.begin(), centres.end(), Vector{});
    return value_of(1.0 / static_cast<double>(centres.size()) * sum);
}

Color scheme_color(EventColorSchemeType scheme, Color own, Color given) {
    switch (scheme) {
        case EventColorSchemeType::EVENT_COLOR:
            return own;
        case EventColorSchemeType::SPECIFIED:
        case EventColorSchemeType::RULES:
            return given;
        case EventColorSchemeType::LIGHTER:
            return mixed(own, Color::WHITE);
        case EventColorSchemeType::DARKER:
            return mixed(own, Color::BLACK);
    }
    return own;
}

Color agent_color_of(EventState const& event) {
    bool const by_rules = event.color_scheme == EventColorSchemeType::RULES;
    return scheme_color(event.color_scheme, event.color, by_rules ? event.fallback_color : event.specified_color);
}

}  // namespace engine
}  // namespace pedflux
