#include "engine/simulation/entrances.h"

#include "engine/behaviour/distribution_face.h"
#include "engine/behaviour/random.h"
#include "engine/model/document.h"
#include "engine/simulation/live_run.h"
#include "engine/simulation/random_streams.h"
#include "engine/simulation/ways.h"

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
struct Comer {
    std::size_t passageway;
    double distance;
    std::size_t walker;
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
    if (state.entrance_delay) entrance.entry_delay = law_of(*state.entrance_delay);
    if (state.exit_delay) entrance.exit_delay = law_of(*state.exit_delay);
    if (auto const& priority = state.priority) {
        bool const from_ball = priority->direction == ConnectionObjectDirection::BALL_TO_BOX;
        entrance.priority = {from_ball ? std::size_t{0} : 1, priority->distance, priority->primary_yields_to_secondary};
    }
    return entrance;
}

std::size_t passageway_at(LiveRun const& run, navigation::ConnectionIndex joint) {
    return run.plan.joints[joint].connection - run.plan.floor_count;
}

std::vector<Comer> comers_of(LiveRun const& run) {
    std::vector<Comer> comers;
    for (std::size_t i = 0; i < run.walkers.size(); ++i) {
        auto const& walker = run.walkers[i];
        if (walker.ahead == navigation::none || walker.way != Walker::Way::WALKS) continue;
        auto const& joint = run.plan.joints[walker.ahead];
        bool const enters = walker.region == joint.floor;
        auto const passageway = passageway_at(run, walker.ahead);
        auto const& entrance = run.entrances.of[passageway];
        if (entrance.lets_in_at_once() && entrance.lets_out_at_once()) continue;
        std::size_t const way = joint.at_ball == enters ? 0 : 1;
        comers.push_back({passageway, distance(joint.line, walker.position), i, way, enters});
    }
    // Equally near ones stay in the order of their numbers.
    std::ranges::stable_sort(comers, [](Comer const& a, Comer const& b) {
        return std::tie(a.passageway, a.distance) < std::tie(b.passageway, b.distance);
    });
    return comers;
}

Turn& turn_of(LiveRun& run, Comer const& comer) {
    auto const& walker = run.walkers[comer.walker];
    Turn& turn = run.entrances.turns[walker.agent];
    if (turn.joint == walker.ahead && turn.enters == comer.enters) return turn;
    auto const& entrance = run.entrances.of[comer.passageway];
    auto const& law = comer.enters ? entrance.entry_delay : entrance.exit_delay;
    turn = {walker.ahead, comer.enters, false, run.seconds(), turn.number + 1};
    if (law) {
        Random random(run.seed, streams::of_delays_at_connections + (std::uint64_t{turn.number} << 32) +
                                    run.persons[walker.agent].origin.key);
        turn.ready_at += sample(*law, random);
    }
    return turn;
}

/// Whether somebody who goes the other way comes first.
bool must_yield(Entrance const& entrance, Comer const& comer, std::span<Comer const> others) {
    if (!entrance.priority) return false;
    auto const& rule = *entrance.priority;
    bool const goes_first = comer.way == rule.first_way;
    if (goes_first && !rule.yields_to_those_inside) return false;
    return std::ranges::any_of(others, [&](Comer const& other) {
        bool const is_inside = !other.enters;
        return other.way != comer.way && (is_inside || (!goes_first && other.distance <= rule.distance));
    });
}

/// Seconds between people who are let in over the end.
double interval_at(LiveRun const& run, Entrance const& entrance, navigation::ConnectionIndex joint) {
    if (entrance.interval_and_metre == 0) return entrance.interval;
    return entrance.interval_and_metre / length(run.plan.joints[joint].line);
}

bool is_admitted(LiveRun const& run, Entrance& entrance, Comer const& comer) {
    if (!comer.enters) return true;
    double const interval = interval_at(run, entrance, run.walkers[comer.walker].ahead);
    if (interval == 0) return true;
    if (run.seconds() + rounding < entrance.next) return false;
    // People come at whole steps; what they came late by counts for the next one.
    entrance.next = std::max(entrance.next, run.seconds() - run.frame_length()) + interval;
    return true;
}

bool was_admitted(LiveRun const& run, Comer const& comer) {
    auto const& walker = run.walkers[comer.walker];
    Turn const& turn = run.entrances.turns[walker.agent];
    return turn.admitted && turn.joint == walker.ahead && turn.enters == comer.enters;
}

/// Lets somebody stand, or make way for those who come out towards it: else they would face each other for ever.
void hold(LiveRun& run, Comer const& comer, bool yields) {
    auto& walker = run.walkers[comer.walker];
    walker.way = Walker::Way::STANDS;
    walker.direction = {};
    if (!yields) return;
    auto const& joint = run.plan.joints[walker.ahead];
    Point const along = unit(joint.line.to - joint.line.from);
    double const offset = dot(walker.position - at(joint.line, 0.5), along);
    if (std::abs(offset) > length(joint.line) / 2 + aside) return;
    walker.way = Walker::Way::WALKS;
    walker.direction = unit((offset < 0 ? -1 : 1) * along + 0.5 * joint.to_floor);
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

void hold_at_entrances(LiveRun& run) {
    if (!run.entrances.any) return;
    run.entrances.turns.resize(run.persons.size());
    auto const comers = comers_of(run);
    for (std::size_t first = 0; first < comers.size();) {
        auto last = first;
        while (last < comers.size() && comers[last].passageway == comers[first].passageway) ++last;
        auto const here = std::span(comers).subspan(first, last - first);
        auto& entrance = run.entrances.of[comers[first].passageway];
        for (auto const& comer : here) {
            if (was_admitted(run, comer)) continue;
            bool const yields = comer.enters && must_yield(entrance, comer, here);
            if (comer.distance > (yields ? yielding_distance : waiting_distance)) continue;
            if (comer.distance <= waiting_distance) {
                Turn& turn = turn_of(run, comer);
                turn.admitted =
                    !yields && run.seconds() + rounding >= turn.ready_at && is_admitted(run, entrance, comer);
                if (turn.admitted) continue;
            }
            hold(run, comer, yields);
        }
        first = last;
    }
}

bool is_before_its_turn(LiveRun const& run, Walker const& walker, navigation::RegionIndex region) {
    if (!run.entrances.any || walker.ahead == navigation::none) return false;
    auto const& joint = run.plan.joints[walker.ahead];
    bool const enters = region == joint.connection;
    if (!enters && region != joint.floor) return false;
    auto const& entrance = run.entrances.of[passageway_at(run, walker.ahead)];
    if (enters ? entrance.lets_in_at_once() : entrance.lets_out_at_once()) return false;
    Turn const& turn = run.entrances.turns[walker.agent];
    return turn.joint != walker.ahead || turn.enters != enters || !turn.admitted;
}

}  // namespace pedflux::engine
