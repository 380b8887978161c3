#include "engine/simulation/routing/connection_entrances.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/document.h"
#include "engine/scene/scene_states.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <tuple>

namespace pedflux::engine {

namespace {

/// How far before the line agents wait (metres).
constexpr double waiting_distance = 0.5;
/// How far before it those wait who let others come out first (metres).
constexpr double yielding_distance = 1.5;
/// How far beside the way out they step (metres).
constexpr double aside = 0.5;
/// Tolerance for the rounding of times (seconds).
constexpr double rounding = 1e-6;

/// An agent on the way over an end of a connection.
struct Approach {
    std::size_t passageway;
    double distance;     ///< to the end (metres)
    std::size_t motion;  ///< the agent, among those here
    std::size_t way;     ///< 0: through the connection from ball to box, 1: from box to ball
    bool enters;         ///< the connection, rather than leaves it
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

std::size_t passageway_at(FloorPlan const& plan, navigation::ConnectionIndex joint) {
    return plan.joints[joint].connection - plan.floor_count;
}

/// By passageway, the nearest first.
std::vector<Approach> approaches_of(std::span<Entrance const> entrances, FloorPlan const& plan,
                                    std::span<AgentMotion const> motions) {
    std::vector<Approach> approaches;
    for (std::size_t i = 0; i < motions.size(); ++i) {
        auto const& motion = motions[i];
        if (motion.ahead == navigation::none || motion.way != AgentMotion::Way::WALKS) continue;
        auto const& joint = plan.joints[motion.ahead];
        bool const enters = motion.region == joint.floor;
        auto const passageway = passageway_at(plan, motion.ahead);
        auto const& entrance = entrances[passageway];
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

bool is_for(AdmissionTicket const& ticket, AgentMotion const& motion, bool enters) {
    return ticket.joint == motion.ahead && ticket.enters == enters;
}

/// The agent's ticket for the end that it approaches; a new one, with a delay drawn, when it has come to another end.
void renew_ticket(AdmissionTicket& ticket, Entrance const& entrance, Approach const& approach,
                  AgentMotion const& motion, std::uint64_t seed, std::uint32_t key, Clock const& clock) {
    if (is_for(ticket, motion, approach.enters)) return;
    ticket = {motion.ahead, approach.enters, false, clock.seconds(), ticket.number + 1};
    auto const& delay = approach.enters ? entrance.entry_delay : entrance.exit_delay;
    if (!delay) return;
    Random random(seed, streams::of_delays_at_connections + (std::uint64_t{ticket.number} << 32) + key);
    ticket.ready_at += sample(*delay, random);
}

/// Whether an agent that goes the other way comes first.
bool must_yield(std::optional<PriorityRule> const& priority, Approach const& approach,
                std::span<Approach const> others) {
    if (!priority) return false;
    auto const& rule = *priority;
    bool const goes_first = approach.way == rule.first_way;
    if (goes_first && !rule.yields_to_those_inside) return false;
    return std::ranges::any_of(others, [&](Approach const& other) {
        bool const is_inside = !other.enters;
        return other.way != approach.way && (is_inside || (!goes_first && other.distance <= rule.distance));
    });
}

/// Seconds between admissions over the end.
double interval_at(Entrance const& entrance, Joint const& joint) {
    if (entrance.interval_and_metre == 0) return entrance.interval;
    return entrance.interval_and_metre / length(joint.line);
}

/// Admits an agent to the connection unless the flow limit is reached; `next` is the earliest next admission.
bool admit(double& next, double interval, Clock const& clock) {
    if (interval == 0) return true;
    if (clock.seconds() + rounding < next) return false;
    // Agents come at whole steps; what they are late by counts for the next one.
    next = std::max(next, clock.seconds() - clock.frame_length()) + interval;
    return true;
}

/// Lets an agent stand, or step aside for those who come out towards it: else they would face each other for ever.
void hold(AgentMotion& motion, Joint const& joint, bool yields) {
    motion.way = AgentMotion::Way::STANDS;
    motion.direction = {};
    if (!yields) return;
    Point const along = unit(joint.line.to - joint.line.from);
    double const offset = dot(motion.position - at(joint.line, 0.5), along);
    if (std::abs(offset) > length(joint.line) / 2 + aside) return;
    motion.way = AgentMotion::Way::WALKS;
    motion.direction = unit((offset < 0 ? -1 : 1) * along + 0.5 * joint.to_floor);
}

/// @param here all who approach the same connection
void attend(ConnectionEntrances& entrances, World const& world, Agents& agents, Clock const& clock,
            Approach const& approach, std::span<Approach const> here) {
    auto& motion = agents.motions[approach.motion];
    auto& ticket = entrances.tickets[motion.agent];
    if (ticket.admitted && is_for(ticket, motion, approach.enters)) return;
    auto const& entrance = entrances.entrances[approach.passageway];
    auto const& joint = world.plan.joints[motion.ahead];
    bool const yields = approach.enters && must_yield(entrance.priority, approach, here);
    if (approach.distance > (yields ? yielding_distance : waiting_distance)) return;
    if (approach.distance <= waiting_distance) {
        auto const key = agents.infos[motion.agent].origin.key;
        renew_ticket(ticket, entrance, approach, motion, world.seed, key, clock);
        bool const is_ready = !yields && clock.seconds() + rounding >= ticket.ready_at;
        double const interval = approach.enters ? interval_at(entrance, joint) : 0;
        ticket.admitted = is_ready && admit(entrances.next_admission[approach.passageway], interval, clock);
        if (ticket.admitted) return;
    }
    hold(motion, joint, yields);
}

}  // namespace

ConnectionEntrances connection_entrances_of(Document const& document, FloorPlan const& plan) {
    ConnectionEntrances entrances;
    for (auto const& passageway : plan.passageways) {
        auto const& state = *document.find<ConnectionState>(plan.surfaces[passageway.region].id);
        auto const& entrance = entrances.entrances.emplace_back(entrance_of(state));
        entrances.any = entrances.any || !entrance.lets_in_at_once() || !entrance.lets_out_at_once();
    }
    entrances.next_admission.resize(plan.passageways.size());
    return entrances;
}

void hold_at_entrances(ConnectionEntrances& entrances, World const& world, Agents& agents, Clock const& clock) {
    if (!entrances.any) return;
    entrances.tickets.resize(agents.infos.size());
    auto const approaches = approaches_of(entrances.entrances, world.plan, agents.motions);
    for (std::size_t first = 0; first < approaches.size();) {
        auto last = first;
        while (last < approaches.size() && approaches[last].passageway == approaches[first].passageway) ++last;
        auto const here = std::span(approaches).subspan(first, last - first);
        for (auto const& approach : here) attend(entrances, world, agents, clock, approach, here);
        first = last;
    }
}

bool is_before_its_turn(ConnectionEntrances const& entrances, FloorPlan const& plan, AgentMotion const& motion,
                        navigation::RegionIndex region) {
    if (!entrances.any || motion.ahead == navigation::none) return false;
    auto const& joint = plan.joints[motion.ahead];
    bool const enters = region == joint.connection;
    if (!enters && region != joint.floor) return false;
    auto const& entrance = entrances.entrances[passageway_at(plan, motion.ahead)];
    if (enters ? entrance.lets_in_at_once() : entrance.lets_out_at_once()) return false;
    auto const& ticket = entrances.tickets[motion.agent];
    return !is_for(ticket, motion, enters) || !ticket.admitted;
}

}  // namespace pedflux::engine
