#include "engine/simulation/agent_actions.h"

#include "engine/behaviour/random.h"
#include "engine/behaviour/task_order.h"
#include "engine/geometry/checks.h"
#include "engine/simulation/agent_situation_live.h"
#include "engine/simulation/dispatches.h"
#include "engine/simulation/orders.h"
#include "engine/simulation/random_streams.h"
#include "engine/simulation/rules_run.h"
#include "engine/simulation/ways.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pedflux::engine {

namespace {

constexpr double without_end = std::numeric_limits<double>::infinity();

double clock(LiveRun const& run) { return run.start_time + run.seconds(); }

bool is_portal(LiveRun const& run, PlaceIndex place) { return place != no_place && run.places[place].is_portal(); }

PlaceIndex nearest_of(LiveRun& run, Walker const& walker, std::span<PlaceIndex const> places) {
    return nearest_place(run, {walker.region, walker.position}, walker.route_class, places);
}

/// Where a connection's end leads out of it. The end is at the connection's joints there.
navigation::DestinationIndex end_of(LiveRun& run, navigation::RegionIndex connection, bool at_ball) {
    auto const [entry, is_new] = run.rules.ends.emplace(std::pair(connection, at_ball), navigation::none);
    if (is_new) {
        navigation::Destination end{run.plan.surfaces[connection].name, {}, {}};
        for (auto const& joint : run.plan.joints) {
            if (joint.connection == connection && joint.at_ball == at_ball) {
                end.lines.push_back({connection, joint.line});
            }
        }
        entry->second = run.navigation.add_destination(end);
    }
    return entry->second;
}

/// Which end of a connection a walker is nearer to.
bool is_at_ball(LiveRun const& run, navigation::RegionIndex connection, Point position) {
    double least = without_end;
    bool at_ball = true;
    for (auto const& joint : run.plan.joints) {
        if (joint.connection != connection || distance(joint.line, position) >= least) continue;
        least = distance(joint.line, position);
        at_ball = joint.at_ball;
    }
    return at_ball;
}

/// One agent and the world around it, as its actions see them.
class LiveScene : public ActionScene {
  public:
    LiveScene(LiveRun& run, Walker& walker)
        : run_(run), walker_(walker), person_(run.persons[walker.agent]), doings_(person_.doings) {}

    double now() const override { return clock(run_); }
    bool passes(int test) override {
        LiveSituation const situation(run_, walker_, doings_.tests++);
        return engine::passes(run_.rules.tests[static_cast<std::size_t>(test)], situation);
    }
    std::optional<double> time_of(int time) const override {
        return clock_time(run_, run_.rules.plan.times[static_cast<std::size_t>(time)]);
    }
    bool has_arrived(ActionTask const& task) override {
        auto const& node = node_of(task);
        if (node.type == AgentActionTypeId::SEEK_PROCESS_START) return is_through(node, task);
        auto const goal = goal_of(node, task);
        doings_.task_goal = goal;
        if (goal == no_place) return true;
        bool const arrived =
            node.type == AgentActionTypeId::FOLLOW_SIGN ? has_passed(goal) : is_at(run_, walker_, goal);
        if (arrived) {
            if (is_portal(run_, goal)) passed_portal_ = goal;
            choosing_ = true;
        }
        return arrived;
    }
    void happen(ActionNode const& node) override;

    bool leaves() const { return leaves_; }
    /// A portal that it reached on its way in this call.
    PlaceIndex take_passed_portal() { return std::exchange(passed_portal_, no_place); }

  private:
    ActionNode const& node_of(ActionTask const& task) const {
        return run_.rules.plan.nodes[static_cast<std::size_t>(task.node)];
    }
    PlaceIndex goal_of(ActionNode const& node, ActionTask const& task);
    bool has_passed(PlaceIndex goal);
    std::optional<PlaceIndex> first_station(ActionNode const& node, ActionTask const& task);
    void go_on(ActionFrame& process, PlaceIndex station);
    bool is_through(ActionNode const& node, ActionTask const& task);

    LiveRun& run_;
    Walker& walker_;
    Person& person_;
    Doings& doings_;
    bool leaves_ = false;
    bool choosing_ = false;  ///< the goal of the last task is reached
    PlaceIndex passed_portal_ = no_place;
};

/// Of goals of which the easiest counts, one is chosen when the task begins.
PlaceIndex LiveScene::goal_of(ActionNode const& node, ActionTask const& task) {
    if (node.type == AgentActionTypeId::SEEK_INITIAL_GOAL) {
        doings_.last_goal = person_.origin.destination;
        return doings_.last_goal;
    }
    if (node.type == AgentActionTypeId::SEEK_ORIGIN) return person_.origin.origin;
    auto const goals = std::span(run_.rules.places).subspan(node.objects.first, node.objects.count);
    if (task.goal != ANY_GOAL) return goals[static_cast<std::size_t>(task.goal)];
    bool const is_chosen = !choosing_ && doings_.task == task && doings_.task_goal != no_place;
    choosing_ = false;
    return is_chosen ? doings_.task_goal : nearest_of(run_, walker_, goals);
}

/// Connections are passed from one end to the other.
bool LiveScene::has_passed(PlaceIndex goal) {
    auto const region = run_.places[goal].is_portal() ? navigation::none : run_.places[goal].regions.front();
    bool const is_connection = region != navigation::none && region >= run_.plan.floor_count;
    if (!is_connection) return is_at(run_, walker_, goal);
    bool const was_on_it = doings_.sign.region == region;
    if (walker_.region != region) {
        if (was_on_it) doings_.sign = {};
        return was_on_it;
    }
    if (!was_on_it) {
        bool const to_ball = !is_at_ball(run_, region, walker_.position);
        doings_.sign = {region, end_of(run_, region, to_ball)};
    }
    constexpr double at_end = 0.3;
    auto const rest = run_.navigation.distance(walker_.region, walker_.position, doings_.sign.far_end);
    bool const at_far_end = rest && *rest < at_end;
    if (at_far_end) doings_.sign = {};
    return at_far_end;
}

std::optional<PlaceIndex> LiveScene::first_station(ActionNode const& node, ActionTask const& task) {
    auto const starts = std::span(run_.rules.places).subspan(node.objects.first, node.objects.count);
    auto const drawn = static_cast<std::size_t>(std::max(task.goal, 0));
    auto const start = choose_start(run_, walker_, starts, drawn, run_.rules.plan.weights_of(node));
    if (!start || !run_.places[*start].is_dispatch()) return start;
    return sink_for(run_, walker_, run_.rules.dispatches[run_.places[*start].dispatch], no_place);
}

/// Goes to a station: a portal or area becomes its last goal, and so does what follows on a last goal that it passed.
void LiveScene::go_on(ActionFrame& process, PlaceIndex station) {
    auto const last = doings_.last_goal;
    bool const leads_from_last =
        last != no_place && (run_.places[last].is_server() || last == static_cast<PlaceIndex>(process.passed));
    if (leads_from_last || !run_.places[station].is_server()) doings_.last_goal = station;
    process.station = static_cast<int>(station);
}

/// Whether it has come through all stations of a process, or may use none of its servers; they see to the rest.
bool LiveScene::is_through(ActionNode const& node, ActionTask const& task) {
    auto& process = doings_.actions.frames.back();
    for (;;) {
        if (process.station == NONE) {
            auto const next = process.passed == NONE
                                  ? first_station(node, task)
                                  : next_station(run_, walker_, static_cast<PlaceIndex>(process.passed));
            if (!next) return true;
            go_on(process, *next);
        }
        auto const station = static_cast<PlaceIndex>(process.station);
        doings_.task_goal = station;
        if (run_.places[station].is_server()) {
            auto const& visit = doings_.visit;
            if (!visit.is_on() || visit.task != task) visit_server(run_, walker_, run_.places[station].server, task);
            return false;
        }
        if (!is_at(run_, walker_, station)) return false;
        process.passed = std::exchange(process.station, NONE);
    }
}

void LiveScene::happen(ActionNode const& node) {
    auto const objects = run_.rules.plan.objects_of(node);
    switch (node.type) {
        case AgentActionTypeId::ADD_TOKENS:
            for (auto const& token : objects) give_token(run_, walker_.agent, token);
            break;
        case AgentActionTypeId::CLEAR_TOKENS:
            for (auto const& token : objects) take_token(run_, walker_.agent, token);
            break;
        case AgentActionTypeId::ADD_TO_TALLY:
            for (auto const& tally : objects) {
                if (auto const number = run_.timed->tally_plan().find(tally)) {
                    run_.timed->tallies.add(*number, node.value);
                }
            }
            break;
        case AgentActionTypeId::SET_AVATAR:
            person_.avatar = objects.front();
            break;
        case AgentActionTypeId::CLEAR_AVATAR:
            person_.avatar = person_.origin.avatar;
            break;
        case AgentActionTypeId::SET_COLOR:
            person_.color = node.color;
            break;
        case AgentActionTypeId::CLEAR_COLOR:
            person_.color = person_.origin.color;
            break;
        case AgentActionTypeId::SET_NETWORK:
            set_network(run_, walker_, objects.empty() ? no_network : require_network(run_, objects.front()));
            break;
        case AgentActionTypeId::CLEAR_NETWORK:
            set_network(run_, walker_, wish_of(run_, person_.origin).network);
            break;
        case AgentActionTypeId::EXIT_SIMULATION:
            leaves_ = true;
            break;
        case AgentActionTypeId::CLEAR_TASKS:
            doings_.last_goal = no_place;
            doings_.circulation = no_place;
            break;
        default:
            // Routes are the shortest whatever an agent has passed: its history need not be cleared.
            break;
    }
}

/// Sends somebody to a place, or lets it stand.
void head_for(LiveRun& run, Walker& walker, PlaceIndex goal) {
    auto& person = run.persons[walker.agent];
    person.goal = goal;
    walker.destination = goal == no_place ? navigation::none : destination_at(run, goal, walker.route_class);
    if (goal != no_place && !stays_on_arrival(person)) open_exit(run, goal);
}

/// The next portal of somebody who circulates: another one than the last, each with the same chance.
PlaceIndex next_portal(LiveRun const& run, Person const& person) {
    auto const& doings = person.doings;
    auto portals = run.rules.circulations[doings.circulation].portals;
    if (portals.size() > 1) std::erase(portals, doings.portal);
    Random random(run.seed, streams::of_circulation + (std::uint64_t{doings.portals_drawn} << 32) + person.origin.key);
    return portals[random.below(static_cast<std::uint32_t>(portals.size()))];
}

bool circulates_on(LiveRun const& run, Doings const& doings) {
    auto const& rules = run.rules.circulations[doings.circulation];
    bool const counted = doings.portals_left <= 0;
    auto const end = rules.time ? clock_time(run, *rules.time).value_or(without_end) : doings.circulates_until;
    bool const over = clock(run) + 1e-6 >= end;
    bool const has_count = rules.count.has_value();
    bool const has_time = rules.duration || rules.time;
    if (rules.until_both && has_count && has_time) return !counted || !over;
    return !counted && !over;
}

/// Goes on to the next portal at a portal; to the last goal when it has circulated for long enough.
void circulate(LiveRun& run, Walker& walker) {
    auto& person = run.persons[walker.agent];
    auto& doings = person.doings;
    bool const begins = doings.portals_drawn == 0;
    bool const reached = !begins && is_at(run, walker, doings.portal);
    if (reached) {
        --doings.portals_left;
        int const waypoint = run.rules.doorways[run.places[doings.portal].doorway].waypoint;
        if (waypoint != NONE) start(doings.actions, waypoint);
    }
    if (!circulates_on(run, doings)) {
        doings.circulation = no_place;
        return;
    }
    if (begins || reached) {
        doings.portal = next_portal(run, person);
        ++doings.portals_drawn;
    }
    head_for(run, walker, doings.portal);
}

/// Draws for how long somebody circulates.
void begin_circulation(LiveRun const& run, Person& person, std::uint32_t circulation) {
    if (circulation == no_place) return;
    auto& doings = person.doings;
    auto const& rules = run.rules.circulations[circulation];
    Random random(run.seed, streams::of_circulation - 1 - person.origin.key);
    doings.circulation = circulation;
    doings.portal = person.origin.origin;
    if (rules.count) doings.portals_left = static_cast<int>(std::lround(sample(*rules.count, random)));
    if (rules.duration) doings.circulates_until = clock(run) + sample(*rules.duration, random);
}

}  // namespace

void act(LiveRun& run, Walker& walker) {
    auto& person = run.persons[walker.agent];
    auto& doings = person.doings;
    LiveScene scene(run, walker);
    ActionDraws const draws{run.seed, person.origin.key};
    auto const advanced = [&] {
        for (;;) {
            auto const task = advance(run.rules.plan, doings.actions, draws, scene);
            auto const portal = scene.take_passed_portal();
            int const waypoint = portal == no_place ? NONE : run.rules.doorways[run.places[portal].doorway].waypoint;
            if (waypoint == NONE || scene.leaves()) return task;
            start(doings.actions, waypoint);
        }
    };
    doings.task = advanced();
    if (scene.leaves()) return take_out(run, Person::Fate::ARRIVED, walker, false);
    if (doings.task) {
        auto const& node = run.rules.plan.nodes[static_cast<std::size_t>(doings.task->node)];
        bool const goes = node.type >= AgentActionTypeId::SEEK_AREA && node.type <= AgentActionTypeId::FOLLOW_SIGN;
        head_for(run, walker, goes ? doings.task_goal : no_place);
        if (doings.sign.far_end != navigation::none && goes) walker.destination = doings.sign.far_end;
        return;
    }
    doings.task_goal = no_place;
    if (doings.wait_after) {
        walker.starts_at = std::max(walker.starts_at, run.seconds() + *doings.wait_after);
        doings.wait_after.reset();
    }
    if (doings.circulation != no_place && walker.starts_at <= run.seconds()) circulate(run, walker);
    if (doings.circulation == no_place) head_for(run, walker, doings.last_goal);
}

void send_to(LiveRun& run, Walker& walker, PlaceIndex goal) {
    run.persons[walker.agent].doings.last_goal = goal;
    head_for(run, walker, goal);
}

void clear_zones(LiveRun& run) {
    for (auto& clearance : run.rules.clearances) {
        auto const starts = run.timed->start_count(clearance.event);
        if (starts == std::exchange(clearance.starts, starts)) continue;
        for (auto& walker : run.walkers) {
            auto& person = run.persons[walker.agent];
            bool const is_inside =
                std::ranges::any_of(clearance.zones, [&](PlaceIndex zone) { return is_at(run, walker, zone); });
            if (!is_inside || person.origin.event.InternalEquals(clearance.event)) continue;
            Random random(run.seed, streams::of_clearances + (std::uint64_t{starts - 1} << 32) + person.origin.key);
            person.doings.actions.frames.clear();
            person.doings.task.reset();
            person.doings.circulation = no_place;
            person.doings.wait_after.reset();
            person.doings.evacuates = true;
            person.doings.wait_style = clearance.wait_style;
            walker.starts_at = run.seconds() + sample(clearance.wait, random);
            send_to(run, walker, nearest_of(run, walker, clearance.exits));
        }
    }
}

void act_all(LiveRun& run) {
    clear_zones(run);
    bool has_left = false;
    for (auto& walker : run.walkers) {
        if (!run.persons[walker.agent].doings.has_something_to_do()) continue;
        act(run, walker);
        has_left = has_left || run.walker_of[walker.agent] == gone;
    }
    if (has_left) forget_those_who_left(run);
}

void instruct(LiveRun& run, Walker& walker) {
    auto& person = run.persons[walker.agent];
    auto& doings = person.doings;
    auto const event = run.rules.events.find(person.origin.event);
    auto const profile = run.rules.profiles.find(person.origin.profile);
    auto const give = [&](int action) {
        if (action != NONE) start_last(doings.actions, action);
    };
    doings.last_goal = person.goal;
    if (is_portal(run, person.origin.origin)) {
        give(run.rules.doorways[run.places[person.origin.origin].doorway].enter);
    }
    if (profile != run.rules.profiles.end()) give(profile->second);
    if (event != run.rules.events.end()) {
        doings.evacuates = event->second.is_evacuation;
        doings.wait_style = event->second.wait_style;
        give(event->second.initial_action);
        begin_circulation(run, person, event->second.circulation);
        for (auto const& [test, color] : event->second.colors) {
            if (!passes(test, LiveSituation(run, walker, doings.tests++))) continue;
            person.color = person.origin.color = color;
            break;
        }
    }
    if (doings.has_something_to_do() && person.origin.wait > 0) doings.wait_after = person.origin.wait;
}

void act_on_crossing(LiveRun& run, Walker const& walker, navigation::RegionIndex from) {
    if (!run.rules.any_at_surfaces) return;
    auto& actions = run.persons[walker.agent].doings.actions;
    auto const end_at = [&](navigation::RegionIndex region) {
        bool const at_box = region >= run.plan.floor_count && !is_at_ball(run, region, walker.position);
        auto const& surface = run.rules.surfaces[region];
        return at_box ? surface.box : surface.ball;
    };
    // What is started last is done first.
    auto const begin = [&](int action) {
        if (action != NONE) start(actions, action);
    };
    for (auto const& zone : run.rules.zones) {
        if (zone.has[walker.region] && !zone.has[from]) begin(zone.actions.enter);
    }
    begin(end_at(walker.region).enter);
    for (auto const& zone : run.rules.zones) {
        if (zone.has[from] && !zone.has[walker.region]) begin(zone.actions.exit);
    }
    begin(end_at(from).exit);
}

void act_on_leaving(LiveRun& run, Walker& walker) {
    if (!run.rules.any_at_surfaces) return;
    auto& person = run.persons[walker.agent];
    auto& actions = person.doings.actions;
    actions.frames.clear();
    for (auto const& zone : run.rules.zones) {
        if (zone.has[walker.region] && zone.actions.exit != NONE) start(actions, zone.actions.exit);
    }
    // The ends of connections are passed by nobody who leaves.
    if (walker.region < run.plan.floor_count) {
        int const exit = run.rules.surfaces[walker.region].ball.exit;
        if (exit != NONE) start(actions, exit);
    }
    LiveScene scene(run, walker);
    advance(run.rules.plan, actions, {run.seed, person.origin.key}, scene);
    actions.frames.clear();
}

void order(LiveRun& run, Walker& walker, TaskOrder const& task, bool at_once) {
    for (auto const& goal : task.goals) {
        if (task.kind == TaskKind::SEEK_PROCESS_START) {
            run.places.process_start(goal);
            continue;
        }
        auto const place = run.places.of(goal);
        bool const wants_portal = task.kind == TaskKind::SEEK_PORTAL;
        bool const wants_area = task.kind == TaskKind::SEEK_AREA;
        if (wants_portal && !run.places[place].is_portal()) refuse(run.places[place].title + " is no portal to go to");
        if (wants_area && run.places[place].is_portal()) {
            refuse(run.places[place].title + " is no floor, connection or zone to go to");
        }
    }
    if (task.style) wait_rule_of(*task.style, run.rules.waits.spaces);
    if (has_many_orders(run.rules)) {
        std::vector<Doings*> all;
        for (auto const& each : run.walkers) all.push_back(&run.persons[each.agent].doings);
        forget_done_orders(run.rules, run.places, all);
    }
    int const node = add_order(run.rules, run.places, task);
    auto& actions = run.persons[walker.agent].doings.actions;
    if (at_once) {
        start(actions, node);
    } else {
        start_last(actions, node);
    }
    act(run, walker);
    forget_those_who_left(run);
}

void clear_tasks(LiveRun& run, Walker& walker) {
    auto& doings = run.persons[walker.agent].doings;
    doings.actions.frames.clear();
    doings.last_goal = no_place;
    doings.circulation = no_place;
    doings.wait_after.reset();
    act(run, walker);
}

}  // namespace pedflux::engine
