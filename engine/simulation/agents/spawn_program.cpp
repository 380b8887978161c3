#include "engine/simulation/agents/spawn_program.h"

#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/model/document.h"
#include "engine/scene/profile_state.h"

namespace pedflux::engine {

namespace {

double side_of(AgentDirectionBias bias) {
    switch (bias) {
        case AgentDirectionBias::LEFT:
            return -1;
        case AgentDirectionBias::RIGHT:
            return 1;
        case AgentDirectionBias::NONE:
            break;
    }
    return 0;
}

ProfileProgram profile_program_of(ProfileState const& state) {
    ProfileProgram profile;
    profile.id = state.id;
    profile.speed = spec_of(*state.speed);
    profile.radius = spec_of(*state.radius);
    profile.side_bias = side_of(state.direction_bias);
    profile.horizontal_cost = spec_of(*state.horizontal_cost);
    profile.vertical_cost = spec_of(*state.vertical_cost);
    profile.queue_cost = spec_of(*state.queue_cost);
    profile.avatar = state.avatar;
    profile.network = state.network;
    return profile;
}

EventProgram event_program_of(EventState const& state) {
    EventProgram event;
    event.id = state.id;
    event.title = title_of(state);
    event.population = state.population;
    event.profile = state.profile.value_or(GlobalId());
    event.color = agent_color_of(state);
    auto const* const evacuation = dynamic_cast<EvacuationState const*>(&state);
    if (evacuation && evacuation->pre_movement_wait) event.pre_movement_wait = spec_of(*evacuation->pre_movement_wait);
    return event;
}

}  // namespace

SpawnProgram spawn_program_of(Document const& document) {
    SpawnProgram program;
    for (auto const* const event : document.objects<EventState>()) {
        if (event->enabled) program.events.push_back(event_program_of(*event));
    }
    for (auto const* const profile : document.objects<ProfileState>()) {
        program.profiles.push_back(profile_program_of(*profile));
    }
    program.default_profile = profile_program_of(ProfileState());
    program.population_multiplier = document.settings.population_multiplier;
    return program;
}

}  // namespace pedflux::engine
