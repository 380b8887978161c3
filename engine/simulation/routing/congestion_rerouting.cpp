#include "engine/simulation/routing/congestion_rerouting.h"

#include "engine/simulation/frame/simulation_state.h"
#include "engine/simulation/routing/path_queries.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace pedflux::engine {

namespace {

/// Seconds between comparisons.
constexpr double interval = 5;
/// What a connection lets in, in persons per metre and second: Weidmann's capacities (1993) of the level and of stairs.
constexpr double level_capacity = 1.22;
constexpr double upwards_capacity = 0.85;
constexpr double downwards_capacity = 0.98;
/// A queue moves no slower than this share of it, as far as others can tell.
constexpr double least_share = 0.1;
/// Somebody changes the way for one that is cheaper by this share and by so many metres.
constexpr double worthwhile_share = 0.15;
constexpr double worthwhile_metres = 2;
/// A way counts as the shortest when it is longer by no more than this share and so many metres, as ways through a
/// joint are measured through its middle.
constexpr double same_share = 0.05;
constexpr double same_metres = 2;
/// More people than this who walk at less than half of their speed make it worth while to look.
constexpr int few = 4;

constexpr double without_end = std::numeric_limits<double>::infinity();

/// A way on from the floor for one person.
struct Option {
    std::size_t joint;  ///< among those of the floor
    double to;          ///< metres to it, as the person counts them
    double beyond;      ///< metres behind it

    double whole() const { return to + beyond; }
};

struct Chooser {
    std::size_t motion;
    std::vector<Option> options;
    std::size_t shortest = 0;  ///< among the options
    std::size_t present = 0;
    double wait = 0;  ///< seconds, on the present way
};

/// When those who are on the way to a joint have passed it, in the order in which they arrive.
struct Queue {
    struct Arrival {
        double time;  ///< seconds from now
        std::size_t chooser;
    };
    std::vector<Arrival> arrivals;
    std::vector<double> passed;  ///< seconds from now, for each
    double rate = 1;
    std::size_t joined = 0;  ///< who changed to it now

    /// The wait of somebody who would come at a time.
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

bool may_enter(SimulationState const& run, AgentMotion const& motion, navigation::ConnectionIndex joint) {
    auto const& closed = run.routes.classes[motion.route_class].people.closed;
    return run.navigation.passage(joint).open_backward && (closed.empty() || !closed[joint].backward);
}

class Review {
  public:
    Review(SimulationState& run, navigation::RegionIndex floor)
        : run_(run), floor_(floor), joints_(run.rerouting.joints_of[floor]), queues_(joints_.size()) {
        for (std::size_t i = 0; i < joints_.size(); ++i) queues_[i].rate = run.rerouting.rate[joints_[i]];
    }

    void add(std::size_t motion) {
        auto const& body = run_.motions[motion];
        auto const direct = run_.navigation.distance(floor_, body.position, body.destination);
        if (!direct) return;
        Chooser chooser{motion, {}};
        for (std::size_t i = 0; i < joints_.size(); ++i) {
            if (auto const option = option_over(i, body)) chooser.options.push_back(*option);
        }
        if (chooser.options.size() < 2) return;
        chooser.shortest = index_of_least(chooser.options, &Option::whole);
        if (chooser.options[chooser.shortest].whole() > (1 + same_share) * *direct + same_metres) return;
        chooser.present = chooser.shortest;
        if (takes_reroute(run_, body, body.destination)) {
            auto const taken = std::ranges::find(chooser.options, body.reroute.joint,
                                                 [&](Option const& option) { return joints_[option.joint]; });
            if (taken != chooser.options.end()) {
                chooser.present = static_cast<std::size_t>(taken - chooser.options.begin());
            }
        }
        auto const& option = chooser.options[chooser.present];
        queues_[option.joint].arrivals.push_back({option.to / speed_of(body), choosers_.size()});
        choosers_.push_back(std::move(chooser));
    }

    void decide() {
        for (auto& queue : queues_) predict(queue);
        // The last in a queue first, so that nobody's wait depends on who went away before.
        std::vector<std::size_t> order(choosers_.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::ranges::stable_sort(order, std::greater<>{}, [&](std::size_t i) { return choosers_[i].wait; });
        for (auto const i : order) decide(choosers_[i]);
    }

    /// Whether people will have waited there all the time when they compare again.
    bool has_queue(std::size_t joint) const {
        auto const& queue = queues_[joint];
        return !queue.passed.empty() && queue.wait_at(interval) > interval;
    }

  private:
    static std::size_t index_of_least(std::vector<Option> const& options, auto&& cost) {
        return static_cast<std::size_t>(std::ranges::min_element(options, {}, cost) - options.begin());
    }

    double speed_of(AgentMotion const& motion) const { return run_.infos[motion.agent].origin.speed; }

    std::optional<Option> option_over(std::size_t i, AgentMotion const& motion) {
        auto const joint = joints_[i];
        if (!may_enter(run_, motion, joint)) return std::nullopt;
        auto const to = run_.navigation.distance(floor_, motion.position, way_over(joint, motion.route_class));
        double const beyond = beyond_of(joint, motion.destination);
        if (!to || beyond == without_end) return std::nullopt;
        return Option{i, *to, beyond + run_.navigation.passage(joint).cost};
    }

    navigation::DestinationIndex way_over(navigation::ConnectionIndex joint, RouteClassIndex people) {
        auto const [entry, is_new] = run_.rerouting.ways.emplace(std::pair(joint, people), navigation::none);
        if (is_new) {
            entry->second = run_.navigation.add_destination({"a detour", {{floor_, run_.plan.joints[joint].line}}, {}},
                                                            run_.routes.classes[people].people);
        }
        return entry->second;
    }

    /// Metres from the middle of the joint on; infinite where no way leads on but back.
    double beyond_of(navigation::ConnectionIndex joint, navigation::DestinationIndex destination) {
        auto const [entry, is_new] = beyond_.emplace(std::pair(joint, destination), without_end);
        if (!is_new) return entry->second;
        auto const& there = run_.plan.joints[joint];
        navigation::RouteHint hint;
        auto const step = run_.navigation.next(there.connection, at(there.line, 0.5), destination, hint);
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
        auto& motion = run_.motions[chooser.motion];
        double const speed = speed_of(motion);
        double const waiting = run_.infos[motion.agent].origin.waiting * speed;  // metres for a second
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

    SimulationState& run_;
    navigation::RegionIndex floor_;
    std::vector<navigation::ConnectionIndex> const& joints_;
    std::vector<Queue> queues_;
    std::vector<Chooser> choosers_;
    std::map<std::pair<navigation::ConnectionIndex, navigation::DestinationIndex>, double> beyond_;
};

bool may_choose(SimulationState const& run, AgentMotion const& motion) {
    auto const& info = run.infos[motion.agent];
    return motion.way == AgentMotion::Way::WALKS && motion.destination != navigation::none && !motion.post &&
           !info.controlled && !info.direction_override && !info.tasks.waiting.walks;
}

/// People believe half what they see, and half what they believed before.
void learn_rates(SimulationState& run) {
    auto& rerouting = run.rerouting;
    for (std::size_t joint = 0; joint < rerouting.rate.size(); ++joint) {
        double const capacity = capacity_of(run.plan, run.plan.joints[joint]);
        double const seen =
            rerouting.has_queue[joint] ? static_cast<double>(rerouting.passed[joint]) / interval : capacity;
        rerouting.rate[joint] = std::clamp((rerouting.rate[joint] + seen) / 2, least_share * capacity, capacity);
        rerouting.passed[joint] = 0;
        rerouting.has_queue[joint] = false;
    }
}

bool is_slowed_down(SimulationState const& run, AgentMotion const& motion) {
    return length(run.crowd.velocity(motion.body)) < run.infos[motion.agent].origin.speed / 2;
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

void review_reroutes(SimulationState& run) {
    auto& rerouting = run.rerouting;
    if (run.seconds() < rerouting.next) return;
    rerouting.next = run.seconds() + interval;
    learn_rates(run);
    std::vector<std::vector<std::size_t>> walkers_on(run.plan.floor_count);
    std::vector<int> slow(run.plan.floor_count);
    for (std::size_t i = 0; i < run.motions.size(); ++i) {
        auto const& motion = run.motions[i];
        if (motion.region >= run.plan.floor_count || !may_choose(run, motion)) continue;
        walkers_on[motion.region].push_back(i);
        if (is_slowed_down(run, motion)) ++slow[motion.region];
    }
    for (navigation::RegionIndex floor = 0; floor < run.plan.floor_count; ++floor) {
        auto const& joints = rerouting.joints_of[floor];
        if (joints.size() < 2 || slow[floor] <= few) continue;
        Review review(run, floor);
        for (auto const motion : walkers_on[floor]) review.add(motion);
        review.decide();
        for (std::size_t i = 0; i < joints.size(); ++i) rerouting.has_queue[joints[i]] = review.has_queue(i);
    }
}

void count_passed(SimulationState& run, navigation::RegionIndex floor, navigation::RegionIndex connection,
                  Point point) {
    if (floor >= run.plan.floor_count) return;
    auto const joint = joint_at(run, floor, connection, point);
    if (joint != navigation::none) ++run.rerouting.passed[joint];
}

bool takes_reroute(SimulationState const& run, AgentMotion const& motion, navigation::DestinationIndex destination) {
    auto const& reroute = motion.reroute;
    return reroute.joint != navigation::none && reroute.floor == motion.region && reroute.instead_of == destination &&
           may_enter(run, motion, reroute.joint);
}

}  // namespace pedflux::engine
