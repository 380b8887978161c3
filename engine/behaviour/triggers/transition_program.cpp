#include "engine/behaviour/triggers/transition_program.h"

#include "engine/behaviour/triggers/transition_states.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

bool comes_in(Crossing const& crossing) { return crossing.from.surface == no_surface; }
bool goes_out(Crossing const& crossing) { return crossing.to.surface == no_surface; }

bool is_inside(Area const& area, Whereabouts const& where) {
    return area.volume ? where.is_in(*area.volume) : area.has(where.surface);
}

/// Whether an agent goes from one area to another that it was not in.
bool passes_between(Area const& first, Area const& second, Crossing const& crossing) {
    auto const from = crossing.from.surface;
    auto const to = crossing.to.surface;
    if (comes_in(crossing)) return first.is_portal(crossing.portal) && second.has(to);
    if (goes_out(crossing)) return second.is_portal(crossing.portal) && first.has(from);
    if (!second.has(to) || second.has(from)) return false;
    // Floors meet at links, stairs and ramps alone, so one of these does not stand between two floors.
    bool const over_connection =
        crossing.from.on_connection && first.has(crossing.before) && !second.has(crossing.before);
    return first.has(from) || over_connection;
}

bool matches(TransitionRule const& rule, Crossing const& crossing) {
    switch (rule.kind) {
        case TransitionType::AT_PORTAL:
            return rule.area.is_portal(crossing.portal);
        case TransitionType::ENTER_AREA:
            return enters(rule.area, crossing);
        case TransitionType::EXIT_AREA:
            return exits(rule.area, crossing);
        case TransitionType::ENTER_SIMULATION:
            return comes_in(crossing) && enters(rule.area, crossing);
        case TransitionType::EXIT_SIMULATION:
            return goes_out(crossing) && exits(rule.area, crossing);
        case TransitionType::BETWEEN_OBJECTS:
            return passes_between(rule.area, rule.other, crossing);
        case TransitionType::CORDON:
            return !comes_in(crossing) && !goes_out(crossing) &&
                   crosses(*rule.cordon, {crossing.from.position, crossing.to.position}, crossing.to.height);
        case TransitionType::ANY_OF:
        case TransitionType::ENTER_SERVER:
        case TransitionType::EXIT_SERVER:
            break;
    }
    return false;
}

void add_rules(Transition const& transition, TransitionObjects& objects, TransitionProgram& rules) {
    auto const kind = static_cast<TransitionType>(type_of(transition));
    auto const& node = node_of(transition);
    auto const add_area = [&](GlobalId const& id) { rules.push_back({.kind = kind, .area = objects.area(id)}); };
    auto const add_server = [&](GlobalId const& id) {
        rules.push_back({.kind = kind, .server = objects.server(node, id)});
    };
    switch (kind) {
        case TransitionType::ANY_OF:
            for (auto const& child : children_of(transition)) add_rules(*child, objects, rules);
            return;
        case TransitionType::AT_PORTAL:
            return add_area(state_of<AtPortalTransitionState>(transition).portal);
        case TransitionType::ENTER_AREA:
            return add_area(state_of<EnterAreaTransitionState>(transition).area);
        case TransitionType::EXIT_AREA:
            return add_area(state_of<ExitAreaTransitionState>(transition).area);
        case TransitionType::ENTER_SIMULATION:
            return add_area(state_of<EnterSimulationTransitionState>(transition).object);
        case TransitionType::EXIT_SIMULATION:
            return add_area(state_of<ExitSimulationTransitionState>(transition).object);
        case TransitionType::BETWEEN_OBJECTS: {
            auto const& state = state_of<BetweenObjectsTransitionState>(transition);
            auto from = objects.area(state.from);
            return rules.push_back({.kind = kind, .area = std::move(from), .other = objects.area(state.to)});
        }
        case TransitionType::CORDON: {
            auto const& id = state_of<CordonTransitionState>(transition).cordon;
            return rules.push_back({.kind = kind, .cordon = objects.cordon(node, id)});
        }
        case TransitionType::ENTER_SERVER:
            return add_server(state_of<EnterServerTransitionState>(transition).server);
        case TransitionType::EXIT_SERVER:
            return add_server(state_of<ExitServerTransitionState>(transition).server);
    }
}

}  // namespace

TransitionProgram compile(Transition const& transition, TransitionObjects& objects) {
    require_shallow(node_of(transition));
    TransitionProgram rules;
    add_rules(transition, objects, rules);
    return rules;
}

bool asks_for_position(TransitionProgram const& program) {
    return std::ranges::any_of(program, [](TransitionRule const& rule) { return rule.cordon || rule.area.volume; });
}

bool asks_for_volumes(TransitionProgram const& program) {
    return std::ranges::any_of(program, [](TransitionRule const& rule) { return rule.area.volume.has_value(); });
}

bool makes(TransitionProgram const& program, Crossing const& crossing) {
    return std::ranges::any_of(program, [&](TransitionRule const& rule) { return matches(rule, crossing); });
}

bool makes(TransitionProgram const& program, ServerCrossing const& crossing) {
    auto const kind = crossing.enters ? TransitionType::ENTER_SERVER : TransitionType::EXIT_SERVER;
    return std::ranges::any_of(
        program, [&](TransitionRule const& rule) { return rule.kind == kind && rule.server == crossing.server; });
}

bool enters(Area const& area, Crossing const& crossing) {
    if (comes_in(crossing) && area.is_portal(crossing.portal)) return true;
    return is_inside(area, crossing.to) && !is_inside(area, crossing.from);
}

bool exits(Area const& area, Crossing const& crossing) {
    if (goes_out(crossing) && area.is_portal(crossing.portal)) return true;
    return is_inside(area, crossing.from) && !is_inside(area, crossing.to);
}

}  // namespace pedflux::engine
