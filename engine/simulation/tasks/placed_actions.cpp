#include "engine/simulation/tasks/placed_actions.h"

namespace pedflux::engine {

PlaceIndex place_of(Places& places, AgentActionTypeId action, GlobalId const& object) {
    if (action == AgentActionTypeId::EVACUATE_ZONE) return places.outside_of(object);
    if (action == AgentActionTypeId::SEEK_PROCESS_START) return places.process_start(object);
    return places.of(object);
}

void place_actions(PlacedActions& actions, Places& places, std::vector<WaitSpace> const& wait_spaces,
                   std::size_t first_node) {
    auto const& program = actions.program;
    actions.places.resize(program.objects.size(), no_place);
    for (auto i = first_node; i < program.nodes.size(); ++i) {
        auto const& node = program.nodes[i];
        if (!is_seeking(node.type)) continue;
        for (auto object = node.objects.first; object < node.objects.first + node.objects.count; ++object) {
            actions.places[object] = place_of(places, node.type, program.objects[object]);
        }
    }
    compile_waits(actions, wait_spaces);
}

void compile_waits(PlacedActions& actions, std::vector<WaitSpace> const& wait_spaces) {
    auto const& styles = actions.program.styles;
    while (actions.waits.size() < styles.size()) {
        actions.waits.push_back(wait_program_of(*styles[actions.waits.size()], wait_spaces));
    }
}

}  // namespace pedflux::engine
