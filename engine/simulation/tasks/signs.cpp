#include "engine/simulation/tasks/signs.h"

#include "engine/simulation/tasks/live_situation.h"

#include <limits>

namespace pedflux::engine {

namespace {

/// An agent has passed a connection within this distance (metres) of its far end.
constexpr double at_far_end = 0.3;

}  // namespace

bool is_nearer_to_ball(FloorPlan const& plan, navigation::RegionIndex connection, Point point) {
    double least = std::numeric_limits<double>::infinity();
    bool at_ball = true;
    for (auto const& joint : plan.joints) {
        if (joint.connection != connection || distance(joint.line, point) >= least) continue;
        least = distance(joint.line, point);
        at_ball = joint.at_ball;
    }
    return at_ball;
}

bool follow_sign(TaskContext& context, AgentMotion const& motion, PlaceIndex goal) {
    auto const& plan = context.world.plan;
    auto const& place = context.world.places[goal];
    auto const region = place.is_portal() ? navigation::none : place.regions.front();
    bool const is_connection = region != navigation::none && region >= plan.floor_count;
    if (!is_connection) return is_at(context.world, context.agents, motion, goal);
    auto& sign = context.agents.tasks[motion.agent].sign;
    bool const was_on_it = sign.region == region;
    if (motion.region != region) {
        if (was_on_it) sign = {};
        return was_on_it;
    }
    if (!was_on_it) {
        bool const to_ball = !is_nearer_to_ball(plan, region, motion.position);
        sign = {region, end_of_connection(context.routes, plan, region, to_ball)};
    }
    auto const rest = context.routes.navigation.distance(motion.region, motion.position, sign.far_end);
    bool const has_passed = rest && *rest < at_far_end;
    if (has_passed) sign = {};
    return has_passed;
}

}  // namespace pedflux::engine
