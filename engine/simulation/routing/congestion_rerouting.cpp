#include "engine/simulation/routing/congestion_rerouting.h"

#include "engine/simulation/routing/path_queries.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>

namespace pedflux::engine {

namespace {

/// Seconds between reviews.
constexpr double interval = 5;
/// Capacities in persons per metre and second: Weidmann's (1993) for the level and for stairs.
constexpr double level_capacity = 1.22;
constexpr double upwards_capacity = 0.85;
constexpr double downwards_capacity = 0.98;
/// The least share of the capacity that a queue is assumed to move at.
constexpr double least_share = 0.1;
/// Agents change to a way that is cheaper by both this share and so many metres.
constexpr double worthwhile_share = 0.15;
constexpr double worthwhile_metres = 2;
/// A way counts as the shortest when it is longer by no more than this share and so many metres, as ways through a
/// joint are measured through its middle.
constexpr double same_share = 0.05;
constexpr double same_metres = 2;
/// A floor is reviewed when more agents than this walk at less than half of their speed.
constexpr int few = 4;

constexpr double without_end = std::numeric_limits<double>::infinity();

/// A way on from the floor for one agent.
struct Option {
    std::size_t joint;  ///< among those of the floor
    double to;          ///< cost of the way to the joint for the agent (metres)
    double beyond;      ///< cost of the way behind it (metres)

    double whole() const { return to + beyond; }
};

struct Chooser {
    std::size_t motion;
    std::vector<Option> options;
    std::size_t shortest = 0;  ///< among the options
    std::size_t present = 0;   ///< among the options
    double wait = 0;           ///< on the present way (seconds)
};

/// The agents on the way to a joint, in the order in which they arrive, and when each has passed it.
struct Queue {
    struct Arrival {
        double time;  ///< seconds from now
        std::size_t chooser;
    };
    std::vector<Arrival> arrivals;
    std::vector<double> passed;  ///< of each arrival, seconds from now
    double rate = 1;             ///< persons per second
    std::size_t joined = 0;      ///< agents that changed to it in this review

    /// The wait of an agent that would arrive at a time.
    double wait_at(double time) const {
        auto const later = std::ranges::upper_bound(arrivals, time, {}, &Arrival::time);
        double const before =
            later == arrivals.begin() ? 0 : passed[static_cast<std::size_t>(later - arrivals.begin()) - 1];
        return std::max(before - time, 0.0) + static_cast<double>(joined) / rate;
    }
};

double capacity_of(FloorPlan const& plan, Joint const& joint) {
    auto const& incline = plan.inclines[joint.connection];
    double const by_metre = incline.uphill == Point{}                 ? level_capacity
                            : dot(incline.uphill, joint.to_floor) < 0 ? upwards_capacity
                                                                      : downwards_capacity;
    return by_metre * length(joint.line);
}

bool may_enter(Routes const& routes, AgentMotion const& motion, navigation::ConnectionIndex joint) {
    auto const& closed = routes.classes[motion.route_class].people.closed;
    return routes.navigation.passage(joint).open_backward && (closed.empty() || !closed[joint].backward);
}

/// A comparison of ways by all agents on a floor.
class Review {
  public:
    Review(CongestionRerouting& rerouting, Routes& routes, FloorPlan const& plan, Agents& agents,
           navigation::RegionIndex floor)
        : rerouting_(rerouting),
          routes_(routes),
          plan_(plan),
          agents_(agents),
          floor_(floor),
          joints_(rerouting.joints_of[floor]),
          queues_(joints_.size()) {
        for (std::size_t i = 0; i < joints_.size(); ++i) queues_[i].rate = rerouting.rate[joints_[i]];
    }

    void add(std::size_t number) {
        auto const& motion = agents_.motions[number];
        auto const direct = routes_.navigation.distance(floor_, motion.position, motion.destination);
        if (!direct) return;
        Chooser chooser{number, {}};
        for (std::size_t i = 0; i < joints_.size(); ++i) {
            if (auto const option = option_over(i, motion)) chooser.options.push_back(*option);
        }
        if (chooser.options.size() < 2) return;
        chooser.shortest = index_of_least(chooser.options, &Option::whole);
        if (chooser.options[chooser.shortest].whole() > (1 + same_share) * *direct + same_metres) return;
        chooser.present = chooser.shortest;
        if (takes_reroute(routes_, motion, motion.destination)) {
            auto const taken = std::ranges::find(chooser.options, motion.reroute.joint,
                                                 [&](Option const& option) { return joints_[option.joint]; });
            if (taken != chooser.options.end()) {
                chooser.present = static_cast<std::size_t>(taken - chooser.options.begin());
            }
        }
        auto const& option = chooser.options[chooser.present];
        queues_[option.joint].arrivals.push_back({option.to / speed_of(motion), choosers_.size()});
        choosers_.push_back(std::move(chooser));
    }

    void decide() {
        for (auto& queue : queues_) predict(queue);
        // The last in a queue decide first, so that no wait depends on who left the queue before.
        std::vector<std::size_t> order(choosers_.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::ranges::stable_sort(order, std::greater<>{}, [&](std::size_t i) { return choosers_[i].wait; });
        for (auto const i : order) decide(choosers_[i]);
    }

    /// Whether agents will have waited there all the time until the next review.
    bool has_queue(std::size_t joint) const {
        auto const& queue = queues_[joint];
        return !queue.passed.empty() && queue.wait_at(interval) > interval;
    }

  private:
    static std::size_t index_of_least(std::vector<Option> const& options, auto&& cost) {
        return static_cast<std::size_t>(std::ranges::min_element(options, {}, cost) - options.begin());
    }

    double speed_of(AgentMotion const& motion) const { return agents_.infos[motion.agent].origin.speed; }

    std::optional<Option> option_over(std::size_t i, AgentMotion const& motion) {
        auto const joint = joints_[i];
        if (!may_enter(routes_, motion, joint)) return std::nullopt;
        auto const to = routes_.navigation.distance(floor_, motion.position, way_over(joint, motion.route_class));
        double const beyond = beyond_of(joint, motion.destination);
        if (!to || beyond == without_end) return std::nullopt;
        return Option{i, *to, beyond + routes_.navigation.passage(joint).cost};
    }

    navigation::DestinationIndex way_over(navigation::ConnectionIndex joint, RouteClassIndex people) {
        auto const [entry, is_new] = rerouting_.ways.emplace(std::pair(joint, people), navigation::none);
        if (is_new) {
            entry->second = routes_.navigation.add_destination({"a detour", {{floor_, plan_.joints[joint].line}}, {}},
                                                               routes_.classes[people].people);
        }
        return entry->second;
    }

    /// Metres from the middle of the joint on; infinite where no way leads on, or only back.
    double beyond_of(navigation::ConnectionIndex joint, navigation::DestinationIndex destination) {
        auto const [entry, is_new] = beyond_.emplace(std::pair(joint, destination), without_end);
        if (!is_new) return entry->second;
        auto const& there = plan_.joints[joint];
        navigation::RouteHint hint;
        auto const step = routes_.navigation.next(there.connection, at(there.line, 0.5), destination, hint);
        bool const leads_back = step.kind == navigation::RouteStep::Kind::CONNECTION && step.connection == joint;
        if (step.kind != navigation::RouteStep::Kind::UNREACHABLE && !leads_back) entry->second = step.distance;
        return entry->second;
    }

    void predict(Queue& queue) {
        std::ranges::stable_sort(queue.arrivals, {}, &Queue::Arrival::time);
        double free = 0;
        for (auto const& arrival : queue.arrivals) {
            double const goes_in = std::max(free, arrival.time);
            choosers_[arrival.chooser].wait = goes_in - arrival.time;
            free = goes_in + 1 / queue.rate;
            queue.passed.push_back(free);
        }
    }

    void decide(Chooser const& chooser) {
        auto& motion = agents_.motions[chooser.motion];
        double const speed = speed_of(motion);
        double const waiting = agents_.infos[motion.agent].origin.waiting * speed;  // metres for a second
        auto const& present = chooser.options[chooser.present];
        double const now = present.whole() + waiting * chooser.wait;
        auto const cost = [&](Option const& option) {
            if (&option == &present) return now;
            return option.whole() + waiting * queues_[option.joint].wait_at(option.to / speed);
        };
        auto const best = index_of_least(chooser.options, cost);
        if (cost(chooser.options[best]) > (1 - worthwhile_share) * now - worthwhile_metres) return;
        auto const& taken = chooser.options[best];
        ++queues_[taken.joint].joined;
        motion.reroute = {};
        if (best == chooser.shortest) return;
        auto const joint = joints_[taken.joint];
        motion.reroute = {joint, floor_, motion.destination, way_over(joint, motion.route_class)};
    }

    CongestionRerouting& rerouting_;
    Routes& routes_;
    FloorPlan const& plan_;
    Agents& agents_;
    navigation::RegionIndex floor_;
    std::vector<navigation::ConnectionIndex> const& joints_;
    std::vector<Queue> queues_;
    std::vector<Chooser> choosers_;
    std::map<std::pair<navigation::ConnectionIndex, navigation::DestinationIndex>, double> beyond_;
};

bool may_choose(Agents const& agents, AgentMotion const& motion) {
    auto const& info = agents.infos[motion.agent];
    return motion.way == AgentMotion::Way::WALKS && motion.destination != navigation::none && !motion.post &&
           !info.controlled && !info.direction_override && !agents.tasks[motion.agent].waiting.walks;
}

/// Smooths the observed rates exponentially with factor 0.5.
void learn_rates(CongestionRerouting& rerouting, FloorPlan const& plan) {
    for (std::size_t joint = 0; joint < rerouting.rate.size(); ++joint) {
        double const capacity = capacity_of(plan, plan.joints[joint]);
        double const observed =
            rerouting.has_queue[joint] ? static_cast<double>(rerouting.passed[joint]) / interval : capacity;
        rerouting.rate[joint] = std::clamp((rerouting.rate[joint] + observed) / 2, least_share * capacity, capacity);
        rerouting.passed[joint] = 0;
        rerouting.has_queue[joint] = false;
    }
}

bool is_slowed_down(Agents const& agents, crowd::Crowd const& crowd, AgentMotion const& motion) {
    return length(crowd.velocity(motion.body)) < agents.infos[motion.agent].origin.speed / 2;
}

}  // namespace

CongestionRerouting congestion_rerouting_of(FloorPlan const& plan) {
    CongestionRerouting rerouting;
    rerouting.joints_of.resize(plan.floor_count);
    for (std::size_t i = 0; i < plan.joints.size(); ++i) {
        rerouting.joints_of[plan.joints[i].floor].push_back(static_cast<navigation::ConnectionIndex>(i));
        rerouting.rate.push_back(capacity_of(plan, plan.joints[i]));
    }
    rerouting.passed.resize(plan.joints.size());
    rerouting.has_queue.resize(plan.joints.size());
    return rerouting;
}

void review_reroutes(CongestionRerouting& rerouting, Routes& routes, World const& world, Agents& agents,
                     crowd::Crowd const& crowd, Clock const& clock) {
    auto const& plan = world.plan;
    if (clock.seconds() < rerouting.next_review) return;
    rerouting.next_review = clock.seconds() + interval;
    learn_rates(rerouting, plan);
    std::vector<std::vector<std::size_t>> choosers_on(plan.floor_count);
    std::vector<int> slow(plan.floor_count);
    for (std::size_t i = 0; i < agents.motions.size(); ++i) {
        auto const& motion = agents.motions[i];
        if (motion.region >= plan.floor_count || !may_choose(agents, motion)) continue;
        choosers_on[motion.region].push_back(i);
        if (is_slowed_down(agents, crowd, motion)) ++slow[motion.region];
    }
    for (navigation::RegionIndex floor = 0; floor < plan.floor_count; ++floor) {
        auto const& joints = rerouting.joints_of[floor];
        if (joints.size() < 2 || slow[floor] <= few) continue;
        Review review(rerouting, routes, plan, agents, floor);
        for (auto const motion : choosers_on[floor]) review.add(motion);
        review.decide();
        for (std::size_t i = 0; i < joints.size(); ++i) rerouting.has_queue[joints[i]] = review.has_queue(i);
    }
}

void count_passed(CongestionRerouting& rerouting, FloorPlan const& plan, navigation::RegionIndex floor,
                  navigation::RegionIndex connection, Point point) {
    if (floor >= plan.floor_count) return;
    auto const joint = joint_at(plan, floor, connection, point);
    if (joint != navigation::none) ++rerouting.passed[joint];
}

bool takes_reroute(Routes const& routes, AgentMotion const& motion, navigation::DestinationIndex destination) {
    auto const& reroute = motion.reroute;
    return reroute.joint != navigation::none && reroute.floor == motion.region && reroute.instead_of == destination &&
           may_enter(routes, motion, reroute.joint);
}

}  // namespace pedflux::engine
