#pragma once

#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/behaviour/population/population.h"

#include <pedflux/color.h>
#include <pedflux/identifiers.h>

#include <optional>
#include <string>
#include <vector>

/// What brings agents into a simulation, compiled from the project when the simulation is created.
namespace pedflux::engine {

class Document;

/// What the agents of a profile have in common.
struct ProfileProgram {
    GlobalId id;
    DistributionSpec speed;   ///< metres per second
    DistributionSpec radius;  ///< metres
    double side_bias = 0;     ///< -1: passes others on the left, 1: on the right
    DistributionSpec horizontal_cost;
    DistributionSpec vertical_cost;
    DistributionSpec queue_cost;
    std::optional<GlobalId> avatar;
    std::optional<GlobalId> network;
};

/// An enabled event that brings agents.
struct EventProgram {
    GlobalId id;
    std::string title;
    Population population;
    GlobalId profile;  ///< invalid: the default profile
    Color color;
    std::optional<DistributionSpec> pre_movement_wait;  ///< seconds
};

struct SpawnProgram {
    std::vector<EventProgram> events;  ///< in the order of the project
    std::vector<ProfileProgram> profiles;
    ProfileProgram default_profile;
    double population_multiplier = 1;
};

SpawnProgram spawn_program_of(Document const& document);

}  // namespace pedflux::engine
