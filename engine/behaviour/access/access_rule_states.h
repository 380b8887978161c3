#pragma once

#include "engine/behaviour/condition_names.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/triggers/trigger_range_states.h"
#include "engine/model/check.h"
#include "engine/scene/scene_states.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_tests.h>
#include <pedflux/triggers.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of the rules that open and close gates and servers, and of tokens.
namespace pedflux::engine {

struct AccessCycle {
    int on = 1;   ///< seconds
    int off = 1;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("onDurationInSeconds", self.on, AT_LEAST_ONE_SECOND);
        field("offDurationInSeconds", self.off, AT_LEAST_ONE_SECOND);
    }
};

struct AccessState : ObjectState {
    std::shared_ptr<TriggerRange> range = std::make_shared<AllSimulationTriggerRange>();  ///< replaced, never changed
    bool opens = true;
    std::optional<AccessCycle> cycle;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("triggerRange", self.range, must_be_given);
        field("opens", self.opens);
        field("cycle", self.cycle);
    }
};

struct GateAccessState : AccessState {
    static constexpr ObjectType TYPE = ObjectType::GATE_ACCESS;
    static constexpr std::string_view NAME = "GateAccess";
    using Handle = GateAccess;

    std::vector<GlobalId> gates;
    ConnectionObjectDirection direction = ConnectionObjectDirection::BOTH_WAYS;
    std::shared_ptr<AgentTest> test;  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        AccessState::fields(self, field);
        field("gatedObjects", self.gates, A_GATE);
        field("commandDirection", self.direction);
        field("agentTest", self.test);
    }
};

struct ServerAccessState : AccessState {
    static constexpr ObjectType TYPE = ObjectType::SERVER_ACCESS;
    static constexpr std::string_view NAME = "ServerAccess";
    using Handle = ServerAccess;

    std::vector<GlobalId> servers;
    ServerAccessPoint point = ServerAccessPoint::ENTRANCE_AND_EXIT;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        AccessState::fields(self, field);
        field("servers", self.servers, A_SERVER);
        field("commandAccessPoint", self.point);
    }
};

struct TokenState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TOKEN;
    static constexpr std::string_view NAME = "Token";
    using Handle = Token;
};

}  // namespace pedflux::engine
