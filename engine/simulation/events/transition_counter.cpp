#include "engine/simulation/events/transition_counter.h"

#include "engine/base/checks.h"
#include "engine/behaviour/triggers/transition_states.h"
#include "engine/model/document.h"
#include "engine/model/node.h"

#include <algorithm>

namespace pedflux::engine {

TransitionCounter::TransitionCounter(Document const& document, World& world,
                                     std::span<std::shared_ptr<Transition> const> transitions)
    : floor_count_(world.plan.floor_count), counts_(transitions.size()), next_counts_(transitions.size()) {
    for (auto const& transition : transitions) {
        require_shallow(node_of(*transition));
        add_rules(document, world, *transition, transitions_.emplace_back());
    }
    asks_for_volumes_ = std::ranges::any_of(transitions_, [](std::vector<Rule> const& rules) {
        return std::ranges::any_of(rules, [](Rule const& rule) { return rule.area.volume != no_volume; });
    });
}

void TransitionCounter::add_rules(Document const& document, World& world, Transition const& transition,
                                  std::vector<Rule>& rules) {
    auto const area_of = [&](GlobalId const& id) { return object_area_of(document, world, id); };
    auto const kind = static_cast<TransitionType>(type_of(transition));
    auto const add_server = [&](GlobalId const& id) {
        rules.push_back({.kind = kind, .area = {}, .server = server_of(world.plan, id)});
    };
    switch (kind) {
        case TransitionType::ANY_OF:
            for (auto const& child : children_of(transition)) add_rules(document, world, *child, rules);
            return;
        case TransitionType::AT_PORTAL:
            return rules.push_back({kind, area_of(state_of<AtPortalTransitionState>(transition).portal)});
        case TransitionType::BETWEEN_OBJECTS: {
            auto const& state = state_of<BetweenObjectsTransitionState>(transition);
            return rules.push_back({kind, area_of(state.from), area_of(state.to)});
        }
        case TransitionType::ENTER_AREA:
            return rules.push_back({kind, area_of(state_of<EnterAreaTransitionState>(transition).area)});
        case TransitionType::EXIT_AREA:
            return rules.push_back({kind, area_of(state_of<ExitAreaTransitionState>(transition).area)});
        case TransitionType::ENTER_SIMULATION:
            return rules.push_back({kind, area_of(state_of<EnterSimulationTransitionState>(transition).object)});
        case TransitionType::EXIT_SIMULATION:
            return rules.push_back({kind, area_of(state_of<ExitSimulationTransitionState>(transition).object)});
        case TransitionType::CORDON:
            rules.push_back({kind, {}, {}, cordons_.size()});
            cordons_.push_back(cordon_line_of(document, state_of<CordonTransitionState>(transition).cordon));
            return;
        case TransitionType::ENTER_SERVER:
            return add_server(state_of<EnterServerTransitionState>(transition).server);
        case TransitionType::EXIT_SERVER:
            return add_server(state_of<ExitServerTransitionState>(transition).server);
    }
}

bool TransitionCounter::makes(Rule const& rule, Crossing const& crossing) const {
    auto const is_portal = [&](ObjectArea const& area) {
        return area.doorway != no_place && area.doorway == crossing.doorway;
    };
    auto const from = crossing.from.region;
    auto const to = crossing.to.region;
    bool const comes_in = from == navigation::none;
    bool const goes_out = to == navigation::none;
    auto const is_inside = [&](Whereabouts const& where) {
        return rule.area.volume != no_volume ? where.is_in(rule.area.volume) : rule.area.has(where.region);
    };
    bool const enters = is_inside(crossing.to) && !is_inside(crossing.from);
    bool const exits = is_inside(crossing.from) && !is_inside(crossing.to);
    switch (rule.kind) {
        case TransitionType::AT_PORTAL:
            return is_portal(rule.area);
        case TransitionType::ENTER_AREA:
        case TransitionType::ENTER_SIMULATION:
            if (rule.kind == TransitionType::ENTER_SIMULATION && !comes_in) return false;
            return enters || (comes_in && is_portal(rule.area));
        case TransitionType::EXIT_AREA:
        case TransitionType::EXIT_SIMULATION:
            if (rule.kind == TransitionType::EXIT_SIMULATION && !goes_out) return false;
            return exits || (goes_out && is_portal(rule.area));
        case TransitionType::BETWEEN_OBJECTS: {
            if (comes_in) return is_portal(rule.area) && rule.other.has(to);
            if (goes_out) return is_portal(rule.other) && rule.area.has(from);
            if (!rule.other.has(to) || rule.other.has(from)) return false;
            // Floors meet at links, stairs and ramps alone, so one of these does not stand between two floors.
            bool const over_connection =
                from >= floor_count_ && rule.area.has(crossing.before) && !rule.other.has(crossing.before);
            return rule.area.has(from) || over_connection;
        }
        case TransitionType::CORDON:
            return !comes_in && !goes_out &&
                   crosses(cordons_[rule.cordon], {crossing.from.position, crossing.to.position}, crossing.to.height);
        case TransitionType::ANY_OF:
        case TransitionType::ENTER_SERVER:
        case TransitionType::EXIT_SERVER:
            break;
    }
    return false;
}

Whereabouts TransitionCounter::whereabouts_of(World const& world, navigation::RegionIndex region,
                                              Point position) const {
    Whereabouts now{region, position};
    if (!needs_space()) return now;
    now.height = height_at(world.plan, region, position);
    if (!asks_for_volumes_) return now;
    Vector const point{position.x, now.height + above_ground, position.z};
    for (auto const& volume : world.volumes) now.volumes.push_back(contains(volume, point));
    return now;
}

void TransitionCounter::enter(World const& world, BoundaryCrossing const& entered) {
    auto const now = whereabouts_of(world, entered.region, entered.position);
    trails_.resize(std::max<std::size_t>(trails_.size(), entered.agent + 1));
    trails_[entered.agent].now = now;
    note(Crossing{.from = {}, .to = now, .doorway = entered.doorway});
}

void TransitionCounter::move(World const& world, std::uint32_t agent, navigation::RegionIndex region, Point position) {
    auto& trail = trails_[agent];
    if (!needs_space() && trail.now.region == region) return;
    auto const now = whereabouts_of(world, region, position);
    note(Crossing{.before = trail.before, .from = trail.now, .to = now});
    if (trail.now.region != now.region) trail.before = trail.now.region;
    trail.now = now;
}

void TransitionCounter::leave(World const& world, BoundaryCrossing const& left) {
    move(world, left.agent, left.region, left.position);
    auto const& trail = trails_[left.agent];
    note(Crossing{.before = trail.before, .from = trail.now, .to = {}, .doorway = left.doorway});
}

void TransitionCounter::count(World const& world, Agents const& agents, Journal& journal) {
    if (!transitions_.empty()) {
        for (auto const& entered : journal.entered) enter(world, entered);
        for (auto const& motion : agents.motions) move(world, motion.agent, motion.region, motion.position);
    }
    journal.entered.clear();
    count_departures(world, journal);
}

void TransitionCounter::count_departures(World const& world, Journal& journal) {
    if (!transitions_.empty()) {
        for (auto const& left : journal.left) leave(world, left);
        for (auto const& crossing : journal.server_crossings) note(crossing);
    }
    journal.left.clear();
    journal.server_crossings.clear();
}

template <class SomeCrossing>
void TransitionCounter::note(SomeCrossing const& crossing) {
    for (std::size_t i = 0; i < transitions_.size(); ++i) {
        if (std::ranges::any_of(transitions_[i], [&](Rule const& rule) { return makes(rule, crossing); })) {
            ++next_counts_[i];
        }
    }
}

bool TransitionCounter::makes(Rule const& rule, ServerCrossing const& crossing) {
    auto const kind = crossing.enters ? TransitionType::ENTER_SERVER : TransitionType::EXIT_SERVER;
    return rule.kind == kind && rule.server == crossing.server;
}

void TransitionCounter::end_frame(World const& world, Journal& journal) {
    count_departures(world, journal);
    std::swap(counts_, next_counts_);
    std::ranges::fill(next_counts_, 0);
}

}  // namespace pedflux::engine
