#pragma once

#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/scene_states.h"

#include <pedflux/agent_actions.h>
#include <pedflux/distributions.h>
#include <pedflux/objects.h>
#include <pedflux/profiles.h>

#include <memory>
#include <optional>
#include <string_view>

namespace pedflux::engine {

struct ProfileState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::PROFILE;
    static constexpr std::string_view NAME = "Profile";
    using Handle = Profile;

    ProfileState();

    // The distributions are immutable and always set, except for the personal space.
    std::shared_ptr<Distribution> speed;           ///< m/s
    std::shared_ptr<Distribution> radius;          ///< m
    std::shared_ptr<Distribution> personal_space;  ///< m; no personal space if not set
    std::shared_ptr<Distribution> horizontal_cost;
    std::shared_ptr<Distribution> vertical_cost;
    std::shared_ptr<Distribution> queue_cost;
    std::shared_ptr<Distribution> processing_cost;
    AgentDirectionBias direction_bias = AgentDirectionBias::NONE;
    double acceleration_forward_max = 2;  ///< m/s2
    double speed_shuffle_factor = 0;
    double turn_rate_cap = 360;                   ///< degrees per second
    std::shared_ptr<AgentAction> initial_action;  ///< none by default
    std::optional<GlobalId> avatar;
    std::optional<GlobalId> network;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("speedDistribution", self.speed, Range{0, 20, "m/s", true});
        field("radiusDistribution", self.radius, Range{0, 2, "m", true});
        field("personalSpaceDistribution", self.personal_space, Range{0, 10, "m"});
        field("horizontalCostDistribution", self.horizontal_cost, not_negative);
        field("verticalCostDistribution", self.vertical_cost, not_negative);
        field("queueCostDistribution", self.queue_cost, not_negative);
        field("processingCostDistribution", self.processing_cost, not_negative);
        field("agentDirectionBias", self.direction_bias);
        field("accelerationForwardMax", self.acceleration_forward_max, Range{0, 100, "m/s2", true});
        field("speedShuffleFactor", self.speed_shuffle_factor, Range{0, 1});
        field("turnRateCapInDegreesAtMaxSpeed", self.turn_rate_cap, Range{0, 3600, "degrees per second", true});
        field("initialAction", self.initial_action);
        field("avatar", self.avatar, refers_to_kind<ObjectType::AVATAR>("an avatar"));
        field("network", self.network, refers_to_kind<ObjectType::NETWORK>("a network"));
    }
    static void check(ProfileState const& self);
};

}  // namespace pedflux::engine
