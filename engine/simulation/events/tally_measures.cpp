#include "engine/simulation/events/tally_measures.h"

#include "engine/simulation/tasks/live_situation.h"
#include "engine/simulation/world/object_area.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

/// How many agents are in areas and volumes, each counted once.
/// @param population of each region
int count_in(CompiledMeasure const& measure, World const& world, Agents const& agents,
             std::vector<int> const& population) {
    int count = 0;
    for (auto const region : measure.regions) count += population[region];
    if (measure.volumes.empty()) return count;
    for (auto const& motion : agents.motions) {
        auto const point = point_in_space(world.plan, motion);
        bool const is_counted = std::ranges::binary_search(measure.regions, motion.region);
        bool const is_inside = std::ranges::any_of(
            measure.volumes, [&](std::size_t volume) { return contains(world.volumes[volume], point); });
        if (is_inside && !is_counted) ++count;
    }
    return count;
}

}  // namespace

CompiledMeasure compiled_measure_of(TallyMeasure const& measure, Document const& document, World& world,
                                    SymbolTable const& symbols) {
    CompiledMeasure made;
    std::vector<bool> counted(world.plan.surfaces.size());
    auto const add_area = [&](GlobalId const& id) {
        auto const area = object_area_of(document, world, id);
        for (std::size_t i = 0; i < counted.size(); ++i) counted[i] = counted[i] || area.surfaces[i];
        if (area.volume) made.volumes.push_back(*area.volume);
    };
    if (auto const* const transition = std::get_if<TransitionMeasure>(&measure.kind)) {
        made.transition = transition->transition;
        return made;
    }
    if (auto const* const of_servers = std::get_if<ServerMeasure>(&measure.kind)) {
        made.of_servers = *of_servers;
        for (auto const object : measure.objects) {
            auto const server = server_of(world.plan, symbols.objects[object]);
            if (server != no_server) made.servers.push_back(server);
        }
        return made;
    }
    for (auto const object : measure.objects) add_area(symbols.objects[object]);
    for (navigation::RegionIndex region = 0; region < counted.size(); ++region) {
        if (!counted[region]) continue;
        switch (std::get<PlaceMeasure>(measure.kind)) {
            case PlaceMeasure::AREA_POPULATION:
                made.regions.push_back(region);
                break;
            case PlaceMeasure::SURFACE_AREA:
                made.constant += area(world.plan.surfaces[region].walkable) * world.plan.inclines[region].length_factor;
                break;
        }
    }
    return made;
}

std::vector<double> measured(std::span<CompiledMeasure const> measures, World const& world, Agents const& agents,
                             ServerQueues const& servers, TransitionCounter const& transitions) {
    std::vector<int> population(world.plan.surfaces.size());
    if (!measures.empty()) {
        for (auto const& motion : agents.motions) ++population[motion.region];
    }
    std::vector<double> values;
    for (auto const& measure : measures) {
        double value = measure.constant;
        if (measure.transition) value += static_cast<double>(transitions[*measure.transition]);
        value += count_in(measure, world, agents, population);
        for (auto const server : measure.servers) {
            value += server_number(servers, world.plan, server, measure.of_servers);
        }
        values.push_back(value);
    }
    return values;
}

}  // namespace pedflux::engine
