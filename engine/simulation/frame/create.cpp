#include "engine/simulation/frame/create.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/navigation/openings.h"
#include "engine/scene/simulation_run_state.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/frame/recording.h"
#include "engine/transport/car.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace pedflux::engine {

namespace {

/// The longest step of the crowd, in seconds.
constexpr double longest_step = 0.1;

/// Whether the joint's connection may be entered there by its direction alone, and left.
bool lets_in(Passageway const& passageway, bool at_ball) {
    return at_ball ? passageway.ball_to_box : passageway.box_to_ball;
}

navigation::NavigationInput navigation_input(FloorPlan const& plan, Places& places) {
    navigation::NavigationInput input;
    for (std::size_t region = 0; region < plan.surfaces.size(); ++region) {
        auto const& surface = plan.surfaces[region];
        input.regions.push_back({surface.name, surface.walkable, plan.inclines[region].length_factor});
    }
    for (auto const& joint : plan.joints) {
        auto const& passageway = plan.passageways[joint.connection - plan.floor_count];
        input.connections.push_back({passageway.title, {joint.connection, joint.line}, {joint.floor, joint.line}, {}});
    }
    for (PlaceIndex place = 0; place < places.size(); ++place) {
        if (!places[place].is_portal() && places[place].destination == navigation::none) continue;
        places[place].destination = static_cast<navigation::DestinationIndex>(input.destinations.size());
        input.destinations.push_back(destination_of(places[place], plan));
    }
    return input;
}

crowd::FloorPlan crowd_plan(FloorPlan const& plan, navigation::Navigation const& navigation) {
    crowd::FloorPlan crowd;
    for (navigation::RegionIndex region = 0; region < plan.surfaces.size(); ++region) {
        auto& walls = crowd.regions.emplace_back().walls;
        for (auto const& wall : navigation.walls(region)) {
            walls.push_back({wall.segment.from, wall.segment.to, wall.connection != navigation::none});
        }
    }
    for (auto const& joint : plan.joints) {
        bool const floor_is_left = dot(turned_left(joint.line.to - joint.line.from), joint.to_floor) > 0;
        crowd.crossings.push_back({floor_is_left ? joint.floor : joint.connection,
                                   floor_is_left ? joint.connection : joint.floor, joint.line.from, joint.line.to});
    }
    return crowd;
}

/// Marks the places that people go to, so that routes to them are found.
void mark_goals(Places& places, SpawnRequests const& requests, BehaviourProgram const& rules,
                std::vector<GlobalId> const& extra_goals) {
    constexpr navigation::DestinationIndex wanted = 0;
    for (auto const& waiting : requests.by_origin) {
        for (auto const& info : waiting) {
            if (info.destination != no_place) places[info.destination].destination = wanted;
        }
    }
    for (auto const& choices : requests.choices) {
        for (auto const place : choices) places[place].destination = wanted;
    }
    for (auto const place : rules.places) {
        if (place != no_place && !places[place].is_dispatch()) places[place].destination = wanted;
    }
    for (auto const& goal : extra_goals) places[places.of(goal)].destination = wanted;
}

/// A point to ask for ways from: the middle of a portal, or some clear point of an area.
navigation::RegionIndex start_of(SimulationState const& run, Place const& place, Point& start) {
    if (place.is_portal()) {
        auto const& line = run.plan.doorways[place.doorway].line;
        start = run.navigation.nearest_clear(line.region, at(line.line, 0.5));
        return line.region;
    }
    auto const region = place.regions.front();
    start = run.navigation.nearest_clear(region, run.plan.surfaces[region].walkable.front().outline.front());
    return region;
}

/// Throws Exception unless everybody can get to where they are to go by the ways that they take.
void require_ways(SimulationState& run) {
    for (PlaceIndex origin = 0; origin < run.requests.by_origin.size(); ++origin) {
        std::set<std::pair<RouteClassIndex, std::vector<PlaceIndex>>> goals;
        for (auto const& info : run.requests.by_origin[origin]) {
            if (info.destination == no_place && info.choices == no_place) continue;
            auto const people = class_of(run, preferences_of(run, info));
            if (info.destination != no_place) goals.insert({people, {info.destination}});
            if (info.choices != no_place) goals.insert({people, run.requests.choices[info.choices]});
        }
        if (goals.empty()) continue;
        Point start;
        auto const region = start_of(run, run.places[origin], start);
        for (auto const& [people, choices] : goals) {
            bool const reachable = std::ranges::any_of(choices, [&, by = people](PlaceIndex goal) {
                return run.navigation.reachable(region, start, destination_at(run, goal, by));
            });
            if (!reachable) {
                refuse("No way" + in_network(run, people) + " leads from " + run.places[origin].title + " to " +
                       run.places[choices.front()].title +
                       (choices.size() > 1 ? " nor to any other of its destinations" : ""));
            }
        }
    }
}

/// The shutters of joints and doorways, and which doorways people leave by.
void find_shutters(SimulationState& run) {
    run.joint_walls.resize(run.plan.joints.size());
    run.doorway_walls.resize(run.plan.doorways.size());
    run.doorway_outward.resize(run.plan.doorways.size());
    for (navigation::RegionIndex region = 0; region < run.plan.surfaces.size(); ++region) {
        auto const& walls = run.navigation.walls(region);
        for (std::size_t wall = 0; wall < walls.size(); ++wall) {
            if (walls[wall].connection != navigation::none) {
                run.joint_walls[walls[wall].connection].push_back({region, wall});
            } else if (walls[wall].destination != navigation::none) {
                // Several portals may lie on a wall; each opens it.
                for (std::size_t doorway = 0; doorway < run.plan.doorways.size(); ++doorway) {
                    auto const& line = run.plan.doorways[doorway].line;
                    bool const lies_on = line.region == region && distance(line.line, at(walls[wall].segment, 0.5)) <=
                                                                      navigation::line_tolerance;
                    if (lies_on) run.doorway_walls[doorway].push_back({region, wall});
                }
            }
        }
    }
    for (std::size_t doorway = 0; doorway < run.plan.doorways.size(); ++doorway) {
        if (run.doorway_walls[doorway].empty()) continue;
        auto const& line = run.plan.doorways[doorway].line;
        Point const left = unit(turned_left(line.line.to - line.line.from));
        constexpr double beside = 0.05;
        bool const left_is_inside = run.navigation.contains(line.region, at(line.line, 0.5) + beside * left);
        run.doorway_outward[doorway] = left_is_inside ? -1 * left : left;
    }
}

void open_exits(SimulationState& run, SpawnRequests const& requests, std::vector<GlobalId> const& extra_goals) {
    std::set<PlaceIndex> goals;
    for (auto const& waiting : requests.by_origin) {
        for (auto const& info : waiting) goals.insert(info.destination);
    }
    for (auto const& choices : requests.choices) goals.insert(choices.begin(), choices.end());
    for (auto const& goal : extra_goals) goals.insert(run.places.of(goal));
    goals.erase(no_place);
    for (auto const goal : goals) open_exit(run, goal);
}

}  // namespace

SimulationState::SimulationState(SimulationInput&& input)
    : plan(std::move(input.plan)),
      places(std::move(input.places)),
      navigation(navigation_input(plan, places)),
      crowd(crowd_plan(plan, navigation), {}, input.threads),
      workers(input.threads),
      rules(std::move(input.rules)),
      requests(std::move(input.requests)),
      density_grid(plan) {}

SimulationState::~SimulationState() {
    try {
        if (!stopped) stop(*this);
    } catch (Exception const&) {
        // Nobody is left to tell; what could not be written was not there before either.
    }
}

std::shared_ptr<SimulationState> create_run(Document const& document, RunSettings const& settings) {
    auto plan = floor_plan_of(document);
    Places places(document, plan);
    auto requests = spawn_requests_of(document, places, settings.seed);
    auto rules = behaviour_program_of(document, plan, places);
    mark_goals(places, requests, rules, settings.extra_goals);
    auto run = std::make_shared<SimulationState>(
        SimulationInput{std::move(plan), std::move(places), std::move(requests), std::move(rules), settings.threads});
    run->project = document.copy();
    run->routes = route_classes_of(document, run->plan);
    run->entrances = entrances_of(document, run->plan);
    run->rerouting = congestion_rerouting_of(run->plan);
    run->seed = settings.seed;
    run->frame_rate = document.settings.frame_rate;
    run->start_time = document.settings.start_time;
    run->duration = document.settings.duration;
    run->substeps = std::max(1, static_cast<int>(std::ceil(run->frame_length() / longest_step - 1e-9)));
    run->requests.by_origin.resize(run->places.size());
    run->next_request.resize(run->places.size());
    run->entered_at.resize(run->plan.doorways.size());
    run->gates.resize(run->plan.passageways.size());
    run->doorway_is_exit.resize(run->plan.doorways.size());
    run->exits_of.resize(run->plan.surfaces.size());
    find_shutters(*run);
    open_exits(*run, run->requests, settings.extra_goals);
    for (std::size_t i = 0; i < run->gates.size(); ++i) {
        auto const& passageway = run->plan.passageways[i];
        set_gate(*run, i, {lets_in(passageway, true), lets_in(passageway, false)});
    }
    require_ways(*run);
    if (run->requests.count == 0) {
        run->issues.emplace_back(IssueCategory::WARNING, "Nobody comes",
                                 "No enabled event of the project brings people into the simulation.");
    }
    run->servers = server_queues_of(*run);
    run->events = event_engine_of(*run, document, run->rules.symbols);
    run->events->step();
    run->elevators = make_controllers(document);
    if (!run->elevators.empty()) {
        run->issues.emplace_back(IssueCategory::WARNING, "Elevators stand still",
                                 "Simulations of this engine do not move elevators yet, and nobody rides in them.");
    }
    run->run = settings.run;
    run->database_name = settings.database_name;
    run->database_path = settings.database_path;
    run->writer.emplace(run->database_path, RunInfo{settings.run->name, run->frame_rate, run->start_time},
                        run->plan.surfaces, recorded_project_of(document, run->plan));
    return run;
}

}  // namespace pedflux::engine
