#include "engine/simulation/tasks/waits.h"

#include "engine/base/hashing.h"
#include "engine/base/random.h"
#include "engine/base/random_streams.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pedflux::engine {

namespace {

/// Between the bodies of those who wait in a wait space (metres).
constexpr double body_gap = 0.1;
/// Those who spread out want this distance between middles (metres): from there on people count as apart from
/// strangers (E. T. Hall, "The Hidden Dimension", 1966: the end of the personal distance).
constexpr double apart = 1.2;
/// How far they go for it, and how far apart the places are among which they choose (metres).
constexpr double farthest_to_spread = 5;
constexpr double spread_step = 0.5;
/// How far apart the places are among which people choose in a wait space (metres).
constexpr double place_step = 0.25;
/// Who has not come to its place in so many times the time that the way takes, and some seconds, stays where it is.
constexpr double patience = 3;
constexpr double more_patience = 10;
/// Less room than that (metres) is no gain.
constexpr double least_gain = 0.1;
/// What a wait before moving counts as, in place of an action's node.
constexpr int before_moving = -2;

/// The wait that somebody is in at this moment, if it leads anywhere: its style and what tells it from other waits.
struct WaitNow {
    int style = NONE;
    WaitKey key;
};

WaitNow wait_now(SimulationState const& run, AgentMotion const& motion) {
    auto const& info = run.infos[motion.agent];
    auto const& tasks = info.tasks;
    if (info.controlled || info.direction_override) return {};
    if (tasks.task) {
        auto const& frame = tasks.actions.frames.back();
        int const style = run.rules.plan.nodes[static_cast<std::size_t>(tasks.task->node)].style;
        return {style, {tasks.task->node, frame.began_in}};
    }
    if (motion.starts_at <= run.seconds() || tasks.wait_style == NONE) return {};
    return {tasks.wait_style, {before_moving, static_cast<std::uint64_t>(std::max(0.0, motion.starts_at * 1000))}};
}

/// How far others are from a place: the least distance between middles; at most `enough` is told apart.
class Others {
  public:
    Others(SimulationState const& run, AgentMotion const& motion, double reach) {
        for (auto const& other : run.motions) {
            if (other.agent == motion.agent || other.region != motion.region || !stays(run, other)) continue;
            auto const& waiting = run.infos[other.agent].tasks.waiting;
            Point const place = waiting.walks ? waiting.place : other.position;
            if (distance(place, motion.position) < reach) places_.push_back(place);
        }
    }
    double from(Point place) const {
        double least = std::numeric_limits<double>::infinity();
        for (auto const& other : places_) least = std::min(least, distance(other, place));
        return least;
    }

  private:
    static bool stays(SimulationState const& run, AgentMotion const& other) {
        bool const has_left = run.motion_of[other.agent] == gone;
        return !has_left && (run.infos[other.agent].tasks.waiting.walks || other.way != AgentMotion::Way::WALKS);
    }

    std::vector<Point> places_;
};

void go_to(SimulationState& run, AgentMotion const& motion, Point place, navigation::RegionIndex region, double way) {
    auto& info = run.infos[motion.agent];
    auto& waiting = info.tasks.waiting;
    waiting.walks = true;
    waiting.place = place;
    waiting.region = region;
    waiting.gives_up_at = run.seconds() + patience * way / info.origin.speed + more_patience;
}

/// To the nearest place with enough room around it; to the one with the most room when none has enough.
void spread_out(SimulationState& run, AgentMotion const& motion) {
    Others const others(run, motion, farthest_to_spread + apart);
    double most = others.from(motion.position);
    if (most >= apart) return;
    most += least_gain;
    auto const steps = static_cast<int>(farthest_to_spread / spread_step);
    struct Candidate {
        double way;
        Point place;
    };
    std::vector<Candidate> candidates;
    for (int column = -steps; column <= steps; ++column) {
        for (int row = -steps; row <= steps; ++row) {
            Point const place = motion.position + Point{column * spread_step, row * spread_step};
            double const way = distance(place, motion.position);
            if (way <= farthest_to_spread) candidates.push_back({way, place});
        }
    }
    std::ranges::stable_sort(candidates, {}, &Candidate::way);
    std::optional<Candidate> best;
    for (auto const& candidate : candidates) {
        double const room = std::min(apart, others.from(candidate.place));
        if (room < most) continue;
        bool const can_stand = run.navigation.contains(motion.region, candidate.place) &&
                               run.navigation.in_sight(motion.region, motion.position, candidate.place);
        if (!can_stand) continue;
        best = candidate;
        most = room + least_gain;
        if (room >= apart) break;
    }
    if (best) go_to(run, motion, best->place, motion.region, best->way);
}

/// The places of a space that keep clear of walls, from the middle of its area outwards.
std::vector<Point> places_in(SimulationState const& run, WaitSpace const& space) {
    Point least{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point most = -1 * least;
    for (auto const& polygon : space.area) {
        for (auto const& corner : polygon.outline) {
            least = {std::min(least.x, corner.x), std::min(least.z, corner.z)};
            most = {std::max(most.x, corner.x), std::max(most.z, corner.z)};
        }
    }
    Point const middle = 0.5 * (least + most);
    std::vector<Point> places;
    auto const columns = static_cast<int>((most.x - least.x) / 2 / place_step);
    auto const rows = static_cast<int>((most.z - least.z) / 2 / place_step);
    for (int column = -columns; column <= columns; ++column) {
        for (int row = -rows; row <= rows; ++row) {
            Point const place = middle + Point{column * place_step, row * place_step};
            bool const is_clear = contains(space.area, place) && run.navigation.contains(space.region, place) &&
                                  distance(run.navigation.nearest_clear(space.region, place), place) < 1e-6;
            if (is_clear) places.push_back(place);
        }
    }
    std::ranges::stable_sort(places, {}, [&](Point place) { return distance(place, middle); });
    return places;
}

/// Where somebody can stand in a space: the first place that is free, or the one farthest from the others there.
std::optional<Point> free_place(WaitSpace const& space, double radius) {
    std::optional<Point> best;
    double most = 0;
    for (auto const& place : space.places) {
        double room = std::numeric_limits<double>::infinity();
        for (auto const& taken : space.taken) {
            room = std::min(room, distance(taken.place, place) - taken.radius - radius);
        }
        if (room < body_gap || room <= most) continue;
        best = place;
        most = room;
        if (!space.spreads_out || space.taken.empty()) break;
    }
    return best;
}

/// Where a space is, for those who find their ways as the walker does.
navigation::DestinationIndex destination_of(SimulationState& run, AgentMotion const& motion, WaitSpace& space) {
    if (space.destinations.size() <= motion.route_class)
        space.destinations.resize(motion.route_class + 1, navigation::none);
    auto& known = space.destinations[motion.route_class];
    if (known == navigation::none) {
        navigation::Destination destination{space.title, {}, {}};
        for (auto const& polygon : space.area) destination.areas.push_back({space.region, polygon});
        known = run.navigation.add_destination(destination, run.routes.classes[motion.route_class].people);
    }
    return known;
}

/// Metres to walk to a space; none when no way leads there.
std::optional<double> way_to(SimulationState& run, AgentMotion const& motion, WaitSpace& space) {
    return run.navigation.distance(motion.region, motion.position, destination_of(run, motion, space));
}

/// Takes a place in a space; false when there is no room or no way.
bool take_place(SimulationState& run, AgentMotion const& motion, std::uint32_t number) {
    auto& space = run.rules.waits.spaces[number];
    auto const way = way_to(run, motion, space);
    if (!way) return false;
    if (space.places.empty()) space.places = places_in(run, space);
    double const radius = run.crowd.radius(motion.body);
    auto const place = free_place(space, radius);
    if (!place) return false;
    space.taken.push_back({motion.agent, *place, radius});
    double const within = motion.region == space.region ? distance(motion.position, *place) : 0;
    auto& waiting = run.infos[motion.agent].tasks.waiting;
    waiting.space = number;
    waiting.way = destination_of(run, motion, space);
    go_to(run, motion, *place, space.region, std::max(*way, within));
    return true;
}

bool go_to_space(SimulationState& run, AgentMotion const& motion, WaitRule const& rule, WaitKey key) {
    if (rule.spaces.empty()) return false;
    if (!rule.weights.empty()) {
        if (std::ranges::none_of(rule.weights, [](double weight) { return weight > 0; })) return false;
        auto const node = static_cast<std::uint64_t>(key.node - before_moving);
        Random random(mixed(run.seed + streams::of_wait_spaces) + run.infos[motion.agent].origin.key,
                      mixed(node) + key.began);
        return take_place(run, motion, rule.spaces[draw_weighted(rule.weights, random)]);
    }
    struct Choice {
        double way;
        std::uint32_t space;
    };
    std::vector<Choice> choices;
    for (auto const number : rule.spaces) {
        if (auto const way = way_to(run, motion, run.rules.waits.spaces[number])) choices.push_back({*way, number});
    }
    std::ranges::stable_sort(choices, {}, &Choice::way);
    return std::ranges::any_of(choices, [&](Choice const& choice) { return take_place(run, motion, choice.space); });
}

void begin_wait(SimulationState& run, AgentMotion const& motion, WaitNow const& wait) {
    run.infos[motion.agent].tasks.waiting.key = wait.key;
    auto const& rule = run.rules.waits.styles[static_cast<std::size_t>(wait.style)];
    if (!go_to_space(run, motion, rule, wait.key) && rule.spreads_out) spread_out(run, motion);
}

bool has_settled(SimulationState const& run, AgentMotion const& motion, Waiting const& waiting) {
    bool const is_there = motion.region == waiting.region && distance(motion.position, waiting.place) < at_post;
    return is_there || run.seconds() >= waiting.gives_up_at;
}

bool sees_place(SimulationState const& run, AgentMotion const& motion, Waiting const& waiting) {
    if (motion.region != waiting.region) return false;
    Point const clear = run.navigation.nearest_clear(motion.region, motion.position);
    return run.navigation.in_sight(motion.region, clear, waiting.place);
}

}  // namespace

void attend_waits(SimulationState& run) {
    for (auto& motion : run.motions) {
        auto& waiting = run.infos[motion.agent].tasks.waiting;
        auto const wait = wait_now(run, motion);
        bool const leads_somewhere =
            wait.style != NONE && !run.rules.waits.styles[static_cast<std::size_t>(wait.style)].is_to_stand_still();
        if (!leads_somewhere || (waiting.key && *waiting.key != wait.key)) end_wait(run, motion);
        if (leads_somewhere && !waiting.key) begin_wait(run, motion, wait);
        if (!waiting.key) continue;
        if (waiting.walks && has_settled(run, motion, waiting)) waiting.walks = false;
        motion.post.reset();
        if (waiting.walks && sees_place(run, motion, waiting)) motion.post = waiting.place;
    }
}

void end_wait(SimulationState& run, AgentMotion& motion) {
    auto& waiting = run.infos[motion.agent].tasks.waiting;
    if (!waiting.key) return;
    motion.post.reset();
    if (waiting.space != no_wait_space) {
        std::erase_if(run.rules.waits.spaces[waiting.space].taken,
                      [&](WaitSpace::Taken const& taken) { return taken.agent == motion.agent; });
    }
    waiting = {};
}

}  // namespace pedflux::engine
