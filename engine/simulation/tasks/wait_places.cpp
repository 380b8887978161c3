#include "engine/simulation/tasks/wait_places.h"

#include "engine/base/hashing.h"
#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/tasks/task_context.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace pedflux::engine {

namespace {

/// Between the bodies of agents that wait in a wait space (metres).
constexpr double body_gap = 0.1;
/// Agents that spread out keep this distance between middles (metres): from there on people count as apart from
/// strangers (E. T. Hall, "The Hidden Dimension", 1966: the end of the personal distance).
constexpr double apart = 1.2;
/// How far they go for it, and how far apart the places are among which they choose (metres).
constexpr double farthest_to_spread = 5;
constexpr double spread_step = 0.5;
/// How far apart the places are among which agents choose in a wait space (metres).
constexpr double place_step = 0.25;
/// An agent gives up its place when it has not come there in `patience` times the time that the way takes and
/// `more_patience` seconds.
constexpr double patience = 3;
constexpr double more_patience = 10;
/// Less room than that (metres) is no gain.
constexpr double least_gain = 0.1;
/// What a wait before moving counts as, in place of an action's node.
constexpr int before_moving = -2;

/// The wait that an agent is in at this moment, if it has a style: the style, and what tells it from other waits.
struct WaitNow {
    WaitProgram const* style = nullptr;
    WaitKey key;

    bool leads_somewhere() const { return style != nullptr && !style->is_to_stand_still(); }
};

WaitNow wait_now(TaskContext const& context, AgentMotion const& motion) {
    auto const& program = context.program;
    auto const& info = context.agents.infos[motion.agent];
    auto const& tasks = context.agents.tasks[motion.agent];
    if (info.controlled || info.direction_override) return {};
    if (tasks.task) {
        int const style = node_of(program, *tasks.task).style;
        if (style == NONE) return {};
        auto const began = tasks.actions.frames.back().began_in;
        return {&actions_of(program, *tasks.task).waits[static_cast<std::size_t>(style)],
                {number_of(*tasks.task), began}};
    }
    if (motion.starts_at <= context.clock.seconds() || tasks.wait_style == NONE) return {};
    return {&program.actions.waits[static_cast<std::size_t>(tasks.wait_style)],
            {before_moving, static_cast<std::uint64_t>(std::max(0.0, motion.starts_at * 1000))}};
}

/// The agents of a region that stay where they are, or where they go to wait.
class Others {
  public:
    /// @param reach of the agents that count, in metres from `motion`
    Others(Agents const& agents, AgentMotion const& motion, double reach) {
        for (auto const& other : agents.motions) {
            if (other.agent == motion.agent || other.region != motion.region || !stays(agents, other)) continue;
            auto const& waiting = agents.tasks[other.agent].waiting;
            Point const place = waiting.walks ? waiting.place : other.position;
            if (distance(place, motion.position) < reach) places_.push_back(place);
        }
    }
    /// The least distance between middles.
    double from(Point place) const {
        double least = std::numeric_limits<double>::infinity();
        for (auto const& other : places_) least = std::min(least, distance(other, place));
        return least;
    }

  private:
    static bool stays(Agents const& agents, AgentMotion const& other) {
        bool const stands = agents.tasks[other.agent].waiting.walks || other.way != AgentMotion::Way::WALKS;
        return agents.is_here(other.agent) && stands;
    }

    std::vector<Point> places_;
};

void go_to(TaskContext& context, AgentMotion const& motion, Point place, navigation::RegionIndex region, double way) {
    auto& waiting = context.agents.tasks[motion.agent].waiting;
    waiting.walks = true;
    waiting.place = place;
    waiting.region = region;
    double const speed = context.agents.infos[motion.agent].origin.speed;
    waiting.gives_up_at = context.clock.seconds() + patience * way / speed + more_patience;
}

/// To the nearest place with enough room around it; to the one with the most room when none has enough.
void spread_out(TaskContext& context, AgentMotion const& motion) {
    auto const& navigation = context.routes.navigation;
    Others const others(context.agents, motion, farthest_to_spread + apart);
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
        bool const can_stand = navigation.contains(motion.region, candidate.place) &&
                               navigation.in_sight(motion.region, motion.position, candidate.place);
        if (!can_stand) continue;
        best = candidate;
        most = room + least_gain;
        if (room >= apart) break;
    }
    if (best) go_to(context, motion, best->place, motion.region, best->way);
}

/// The places of a space that keep clear of walls, from the middle of its area outwards.
std::vector<Point> places_in(navigation::Navigation const& navigation, WaitSpace const& space) {
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
            bool const is_clear = contains(space.area, place) && navigation.contains(space.region, place) &&
                                  distance(navigation.nearest_clear(space.region, place), place) < 1e-6;
            if (is_clear) places.push_back(place);
        }
    }
    std::ranges::stable_sort(places, {}, [&](Point place) { return distance(place, middle); });
    return places;
}

/// Where an agent can stand in a space: the first place that is free, or the one farthest from the others there.
std::optional<Point> free_place(WaitSpacePlaces const& space, bool spreads_out, double radius) {
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
        if (!spreads_out || space.taken.empty()) break;
    }
    return best;
}

/// The destination that a space is for agents of the agent's route class.
navigation::DestinationIndex destination_of(TaskContext& context, AgentMotion const& motion, std::uint32_t number) {
    auto const& space = context.program.wait_spaces[number];
    auto& destinations = context.waits.spaces[number].destinations;
    auto& routes = context.routes;
    if (destinations.size() <= motion.route_class) destinations.resize(motion.route_class + 1, navigation::none);
    auto& known = destinations[motion.route_class];
    if (known == navigation::none) {
        navigation::Destination destination{space.title, {}, {}};
        for (auto const& polygon : space.area) destination.areas.push_back({space.region, polygon});
        known = routes.navigation.add_destination(destination, routes.classes[motion.route_class].people);
    }
    return known;
}

/// Metres to walk to a space; none when no way leads there.
std::optional<double> way_to(TaskContext& context, AgentMotion const& motion, std::uint32_t number) {
    auto const destination = destination_of(context, motion, number);
    return context.routes.navigation.distance(motion.region, motion.position, destination);
}

/// Takes a place in a space; false when there is no room or no way.
bool take_place(TaskContext& context, AgentMotion const& motion, std::uint32_t number) {
    auto const way = way_to(context, motion, number);
    if (!way) return false;
    auto const& space = context.program.wait_spaces[number];
    auto& found = context.waits.spaces[number];
    if (found.places.empty()) found.places = places_in(context.routes.navigation, space);
    double const radius = context.crowd.radius(motion.body);
    auto const place = free_place(found, space.spreads_out, radius);
    if (!place) return false;
    found.taken.push_back({motion.agent, *place, radius});
    double const within = motion.region == space.region ? distance(motion.position, *place) : 0;
    auto& waiting = context.agents.tasks[motion.agent].waiting;
    waiting.space = number;
    waiting.way = destination_of(context, motion, number);
    go_to(context, motion, *place, space.region, std::max(*way, within));
    return true;
}

bool go_to_space(TaskContext& context, AgentMotion const& motion, WaitProgram const& style, WaitKey key) {
    if (style.spaces.empty()) return false;
    if (!style.weights.empty()) {
        if (std::ranges::none_of(style.weights, [](double weight) { return weight > 0; })) return false;
        auto const node = static_cast<std::uint64_t>(key.node - before_moving);
        auto const agent = context.agents.infos[motion.agent].origin.key;
        Random random(mixed(context.world.seed + streams::of_wait_spaces) + agent, mixed(node) + key.began);
        return take_place(context, motion, style.spaces[draw_weighted(style.weights, random)]);
    }
    struct Choice {
        double way;
        std::uint32_t space;
    };
    std::vector<Choice> choices;
    for (auto const space : style.spaces) {
        if (auto const way = way_to(context, motion, space)) choices.push_back({*way, space});
    }
    std::ranges::stable_sort(choices, {}, &Choice::way);
    return std::ranges::any_of(choices,
                               [&](Choice const& choice) { return take_place(context, motion, choice.space); });
}

void begin_wait(TaskContext& context, AgentMotion const& motion, WaitNow const& wait) {
    context.agents.tasks[motion.agent].waiting.key = wait.key;
    if (!go_to_space(context, motion, *wait.style, wait.key) && wait.style->spreads_out) spread_out(context, motion);
}

bool has_settled(Clock const& clock, AgentMotion const& motion, Waiting const& waiting) {
    bool const is_there = motion.region == waiting.region && distance(motion.position, waiting.place) < at_post;
    return is_there || clock.seconds() >= waiting.gives_up_at;
}

bool sees_place(navigation::Navigation const& navigation, AgentMotion const& motion, Waiting const& waiting) {
    if (motion.region != waiting.region) return false;
    Point const clear = navigation.nearest_clear(motion.region, motion.position);
    return navigation.in_sight(motion.region, clear, waiting.place);
}

}  // namespace

WaitPlaces wait_places_of(std::span<WaitSpace const> spaces) { return {std::vector<WaitSpacePlaces>(spaces.size())}; }

void attend_waits(TaskContext& context) {
    for (auto& motion : context.agents.motions) {
        auto& waiting = context.agents.tasks[motion.agent].waiting;
        auto const wait = wait_now(context, motion);
        bool const is_another = waiting.key && *waiting.key != wait.key;
        if (!wait.leads_somewhere() || is_another) end_wait(context, motion);
        if (wait.leads_somewhere() && !waiting.key) begin_wait(context, motion, wait);
        if (!waiting.key) continue;
        if (waiting.walks && has_settled(context.clock, motion, waiting)) waiting.walks = false;
        motion.post.reset();
        if (waiting.walks && sees_place(context.routes.navigation, motion, waiting)) motion.post = waiting.place;
    }
}

void end_wait(TaskContext& context, AgentMotion& motion) {
    auto& waiting = context.agents.tasks[motion.agent].waiting;
    if (!waiting.key) return;
    motion.post.reset();
    if (waiting.space != no_wait_space) {
        std::erase_if(context.waits.spaces[waiting.space].taken,
                      [&](WaitSpacePlaces::Taken const& taken) { return taken.agent == motion.agent; });
    }
    waiting = {};
}

}  // namespace pedflux::engine
