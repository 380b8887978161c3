#include "engine/simulation/events/transition_counter.h"

#include "engine/base/checks.h"
#include "engine/behaviour/triggers/transition_states.h"
#include "engine/model/document.h"
#include "engine/model/node.h"

#include <algorithm>

namespace pedflux::engine {

RuleArea rule_area_of(Document const& document, FloorPlan const& plan, Places& places, GlobalId const& id) {
    auto const* const object = document.find(id);
    if (!object) refuse("'" + GlobalId(id).GetString() + "' is no object of the project");
    RuleArea area;
    area.regions.resize(plan.surfaces.size());
    if (!object->enabled) return area;
    if (object->kind->type == ObjectType::VOLUME) {
        area.volume = volume_number(volumes_of(document), id);
        return area;
    }
    auto const& place = places[places.of(id)];
    area.doorway = place.doorway;
    for (auto const region : place.regions) area.regions[region] = true;
    return area;
}

Crossings::Crossings(Document const& document, FloorPlan const& plan, Places& places,
                     std::span<std::shared_ptr<Transition> const> transitions)
    : floor_count_(plan.floor_count), counts_(transitions.size()), next_counts_(transitions.size()) {
    for (auto const& transition : transitions) {
        require_shallow(node_of(*transition));
        add_rules(document, plan, places, *transition, transitions_.emplace_back());
    }
    bool const any_volume = std::ranges::any_of(transitions_, [](std::vector<Rule> const& rules) {
        return std::ranges::any_of(rules, [](Rule const& rule) { return rule.area.volume != no_volume; });
    });
    if (any_volume) volumes_ = volumes_of(document);
}

void Crossings::add_rules(Document const& document, FloorPlan const& plan, Places& places, Transition const& transition,
                          std::vector<Rule>& rules) {
    auto const area_of = [&](GlobalId const& id) { return rule_area_of(document, plan, places, id); };
    auto const kind = static_cast<TransitionType>(type_of(transition));
    auto const add_server = [&](GlobalId const& id) {
        rules.push_back({.kind = kind, .area = {}, .server = server_of(plan, id)});
    };
    switch (kind) {
        case TransitionType::ANY_OF:
            for (auto const& child : children_of(transition)) add_rules(document, plan, places, *child, rules);
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

bool Crossings::makes(Rule const& rule, Crossing const& crossing) const {
    auto const is_portal = [&](RuleArea const& area) {
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

std::vector<bool> Crossings::volumes_around(Vector point) const {
    std::vector<bool> around;
    for (auto const& volume : volumes_) around.push_back(contains(volume, point));
    return around;
}

void Crossings::came_in(std::uint32_t agent, Whereabouts const& now, std::uint32_t doorway) {
    trails_.resize(agent + 1);
    trails_[agent].now = now;
    note(Crossing{.from = {}, .to = now, .doorway = doorway});
}

void Crossings::move(std::uint32_t agent, Whereabouts const& now) {
    auto& trail = trails_[agent];
    note(Crossing{.before = trail.before, .from = trail.now, .to = now});
    if (trail.now.region != now.region) trail.before = trail.now.region;
    trail.now = now;
}

void Crossings::went_out(std::uint32_t agent, std::uint32_t doorway) {
    if (!is_any()) return;
    note(Crossing{.before = trails_[agent].before, .from = trails_[agent].now, .to = {}, .doorway = doorway});
}

template <class SomeCrossing>
void Crossings::note(SomeCrossing const& crossing) {
    for (std::size_t i = 0; i < transitions_.size(); ++i) {
        if (std::ranges::any_of(transitions_[i], [&](Rule const& rule) { return makes(rule, crossing); })) {
            ++next_counts_[i];
        }
    }
}

bool Crossings::makes(Rule const& rule, ServerCrossing const& crossing) {
    auto const kind = crossing.enters ? TransitionType::ENTER_SERVER : TransitionType::EXIT_SERVER;
    return rule.kind == kind && rule.server == crossing.server;
}

void Crossings::passed(ServerCrossing const& crossing) { note(crossing); }

void Crossings::end_frame() {
    std::swap(counts_, next_counts_);
    std::ranges::fill(next_counts_, 0);
}

}  // namespace pedflux::engine
