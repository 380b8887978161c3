#include "engine/simulation/stepping.h"

#include "engine/geometry/checks.h"
#include "engine/results/agent_data.h"
#include "engine/simulation/admission.h"
#include "engine/simulation/agent_actions.h"
#include "engine/simulation/broadcasts.h"
#include "engine/simulation/dispatches.h"
#include "engine/simulation/recording.h"
#include "engine/simulation/rules_run.h"
#include "engine/simulation/waits.h"
#include "engine/simulation/ways.h"

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

void require_running(LiveRun const& run) {
    if (run.stopped) refuse("The simulation was stopped and takes no more frames");
}

/// Where a newcomer goes: the nearest of the places that it may choose from.
PlaceIndex goal_of(LiveRun& run, Newcomer const& newcomer, Spot const& spot) {
    if (newcomer.choices == no_place) return newcomer.destination;
    return nearest_place(run, {spot.region, spot.place}, class_of(run, wish_of(run, newcomer)),
                         run.newcomers.choices[newcomer.choices]);
}

void say_crowded(LiveRun& run, PlaceIndex origin) {
    run.said_crowded.resize(run.places.size());
    if (run.places[origin].is_portal() || run.said_crowded[origin]) return;
    run.said_crowded[origin] = true;
    run.issues.emplace_back(IssueCategory::WARNING, "No room at the start",
                            run.places[origin].title + " has no room for all who start there at " +
                                text_of(run.seconds()) + " s; the others come when there is.");
}

void let_in_from(LiveRun& run, PlaceIndex origin, Occupancy& occupancy) {
    auto const& waiting = run.newcomers.by_origin[origin];
    auto& next = run.next_newcomer[origin];
    while (next < waiting.size() && waiting[next].due <= run.seconds()) {
        Newcomer newcomer = waiting[next];
        auto const spot = spot_for(run, newcomer, occupancy);
        if (!spot) return say_crowded(run, origin);
        occupancy.add(spot->region, spot->place, newcomer.radius);
        newcomer.destination = goal_of(run, newcomer, *spot);
        auto const agent = enter(run, newcomer, spot->region, spot->place);
        Place const& place = run.places[origin];
        if (place.is_portal()) {
            ++run.entered_at[place.doorway];
            run.changes->entered.emplace_back(place.id, run.persons[agent].face);
        }
        ++next;
        --run.waiting_to_enter;
    }
}

bool is_due(LiveRun const& run, PlaceIndex origin) {
    auto const& waiting = run.newcomers.by_origin[origin];
    auto const next = run.next_newcomer[origin];
    return next < waiting.size() && waiting[next].due <= run.seconds();
}

/// Where to walk to get over a line that leads on.
Point over(Point position, Point aim, Point across) {
    return distance(position, aim) < look_beyond ? unit(aim - position + look_beyond * across) : unit(aim - position);
}

/// The next step of a detour: to its joint, and over it.
RouteStep step_over(LiveRun const& run, Walker& walker) {
    auto step = run.navigation.next(walker.region, walker.position, walker.detour.way, walker.hint);
    if (step.kind == RouteStep::Kind::GOAL || step.kind == RouteStep::Kind::ARRIVED) {
        step.kind = RouteStep::Kind::CONNECTION;
        step.connection = walker.detour.joint;
        step.forward = false;
    }
    return step;
}

/// Looks up the way of one walker. Writes nothing but the walker.
void choose_way(LiveRun const& run, Walker& walker) {
    auto const& person = run.persons[walker.agent];
    walker.direction = {};
    walker.way = Walker::Way::STANDS;
    walker.ahead = navigation::none;
    if (person.controlled) return;
    if (person.direction_override) {
        walker.direction = *person.direction_override;
        walker.way = Walker::Way::WALKS;
        return;
    }
    if (walker.post) {
        Point const way = *walker.post - walker.position;
        if (length(way) < at_post) return;
        walker.direction = unit(way);
        walker.way = Walker::Way::WALKS;
        return;
    }
    bool const goes_to_wait = person.doings.waiting.walks;
    auto const destination = goes_to_wait ? person.doings.waiting.way : walker.destination;
    if (destination == navigation::none) return;
    auto const step = takes_detour(run, walker, destination)
                          ? step_over(run, walker)
                          : run.navigation.next(walker.region, walker.position, destination, walker.hint);
    if (goes_to_wait && (step.kind == RouteStep::Kind::ARRIVED || step.kind == RouteStep::Kind::UNREACHABLE)) return;
    if (step.kind == RouteStep::Kind::ARRIVED) {
        walker.way = Walker::Way::ARRIVED;
        return;
    }
    if (step.kind == RouteStep::Kind::UNREACHABLE) {
        walker.way = Walker::Way::LOST;
        return;
    }
    if (walker.starts_at > run.seconds() && !person.doings.task && !goes_to_wait) return;
    walker.way = Walker::Way::WALKS;
    Point const aim = aim_on(step, walker, person.origin.key, run.throng, run.seconds());
    if (step.kind == RouteStep::Kind::CONNECTION) {
        walker.ahead = step.connection;
        Point const to_floor = run.plan.joints[step.connection].to_floor;
        walker.direction = over(walker.position, aim, step.forward ? to_floor : -1 * to_floor);
    } else if (!goes_to_wait && step.kind == RouteStep::Kind::GOAL && run.places[person.goal].is_portal()) {
        walker.direction = over(walker.position, aim, run.doorway_outward[run.places[person.goal].doorway]);
    } else {
        walker.direction = unit(aim - walker.position);
    }
}

void say_lost(LiveRun& run, Walker const& walker) {
    run.said_lost.resize(run.navigation.destination_count());
    if (run.said_lost[walker.destination]) return;
    run.said_lost[walker.destination] = true;
    auto const time = run.frame == 0 ? "at the start" : "at " + text_of(run.seconds()) + " s";
    run.issues.emplace_back(
        IssueCategory::WARNING, "No way",
        "No way" + in_network(run, walker.route_class) + " leads from " + run.plan.surfaces[walker.region].name +
            " to " + run.places[run.persons[walker.agent].goal].title + " " + time + "; those who go there wait.");
}

void choose_ways(LiveRun& run) {
    act_all(run);
    show_gates(run);
    step_servers(run);
    attend_waits(run);
    run.throng.count(run.walkers);
    review_detours(run);
    run.workers.for_ranges(run.walkers.size(), grain, [&](std::size_t first, std::size_t last) {
        for (auto i = first; i < last; ++i) choose_way(run, run.walkers[i]);
    });
    hold_at_entrances(run);
    for (auto& walker : run.walkers) {
        auto const& person = run.persons[walker.agent];
        bool const walks = walker.way == Walker::Way::WALKS;
        run.crowd.set_held(walker.body, !walks);
        run.crowd.set_direction(walker.body, walker.direction);
        if (walks) {
            run.crowd.set_ground_factor(
                walker.body, ground_factor(run.plan.inclines[walker.region], person.origin.speed, walker.direction));
        }
        if (walker.way == Walker::Way::LOST) say_lost(run, walker);
    }
}

bool has_crossed(Segment line, Point from, Point to) {
    bool const line_between = (orientation(line.from, line.to, from) > 0) != (orientation(line.from, line.to, to) > 0);
    bool const way_between = (orientation(from, to, line.from) > 0) != (orientation(from, to, line.to) > 0);
    return line_between && way_between;
}

/// Whether the walker is at the line of the portal that it goes to, or crossed it in this step.
bool has_reached_portal(LiveRun const& run, Walker const& walker, Point before) {
    auto const goal = run.persons[walker.agent].goal;
    if (goal == no_place || !run.places[goal].is_portal() || run.persons[walker.agent].doings.waiting.walks)
        return false;
    auto const& line = run.plan.doorways[run.places[goal].doorway].line;
    if (line.region != walker.region || walker.way != Walker::Way::WALKS) return false;
    return distance(line.line, walker.position) < at_line || has_crossed(line.line, before, walker.position);
}

/// Whether a server is the last goal, and nothing is left to do there. Who goes there has to be served until then.
bool was_served_at_the_end(LiveRun const& run, Person const& person) {
    return person.goal != no_place && run.places[person.goal].is_server() && !person.doings.has_something_to_do();
}

/// Whether the walker was pushed out through an exit. The line of an exit is open to all, as the crowd does not know
/// who is to leave there.
bool is_outside(LiveRun const& run, Walker const& walker, Point before) {
    return std::ranges::any_of(run.exits_of[walker.region], [&](std::uint32_t doorway) {
        return has_crossed(run.plan.doorways[doorway].line.line, before, walker.position);
    });
}

/// @param before where the walker was before the step
void note_region(LiveRun& run, Walker& walker, Point before) {
    auto region = run.crowd.region(walker.body);
    if (region != walker.region &&
        (is_shut_out(run, walker, region, walker.position) || is_before_its_turn(run, walker, region))) {
        run.crowd.place(walker.body, before, walker.region);
        walker.position = before;
        region = walker.region;
    }
    if (region == walker.region) return run.timed->is_at(walker);
    auto& person = run.persons[walker.agent];
    run.changes->exited.emplace_back(run.plan.surfaces[walker.region].id, person.face);
    run.changes->entered.emplace_back(run.plan.surfaces[region].id, person.face);
    if (walker.region >= run.plan.floor_count) person.previous_connection = walker.region;
    auto const left = std::exchange(walker.region, region);
    run.timed->is_at(walker);
    count_passed(run, left, region, before);
    act_on_crossing(run, walker, left);
}

/// Reads where everybody got to, and lets out who has arrived.
void note_positions(LiveRun& run) {
    bool has_left = false;
    for (auto& walker : run.walkers) {
        auto const& person = run.persons[walker.agent];
        if (person.controlled && !person.adjustable) run.crowd.place(walker.body, walker.position, walker.region);
        Point const before = walker.position;
        double const length_factor = run.plan.inclines[walker.region].length_factor;
        walker.position = run.crowd.position(walker.body);
        walker.walked += length_factor * distance(before, walker.position);
        note_region(run, walker, before);
        bool const arrived = walker.way == Walker::Way::ARRIVED || has_reached_portal(run, walker, before) ||
                             was_served_at_the_end(run, person);
        if (!arrived || stays_on_arrival(person) || send_on(run, walker)) {
            if (is_outside(run, walker, before)) {
                run.crowd.place(walker.body, before, walker.region);
                walker.position = before;
            }
            continue;
        }
        auto const goal = person.goal;
        take_out(run, Person::Fate::ARRIVED, walker, goal != no_place && run.places[goal].is_portal());
        has_left = true;
    }
    if (has_left) forget_those_who_left(run);
}

double heading_of(Point direction) {
    double const degrees = std::atan2(direction.x, -direction.z) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

void note_frame(LiveRun& run, Walker& walker) {
    auto& person = run.persons[walker.agent];
    person.velocity = run.frame_rate * (walker.position - walker.frame_start);
    person.speed = person.shown_speed.value_or(walker.walked * run.frame_rate);
    person.shown_speed.reset();
    if (!person.controlled && person.speed > standing) person.heading = heading_of(person.velocity);
    person.distance += walker.walked;
    if (person.speed > standing) person.moving_time += run.frame_length();
    auto const seen = person.speed > running    ? AgentMovement::RUN
                      : person.speed > standing ? AgentMovement::WALK
                                                : AgentMovement::STAND;
    person.movement = person.next_movement.value_or(seen);
    person.next_movement.reset();
    walker.walked = 0;
    walker.frame_start = walker.position;
}

AgentFrame frame_of(LiveRun const& run, Walker const& walker) {
    auto const& person = run.persons[walker.agent];
    AgentFrame state;
    state.agent = walker.agent;
    state.surface = static_cast<std::uint16_t>(walker.region);
    state.movement = static_cast<std::uint8_t>(person.movement);
    state.activity = static_cast<std::uint8_t>(activity_of(run, walker));
    state.color = color_bytes(person.color);
    state.x = static_cast<float>(walker.position.x);
    state.y = static_cast<float>(height_at(run, walker.region, walker.position));
    state.z = static_cast<float>(walker.position.z);
    state.heading = static_cast<float>(person.heading);
    state.speed = static_cast<float>(person.speed);
    state.radius = static_cast<float>(run.crowd.radius(walker.body));
    state.density = static_cast<float>(run.crowd.felt_density(walker.body));
    state.animation_time = static_cast<float>(person.moving_time);
    return state;
}

void end_frame(LiveRun& run) {
    ++run.frame;
    run.frame_states.clear();
    for (auto& walker : run.walkers) {
        note_frame(run, walker);
        run.frame_states.push_back(frame_of(run, walker));
    }
    run.writer->write_frame(run.frame_states);
    run.timed->step();
    run.phase = Phase::BEGUN;
}

}  // namespace

double ground_factor(Incline const& incline, double speed, Point direction) {
    bool const upwards = dot(direction, incline.uphill) >= 0;
    if (!incline.limit) return upwards ? incline.up_factor : incline.down_factor;
    double const limit = upwards ? incline.limit->up : incline.limit->down;
    return std::min(speed, limit) / speed / incline.length_factor;
}

std::uint32_t enter(LiveRun& run, Newcomer const& newcomer, navigation::RegionIndex region, Point position) {
    auto const agent = static_cast<std::uint32_t>(run.persons.size());
    Person person;
    person.origin = newcomer;
    person.goal = newcomer.destination;
    person.color = newcomer.color;
    person.avatar = newcomer.avatar;
    person.first_frame = run.frame + 1;
    person.last_frame = run.frame;
    person.face = std::make_shared<Agent>(run.weak_from_this(), static_cast<int>(agent));

    Walker walker;
    walker.agent = agent;
    walker.body =
        run.crowd.add({position, region, newcomer.speed, newcomer.radius, 1.0, newcomer.side_bias, newcomer.key});
    walker.region = region;
    walker.position = position;
    walker.frame_start = position;
    walker.starts_at = std::max(newcomer.due, run.seconds()) + newcomer.wait;
    person.wish = wish_of(run, newcomer);
    walker.route_class = class_of(run, person.wish);
    if (person.goal != no_place) {
        walker.destination = destination_at(run, person.goal, walker.route_class);
        open_exit(run, person.goal);
    }
    run.walker_of.push_back(static_cast<std::uint32_t>(run.walkers.size()));
    run.walkers.push_back(walker);
    run.changes->created.push_back(person.face);
    run.changes->entered.emplace_back(run.plan.surfaces[region].id, person.face);
    run.persons.push_back(std::move(person));
    run.timed->came_in(run.walkers.back(), run.places[newcomer.origin].doorway);
    instruct(run, run.walkers.back());
    return agent;
}

std::vector<std::shared_ptr<Agent>> create_agents(LiveRun& run) {
    require_running(run);
    if (run.phase != Phase::BEGUN) return {};
    run.phase = Phase::CREATED;
    auto const before = run.persons.size();
    std::vector<PlaceIndex> due;
    for (PlaceIndex origin = 0; origin < run.newcomers.by_origin.size(); ++origin) {
        if (is_due(run, origin)) due.push_back(origin);
    }
    if (!due.empty()) {
        Occupancy occupancy(run);
        for (auto const origin : due) let_in_from(run, origin, occupancy);
    }
    std::vector<std::shared_ptr<Agent>> created;
    for (auto agent = before; agent < run.persons.size(); ++agent) created.push_back(run.persons[agent].face);
    return created;
}

void choose_targets(LiveRun& run) {
    require_running(run);
    create_agents(run);
    if (run.phase != Phase::CREATED) return;
    tell_broadcasts(run);
    send_on_who_stand(run);
    choose_ways(run);
    run.phase = Phase::CHOSEN;
}

std::shared_ptr<FrameChanges const> move_agents(LiveRun& run) {
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
