#pragma once

#include "engine/base/checks.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/population/trip.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/transitions.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The states of agent filters: see engine/model/node.h and agent_filter_table.def.
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

/// A range whose ends are included; without an end it is open there. Densities are persons per square metre, speeds
/// metres per second.
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

inline constexpr Range METRES_ABOVE_ZERO{0, unlimited, "m", true};

#define AGENT_FILTER(Class, type, variation, ...)  \
    struct Class##State : NodeState {              \
        PEDFLUX_KIND(AgentFilterType, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)            \
    };
#define RANGE_FILTER(Class, type, ...)             \
    struct Class##State : FilterRangeState {       \
        PEDFLUX_KIND(AgentFilterType, Class, type) \
    };
#include "engine/behaviour/filters/agent_filter_table.def"

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
