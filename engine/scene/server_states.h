#pragma once

#include "engine/model/rules.h"
#include "engine/scene/scene_states.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/distributions.h>
#include <pedflux/servers.h>

#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

/// The state of servers: see state.h for how a state lists its fields.
namespace pedflux::engine {

struct FixedCapacity {
    static constexpr std::string_view NAME = "Fixed";

    int limit = 1;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("limit", self.limit, at_least_one);
    }
};

/// The capacity follows from the length of the queue's line.
struct AutoCapacity {
    static constexpr std::string_view NAME = "Automatic";

    double spacing = 1;  ///< metres from one agent to the next

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("spacing", self.spacing, Range{0.1, 100, "m"});
    }
};

/// The processing time of agents that pass `test`.
struct ContactTimeRule {
    std::shared_ptr<AgentTest> test;
    std::shared_ptr<Distribution> duration;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("test", self.test, must_be_given);
        field("duration", self.duration, RequiredRange{{0, unlimited, "s"}});
    }
};

struct ServerState : NetworkObjectState {
    static constexpr ObjectType TYPE = ObjectType::SERVER;
    static constexpr std::string_view NAME = "Server";
    using Handle = Server;

    GeometryRule geometry_rule() const override { return polyline_rule; }

    std::shared_ptr<AgentTest> access_required;
    std::shared_ptr<AgentTest> access_preferred;
    std::optional<std::variant<FixedCapacity, AutoCapacity>> capacity;
    std::shared_ptr<Distribution> contact_time;  ///< seconds
    std::vector<ContactTimeRule> contact_time_rules;
    std::shared_ptr<AgentAction> processed_action;
    std::shared_ptr<AgentAction> release_action;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        NetworkObjectState::fields(self, field);
        field("accessRequiredTest", self.access_required);
        field("accessPreferredTest", self.access_preferred);
        field("capacityLimit", self.capacity);
        field("contactTime", self.contact_time, Range{0, unlimited, "s"});
        field("contactTimeRules", self.contact_time_rules);
        field("processedAction", self.processed_action);
        field("releaseAction", self.release_action);
    }
};

/// The capacity of a server with a limit. An automatic one follows from the length of the line.
int capacity_limit_of(ServerState const& server);

}  // namespace pedflux::engine
