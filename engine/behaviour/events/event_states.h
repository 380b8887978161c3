#pragma once

#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/population/population.h"
#include "engine/model/enumerations.h"
#include "engine/model/state.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/triggers.h>
#include <pedflux/vectors.h>
#include <pedflux/wait_styles.h>

#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

// The states of events: see engine/model/state.h for how a state lists its fields.
namespace pedflux::engine {

PEDFLUX_NAMES(EventColorSchemeType, {{EventColorSchemeType::EVENT_COLOR, "EVENT_COLOR"},
                                     {EventColorSchemeType::SPECIFIED, "SPECIFIED"},
                                     {EventColorSchemeType::LIGHTER, "LIGHTER"},
                                     {EventColorSchemeType::DARKER, "DARKER"},
                                     {EventColorSchemeType::RULES, "RULES"}});

/// The colour of agents that pass `test`.
struct ColorRule {
    std::shared_ptr<AgentTest> test;
    Color color;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("agentTest", self.test, must_be_given);
        field("color", self.color);
    }
};

struct EventState : ObjectState {
    Population population;
    // Nodes, times and distributions of events are replaced, never changed.
    std::shared_ptr<Trigger> start_trigger = std::make_shared<SimulationStartTrigger>(0);
    std::optional<GlobalId> profile;
    std::shared_ptr<AgentAction> initial_action;  ///< empty: none
    EventColorSchemeType color_scheme = EventColorSchemeType::EVENT_COLOR;
    Color specified_color;               ///< of the scheme SPECIFIED
    std::vector<ColorRule> color_rules;  ///< of the scheme RULES
    Color fallback_color;                ///< of the scheme RULES

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("population", self.population);
        field("startTrigger", self.start_trigger, must_be_given);
        field("profile", self.profile, A_PROFILE);
        field("initialAction", self.initial_action);
        field("colorScheme", self.color_scheme);
        field("specifiedColor", self.specified_color);
        field("colorRules", self.color_rules);
        field("fallbackColor", self.fallback_color);
    }
    static void check(EventState const& self) { require_valid(self.population); }
};

/// The colour that a scheme gives to agents.
/// @param own of what brings them
/// @param given the specified colour; of rules, that of those for whom no test is true
Color scheme_color(EventColorSchemeType scheme, Color own, Color given);

/// The colour that the event's scheme gives to its agents; of rules, to those for whom no test is true.
Color agent_color_of(EventState const& event);

struct JourneyState : EventState {
    static constexpr ObjectType TYPE = ObjectType::JOURNEY;
    static constexpr std::string_view NAME = "Journey";
    using Handle = Journey;
};

struct EvacuationState : EventState {
    static constexpr ObjectType TYPE = ObjectType::EVACUATION;
    static constexpr std::string_view NAME = "Evacuation";
    using Handle = Evacuation;

    std::vector<GlobalId> zones;
    std::shared_ptr<Distribution> pre_movement_wait = Distribution::CreateConstant(0);  ///< seconds
    std::shared_ptr<WaitStyle> pre_movement_wait_style = WaitStyle::StandStill();

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        EventState::fields(self, field);
        field("zones", self.zones, A_PLACE);
        field("preMovementWaitDistribution", self.pre_movement_wait, RequiredRange{{0, unlimited, "s"}});
        field("preMovementWaitStyle", self.pre_movement_wait_style, must_be_given);
    }
};

// How long people circulate.

struct EntireSimulation {
    static constexpr std::string_view NAME = "EntireSimulation";
    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct ForCount {
    static constexpr std::string_view NAME = "ForCount";
    std::shared_ptr<Distribution> count;  ///< portals
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("count", self.count, RequiredRange{{0, std::numeric_limits<int>::max()}});
    }
};

struct ForDuration {
    static constexpr std::string_view NAME = "ForDuration";
    std::shared_ptr<Distribution> duration;  ///< seconds
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("duration", self.duration, RequiredRange{{0, unlimited, "s"}});
    }
};

struct UntilTime {
    static constexpr std::string_view NAME = "UntilTime";
    std::shared_ptr<TimeReference> time;
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("time", self.time, must_be_given);
    }
};

/// Until the first of two ends, or until both.
template <class First, class Second>
struct TwoEnds : First, Second {
    bool until_both = false;
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        First::fields(self, field);
        Second::fields(self, field);
        field("untilBoth", self.until_both);
    }
};
struct ForCountOrDuration : TwoEnds<ForCount, ForDuration> {
    static constexpr std::string_view NAME = "ForCountOrDuration";
};
struct UntilTimeOrCount : TwoEnds<UntilTime, ForCount> {
    static constexpr std::string_view NAME = "UntilTimeOrCount";
};

/// The order of the kinds is that of `CirculationCommand`.
using Circulation =
    std::variant<EntireSimulation, ForCount, ForDuration, ForCountOrDuration, UntilTime, UntilTimeOrCount>;

struct CirculateState : EventState {
    static constexpr ObjectType TYPE = ObjectType::CIRCULATE;
    static constexpr std::string_view NAME = "Circulate";
    using Handle = Circulate;

    std::vector<GlobalId> portals;
    Circulation circulation;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        EventState::fields(self, field);
        field("circulatePortals", self.portals, A_PORTAL);
        field("circulation", self.circulation);
    }
};

struct BroadcastState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::BROADCAST;
    static constexpr std::string_view NAME = "Broadcast";
    using Handle = Broadcast;

    std::shared_ptr<TriggerRange> trigger_range = std::make_shared<AllSimulationTriggerRange>();
    std::shared_ptr<AgentAction> action = std::make_shared<DoNothingAction>();
    std::shared_ptr<AgentTest> test;  ///< empty: everybody
    std::optional<GlobalId> zone;     ///< none: everywhere

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("triggerRange", self.trigger_range, must_be_given);
        field("agentAction", self.action, must_be_given);
        field("agentTest", self.test);
        field("zone", self.zone, refers_to_kind<ObjectType::ZONE>("a zone"));
    }
};

struct DispatchState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::DISPATCH;
    static constexpr std::string_view NAME = "Dispatch";
    using Handle = Dispatch;

    std::vector<GlobalId> sources;
    std::vector<GlobalId> sinks;
    Vec3d position;  ///< metres

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr RefersTo STATION{"a server, portal, floor, connection or zone", [](ObjectState const& object) {
                                       return object.kind->type == ObjectType::SERVER || Population::is_place(object);
                                   }};
        ObjectState::fields(self, field);
        field("sources", self.sources, STATION);
        field("sinks", self.sinks, STATION);
        field("position", self.position);
    }
};

/// The mean of the centres of all sources and sinks, a zone's members for the zone; none when nothing has a place.
std::optional<Vec3d> middle_of_stations(Document const& document, DispatchState const& dispatch);

}  // namespace pedflux::engine
