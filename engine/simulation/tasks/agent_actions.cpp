#include "engine/simulation/tasks/agent_actions.h"

#include "engine/base/checks.h"
#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/behaviour/actions/task_order.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/tasks/dispatches.h"
#include "engine/simulation/tasks/live_situation.h"
#include "engine/simulation/tasks/task_orders.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pedflux::engine {

namespace {

constexpr double without_end = std::numeric_limits<double>::infinity();

double clock(SimulationState const& run) { return run.start_time + run.seconds(); }

bool is_portal(SimulationState const& run, PlaceIndex place) {
    return place != no_place && run.places[place].is_portal();
}

PlaceIndex nearest_of(SimulationState& run, AgentMotion const& motion, std::span<PlaceIndex const> places) {
    return nearest_place(run, {motion.region, motion.position}, motion.route_class, places);
}

/// Where a connection's end leads out of it. The end is at the connection's joints there.
navigation::DestinationIndex end_of(SimulationState& run, navigation::RegionIndex connection, bool at_ball) {
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
bool is_at_ball(SimulationState const& run, navigation::RegionIndex connection, Point position) {
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
    LiveScene(SimulationState& run, AgentMotion& motion)
        : run_(run), walker_(motion), person_(run.infos[motion.agent]), doings_(person_.tasks) {}

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
    void happen(ActionEffect effect, ActionNode const& node) override;

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

    SimulationState& run_;
    AgentMotion& walker_;
    AgentInfo& person_;
    TaskState& doings_;
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

void LiveScene::happen(ActionEffect effect, ActionNode const& node) {
    auto const objects = run_.rules.plan.objects_of(node);
    switch (effect) {
        case ActionEffect::ADD_TOKENS:
            for (auto const& token : objects) give_token(run_, walker_.agent, token);
            break;
        case ActionEffect::CLEAR_TOKENS:
            for (auto const& token : objects) take_token(run_, walker_.agent, token);
            break;
        case ActionEffect::ADD_TO_TALLY:
            for (auto const& tally : objects) {
                if (auto const number = run_.events->tally_plan().find(tally)) {
                    run_.events->tallies.add(*number, node.value);
                }
            }
            break;
        case ActionEffect::SET_AVATAR:
            person_.avatar = objects.front();
            break;
        case ActionEffect::CLEAR_AVATAR:
            person_.avatar = person_.origin.avatar;
            break;
        case ActionEffect::SET_COLOR:
            person_.color = node.color;
            break;
        case ActionEffect::CLEAR_COLOR:
            person_.color = person_.origin.color;
            break;
        case ActionEffect::SET_NETWORK:
            set_network(run_, walker_, objects.empty() ? no_network : require_network(run_, objects.front()));
            break;
        case ActionEffect::CLEAR_NETWORK:
            set_network(run_, walker_, preferences_of(run_, person_.origin).network);
            break;
        case ActionEffect::EXIT_SIMULATION:
            leaves_ = true;
            break;
        case ActionEffect::CLEAR_TASKS:
            doings_.last_goal = no_place;
            doings_.circulation = no_place;
            break;
        case ActionEffect::CLEAR_HISTORY:
            // Routes are the shortest whatever an agent has passed: its history need not be cleared.
            break;
    }
}

/// Sends somebody to a place, or lets it stand.
void head_for(SimulationState& run, AgentMotion& motion, PlaceIndex goal) {
    auto& info = run.infos[motion.agent];
    info.goal = goal;
    motion.destination = goal == no_place ? navigation::none : destination_at(run, goal, motion.route_class);
    if (goal != no_place && !stays_on_arrival(info)) open_exit(run, goal);
}

/// The next portal of somebody who circulates: another one than the last, each with the same chance.
PlaceIndex next_portal(SimulationState const& run, AgentInfo const& info) {
    auto const& tasks = info.tasks;
    auto portals = run.rules.circulations[tasks.circulation].portals;
    if (portals.size() > 1) std::erase(portals, tasks.portal);
    Random random(run.seed, streams::of_circulation + (std::uint64_t{tasks.portals_drawn} << 32) + info.origin.key);
    return portals[random.below(static_cast<std::uint32_t>(portals.size()))];
}

bool circulates_on(SimulationState const& run, TaskState const& tasks) {
    auto const& rules = run.rules.circulations[tasks.circulation];
    bool const counted = tasks.portals_left <= 0;
    auto const end = rules.time ? clock_time(run, *rules.time).value_or(without_end) : tasks.circulates_until;
    bool const over = clock(run) + 1e-6 >= end;
    bool const has_count = rules.count.has_value();
    bool const has_time = rules.duration || rules.time;
    if (rules.until_both && has_count && has_time) return !counted || !over;
    return !counted && !over;
}

/// Goes on to the next portal at a portal; to the last goal when it has circulated for long enough.
void circulate(SimulationState& run, AgentMotion& motion) {
    auto& info = run.infos[motion.agent];
    auto& tasks = info.tasks;
    bool const begins = tasks.portals_drawn == 0;
    bool const reached = !begins && is_at(run, motion, tasks.portal);
    if (reached) {
        --tasks.portals_left;
        int const waypoint = run.rules.doorways[run.places[tasks.portal].doorway].waypoint;
        if (waypoint != NONE) start(tasks.actions, waypoint);
    }
    if (!circulates_on(run, tasks)) {
        tasks.circulation = no_place;
        return;
    }
    if (begins || reached) {
        tasks.portal = next_portal(run, info);
        ++tasks.portals_drawn;
    }
    head_for(run, motion, tasks.portal);
}

/// Draws for how long somebody circulates.
void begin_circulation(SimulationState const& run, AgentInfo& info, std::uint32_t circulation) {
    if (circulation == no_place) return;
    auto& tasks = info.tasks;
    auto const& rules = run.rules.circulations[circulation];
    Random random(run.seed, streams::of_circulation - 1 - info.origin.key);
    tasks.circulation = circulation;
    tasks.portal = info.origin.origin;
    if (rules.count) tasks.portals_left = static_cast<int>(std::lround(sample(*rules.count, random)));
    if (rules.duration) tasks.circulates_until = clock(run) + sample(*rules.duration, random);
}

}  // namespace

void act(SimulationState& run, AgentMotion& motion) {
    auto& info = run.infos[motion.agent];
    auto& tasks = info.tasks;
    LiveScene scene(run, motion);
    ActionDraws const draws{run.seed, info.origin.key};
    auto const advanced = [&] {
        for (;;) {
            auto const task = advance(run.rules.plan, tasks.actions, draws, scene);
            auto const portal = scene.take_passed_portal();
            int const waypoint = portal == no_place ? NONE : run.rules.doorways[run.places[portal].doorway].waypoint;
            if (waypoint == NONE || scene.leaves()) return task;
            start(tasks.actions, waypoint);
        }
    };
    tasks.task = advanced();
    if (scene.leaves()) return take_out(run, AgentInfo::Fate::ARRIVED, motion, false);
    if (tasks.task) {
        auto const& node = run.rules.plan.nodes[static_cast<std::size_t>(tasks.task->node)];
        bool const goes = is_seeking(node.type);
        head_for(run, motion, goes ? tasks.task_goal : no_place);
        if (tasks.sign.far_end != navigation::none && goes) motion.destination = tasks.sign.far_end;
        return;
    }
    tasks.task_goal = no_place;
    if (tasks.wait_after) {
        motion.starts_at = std::max(motion.starts_at, run.seconds() + *tasks.wait_after);
        tasks.wait_after.reset();
    }
    if (tasks.circulation != no_place && motion.starts_at <= run.seconds()) circulate(run, motion);
    if (tasks.circulation == no_place) head_for(run, motion, tasks.last_goal);
}

void send_to(SimulationState& run, AgentMotion& motion, PlaceIndex goal) {
    run.infos[motion.agent].tasks.last_goal = goal;
    head_for(run, motion, goal);
}

void clear_zones(SimulationState& run) {
    for (auto& clearance : run.rules.clearances) {
        auto const starts = run.events->start_count(clearance.event);
        if (starts == std::exchange(clearance.starts, starts)) continue;
        for (auto& motion : run.motions) {
            auto& info = run.infos[motion.agent];
            bool const is_inside =
                std::ranges::any_of(clearance.zones, [&](PlaceIndex zone) { return is_at(run, motion, zone); });
            if (!is_inside || info.origin.event.InternalEquals(clearance.event)) continue;
            Random random(run.seed, streams::of_clearances + (std::uint64_t{starts - 1} << 32) + info.origin.key);
            info.tasks.actions.frames.clear();
            info.tasks.task.reset();
            info.tasks.circulation = no_place;
            info.tasks.wait_after.reset();
            info.tasks.evacuates = true;
            info.tasks.wait_style = clearance.wait_style;
            motion.starts_at = run.seconds() + sample(clearance.wait, random);
            send_to(run, motion, nearest_of(run, motion, clearance.exits));
        }
    }
}

void act_all(SimulationState& run) {
    clear_zones(run);
    bool has_left = false;
    for (auto& motion : run.motions) {
        if (!run.infos[motion.agent].tasks.has_something_to_do()) continue;
        act(run, motion);
        has_left = has_left || run.motion_of[motion.agent] == gone;
    }
    if (has_left) forget_those_who_left(run);
}

void instruct(SimulationState& run, AgentMotion& motion) {
    auto& info = run.infos[motion.agent];
    auto& tasks = info.tasks;
    auto const event = run.rules.events.find(info.origin.event);
    auto const profile = run.rules.profiles.find(info.origin.profile);
    auto const give = [&](int action) {
        if (action != NONE) start_last(tasks.actions, action);
    };
    tasks.last_goal = info.goal;
    if (is_portal(run, info.origin.origin)) {
        give(run.rules.doorways[run.places[info.origin.origin].doorway].enter);
    }
    if (profile != run.rules.profiles.end()) give(profile->second);
    if (event != run.rules.events.end()) {
        tasks.evacuates = event->second.is_evacuation;
        tasks.wait_style = event->second.wait_style;
        give(event->second.initial_action);
        begin_circulation(run, info, event->second.circulation);
        for (auto const& [test, color] : event->second.colors) {
            if (!passes(test, LiveSituation(run, motion, tasks.tests++))) continue;
            info.color = info.origin.color = color;
            break;
        }
    }
    if (tasks.has_something_to_do() && info.origin.wait > 0) tasks.wait_after = info.origin.wait;
}

void act_on_crossing(SimulationState& run, AgentMotion const& motion, navigation::RegionIndex from) {
    if (!run.rules.any_at_surfaces) return;
    auto& actions = run.infos[motion.agent].tasks.actions;
    auto const end_at = [&](navigation::RegionIndex region) {
        bool const at_box = region >= run.plan.floor_count && !is_at_ball(run, region, motion.position);
        auto const& surface = run.rules.surfaces[region];
        return at_box ? surface.box : surface.ball;
    };
    // What is started last is done first.
    auto const begin = [&](int action) {
        if (action != NONE) start(actions, action);
    };
    for (auto const& zone : run.rules.zones) {
        if (zone.has[motion.region] && !zone.has[from]) begin(zone.actions.enter);
    }
    begin(end_at(motion.region).enter);
    for (auto const& zone : run.rules.zones) {
        if (zone.has[from] && !zone.has[motion.region]) begin(zone.actions.exit);
    }
    begin(end_at(from).exit);
}

void act_on_leaving(SimulationState& run, AgentMotion& motion) {
    if (!run.rules.any_at_surfaces) return;
    auto& info = run.infos[motion.agent];
    auto& actions = info.tasks.actions;
    actions.frames.clear();
    for (auto const& zone : run.rules.zones) {
        if (zone.has[motion.region] && zone.actions.exit != NONE) start(actions, zone.actions.exit);
    }
    // The ends of connections are passed by nobody who leaves.
    if (motion.region < run.plan.floor_count) {
        int const exit = run.rules.surfaces[motion.region].ball.exit;
        if (exit != NONE) start(actions, exit);
    }
    LiveScene scene(run, motion);
    advance(run.rules.plan, actions, {run.seed, info.origin.key}, scene);
    actions.frames.clear();
}

void order(SimulationState& run, AgentMotion& motion, TaskOrder const& task, bool at_once) {
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
        std::vector<TaskState*> all;
        for (auto const& each : run.motions) all.push_back(&run.infos[each.agent].tasks);
        forget_done_orders(run.rules, run.places, all);
    }
    int const node = add_order(run.rules, run.places, task);
    auto& actions = run.infos[motion.agent].tasks.actions;
    if (at_once) {
        start(actions, node);
    } else {
        start_last(actions, node);
    }
    act(run, motion);
    forget_those_who_left(run);
}

void clear_tasks(SimulationState& run, AgentMotion& motion) {
    auto& tasks = run.infos[motion.agent].tasks;
    tasks.actions.frames.clear();
    tasks.last_goal = no_place;
    tasks.circulation = no_place;
    tasks.wait_after.reset();
    act(run, motion);
}

}  // namespace pedflux::engine
