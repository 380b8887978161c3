#include "engine/simulation/frame/stepping.h"

#include "engine/base/checks.h"
#include "engine/results/agent_data.h"
#include "engine/simulation/agents/placement.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/frame/recording.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/tasks/agent_actions.h"
#include "engine/simulation/tasks/broadcasts.h"
#include "engine/simulation/tasks/dispatches.h"
#include "engine/simulation/tasks/waits.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pedflux::engine {

namespace {

using navigation::RouteStep;

/// So near to a portal's line (metres) a person has reached it.
constexpr double at_line = 0.05;
/// So near to a line that leads on, people look beyond it.
constexpr double look_beyond = 0.3;
/// Slower than this (metres per second) a person stands.
constexpr double standing = 0.1;
constexpr double running = 2.5;
/// How many walkers one thread takes at a time.
constexpr std::size_t grain = 256;

void require_running(SimulationState const& run) {
    if (run.stopped) refuse("The simulation was stopped and takes no more frames");
}

/// Where a newcomer goes: the nearest of the places that it may choose from.
PlaceIndex goal_of(SimulationState& run, SpawnRequest const& request, Spot const& spot) {
    if (request.choices == no_place) return request.destination;
    return nearest_place(run, {spot.region, spot.place}, class_of(run, preferences_of(run, request)),
                         run.requests.choices[request.choices]);
}

void say_crowded(SimulationState& run, PlaceIndex origin) {
    run.said_crowded.resize(run.places.size());
    if (run.places[origin].is_portal() || run.said_crowded[origin]) return;
    run.said_crowded[origin] = true;
    run.issues.emplace_back(IssueCategory::WARNING, "No room at the start",
                            run.places[origin].title + " has no room for all who start there at " +
                                text_of(run.seconds()) + " s; the others come when there is.");
}

void let_in_from(SimulationState& run, PlaceIndex origin, Occupancy& occupancy) {
    auto const& waiting = run.requests.by_origin[origin];
    auto& next = run.next_request[origin];
    while (next < waiting.size() && waiting[next].due <= run.seconds()) {
        SpawnRequest request = waiting[next];
        auto const spot = spot_for(run, request, occupancy);
        if (!spot) return say_crowded(run, origin);
        occupancy.add(spot->region, spot->place, request.radius);
        request.destination = goal_of(run, request, *spot);
        auto const agent = enter(run, request, spot->region, spot->place);
        Place const& place = run.places[origin];
        if (place.is_portal()) {
            ++run.entered_at[place.doorway];
            run.changes->entered.emplace_back(place.id, run.infos[agent].object);
        }
        ++next;
        --run.waiting_to_enter;
    }
}

bool is_due(SimulationState const& run, PlaceIndex origin) {
    auto const& waiting = run.requests.by_origin[origin];
    auto const next = run.next_request[origin];
    return next < waiting.size() && waiting[next].due <= run.seconds();
}

/// Where to walk to get over a line that leads on.
Point over(Point position, Point aim, Point across) {
    return distance(position, aim) < look_beyond ? unit(aim - position + look_beyond * across) : unit(aim - position);
}

/// The next step of a detour: to its joint, and over it.
RouteStep step_over(SimulationState const& run, AgentMotion& motion) {
    auto step = run.navigation.next(motion.region, motion.position, motion.reroute.way, motion.hint);
    if (step.kind == RouteStep::Kind::GOAL || step.kind == RouteStep::Kind::ARRIVED) {
        step.kind = RouteStep::Kind::CONNECTION;
        step.connection = motion.reroute.joint;
        step.forward = false;
    }
    return step;
}

/// Looks up the way of one walker. Writes nothing but the walker.
void choose_way(SimulationState const& run, AgentMotion& motion) {
    auto const& info = run.infos[motion.agent];
    motion.direction = {};
    motion.way = AgentMotion::Way::STANDS;
    motion.ahead = navigation::none;
    if (info.controlled) return;
    if (info.direction_override) {
        motion.direction = *info.direction_override;
        motion.way = AgentMotion::Way::WALKS;
        return;
    }
    if (motion.post) {
        Point const way = *motion.post - motion.position;
        if (length(way) < at_post) return;
        motion.direction = unit(way);
        motion.way = AgentMotion::Way::WALKS;
        return;
    }
    bool const goes_to_wait = info.tasks.waiting.walks;
    auto const destination = goes_to_wait ? info.tasks.waiting.way : motion.destination;
    if (destination == navigation::none) return;
    auto const step = takes_reroute(run, motion, destination)
                          ? step_over(run, motion)
                          : run.navigation.next(motion.region, motion.position, destination, motion.hint);
    if (goes_to_wait && (step.kind == RouteStep::Kind::ARRIVED || step.kind == RouteStep::Kind::UNREACHABLE)) return;
    if (step.kind == RouteStep::Kind::ARRIVED) {
        motion.way = AgentMotion::Way::ARRIVED;
        return;
    }
    if (step.kind == RouteStep::Kind::UNREACHABLE) {
        motion.way = AgentMotion::Way::LOST;
        return;
    }
    if (motion.starts_at > run.seconds() && !info.tasks.task && !goes_to_wait) return;
    motion.way = AgentMotion::Way::WALKS;
    Point const aim = aim_on(step, motion, info.origin.key, run.density_grid, run.seconds());
    if (step.kind == RouteStep::Kind::CONNECTION) {
        motion.ahead = step.connection;
        Point const to_floor = run.plan.joints[step.connection].to_floor;
        motion.direction = over(motion.position, aim, step.forward ? to_floor : -1 * to_floor);
    } else if (!goes_to_wait && step.kind == RouteStep::Kind::GOAL && run.places[info.goal].is_portal()) {
        motion.direction = over(motion.position, aim, run.doorway_outward[run.places[info.goal].doorway]);
    } else {
        motion.direction = unit(aim - motion.position);
    }
}

void say_lost(SimulationState& run, AgentMotion const& motion) {
    run.said_lost.resize(run.navigation.destination_count());
    if (run.said_lost[motion.destination]) return;
    run.said_lost[motion.destination] = true;
    auto const time = run.frame == 0 ? "at the start" : "at " + text_of(run.seconds()) + " s";
    run.issues.emplace_back(
        IssueCategory::WARNING, "No way",
        "No way" + in_network(run, motion.route_class) + " leads from " + run.plan.surfaces[motion.region].name +
            " to " + run.places[run.infos[motion.agent].goal].title + " " + time + "; those who go there wait.");
}

void choose_ways(SimulationState& run) {
    act_all(run);
    show_gates(run);
    step_servers(run);
    attend_waits(run);
    run.density_grid.count(run.motions);
    review_reroutes(run);
    run.workers.for_ranges(run.motions.size(), grain, [&](std::size_t first, std::size_t last) {
        for (auto i = first; i < last; ++i) choose_way(run, run.motions[i]);
    });
    hold_at_entrances(run);
    for (auto& motion : run.motions) {
        auto const& info = run.infos[motion.agent];
        bool const walks = motion.way == AgentMotion::Way::WALKS;
        run.crowd.set_held(motion.body, !walks);
        run.crowd.set_direction(motion.body, motion.direction);
        if (walks) {
            run.crowd.set_ground_factor(
                motion.body, ground_factor(run.plan.inclines[motion.region], info.origin.speed, motion.direction));
        }
        if (motion.way == AgentMotion::Way::LOST) say_lost(run, motion);
    }
}

/// Whether the walker is at the line of the portal that it goes to, or crossed it in this step.
bool has_reached_portal(SimulationState const& run, AgentMotion const& motion, Point before) {
    auto const goal = run.infos[motion.agent].goal;
    if (goal == no_place || !run.places[goal].is_portal() || run.infos[motion.agent].tasks.waiting.walks) return false;
    auto const& line = run.plan.doorways[run.places[goal].doorway].line;
    if (line.region != motion.region || motion.way != AgentMotion::Way::WALKS) return false;
    return distance(line.line, motion.position) < at_line || cross_each_other(line.line, {before, motion.position});
}

/// Whether a server is the last goal, and nothing is left to do there. Who goes there has to be served until then.
bool was_served_at_the_end(SimulationState const& run, AgentInfo const& info) {
    return info.goal != no_place && run.places[info.goal].is_server() && !info.tasks.has_something_to_do();
}

/// Whether the walker was pushed out through an exit. The line of an exit is open to all, as the crowd does not know
/// who is to leave there.
bool is_outside(SimulationState const& run, AgentMotion const& motion, Point before) {
    return std::ranges::any_of(run.exits_of[motion.region], [&](std::uint32_t doorway) {
        return cross_each_other(run.plan.doorways[doorway].line.line, {before, motion.position});
    });
}

/// @param before where the walker was before the step
void note_region(SimulationState& run, AgentMotion& motion, Point before) {
    auto region = run.crowd.region(motion.body);
    if (region != motion.region &&
        (is_shut_out(run, motion, region, motion.position) || is_before_its_turn(run, motion, region))) {
        run.crowd.place(motion.body, before, motion.region);
        motion.position = before;
        region = motion.region;
    }
    if (region == motion.region) return run.events->is_at(motion);
    auto& info = run.infos[motion.agent];
    run.changes->exited.emplace_back(run.plan.surfaces[motion.region].id, info.object);
    run.changes->entered.emplace_back(run.plan.surfaces[region].id, info.object);
    if (motion.region >= run.plan.floor_count) info.previous_connection = motion.region;
    auto const left = std::exchange(motion.region, region);
    run.events->is_at(motion);
    count_passed(run, left, region, before);
    act_on_crossing(run, motion, left);
}

/// Reads where everybody got to, and lets out who has arrived.
void note_positions(SimulationState& run) {
    bool has_left = false;
    for (auto& motion : run.motions) {
        auto const& info = run.infos[motion.agent];
        if (info.controlled && !info.adjustable) run.crowd.place(motion.body, motion.position, motion.region);
        Point const before = motion.position;
        double const length_factor = run.plan.inclines[motion.region].length_factor;
        motion.position = run.crowd.position(motion.body);
        motion.walked += length_factor * distance(before, motion.position);
        note_region(run, motion, before);
        bool const arrived = motion.way == AgentMotion::Way::ARRIVED || has_reached_portal(run, motion, before) ||
                             was_served_at_the_end(run, info);
        if (!arrived || stays_on_arrival(info) || send_on(run, motion)) {
            if (is_outside(run, motion, before)) {
                run.crowd.place(motion.body, before, motion.region);
                motion.position = before;
            }
            continue;
        }
        auto const goal = info.goal;
        take_out(run, AgentInfo::Fate::ARRIVED, motion, goal != no_place && run.places[goal].is_portal());
        has_left = true;
    }
    if (has_left) forget_those_who_left(run);
}

double heading_of(Point direction) {
    double const degrees = std::atan2(direction.x, -direction.z) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

void note_frame(SimulationState& run, AgentMotion& motion) {
    auto& info = run.infos[motion.agent];
    info.velocity = run.frame_rate * (motion.position - motion.frame_start);
    info.speed = info.shown_speed.value_or(motion.walked * run.frame_rate);
    info.shown_speed.reset();
    if (!info.controlled && info.speed > standing) info.heading = heading_of(info.velocity);
    info.distance += motion.walked;
    if (info.speed > standing) info.moving_time += run.frame_length();
    auto const seen = info.speed > running    ? AgentMovement::RUN
                      : info.speed > standing ? AgentMovement::WALK
                                              : AgentMovement::STAND;
    info.movement = info.next_movement.value_or(seen);
    info.next_movement.reset();
    motion.walked = 0;
    motion.frame_start = motion.position;
}

AgentFrame frame_of(SimulationState const& run, AgentMotion const& motion) {
    auto const& info = run.infos[motion.agent];
    AgentFrame state;
    state.agent = motion.agent;
    state.surface = static_cast<std::uint16_t>(motion.region);
    state.movement = static_cast<std::uint8_t>(info.movement);
    state.activity = static_cast<std::uint8_t>(activity_of(run, motion));
    state.color = color_bytes(info.color);
    state.x = static_cast<float>(motion.position.x);
    state.y = static_cast<float>(height_at(run, motion.region, motion.position));
    state.z = static_cast<float>(motion.position.z);
    state.heading = static_cast<float>(info.heading);
    state.speed = static_cast<float>(info.speed);
    state.radius = static_cast<float>(run.crowd.radius(motion.body));
    state.density = static_cast<float>(run.crowd.local_density(motion.body));
    state.animation_time = static_cast<float>(info.moving_time);
    return state;
}

void end_frame(SimulationState& run) {
    ++run.frame;
    run.frame_states.clear();
    for (auto& motion : run.motions) {
        note_frame(run, motion);
        run.frame_states.push_back(frame_of(run, motion));
    }
    run.writer->write_frame(run.frame_states);
    run.events->step();
    run.phase = Phase::BEGUN;
}

}  // namespace

double ground_factor(Incline const& incline, double speed, Point direction) {
    bool const upwards = dot(direction, incline.uphill) >= 0;
    if (!incline.limit) return upwards ? incline.up_factor : incline.down_factor;
    double const limit = upwards ? incline.limit->up : incline.limit->down;
    return std::min(speed, limit) / speed / incline.length_factor;
}

std::uint32_t enter(SimulationState& run, SpawnRequest const& request, navigation::RegionIndex region, Point position) {
    auto const agent = static_cast<std::uint32_t>(run.infos.size());
    AgentInfo info;
    info.origin = request;
    info.goal = request.destination;
    info.color = request.color;
    info.avatar = request.avatar;
    info.first_frame = run.frame + 1;
    info.last_frame = run.frame;
    info.object = std::make_shared<Agent>(run.weak_from_this(), static_cast<int>(agent));

    AgentMotion motion;
    motion.agent = agent;
    motion.body = run.crowd.add({position, region, request.speed, request.radius, 1.0, request.side_bias, request.key});
    motion.region = region;
    motion.position = position;
    motion.frame_start = position;
    motion.starts_at = std::max(request.due, run.seconds()) + request.wait;
    info.preferences = preferences_of(run, request);
    motion.route_class = class_of(run, info.preferences);
    if (info.goal != no_place) {
        motion.destination = destination_at(run, info.goal, motion.route_class);
        open_exit(run, info.goal);
    }
    run.motion_of.push_back(static_cast<std::uint32_t>(run.motions.size()));
    run.motions.push_back(motion);
    run.changes->created.push_back(info.object);
    run.changes->entered.emplace_back(run.plan.surfaces[region].id, info.object);
    run.infos.push_back(std::move(info));
    run.events->came_in(run.motions.back(), run.places[request.origin].doorway);
    instruct(run, run.motions.back());
    return agent;
}

std::vector<std::shared_ptr<Agent>> create_agents(SimulationState& run) {
    require_running(run);
    if (run.phase != Phase::BEGUN) return {};
    run.phase = Phase::CREATED;
    auto const before = run.infos.size();
    std::vector<PlaceIndex> due;
    for (PlaceIndex origin = 0; origin < run.requests.by_origin.size(); ++origin) {
        if (is_due(run, origin)) due.push_back(origin);
    }
    if (!due.empty()) {
        Occupancy occupancy(run);
        for (auto const origin : due) let_in_from(run, origin, occupancy);
    }
    std::vector<std::shared_ptr<Agent>> created;
    for (auto agent = before; agent < run.infos.size(); ++agent) created.push_back(run.infos[agent].object);
    return created;
}

void choose_targets(SimulationState& run) {
    require_running(run);
    create_agents(run);
    if (run.phase != Phase::CREATED) return;
    tell_broadcasts(run);
    send_on_who_stand(run);
    choose_ways(run);
    run.phase = Phase::CHOSEN;
}

std::shared_ptr<FrameChanges const> move_agents(SimulationState& run) {
    choose_targets(run);
    for (int substep = 0; substep < run.substeps; ++substep) {
        if (substep > 0) choose_ways(run);
        run.crowd.step(run.frame_length() / run.substeps);
        note_positions(run);
    }
    end_frame(run);
    return std::exchange(run.changes, std::make_shared<FrameChanges>());
}

}  // namespace pedflux::engine
