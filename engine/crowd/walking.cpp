#include "engine/crowd/walking.h"

#include "engine/crowd/neighbours.h"
#include "engine/crowd/walls.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine::crowd {

namespace {

/// Offset by which a walker's preferred side decides how to pass somebody straight ahead (metres).
constexpr float habit_offset = 0.1F;
/// Amplitude of the random part of the sidestep in a crowd.
constexpr float unrest = 0.1F;
/// Strength of the sidestep to the side on which walls leave room when the other is straight ahead. With more, walkers
/// in denser crowds lose speed by weaving.
constexpr float least_change = 0.5F;
/// Smallest closing speed for avoidance (metres per second).
constexpr float least_closing = 0.05F;
/// Margin for the search of contacts beyond the displacements of a step (metres).
constexpr float contact_slack = 0.02F;

/// The constants of the model in single precision.
struct Tuning {
    explicit Tuning(Locomotion const& locomotion)
        : sight(static_cast<float>(locomotion.sight)),
          lane_half_width(static_cast<float>(locomotion.lane_half_width)),
          oncoming_weight(static_cast<float>(locomotion.oncoming_weight)),
          acceleration_time(static_cast<float>(locomotion.acceleration_time)),
          anticipation(static_cast<float>(locomotion.anticipation)),
          passing_gap(static_cast<float>(locomotion.passing_gap)),
          avoidance(static_cast<float>(locomotion.avoidance)),
          oncoming_avoidance(static_cast<float>(locomotion.oncoming_avoidance)),
          overtaking_density(static_cast<float>(locomotion.overtaking_density)),
          keep_right(static_cast<float>(locomotion.keep_right)),
          side_speed(static_cast<float>(locomotion.side_speed)),
          widest_turn(static_cast<float>(locomotion.widest_turn)),
          turning(static_cast<float>(locomotion.turning)) {}

    float sight;
    float lane_half_width;
    float oncoming_weight;
    float acceleration_time;
    float anticipation;
    float passing_gap;
    float avoidance;
    float oncoming_avoidance;
    float overtaking_density;
    float keep_right;
    float side_speed;
    float widest_turn;
    float turning;
};

/// A walker as needed by the loop over its neighbours. Directions are unit vectors: `forward` is the wanted direction,
/// `right` perpendicular to it, `heading` includes the present sidestep.
struct Walker {
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
    /// Room between the walls, if it decides the side.
    Room room;
    bool departed;
    bool standing;
};

/// A walker's perception of the others, summed over them.
struct Perception {
    /// Weighted number of people in the strip ahead; a person right in front weighs 1.
    float crowding = 0;
    /// Resulting sidestep, to the right, per forward metre.
    float push = 0;
    /// Magnitude of the part of the push that is due to oncoming people.
    float opposition = 0;
};

Walker walker_of(Agent const& agent, Bodies const& bodies, std::uint32_t index) {
    float const forward_x = agent.direction_x;
    float const forward_z = agent.direction_z;
    float const slope = 1 / std::sqrt(1 + agent.sidestep * agent.sidestep);
    return {.x = bodies.x[index],
            .z = bodies.z[index],
            .radius = bodies.radius[index],
            .forward_x = forward_x,
            .forward_z = forward_z,
            .right_x = forward_z,
            .right_z = -forward_x,
            .heading_x = (forward_x + agent.sidestep * forward_z) * slope,
            .heading_z = (forward_z - agent.sidestep * forward_x) * slope,
            .pace = agent.speed * agent.ground_factor,
            .lean = habit_offset * agent.side_bias,
            .room = {},
            .departed = bodies.radius[index] < 0,
            .standing = agent.held || (forward_x == 0 && forward_z == 0)};
}

/// Whether walls leave no room to pass somebody on the nearer side (`side` is 1 for somebody to the right) but do on
/// the other.
bool must_change_side(Walker const& walker, float offset, float radius, float side) {
    float const needed = 2 * walker.radius + radius;
    bool const fits_right = walker.room.right - offset >= needed;
    bool const fits_left = walker.room.left + offset >= needed;
    return side > 0 ? fits_right && !fits_left : fits_left && !fits_right;
}

/// Adds the perception of another person at (x, z) relative to the walker.
void perceive(Bodies const& bodies, Tuning const& tuning, Walker const& walker, std::uint32_t other, float x, float z,
              Perception& perception) {
    float const facing = bodies.direction_x[other] * walker.forward_x + bodies.direction_z[other] * walker.forward_z;
    float const oncoming = std::max(-facing, 0.0F);

    float const ahead = walker.heading_x * x + walker.heading_z * z;
    if (ahead > 0) {
        float const aside = std::abs(walker.heading_x * z - walker.heading_z * x);
        float const nearness = std::max(1 - ahead / tuning.sight, 0.0F);
        // Full weight up to three quarters of the half width, none beyond five quarters: a continuous function with the
        // same area.
        float const inside = std::clamp(2.5F - 2 * aside / tuning.lane_half_width, 0.0F, 1.0F);
        perception.crowding += (1 - (1 - tuning.oncoming_weight) * oncoming) * nearness * inside;
    }

    float const along = walker.forward_x * x + walker.forward_z * z;
    float const clear = walker.radius + bodies.radius[other] + tuning.passing_gap;
    if (along <= 0 || clear <= 0) return;
    float const velocity_x = bodies.velocity_x[other];
    float const velocity_z = bodies.velocity_z[other];
    float const closing = walker.pace - (velocity_x * walker.forward_x + velocity_z * walker.forward_z);
    if (closing <= least_closing) return;
    float const time = std::max(along - clear, 0.0F) / closing;
    if (time >= tuning.anticipation) return;
    float const drift = (velocity_x * walker.right_x + velocity_z * walker.right_z) * time;
    float const offset = walker.right_x * x + walker.right_z * z + drift;
    // A person who will be to the left of the decisive offset is passed on the right.
    float const decided = offset - walker.lean - tuning.keep_right * oncoming;
    float missing = 1 - std::abs(decided) / clear;
    if (missing <= 0) return;
    float side = std::copysign(1.0F, decided);
    if (oncoming <= 0 && must_change_side(walker, offset, bodies.radius[other], side)) {
        side = -side;
        missing = least_change + std::abs(decided) / clear;
    }
    float const urgency = missing * (1 - time / tuning.anticipation);
    perception.opposition += oncoming * urgency;
    perception.push -= side * (tuning.avoidance + tuning.oncoming_avoidance * oncoming) * urgency;
}

/// Keeps the nearest contacts when there are too many.
void note_contact(Bodies& bodies, std::uint32_t index, std::uint32_t other, float squared) {
    std::uint32_t* const list = bodies.contacts.data() + std::size_t{index} * Bodies::most_contacts;
    std::uint8_t& count = bodies.contact_count[index];
    if (count < Bodies::most_contacts) {
        list[count++] = other;
        return;
    }
    std::uint32_t* farthest = nullptr;
    float most = squared;
    for (std::uint32_t i = 0; i < Bodies::most_contacts; ++i) {
        float const x = bodies.x[list[i]] - bodies.x[index];
        float const z = bodies.z[list[i]] - bodies.z[index];
        if (x * x + z * z <= most) continue;
        most = x * x + z * z;
        farthest = list + i;
    }
    if (farthest != nullptr) *farthest = other;
}

/// Looks at everybody in sight: the perception of the others, and possible contacts.
Perception look_around(Scene& scene, Tuning const& tuning, Agent const& agent, Walker& walker, std::uint32_t index) {
    Bodies& bodies = scene.bodies;
    NearWalls walls;
    gather_walls(scene.surfaces, bodies.cell[index], walker.x, walker.z, tuning.sight, walls);
    if (!walker.standing && agent.local_density < tuning.overtaking_density)
        walker.room = room_beside(walls, walker.forward_x, walker.forward_z);
    float const sight_squared = tuning.sight * tuning.sight;
    float const contact_reach = walker.radius + bodies.longest[index] + contact_slack;
    bodies.contact_count[index] = 0;
    bodies.near_wall[index] = walls.any_within(walker.radius + bodies.longest[index]) ? 1 : 0;
    Perception perception;
    auto const look_at = [&](std::uint32_t other) {
        float const x = bodies.x[other] - walker.x;
        float const z = bodies.z[other] - walker.z;
        float const squared = x * x + z * z;
        if (squared >= sight_squared || other == index) return;
        float const touching = contact_reach + bodies.radius[other] + bodies.longest[other];
        bool const contact = touching > 0 && squared < touching * touching;
        bool const in_front = !walker.standing && walker.forward_x * x + walker.forward_z * z > 0;
        if (!contact && !in_front) return;
        bool const departed = bodies.radius[other] < 0;
        if (!departed && !walker.departed && walls.hide(x, z)) return;
        // The departed are beyond the wall of an exit, and matter only to those who leave the same way.
        if (departed &&
            bodies.direction_x[other] * walker.forward_x + bodies.direction_z[other] * walker.forward_z < 0.5F)
            return;
        if (contact) note_contact(bodies, index, other, squared);
        if (in_front) perceive(bodies, tuning, walker, other, x, z, perception);
    };
    for_neighbours(scene, agent.region, bodies.cell[index], agent.x, agent.z,
                   [&](std::uint32_t from, std::uint32_t to) {
                       for (std::uint32_t other = from; other < to; ++other) look_at(other);
                   });
    return perception;
}

/// Local density in persons per square metre. The strip weighs people by nearness, so its weighted area is half of it.
/// The walker itself counts half, which makes the sum over a file of equal gaps the trapezoidal rule, exact for any gap
/// (see docs/locomotion.md).
float density_of(Perception const& perception, Tuning const& tuning) {
    float const itself = std::min(perception.crowding, 0.5F);
    return (perception.crowding + itself) / (tuning.sight * tuning.lane_half_width);
}

/// A random number of [-1, 1) that depends on the person and the step only.
float chance(std::uint32_t key, std::uint64_t step) {
    std::uint64_t mixed = (std::uint64_t{key} << 32) ^ step;
    mixed = (mixed ^ (mixed >> 33)) * 0xff51afd7ed558ccdULL;
    mixed = (mixed ^ (mixed >> 33)) * 0xc4ceb9fe1a85ec53ULL;
    mixed ^= mixed >> 33;
    return static_cast<float>(mixed >> 40) * 0x1p-23F - 1;
}

void decide(Scene& scene, Tuning const& tuning, std::uint32_t index) {
    Bodies& bodies = scene.bodies;
    Agent& agent = scene.agent_of(bodies.source[index]);
    Walker walker = walker_of(agent, bodies, index);
    Perception const perception = look_around(scene, tuning, agent, walker, index);
    agent.local_density = density_of(perception, tuning);
    bodies.goal_x[index] = walker.x;
    bodies.goal_z[index] = walker.z;
    if (walker.standing) return;

    auto const seconds = static_cast<float>(scene.seconds);
    if (!walker.departed) {
        float const wish = std::clamp(perception.push, -tuning.widest_turn, tuning.widest_turn) +
                           unrest * std::min(agent.local_density, 1.0F) * chance(agent.key, scene.steps);
        agent.sidestep += (wish - agent.sidestep) * std::min(seconds / tuning.turning, 1.0F);
    }
    float const allowed =
        walker.pace * scene.law.share(agent.local_density * agent.personal_space, agent.ground_factor);
    float const present = std::sqrt(agent.velocity_x * agent.velocity_x + agent.velocity_z * agent.velocity_z);
    float const gained = seconds < tuning.acceleration_time ? seconds / tuning.acceleration_time : 1.0F;
    float const speed = allowed > present ? present + gained * (allowed - present) : allowed;
    float const forward = speed * seconds / std::sqrt(1 + agent.sidestep * agent.sidestep);
    float const least_aside = tuning.side_speed * std::min(perception.opposition, 1.0F) * walker.pace * seconds;
    float const aside = agent.sidestep * std::max(forward, least_aside);
    bodies.goal_x[index] += forward * walker.forward_x + aside * walker.right_x;
    bodies.goal_z[index] += forward * walker.forward_z + aside * walker.right_z;
}

}  // namespace

void decide_goals(Scene& scene, std::size_t first, std::size_t last) {
    Tuning const tuning(scene.locomotion);
    for (auto index = static_cast<std::uint32_t>(first); index < last; ++index) decide(scene, tuning, index);
}

}  // namespace pedflux::engine::crowd
