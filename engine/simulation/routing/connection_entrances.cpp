#include "engine/simulation/routing/connection_entrances.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/document.h"
#include "engine/simulation/frame/simulation_state.h"
#include "engine/simulation/routing/path_queries.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace pedflux::engine {

namespace {

/// How far before a line people wait, in metres.
constexpr double waiting_distance = 0.5;
/// How far before it they wait who let others come out first, in metres.
constexpr double yielding_distance = 1.5;
/// So far beside the way out (metres) they step.
constexpr double aside = 0.5;
/// The clock's rounding, in seconds.
constexpr double rounding = 1e-6;

/// Somebody whose way leads over an end of a connection, and how far that is.
struct Approach {
    std::size_t passageway;
    double distance;
    std::size_t motion;
    std::size_t way;  ///< in which it goes through the connection
    bool enters;
};

Entrance entrance_of(ConnectionState const& state) {
    Entrance entrance;
    if (auto const& cap = state.flow_cap) {
        bool const by_minute =
            cap->type == FlowRateType::PERSONS_PER_MINUTE || cap->type == FlowRateType::PERSONS_PER_METER_AND_MINUTE;
        bool const by_metre = cap->type == FlowRateType::PERSONS_PER_METER_AND_SECOND ||
                              cap->type == FlowRateType::PERSONS_PER_METER_AND_MINUTE;
        (by_metre ? entrance.interval_and_metre : entrance.interval) = (by_minute ? 60 : 1) / cap->value;
    }
    if (state.entrance_delay) entrance.entry_delay = spec_of(*state.entrance_delay);
    if (state.exit_delay) entrance.exit_delay = spec_of(*state.exit_delay);
    if (auto const& priority = state.priority) {
        bool const from_ball = priority->direction == ConnectionObjectDirection::BALL_TO_BOX;
        entrance.priority = {from_ball ? std::size_t{0} : 1, priority->distance, priority->primary_yields_to_secondary};
    }
    return entrance;
}

std::size_t passageway_at(SimulationState const& run, navigation::ConnectionIndex joint) {
    return run.plan.joints[joint].connection - run.plan.floor_count;
}

std::vector<Approach> approaches_of(SimulationState const& run) {
    std::vector<Approach> approaches;
    for (std::size_t i = 0; i < run.motions.size(); ++i) {
        auto const& motion = run.motions[i];
        if (motion.ahead == navigation::none || motion.way != AgentMotion::Way::WALKS) continue;
        auto const& joint = run.plan.joints[motion.ahead];
        bool const enters = motion.region == joint.floor;
        auto const passageway = passageway_at(run, motion.ahead);
        auto const& entrance = run.entrances.of[passageway];
        if (entrance.lets_in_at_once() && entrance.lets_out_at_once()) continue;
        std::size_t const way = joint.at_ball == enters ? 0 : 1;
        approaches.push_back({passageway, distance(joint.line, motion.position), i, way, enters});
    }
    // Equally near ones stay in the order of their numbers.
    std::ranges::stable_sort(approaches, [](Approach const& a, Approach const& b) {
        return std::tie(a.passageway, a.distance) < std::tie(b.passageway, b.distance);
    });
    return approaches;
}

AdmissionTicket& turn_of(SimulationState& run, Approach const& approach) {
    auto const& motion = run.motions[approach.motion];
    AdmissionTicket& ticket = run.entrances.tickets[motion.agent];
    if (ticket.joint == motion.ahead && ticket.enters == approach.enters) return ticket;
    auto const& entrance = run.entrances.of[approach.passageway];
    auto const& law = approach.enters ? entrance.entry_delay : entrance.exit_delay;
    ticket = {motion.ahead, approach.enters, false, run.seconds(), ticket.number + 1};
    if (law) {
        Random random(run.seed, streams::of_delays_at_connections + (std::uint64_t{ticket.number} << 32) +
                                    run.infos[motion.agent].origin.key);
        ticket.ready_at += sample(*law, random);
    }
    return ticket;
}

/// Whether somebody who goes the other way comes first.
bool must_yield(Entrance const& entrance, Approach const& approach, std::span<Approach const> others) {
    if (!entrance.priority) return false;
    auto const& rule = *entrance.priority;
    bool const goes_first = approach.way == rule.first_way;
    if (goes_first && !rule.yields_to_those_inside) return false;
    return std::ranges::any_of(others, [&](Approach const& other) {
        bool const is_inside = !other.enters;
        return other.way != approach.way && (is_inside || (!goes_first && other.distance <= rule.distance));
    });
}

/// Seconds between people who are let in over the end.
double interval_at(SimulationState const& run, Entrance const& entrance, navigation::ConnectionIndex joint) {
    if (entrance.interval_and_metre == 0) return entrance.interval;
    return entrance.interval_and_metre / length(run.plan.joints[joint].line);
}

bool is_admitted(SimulationState const& run, Entrance& entrance, Approach const& approach) {
    if (!approach.enters) return true;
    double const interval = interval_at(run, entrance, run.motions[approach.motion].ahead);
    if (interval == 0) return true;
    if (run.seconds() + rounding < entrance.next) return false;
    // People come at whole steps; what they came late by counts for the next one.
    entrance.next = std::max(entrance.next, run.seconds() - run.frame_length()) + interval;
    return true;
}

bool was_admitted(SimulationState const& run, Approach const& approach) {
    auto const& motion = run.motions[approach.motion];
    AdmissionTicket const& ticket = run.entrances.tickets[motion.agent];
    return ticket.admitted && ticket.joint == motion.ahead && ticket.enters == approach.enters;
}

/// Lets somebody stand, or make way for those who come out towards it: else they would face each other for ever.
void hold(SimulationState& run, Approach const& approach, bool yields) {
    auto& motion = run.motions[approach.motion];
    motion.way = AgentMotion::Way::STANDS;
    motion.direction = {};
    if (!yields) return;
    auto const& joint = run.plan.joints[motion.ahead];
    Point const along = unit(joint.line.to - joint.line.from);
    double const offset = dot(motion.position - at(joint.line, 0.5), along);
    if (std::abs(offset) > length(joint.line) / 2 + aside) return;
    motion.way = AgentMotion::Way::WALKS;
    motion.direction = unit((offset < 0 ? -1 : 1) * along + 0.5 * joint.to_floor);
}

}  // namespace

Entrances entrances_of(Document const& document, FloorPlan const& plan) {
    Entrances entrances;
    for (auto const& passageway : plan.passageways) {
        auto const& state = *document.find<ConnectionState>(plan.surfaces[passageway.region].id);
        entrances.of.push_back(entrance_of(state));
        auto const& entrance = entrances.of.back();
        entrances.any = entrances.any || !entrance.lets_in_at_once() || !entrance.lets_out_at_once();
    }
    return entrances;
}

void hold_at_entrances(SimulationState& run) {
    if (!run.entrances.any) return;
    run.entrances.tickets.resize(run.infos.size());
    auto const approaches = approaches_of(run);
    for (std::size_t first = 0; first < approaches.size();) {
        auto last = first;
        while (last < approaches.size() && approaches[last].passageway == approaches[first].passageway) ++last;
        auto const here = std::span(approaches).subspan(first, last - first);
        auto& entrance = run.entrances.of[approaches[first].passageway];
        for (auto const& approach : here) {
            if (was_admitted(run, approach)) continue;
            bool const yields = approach.enters && must_yield(entrance, approach, here);
            if (approach.distance > (yields ? yielding_distance : waiting_distance)) continue;
            if (approach.distance <= waiting_distance) {
                AdmissionTicket& ticket = turn_of(run, approach);
                ticket.admitted =
                    !yields && run.seconds() + rounding >= ticket.ready_at && is_admitted(run, entrance, approach);
                if (ticket.admitted) continue;
            }
            hold(run, approach, yields);
        }
        first = last;
    }
}

bool is_before_its_turn(SimulationState const& run, AgentMotion const& motion, navigation::RegionIndex region) {
    if (!run.entrances.any || motion.ahead == navigation::none) return false;
    auto const& joint = run.plan.joints[motion.ahead];
    bool const enters = region == joint.connection;
    if (!enters && region != joint.floor) return false;
    auto const& entrance = run.entrances.of[passageway_at(run, motion.ahead)];
    if (enters ? entrance.lets_in_at_once() : entrance.lets_out_at_once()) return false;
    AdmissionTicket const& ticket = run.entrances.tickets[motion.agent];
    return ticket.joint != motion.ahead || ticket.enters != enters || !ticket.admitted;
}

}  // namespace pedflux::engine
