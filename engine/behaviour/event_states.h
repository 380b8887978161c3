#pragma once

#include "engine/behaviour/distribution_face.h"
#include "engine/behaviour/population.h"
#include "engine/model/enumerations.h"
#include "engine/model/state.h"

#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

// The states of the events that bring people: see engine/model/state.h for how a state lists its fields.
namespace pedflux::engine {

PEDFLUX_NAMES(EventColorSchemeType, {{EventColorSchemeType::EVENT_COLOR, "EVENT_COLOR"},
                                     {EventColorSchemeType::SPECIFIED, "SPECIFIED"},
                                     {EventColorSchemeType::LIGHTER, "LIGHTER"},
                                     {EventColorSchemeType::DARKER, "DARKER"}});

struct EventState : ObjectState {
    Population population;
    std::optional<GlobalId> profile;
    EventColorSchemeType color_scheme = EventColorSchemeType::EVENT_COLOR;
    Color specified_color;  ///< of the scheme SPECIFIED

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("population", self.population);
        field("profile", self.profile, refers_to_kind<ObjectType::PROFILE>("a profile"));
        field("colorScheme", self.color_scheme);
        field("specifiedColor", self.specified_color);
    }
    static void check(EventState const& self) { require_valid(self.population); }
};

/// The colour that the event's scheme gives to its agents.
Color agent_color_of(EventState const& event);

struct JourneyState : EventState {
    static constexpr ObjectType TYPE = ObjectType::JOURNEY;
    static constexpr std::string_view NAME = "Journey";
    using Face = Journey;
};

struct EvacuationState : EventState {
    static constexpr ObjectType TYPE = ObjectType::EVACUATION;
    static constexpr std::string_view NAME = "Evacuation";
    using Face = Evacuation;

    std::vector<GlobalId> zones;
    /// Seconds; replaced, never changed.
    std::shared_ptr<Distribution> pre_movement_wait = Distribution::CreateConstant(0);

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        EventState::fields(self, field);
        field("zones", self.zones, RefersTo{"a place where agents can be", Population::is_place});
        field("preMovementWaitDistribution", self.pre_movement_wait, Range{0, WITHOUT_END, "s"});
    }
};

}  // namespace pedflux::engine
