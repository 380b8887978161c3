#include "engine/crowd/walking.h"

#include "engine/crowd/neighbours.h"
#include "engine/crowd/walls.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine::crowd {

namespace {

/// The constants of the model in the precision of the loops.
struct Tuning {
    explicit Tuning(Locomotion const& locomotion)
        : sight(static_cast<float>(locomotion.sight)),
          lane_half_width(static_cast<float>(locomotion.lane_half_width)),
          acceleration_time(static_cast<float>(locomotion.acceleration_time)),
          anticipation(static_cast<float>(locomotion.anticipation)),
          passing_gap(static_cast<float>(locomotion.passing_gap)),
          avoidance(static_cast<float>(locomotion.avoidance)),
          widest_turn(static_cast<float>(locomotion.widest_turn)),
          turning(static_cast<float>(locomotion.turning)) {}

    float sight;
    float lane_half_width;
    float acceleration_time;
    float anticipation;
    float passing_gap;
    float avoidance;
    float widest_turn;
    float turning;
};

/// What one walker feels of the others, summed over them.
struct Impression {
    float crowding = 0;
    float push = 0;
};

/// A walker as its loop over neighbours needs it. Forward and right are unit vectors.
struct Walker {
    std::uint32_t index;
    float x;
    float z;
    float radius;
    float forward_x;
    float forward_z;
    float right_x;
    float right_z;
    float heading_x;
    float heading_z;
    float pace;
    float lean;
};

/// Slower than this nobody hastens past others, and meetings are not foreseen.
constexpr float least_pace = 0.3F;
/// Metres aside by which a walker's habit and present sidestep decide on which side it passes somebody right ahead.
constexpr float habit_offset = 0.1F;
constexpr float persistence_offset = 0.1F;
/// Random part of the sidestep in a crowd.
constexpr float unrest = 0.1F;
/// Bodies this much further apart than they can come in a step are not tried for contact.
constexpr float contact_slack = 0.02F;

void meet(Scene const& scene, Tuning const& tuning, Walker const& walker, std::uint32_t other, float x, float z,
          Impression& impression) {
    Bodies const& bodies = scene.bodies;
    float const ahead = walker.heading_x * x + walker.heading_z * z;
    if (ahead > 0) {
        float const aside = std::abs(walker.heading_x * z - walker.heading_z * x);
        float const nearness = std::max(1 - ahead / tuning.sight, 0.0F);
        // Full weight up to three quarters of the half width, none beyond five quarters: no jumps, the same area.
        float const inside = std::clamp(2.5F - 2 * aside / tuning.lane_half_width, 0.0F, 1.0F);
        impression.crowding += nearness * inside;
    }
    float const along = walker.forward_x * x + walker.forward_z * z;
    float const clear = walker.radius + bodies.radius[other] + tuning.passing_gap;
    if (along <= 0 || clear <= 0) return;
    float const velocity_along =
        bodies.velocity_x[other] * walker.forward_x + bodies.velocity_z[other] * walker.forward_z;
    float const velocity_right = bodies.velocity_x[other] * walker.right_x + bodies.velocity_z[other] * walker.right_z;
    float const closing = walker.pace - velocity_along;
    if (closing <= 0.05F) return;
    float const time = std::max(along - clear, 0.0F) / closing;
    if (time >= tuning.anticipation) return;
    float const offset = walker.right_x * x + walker.right_z * z + velocity_right * time - walker.lean;
    float const missing = 1 - std::abs(offset) / clear;
    if (missing <= 0) return;
    float const urgency = 1 - time / tuning.anticipation;
    impression.push -= std::copysign(missing * urgency, offset);
}

/// The nearest contacts are kept when there are more than a body can have.
void note_contact(Bodies& bodies, std::uint32_t index, std::uint32_t other, float squared) {
    std::uint32_t* const list = bodies.contacts.data() + std::size_t{index} * Bodies::most_contacts;
    std::uint8_t& count = bodies.contact_count[index];
    if (count < Bodies::most_contacts) {
        list[count++] = other;
        return;
    }
    std::uint32_t farthest = 0;
    float most = squared;
    for (std::uint32_t i = 0; i < Bodies::most_contacts; ++i) {
        float const x = bodies.x[list[i]] - bodies.x[index];
        float const z = bodies.z[list[i]] - bodies.z[index];
        if (x * x + z * z <= most) continue;
        most = x * x + z * z;
        farthest = i + 1;
    }
    if (farthest > 0) list[farthest - 1] = other;
}

/// A number between -1 and 1 that depends on the person and the step only.
float chance(std::uint32_t key, std::uint64_t step) {
    std::uint64_t mixed = (std::uint64_t{key} << 32) ^ step;
    mixed = (mixed ^ (mixed >> 33)) * 0xff51afd7ed558ccdULL;
    mixed = (mixed ^ (mixed >> 33)) * 0xc4ceb9fe1a85ec53ULL;
    mixed ^= mixed >> 33;
    return static_cast<float>(mixed >> 40) * 0x1p-23F - 1;
}

}  // namespace

void decide_goals(Scene& scene, std::size_t first, std::size_t last) {
    static float S1 = getenv("S1") ? float(atof(getenv("S1"))) : 0.5f;
    static float S2 = getenv("S2") ? float(atof(getenv("S2"))) : 1.0f;
    Tuning const tuning(scene.locomotion);
    Bodies& bodies = scene.bodies;
    auto const seconds = static_cast<float>(scene.seconds);
    float const sight_squared = tuning.sight * tuning.sight;
    float const strip_area = tuning.sight * tuning.lane_half_width;
    NearWalls walls;
    for (auto index = static_cast<std::uint32_t>(first); index < last; ++index) {
        Agent& agent = scene.agent_of(bodies.source[index]);
        bool const departed = bodies.radius[index] < 0;
        bool const standing = agent.held || (agent.direction_x == 0 && agent.direction_z == 0);
        Walker walker{};
        walker.index = index;
        walker.x = bodies.x[index];
        walker.z = bodies.z[index];
        walker.radius = bodies.radius[index];
        walker.forward_x = agent.direction_x;
        walker.forward_z = agent.direction_z;
        walker.right_x = agent.direction_z;
        walker.right_z = -agent.direction_x;
        float const slope = 1 / std::sqrt(1 + agent.sidestep * agent.sidestep);
        walker.heading_x = (walker.forward_x + agent.sidestep * walker.right_x) * slope;
        walker.heading_z = (walker.forward_z + agent.sidestep * walker.right_z) * slope;
        walker.pace = std::max(agent.velocity_x * walker.forward_x + agent.velocity_z * walker.forward_z, least_pace);
        walker.lean = -habit_offset * agent.side_bias - persistence_offset * agent.sidestep;

        float const contact_reach = walker.radius + bodies.longest[index] + contact_slack;
        gather_walls(scene.surfaces, bodies.cell[index], walker.x, walker.z, tuning.sight, walls);
        bodies.contact_count[index] = 0;
        Impression impression;
        for_neighbours(scene, agent.region, bodies.cell[index], agent.x, agent.z,
                       [&](std::uint32_t from, std::uint32_t to) {
                           for (std::uint32_t other = from; other < to; ++other) {
                               float const x = bodies.x[other] - walker.x;
                               float const z = bodies.z[other] - walker.z;
                               float const squared = x * x + z * z;
                               if (squared >= sight_squared || other == index) continue;
                               float const touching = contact_reach + bodies.radius[other] + bodies.longest[other];
                               bool const contact = touching > 0 && squared < touching * touching;
                               bool const in_front = walker.forward_x * x + walker.forward_z * z > 0;
                               if (!contact && !in_front) continue;
                               if (bodies.radius[other] >= 0 && !departed && walls.hide(x, z)) continue;
                               if (contact) note_contact(bodies, index, other, squared);
                               if (!standing) meet(scene, tuning, walker, other, x, z, impression);
                           }
                       });

        agent.felt_density = (impression.crowding + std::min(S2*impression.crowding, S1)) / strip_area;
        float const wish = std::clamp(tuning.avoidance * impression.push, -tuning.widest_turn, tuning.widest_turn) +
                           unrest * std::min(agent.felt_density, 1.0F) * chance(agent.key, scene.steps);
        agent.sidestep += (wish - agent.sidestep) * std::min(seconds / tuning.turning, 1.0F);
        if (departed) agent.sidestep = 0;
        float const steep = 1 / std::sqrt(1 + agent.sidestep * agent.sidestep);
        float const allowed =
            agent.speed * agent.ground_factor * scene.law.share(agent.felt_density * agent.personal_space);
        float const gaining = std::min(seconds / std::max(tuning.acceleration_time, seconds), 1.0F);
        float const present = std::sqrt(agent.velocity_x * agent.velocity_x + agent.velocity_z * agent.velocity_z);
        float const speed = allowed > present ? present + gaining * (allowed - present) : allowed;
        float const way = standing ? 0.0F : speed * seconds;
        bodies.goal_x[index] = walker.x + way * steep * (walker.forward_x + agent.sidestep * walker.right_x);
        bodies.goal_z[index] = walker.z + way * steep * (walker.forward_z + agent.sidestep * walker.right_z);
    }
}

}  // namespace pedflux::engine::crowd
