#include "engine/crowd/crowd.h"

#include "engine/crowd/bodies.h"
#include "engine/crowd/moving.h"
#include "engine/crowd/separation.h"
#include "engine/crowd/sorting.h"
#include "engine/crowd/walking.h"
#include "engine/crowd/worker_pool.h"
#include "engine/geometry/checks.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <fmt/format.h>

namespace pedflux::engine::crowd {

namespace {

/// Number of bodies or cells that a thread takes at a time.
constexpr std::size_t grain = 256;
/// Longest step (seconds). People walk a third of a metre in it, less than the width of two bodies.
constexpr double longest_step = 0.25;
constexpr double fastest = 10;

Locomotion checked(Locomotion const& locomotion) {
    validate(locomotion);
    return locomotion;
}

/// Half of what remains of a cell's width after the displacements of two people in the longest step.
double largest_radius(Locomotion const& locomotion) { return locomotion.sight / 2 - 0.2; }

double require_between(std::string_view what, double value, double least, double most) {
    if (!(value >= least && value <= most))
        refuse(
            fmt::format("{} is {}, it must be between {} and {}", what, text_of(value), text_of(least), text_of(most)));
    return value;
}

}  // namespace

struct Crowd::State {
    State(FloorPlan const& plan, Locomotion const& constants, unsigned threads)
        : scene{Surfaces(plan, constants.sight), constants, SpeedLaw(constants), {}, {}, {}},
          pool(std::clamp(threads, 1U, 256U)) {}

    Agent& present(AgentIndex agent) {
        if (agent >= scene.agents.size() || !scene.agents[agent].present)
            refuse(fmt::format("The crowd has no agent {}", agent));
        return scene.agents[agent];
    }

    Point checked_place(Point position, std::uint32_t region) const {
        if (region >= scene.surfaces.grids.size())
            refuse(fmt::format("The agent's region is {}, the plan has {}", region, scene.surfaces.grids.size()));
        if (!is_finite(position))
            refuse(fmt::format("The agent's position is {}, it must be finite", engine::text_of(position)));
        Point const inside = position - scene.surfaces.origin;
        if (!clear_of_walls(scene.surfaces, region, inside))
            refuse(fmt::format("The agent's position {} is on a wall, it must be at least {} m from any",
                               engine::text_of(position), text_of(wall_margin)));
        return inside;
    }

    void free_number(AgentIndex agent) {
        scene.agents[agent].present = false;
        free_numbers.push_back(agent);
        --count;
    }

    void forget_departed() {
        for (Departed& departed : scene.departed) {
            Agent const& agent = departed.agent;
            departed.metres_left -=
                static_cast<float>(length(Point{agent.velocity_x, agent.velocity_z}) * scene.seconds);
        }
        std::erase_if(scene.departed, [](Departed const& departed) { return departed.metres_left <= 0; });
    }

    Scene scene;
    WorkerPool pool;
    std::vector<AgentIndex> free_numbers;
    std::size_t count = 0;
};

Crowd::Crowd(FloorPlan const& plan, Locomotion const& locomotion, unsigned threads)
    : state_(std::make_unique<State>(plan, checked(locomotion), threads)) {}
Crowd::Crowd(Crowd&&) noexcept = default;
Crowd& Crowd::operator=(Crowd&&) noexcept = default;
Crowd::~Crowd() = default;

AgentIndex Crowd::add(Entrant const& entrant) {
    Point const place = state_->checked_place(entrant.position, entrant.region);
    Agent agent;
    agent.x = place.x;
    agent.z = place.z;
    agent.region = entrant.region;
    agent.speed = static_cast<float>(require_between("The agent's speed", entrant.speed, 0, fastest));
    agent.radius = static_cast<float>(
        require_between("The agent's radius", entrant.radius, 0.01, largest_radius(state_->scene.locomotion)));
    agent.personal_space =
        static_cast<float>(require_between("The agent's personal space", entrant.personal_space, 0, 100));
    agent.side_bias = static_cast<float>(require_between("The agent's side bias", entrant.side_bias, -1, 1));
    agent.key = entrant.key;
    agent.present = true;
    AgentIndex number = static_cast<AgentIndex>(state_->scene.agents.size());
    if (state_->free_numbers.empty()) {
        state_->scene.agents.push_back(agent);
        // Freeing an index then needs no memory.
        state_->free_numbers.reserve(state_->scene.agents.capacity());
    } else {
        number = state_->free_numbers.back();
        state_->free_numbers.pop_back();
        state_->scene.agents[number] = agent;
    }
    ++state_->count;
    return number;
}

void Crowd::remove(AgentIndex agent) {
    state_->present(agent);
    state_->free_number(agent);
}

void Crowd::depart(AgentIndex agent) {
    Agent shadow = state_->present(agent);
    shadow.held = false;
    shadow.sidestep = 0;
    if (shadow.direction_x != 0 || shadow.direction_z != 0)
        state_->scene.departed.push_back({shadow, static_cast<float>(state_->scene.locomotion.sight)});
    state_->free_number(agent);
}

void Crowd::set_direction(AgentIndex agent, Point direction) {
    Agent& walker = state_->present(agent);
    double const size = length(direction);
    if (!(size == 0 || (size > 0.999 && size < 1.001)))
        refuse(fmt::format("The direction of agent {} is {}, it must have the length 1 or be (0, 0)", agent,
                           engine::text_of(direction)));
    walker.direction_x = static_cast<float>(direction.x);
    walker.direction_z = static_cast<float>(direction.z);
}

void Crowd::set_speed(AgentIndex agent, double metres_per_second) {
    Agent& walker = state_->present(agent);
    walker.speed = static_cast<float>(require_between("The agent's speed", metres_per_second, 0, fastest));
}

void Crowd::set_ground_factor(AgentIndex agent, double factor) {
    Agent& walker = state_->present(agent);
    walker.ground_factor = static_cast<float>(require_between("The ground's factor on the speed", factor, 0, 1));
}

void Crowd::set_held(AgentIndex agent, bool held) { state_->present(agent).held = held; }

void Crowd::place(AgentIndex agent, Point position, std::uint32_t region) {
    Agent& walker = state_->present(agent);
    Point const place = state_->checked_place(position, region);
    walker.x = place.x;
    walker.z = place.z;
    walker.region = region;
    walker.velocity_x = 0;
    walker.velocity_z = 0;
}

void Crowd::set_wall_open(std::uint32_t region, std::size_t wall, bool open) {
    Surfaces& surfaces = state_->scene.surfaces;
    if (region >= surfaces.grids.size())
        refuse(fmt::format("The plan has no region {}, it has {}", region, surfaces.grids.size()));
    surfaces.wall_open[surfaces.wall_number(region, wall)] = open ? 1 : 0;
}

bool Crowd::contains(AgentIndex agent) const {
    return agent < state_->scene.agents.size() && state_->scene.agents[agent].present;
}
std::size_t Crowd::size() const { return state_->count; }
Point Crowd::position(AgentIndex agent) const {
    Agent const& walker = state_->present(agent);
    return Point{walker.x, walker.z} + state_->scene.surfaces.origin;
}
Point Crowd::velocity(AgentIndex agent) const {
    Agent const& walker = state_->present(agent);
    return {walker.velocity_x, walker.velocity_z};
}
std::uint32_t Crowd::region(AgentIndex agent) const { return state_->present(agent).region; }
double Crowd::radius(AgentIndex agent) const { return state_->present(agent).radius; }
double Crowd::speed(AgentIndex agent) const { return state_->present(agent).speed; }
double Crowd::local_density(AgentIndex agent) const { return state_->present(agent).local_density; }

void Crowd::step(double seconds) {
    Scene& scene = state_->scene;
    scene.seconds = require_between("The step's duration in seconds", seconds, 0.001, longest_step);
    WorkerPool& pool = state_->pool;

    sort_by_cell(scene);
    std::size_t const bodies = scene.bodies.size();
    pool.for_ranges(scene.surfaces.cell_count(), grain, [&](auto from, auto to) { fill_bodies(scene, from, to); });
    pool.for_ranges(bodies, grain, [&](auto from, auto to) { decide_goals(scene, from, to); });
    pool.for_ranges(bodies, grain, [&](auto from, auto to) { drop_far_contacts(scene, from, to); });
    for (int pass = 0; pass < separation_passes; ++pass) {
        pool.for_ranges(bodies, grain, [&](auto from, auto to) { separate(scene, from, to); });
        std::swap(scene.bodies.goal_x, scene.bodies.next_x);
        std::swap(scene.bodies.goal_z, scene.bodies.next_z);
    }
    pool.for_ranges(bodies, grain, [&](auto from, auto to) { move_to_goals(scene, from, to); });
    state_->forget_departed();
    ++scene.steps;
}

std::uint64_t Crowd::steps_taken() const { return state_->scene.steps; }

}  // namespace pedflux::engine::crowd
