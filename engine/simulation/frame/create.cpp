#include "engine/simulation/frame/create.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/scene/simulation_run_state.h"
#include "engine/simulation/frame/frame.h"
#include "engine/transport/car.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// The longest step of the crowd, in seconds.
constexpr double longest_step = 0.1;

/// Destinations of the navigation, of each place; `none` where nobody goes.
using Destinations = std::vector<navigation::DestinationIndex>;

World world_of(Document const& document, std::uint64_t seed) {
    auto plan = floor_plan_of(document);
    Places places(document, plan);
    return {std::move(plan), std::move(places), volumes_of(document), {}, seed};
}

Clock clock_of(Document const& document) {
    auto const& settings = document.settings;
    Clock clock{settings.frame_rate, settings.start_time, static_cast<double>(settings.duration), 1, 0};
    clock.substeps = std::max(1, static_cast<int>(std::ceil(clock.frame_length() / longest_step - 1e-9)));
    return clock;
}

/// Whether the connection may be entered at an end by its direction alone.
bool lets_in(Passageway const& passageway, bool at_ball) {
    return at_ball ? passageway.ball_to_box : passageway.box_to_ball;
}

/// The places that agents are planned to go to.
std::set<PlaceIndex> planned_goals(SpawnRequests const& requests) {
    std::set<PlaceIndex> goals;
    for (auto const& waiting : requests.by_origin) {
        for (auto const& request : waiting) goals.insert(request.destination);
    }
    for (auto const& choices : requests.choices) goals.insert(choices.begin(), choices.end());
    goals.erase(no_place);
    return goals;
}

/// The navigation, with routes to the portals and to all goals.
navigation::NavigationInput navigation_input(World const& world, std::set<PlaceIndex> const& goals,
                                             Destinations& destinations) {
    auto const& plan = world.plan;
    navigation::NavigationInput input;
    for (std::size_t region = 0; region < plan.surfaces.size(); ++region) {
        auto const& surface = plan.surfaces[region];
        input.regions.push_back({surface.name, surface.walkable, plan.inclines[region].length_factor});
    }
    for (auto const& joint : plan.joints) {
        auto const& passageway = plan.passageways[joint.connection - plan.floor_count];
        input.connections.push_back({passageway.title, {joint.connection, joint.line}, {joint.floor, joint.line}, {}});
    }
    destinations.resize(world.places.size(), navigation::none);
    for (PlaceIndex place = 0; place < world.places.size(); ++place) {
        if (!world.places[place].is_portal() && !goals.contains(place)) continue;
        destinations[place] = static_cast<navigation::DestinationIndex>(input.destinations.size());
        input.destinations.push_back(destination_of(world.places[place], plan));
    }
    return input;
}

/// A point to ask for ways from: the middle of a portal, or some clear point of an area.
Standpoint start_at(World const& world, navigation::Navigation const& navigation, Place const& place) {
    if (place.is_portal()) {
        auto const& line = world.plan.doorways[place.doorway].line;
        return {line.region, navigation.nearest_clear(line.region, at(line.line, 0.5))};
    }
    auto const region = place.regions.front();
    auto const& walkable = world.plan.surfaces[region].walkable;
    return {region, navigation.nearest_clear(region, walkable.front().outline.front())};
}

/// Throws Exception unless everybody can get to where they are to go by the ways that they take.
void require_ways(Routes& routes, World const& world, SpawnRequests const& requests) {
    for (PlaceIndex origin = 0; origin < requests.by_origin.size(); ++origin) {
        std::set<std::pair<RouteClassIndex, std::vector<PlaceIndex>>> goals;
        for (auto const& request : requests.by_origin[origin]) {
            if (request.destination == no_place && request.choices == no_place) continue;
            auto const people = class_of(routes, world.plan, preferences_of(routes, request));
            if (request.destination != no_place) goals.insert({people, {request.destination}});
            if (request.choices != no_place) goals.insert({people, requests.choices[request.choices]});
        }
        if (goals.empty()) continue;
        auto const start = start_at(world, routes.navigation, world.places[origin]);
        for (auto const& [people, choices] : goals) {
            bool const reachable = std::ranges::any_of(choices, [&, by = people](PlaceIndex goal) {
                return routes.navigation.reachable(start.region, start.point, destination_at(routes, world, goal, by));
            });
            if (reachable) continue;
            refuse(fmt::format("No way{} leads from {} to {}{}", in_network(routes, people), world.places[origin].title,
                               world.places[choices.front()].title,
                               choices.size() > 1 ? " nor to any other of its destinations" : ""));
        }
    }
}

void open_gates(SimulationState& state) {
    auto const& passageways = state.world.plan.passageways;
    state.gates.states.resize(passageways.size());
    for (std::size_t i = 0; i < passageways.size(); ++i) {
        set_gate(state.gates, state.world.plan, state.routes.navigation, state.crowd, i,
                 {lets_in(passageways[i], true), lets_in(passageways[i], false)});
    }
}

}  // namespace

std::shared_ptr<SimulationState> create_simulation(Document const& document, RunSettings const& settings) {
    auto world = world_of(document, settings.seed);
    Spawning spawning;
    spawning.program = spawn_program_of(document);
    spawning.requests = spawn_requests_of(spawning.program, world.places, settings.seed);
    auto program = behaviour_program_of(document, world);

    auto const planned = planned_goals(spawning.requests);
    auto goals = planned;
    for (auto const goal : goals_of(program, world.places)) goals.insert(goal);
    auto exits = planned;
    for (auto const& goal : settings.extra_goals) {
        auto const place = world.places.of(goal);
        goals.insert(place);
        exits.insert(place);
    }

    Destinations destinations;
    navigation::Navigation navigation(navigation_input(world, goals, destinations));
    auto routes = routes_of(document, world.plan, std::move(navigation), std::move(destinations));
    auto const created = std::make_shared<SimulationState>(std::move(world), std::move(program), std::move(routes),
                                                           std::move(spawning), settings.threads);
    auto& state = *created;
    state.project = document.copy();
    state.clock = clock_of(document);
    state.entrances = connection_entrances_of(document, state.world.plan);
    state.rerouting = congestion_rerouting_of(state.world.plan);
    state.spawning.requests.by_origin.resize(state.world.places.size());
    state.spawning.next_request.resize(state.world.places.size());
    state.spawning.entered_at.resize(state.world.plan.doorways.size());
    find_dynamic_walls(state.world, state.routes.navigation, state.gates, state.exits);
    for (auto const exit : exits) open_exit(state.exits, state.world, state.crowd, exit);
    open_gates(state);
    require_ways(state.routes, state.world, state.spawning.requests);
    if (state.spawning.requests.count == 0) {
        state.journal.issues.emplace_back(IssueCategory::WARNING, "Nobody comes",
                                          "No enabled event of the project brings people into the simulation.");
    }
    state.servers = server_queues_of(state.world.plan, state.routes.navigation);
    state.waits = wait_places_of(state.program.wait_spaces);
    state.clearances.resize(state.program.clearances.size());
    auto symbols = state.program.symbols;
    state.events = event_engine_of(document, state.world, state.program, symbols);
    assign_requests_to_events(state.spawning, state.events->program.sources.size());
    state.facts = std::make_unique<EventFacts>(*state.events, state.spawning, state.gates, state.servers);
    evaluate_events(state);
    state.elevators = make_controllers(document);
    if (!state.elevators.empty()) {
        state.journal.issues.emplace_back(
            IssueCategory::WARNING, "Elevators stand still",
            "Simulations of this engine do not move elevators yet, and nobody rides in them.");
    }
    auto& recording = state.recording;
    recording.run = settings.run;
    recording.database_name = settings.database_name;
    recording.database_path = settings.database_path;
    recording.writer.emplace(recording.database_path,
                             RunInfo{settings.run->name, state.clock.frame_rate, state.clock.start_time},
                             state.world.plan.surfaces, recorded_project_of(document, state.world.plan));
    return created;
}

}  // namespace pedflux::engine
