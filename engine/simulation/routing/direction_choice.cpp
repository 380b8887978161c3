#include "engine/simulation/routing/direction_choice.h"

#include "engine/simulation/routing/congestion_rerouting.h"
#include "engine/simulation/routing/local_targets.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

using navigation::RouteStep;
using Way = AgentMotion::Way;

/// Within this distance (metres) of a line that leads on, agents aim beyond it.
constexpr double look_beyond = 0.3;

/// Where to walk to get over a line that leads on.
Point over(Point position, Point aim, Point across) {
    return distance(position, aim) < look_beyond ? unit(aim - position + look_beyond * across) : unit(aim - position);
}

/// The next step of a reroute: to its joint, and over it.
RouteStep step_of_reroute(Routes const& routes, AgentMotion& motion) {
    auto step = routes.navigation.next(motion.region, motion.position, motion.reroute.way, motion.hint);
    if (step.kind == RouteStep::Kind::GOAL || step.kind == RouteStep::Kind::ARRIVED) {
        step.kind = RouteStep::Kind::CONNECTION;
        step.connection = motion.reroute.joint;
        step.forward = false;
    }
    return step;
}

void walk(AgentMotion& motion, Point direction) {
    motion.way = Way::WALKS;
    motion.direction = direction;
}

}  // namespace

void choose_direction(World const& world, Clock const& clock, Routes const& routes, DensityGrid const& density,
                      Agents const& agents, AgentMotion& motion) {
    auto const& info = agents.infos[motion.agent];
    auto const& tasks = agents.tasks[motion.agent];
    motion.direction = {};
    motion.way = Way::STANDS;
    motion.ahead = navigation::none;
    if (info.controlled) return;
    if (info.direction_override) return walk(motion, *info.direction_override);
    if (motion.post) {
        Point const rest = *motion.post - motion.position;
        if (length(rest) >= at_post) walk(motion, unit(rest));
        return;
    }
    bool const goes_to_wait = tasks.waiting.walks;
    auto const destination = goes_to_wait ? tasks.waiting.way : motion.destination;
    if (destination == navigation::none) return;
    auto const step = takes_reroute(routes, motion, destination)
                          ? step_of_reroute(routes, motion)
                          : routes.navigation.next(motion.region, motion.position, destination, motion.hint);
    bool const has_arrived = step.kind == RouteStep::Kind::ARRIVED;
    bool const is_lost = step.kind == RouteStep::Kind::UNREACHABLE;
    if (has_arrived || is_lost) {
        if (!goes_to_wait) motion.way = has_arrived ? Way::ARRIVED : Way::LOST;
        return;
    }
    if (motion.starts_at > clock.seconds() && !tasks.task && !goes_to_wait) return;
    Point const aim = aim_on(step, motion, info.origin.key, density, clock.seconds());
    if (step.kind == RouteStep::Kind::CONNECTION) {
        motion.ahead = step.connection;
        Point const to_floor = world.plan.joints[step.connection].to_floor;
        walk(motion, over(motion.position, aim, step.forward ? to_floor : -1 * to_floor));
    } else if (!goes_to_wait && step.kind == RouteStep::Kind::GOAL && world.places[info.goal].is_portal()) {
        walk(motion, over(motion.position, aim, world.doorway_outward[world.places[info.goal].doorway]));
    } else {
        walk(motion, unit(aim - motion.position));
    }
}

double ground_factor(Incline const& incline, double speed, Point direction) {
    bool const upwards = dot(direction, incline.uphill) >= 0;
    if (!incline.limit) return upwards ? incline.up_factor : incline.down_factor;
    double const limit = upwards ? incline.limit->up : incline.limit->down;
    return std::min(speed, limit) / speed / incline.length_factor;
}

void steer_bodies(FloorPlan const& plan, Agents const& agents, crowd::Crowd& crowd) {
    for (auto const& motion : agents.motions) {
        bool const walks = motion.way == Way::WALKS;
        crowd.set_held(motion.body, !walks);
        crowd.set_direction(motion.body, motion.direction);
        if (!walks) continue;
        double const speed = agents.infos[motion.agent].origin.speed;
        crowd.set_ground_factor(motion.body, ground_factor(plan.inclines[motion.region], speed, motion.direction));
    }
}

}  // namespace pedflux::engine
