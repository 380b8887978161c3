#include "engine/simulation/detours.h"

#include "engine/simulation/live_run.h"
#include "engine/simulation/ways.h"

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
    std::size_t walker;
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

bool may_enter(LiveRun const& run, Walker const& walker, navigation::ConnectionIndex joint) {
    auto const& closed = run.routes.classes[walker.route_class].people.closed;
    return run.navigation.passage(joint).open_backward && (closed.empty() || !closed[joint].backward);
}

class Review {
  public:
    Review(LiveRun& run, navigation::RegionIndex floor)
        : run_(run), floor_(floor), joints_(run.detours.joints_of[floor]), queues_(joints_.size()) {
        for (std::size_t i = 0; i < joints_.size(); ++i) queues_[i].rate = run.detours.rate[joints_[i]];
    }

    void add(std::size_t walker) {
        auto const& body = run_.walkers[walker];
        auto const direct = run_.navigation.distance(floor_, body.position, body.destination);
        if (!direct) return;
        Chooser chooser{walker, {}};
        for (std::size_t i = 0; i < joints_.size(); ++i) {
            if (auto const option = option_over(i, body)) chooser.options.push_back(*option);
        }
        if (chooser.options.size() < 2) return;
        chooser.shortest = index_of_least(chooser.options, &Option::whole);
        if (chooser.options[chooser.shortest].whole() > (1 + same_share) * *direct + same_metres) return;
        chooser.present = chooser.shortest;
        if (takes_detour(run_, body, body.destination)) {
            auto const taken = std::ranges::find(chooser.options, body.detour.joint,
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

    double speed_of(Walker const& walker) const { return run_.persons[walker.agent].origin.speed; }

    std::optional<Option> option_over(std::size_t i, Walker const& walker) {
        auto const joint = joints_[i];
        if (!may_enter(run_, walker, joint)) return std::nullopt;
        auto const to = run_.navigation.distance(floor_, walker.position, way_over(joint, walker.route_class));
        double const beyond = beyond_of(joint, walker.destination);
        if (!to || beyond == without_end) return std::nullopt;
        return Option{i, *to, beyond + run_.navigation.passage(joint).cost};
    }

    navigation::DestinationIndex way_over(navigation::ConnectionIndex joint, RouteClassIndex people) {
        auto const [entry, is_new] = run_.detours.ways.emplace(std::pair(joint, people), navigation::none);
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
        auto& walker = run_.walkers[chooser.walker];
        double const speed = speed_of(walker);
        double const waiting = run_.persons[walker.agent].origin.waiting * speed;  // metres for a second
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
        walker.detour = {};
        if (best == chooser.shortest) return;
        auto const joint = joints_[taken.joint];
        walker.detour = {joint, floor_, walker.destination, way_over(joint, walker.route_class)};
    }

    LiveRun& run_;
    navigation::RegionIndex floor_;
    std::vector<navigation::ConnectionIndex> const& joints_;
    std::vector<Queue> queues_;
    std::vector<Chooser> choosers_;
    std::map<std::pair<navigation::ConnectionIndex, navigation::DestinationIndex>, double> beyond_;
};

bool may_choose(LiveRun const& run, Walker const& walker) {
    auto const& person = run.persons[walker.agent];
    return walker.way == Walker::Way::WALKS && walker.destination != navigation::none && !walker.post &&
           !person.controlled && !person.direction_override && !person.doings.waiting.walks;
}

/// People believe half what they see, and half what they believed before.
void learn_rates(LiveRun& run) {
    auto& detours = run.detours;
    for (std::size_t joint = 0; joint < detours.rate.size(); ++joint) {
        double const capacity = capacity_of(run.plan, run.plan.joints[joint]);
        double const seen = detours.has_queue[joint] ? static_cast<double>(detours.passed[joint]) / interval : capacity;
        detours.rate[joint] = std::clamp((detours.rate[joint] + seen) / 2, least_share * capacity, capacity);
        detours.passed[joint] = 0;
        detours.has_queue[joint] = false;
    }
}

bool is_slowed_down(LiveRun const& run, Walker const& walker) {
    return length(run.crowd.velocity(walker.body)) < run.persons[walker.agent].origin.speed / 2;
}

}  // namespace

Detours detours_of(FloorPlan const& plan) {
    Detours detours;
    detours.joints_of.resize(plan.floor_count);
    for (std::size_t i = 0; i < plan.joints.size(); ++i) {
        detours.joints_of[plan.joints[i].floor].push_back(static_cast<navigation::ConnectionIndex>(i));
        detours.rate.push_back(capacity_of(plan, plan.joints[i]));
    }
    detours.passed.resize(plan.joints.size());
    detours.has_queue.resize(plan.joints.size());
    return detours;
}

void review_detours(LiveRun& run) {
    auto& detours = run.detours;
    if (run.seconds() < detours.next) return;
    detours.next = run.seconds() + interval;
    learn_rates(run);
    std::vector<std::vector<std::size_t>> walkers_on(run.plan.floor_count);
    std::vector<int> slow(run.plan.floor_count);
    for (std::size_t i = 0; i < run.walkers.size(); ++i) {
        auto const& walker = run.walkers[i];
        if (walker.region >= run.plan.floor_count || !may_choose(run, walker)) continue;
        walkers_on[walker.region].push_back(i);
        if (is_slowed_down(run, walker)) ++slow[walker.region];
    }
    for (navigation::RegionIndex floor = 0; floor < run.plan.floor_count; ++floor) {
        auto const& joints = detours.joints_of[floor];
        if (joints.size() < 2 || slow[floor] <= few) continue;
        Review review(run, floor);
        for (auto const walker : walkers_on[floor]) review.add(walker);
        review.decide();
        for (std::size_t i = 0; i < joints.size(); ++i) detours.has_queue[joints[i]] = review.has_queue(i);
    }
}

void count_passed(LiveRun& run, navigation::RegionIndex floor, navigation::RegionIndex connection, Point point) {
    if (floor >= run.plan.floor_count) return;
    auto const joint = joint_at(run, floor, connection, point);
    if (joint != navigation::none) ++run.detours.passed[joint];
}

bool takes_detour(LiveRun const& run, Walker const& walker, navigation::DestinationIndex destination) {
    auto const& detour = walker.detour;
    return detour.joint != navigation::none && detour.floor == walker.region && detour.instead_of == destination &&
           may_enter(run, walker, detour.joint);
}

}  // namespace pedflux::engine
