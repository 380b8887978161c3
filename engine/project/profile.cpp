#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/accessors.h"
#include "engine/scene/profile_state.h"

#include <pedflux/profiles.h>

#include <utility>

namespace pedflux {

using engine::clear;
using engine::get;
using engine::has;
using engine::ProfileState;
using engine::set;

namespace engine {

ProfileState::ProfileState()
    : speed(Distribution::CreateNormal(1.34, 0.26, 0.65, 2.05)),
      radius(Distribution::CreateConstant(0.2)),
      horizontal_cost(Distribution::CreateConstant(1)),
      vertical_cost(Distribution::CreateConstant(1)),
      queue_cost(Distribution::CreateConstant(1)),
      processing_cost(Distribution::CreateConstant(1)) {}

void ProfileState::check(ProfileState const& self) {
    ProfileState::fields(self, [&]<class Field>(std::string_view name, Field const& field, auto const&...) {
        if constexpr (std::is_same_v<Field, std::shared_ptr<Distribution>>) {
            bool const may_be_empty = &field == &self.personal_space;
            if (!field && !may_be_empty) {
                Subject{owner_of(self), std::string(name)}.refuse("a distribution", "empty");
            }
        }
    });
}

}  // namespace engine

COPIED_PROPERTY(Profile, Distribution, SpeedDistribution, speed)
COPIED_PROPERTY(Profile, Distribution, RadiusDistribution, radius)
COPIED_PROPERTY(Profile, Distribution, PersonalSpaceDistribution, personal_space)
COPIED_PROPERTY(Profile, Distribution, HorizontalCostDistribution, horizontal_cost)
COPIED_PROPERTY(Profile, Distribution, VerticalCostDistribution, vertical_cost)
COPIED_PROPERTY(Profile, Distribution, QueueCostDistribution, queue_cost)
COPIED_PROPERTY(Profile, Distribution, ProcessingCostDistribution, processing_cost)
VALUE_PROPERTY(Profile, AgentDirectionBias, AgentDirectionBias, direction_bias)
VALUE_PROPERTY(Profile, double, AccelerationForwardMax, acceleration_forward_max)
VALUE_PROPERTY(Profile, double, SpeedShuffleFactor, speed_shuffle_factor)
VALUE_PROPERTY(Profile, double, TurnRateCapInDegreesAtMaxSpeed, turn_rate_cap)
PROPERTY(Profile, GlobalId, Avatar, avatar)
OPTIONAL_PROPERTY(Profile, Avatar, avatar)
PROPERTY(Profile, GlobalId, Network, network)
OPTIONAL_PROPERTY(Profile, Network, network)
ACTION_PROPERTY(Profile, InitialAction, initial_action)

void Profile::SetRadius(double radius) { SetRadiusDistribution(Distribution::CreateConstant(radius)); }
void Profile::SetPersonalSpace(double distance) {
    SetPersonalSpaceDistribution(Distribution::CreateConstant(distance));
}
bool Profile::IsPersonalSpaceEnabled() { return get(*this, &ProfileState::personal_space) != nullptr; }
void Profile::ClearPersonalSpace() { engine::state_of<ProfileState>(*this).personal_space.reset(); }

}  // namespace pedflux
