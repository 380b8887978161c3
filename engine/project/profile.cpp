#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/properties.h"
#include "engine/project/actions.h"
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

#define DISTRIBUTION(Name, field)                                                              \
    std::shared_ptr<Distribution> Profile::Get##Name##Distribution() {                         \
        return engine::get_copy(*this, &ProfileState::field);                                  \
    }                                                                                          \
    void Profile::Set##Name##Distribution(std::shared_ptr<Distribution> const& distribution) { \
        engine::set_copy(*this, &ProfileState::field, distribution);                           \
    }
#define PROPERTY(Type, Name, field)                                        \
    Type Profile::Get##Name() { return get(*this, &ProfileState::field); } \
    void Profile::Set##Name(Type value) { set(*this, &ProfileState::field, value); }
#define OPTIONAL_REFERENCE(Name, field)                                                   \
    bool Profile::Has##Name() { return has(*this, &ProfileState::field); }                \
    GlobalId Profile::Get##Name() { return get(*this, &ProfileState::field); }            \
    void Profile::Set##Name(GlobalId const& id) { set(*this, &ProfileState::field, id); } \
    void Profile::Clear##Name() { clear(*this, &ProfileState::field); }

DISTRIBUTION(Speed, speed)
DISTRIBUTION(Radius, radius)
DISTRIBUTION(PersonalSpace, personal_space)
DISTRIBUTION(HorizontalCost, horizontal_cost)
DISTRIBUTION(VerticalCost, vertical_cost)
DISTRIBUTION(QueueCost, queue_cost)
DISTRIBUTION(ProcessingCost, processing_cost)
PROPERTY(AgentDirectionBias, AgentDirectionBias, direction_bias)
PROPERTY(double, AccelerationForwardMax, acceleration_forward_max)
PROPERTY(double, SpeedShuffleFactor, speed_shuffle_factor)
PROPERTY(double, TurnRateCapInDegreesAtMaxSpeed, turn_rate_cap)
OPTIONAL_REFERENCE(Avatar, avatar)
OPTIONAL_REFERENCE(Network, network)
ACTION(Profile, ProfileState, Initial, initial_action)

void Profile::SetRadius(double radius) { SetRadiusDistribution(Distribution::CreateConstant(radius)); }
void Profile::SetPersonalSpace(double distance) {
    SetPersonalSpaceDistribution(Distribution::CreateConstant(distance));
}
bool Profile::IsPersonalSpaceEnabled() { return get(*this, &ProfileState::personal_space) != nullptr; }
void Profile::ClearPersonalSpace() { engine::state_of<ProfileState>(*this).personal_space.reset(); }

}  // namespace pedflux
