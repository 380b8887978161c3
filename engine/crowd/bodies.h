#pragma once

#include "engine/crowd/speed_law.h"
#include "engine/crowd/surfaces.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pedflux::engine::crowd {

/// The state of an agent that lasts from step to step. Positions are relative to the origin of the surfaces.
struct Agent {
    double x = 0;
    double z = 0;
    float velocity_x = 0;
    float velocity_z = 0;
    float direction_x = 0;
    float direction_z = 0;
    /// Sideways part of the walking direction per forward metre, positive to the right of the wanted direction.
    float sidestep = 0;
    float speed = 0;
    float ground_factor = 1;
    float radius = 0;
    float personal_space = 1;
    float side_bias = 0;
    float local_density = 0;
    std::uint32_t key = 0;
    std::uint32_t region = 0;
    /// Set by sort_by_cell().
    std::uint32_t cell = 0;
    bool present = false;
    bool held = false;
};

/// An agent that has left through an exit: it has no body and walks straight on, visible to those behind for some
/// metres.
struct Departed {
    Agent agent;
    float metres_left = 0;
};

/// The agents of one step in the order of their cells, so that neighbours are close in memory.
struct Bodies {
    /// Largest number of contacts of a body in one step; six bodies of equal size fit around one.
    static constexpr std::uint32_t most_contacts = 12;
    /// Radius of the departed, who touch nobody: so negative that no sum of radii and gaps is positive.
    static constexpr float no_body = -10;

    std::vector<std::uint32_t> cell_start;
    /// Index of the agent or, from the number of agents on, of the departed.
    std::vector<std::uint32_t> source;
    std::vector<std::uint32_t> cell;
    std::vector<float> x;
    std::vector<float> z;
    std::vector<float> velocity_x;
    std::vector<float> velocity_z;
    std::vector<float> direction_x;
    std::vector<float> direction_z;
    std::vector<float> radius;
    /// Largest displacement in this step (metres).
    std::vector<float> longest;
    /// Intended positions, and the intended positions after one more pass of separation.
    std::vector<float> goal_x;
    std::vector<float> goal_z;
    std::vector<float> next_x;
    std::vector<float> next_z;
    /// Whether the body may touch a wall in this step.
    std::vector<std::uint8_t> near_wall;
    std::vector<std::uint8_t> contact_count;
    std::vector<std::uint32_t> contacts;

    std::size_t size() const { return source.size(); }
    /// Keeps the capacity, so that a crowd of constant size allocates nothing.
    void resize(std::size_t count);
};

/// The data that the parts of a step share.
struct Scene {
    Surfaces surfaces;
    Locomotion locomotion;
    SpeedLaw law;
    std::vector<Agent> agents;
    std::vector<Departed> departed;
    Bodies bodies;
    std::uint64_t steps = 0;
    double seconds = 0;

    Agent& agent_of(std::uint32_t source) {
        return source < agents.size() ? agents[source] : departed[source - agents.size()].agent;
    }
};

}  // namespace pedflux::engine::crowd
