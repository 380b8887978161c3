#pragma once

#include "engine/base/checks.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/population/trip.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"

#include <pedflux/agent_filters.h>
#include <pedflux/transitions.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The states of agent filters: see engine/model/node.h.
namespace pedflux::engine {

PEDFLUX_NAMES(AgentActivity, {{AgentActivity::STANDING, "STANDING"},
                              {AgentActivity::WALKING, "WALKING"},
                              {AgentActivity::WAITING, "WAITING"},
                              {AgentActivity::QUEUING, "QUEUING"},
                              {AgentActivity::SERVED, "SERVED"},
                              {AgentActivity::EVACUATING, "EVACUATING"},
                              {AgentActivity::RIDING, "RIDING"}});
PEDFLUX_NAMES(AgentStateAtSimulationEnd, {{AgentStateAtSimulationEnd::EXITED, "EXITED"},
                                          {AgentStateAtSimulationEnd::INSIDE, "INSIDE"},
                                          {AgentStateAtSimulationEnd::FAILED, "FAILED"}});
PEDFLUX_NAMES(BooleanOperator, {{BooleanOperator::AND, "AND"}, {BooleanOperator::OR, "OR"}});

/// The state of a filter by one value: its kind, the type of the value, its name in files, and its rule if it has one.
#define FILTER_BY(Class, KIND, Value, name, ...)                       \
    struct Class##State : NodeState {                                  \
        static constexpr AgentFilterType TYPE = AgentFilterType::KIND; \
        static constexpr std::string_view NAME = #Class;               \
        using Handle = Class;                                          \
                                                                       \
        Value value{};                                                 \
                                                                       \
        template <class Self, class Field>                             \
        static void fields(Self& self, Field&& field) {                \
            field(name, self.value __VA_OPT__(, ) __VA_ARGS__);        \
        }                                                              \
    };

FILTER_BY(ActivityFilter, ACTIVITY, AgentActivity, "agentActivity")
FILTER_BY(AtServerFilter, AT_SERVER, GlobalId, "server", A_SERVER)
FILTER_BY(AtTransitionFilter, AT_TRANSITION, std::shared_ptr<Transition>, "transition", must_be_given)
FILTER_BY(CreatedByFilter, CREATED_BY, GlobalId, "event", AN_EVENT_WITH_PEOPLE)
FILTER_BY(EndStateFilter, END_STATE, AgentStateAtSimulationEnd, "agentStateAtSimulationEnd")
FILTER_BY(EnteredAtFilter, ENTERED_AT, GlobalId, "object", A_PLACE)
FILTER_BY(ExitedAtFilter, EXITED_AT, GlobalId, "object", A_PLACE)
FILTER_BY(InAreaFilter, IN_AREA, GlobalId, "area", AN_AREA)
FILTER_BY(InTripFilter, IN_TRIP, std::shared_ptr<Trip>, "trip", must_be_given)
FILTER_BY(NamedFilter, NAMED, GlobalId, "agentFilterObject", A_FILTER_OBJECT)
FILTER_BY(ProfileFilter, PROFILE, GlobalId, "profile", A_PROFILE)
FILTER_BY(TokenFilter, TOKEN, GlobalId, "token", A_TOKEN)
FILTER_BY(NotFilter, NOT, std::shared_ptr<AgentFilter>, "negatedFilter", must_be_given)
FILTER_BY(IsEverFilter, IS_EVER, std::shared_ptr<AgentFilter>, "isEverFilter", must_be_given)
#undef FILTER_BY

struct AllAgentsFilterState : NodeState {
    static constexpr AgentFilterType TYPE = AgentFilterType::ALL_AGENTS;
    static constexpr std::string_view NAME = "AllAgentsFilter";
    using Handle = AllAgentsFilter;

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

/// A range whose ends are included; without an end it is open there.
struct FilterRangeState : NodeState {
    std::optional<double> min;
    std::optional<double> max;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("rangeMin", self.min, not_negative);
        field("rangeMax", self.max, not_negative);
    }
    static void check(Subject const& subject, FilterRangeState const& self) {
        if (self.min && self.max && *self.min > *self.max) {
            Subject{subject.owner, subject.property.empty() ? "rangeMin" : subject.property + ".rangeMin"}.refuse(
                "at most rangeMax, " + text_of(*self.max), text_of(*self.min));
        }
    }
};

/// Persons per square metre.
struct LocalDensityFilterState : FilterRangeState {
    static constexpr AgentFilterType TYPE = AgentFilterType::LOCAL_DENSITY;
    static constexpr std::string_view NAME = "LocalDensityFilter";
    using Handle = LocalDensityFilter;
};

/// Metres per second.
struct SpeedFilterState : FilterRangeState {
    static constexpr AgentFilterType TYPE = AgentFilterType::SPEED;
    static constexpr std::string_view NAME = "SpeedFilter";
    using Handle = SpeedFilter;
};

struct ProximityFilterState : NodeState {
    static constexpr AgentFilterType TYPE = AgentFilterType::PROXIMITY;
    static constexpr std::string_view NAME = "ProximityFilter";
    using Handle = ProximityFilter;

    double distance = 1;  ///< metres
    bool ignore_barriers = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("distance", self.distance, Range{0, unlimited, "m", true});
        field("ignoreBarriers", self.ignore_barriers);
    }
};

struct CompoundFilterState : NodeState {
    static constexpr AgentFilterType TYPE = AgentFilterType::COMPOUND;
    static constexpr std::string_view NAME = "CompoundFilter";
    using Handle = CompoundFilter;

    std::shared_ptr<AgentFilter> first;
    std::shared_ptr<AgentFilter> second;
    BooleanOperator combination = BooleanOperator::AND;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("firstChildFilter", self.first, must_be_given);
        field("secondChildFilter", self.second, must_be_given);
        field("booleanOperator", self.combination);
    }
};

struct FilterListState : NodeState {
    std::vector<std::shared_ptr<AgentFilter>> children;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("childFilters", self.children, must_be_given);
    }
};

struct AllOfFilterState : FilterListState {
    static constexpr AgentFilterType TYPE = AgentFilterType::ALL_OF;
    static constexpr std::string_view NAME = "AllOfFilter";
    using Handle = AllOfFilter;
};

struct AnyOfFilterState : FilterListState {
    static constexpr AgentFilterType TYPE = AgentFilterType::ANY_OF;
    static constexpr std::string_view NAME = "AnyOfFilter";
    using Handle = AnyOfFilter;
};

struct NoneOfFilterState : FilterListState {
    static constexpr AgentFilterType TYPE = AgentFilterType::NONE_OF;
    static constexpr std::string_view NAME = "NoneOfFilter";
    using Handle = NoneOfFilter;
};

struct AgentFilterObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::AGENT_FILTER_OBJECT;
    static constexpr std::string_view NAME = "AgentFilterObject";
    using Handle = AgentFilterObject;

    std::shared_ptr<AgentFilter> filter = std::make_shared<AllAgentsFilter>();  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("agentFilter", self.filter, must_be_given);
    }
};

}  // namespace pedflux::engine
