#include "engine/simulation/frame/entering.h"

#include "engine/simulation/agents/placement.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/tasks/agent_actions.h"

#include <pedflux/agents.h>

#include <algorithm>
#include <utility>

namespace pedflux::engine {

namespace {

/// The goal of an agent that enters: the nearest of the places that it may choose from.
PlaceIndex goal_of(SimulationState& state, SpawnRequest const& request, Standpoint const& at) {
    if (request.choices == no_place) return request.destination;
    auto const people = class_of(state.routes, state.world.plan, preferences_of(state.routes, request));
    return nearest_place(state.routes, state.world, at, people, state.spawning.requests.choices[request.choices]);
}

bool is_due(Spawning const& spawning, Clock const& clock, PlaceIndex origin) {
    auto const& waiting = spawning.requests.by_origin[origin];
    auto const next = spawning.next_request[origin];
    return next < waiting.size() && waiting[next].due <= clock.seconds();
}

void enter_from(SimulationState& state, PlaceIndex origin, Occupancy& occupancy) {
    auto& spawning = state.spawning;
    auto& next = spawning.next_request[origin];
    while (is_due(spawning, state.clock, origin)) {
        SpawnRequest request = spawning.requests.by_origin[origin][next];
        auto const spot = spot_for(state.world, state.routes.navigation, spawning, state.clock, request, occupancy);
        if (!spot) return warn_of_crowded(state.warnings, state.journal, state.world.places, state.clock, origin);
        occupancy.add(spot->region, spot->point, request.radius);
        request.destination = goal_of(state, request, *spot);
        auto const agent = enter(state, request, *spot);
        Place const& place = state.world.places[origin];
        if (place.is_portal()) {
            ++spawning.entered_at[place.doorway];
            state.journal.changes->entered.emplace_back(place.id, state.agents.infos[agent].object);
        }
        ++next;
        --spawning.waiting_to_enter;
    }
}

AgentInfo info_of(SimulationState& state, SpawnRequest const& request, std::uint32_t agent) {
    AgentInfo info;
    info.origin = request;
    info.goal = request.destination;
    info.color = request.color;
    info.avatar = request.avatar;
    info.first_frame = state.clock.frame + 1;
    info.last_frame = state.clock.frame;
    info.preferences = preferences_of(state.routes, request);
    info.object = std::make_shared<Agent>(state.weak_from_this(), static_cast<int>(agent));
    return info;
}

}  // namespace

void enter_due_agents(SimulationState& state) {
    std::vector<PlaceIndex> due;
    for (PlaceIndex origin = 0; origin < state.spawning.requests.by_origin.size(); ++origin) {
        if (is_due(state.spawning, state.clock, origin)) due.push_back(origin);
    }
    if (due.empty()) return;
    Occupancy occupancy(state.agents, state.crowd);
    for (auto const origin : due) enter_from(state, origin, occupancy);
}

std::uint32_t enter(SimulationState& state, SpawnRequest const& request, Standpoint const& at) {
    auto& agents = state.agents;
    auto const agent = static_cast<std::uint32_t>(agents.infos.size());
    auto const& info = agents.infos.emplace_back(info_of(state, request, agent));
    agents.tasks.emplace_back();

    AgentMotion motion;
    motion.agent = agent;
    motion.body =
        state.crowd.add({at.point, at.region, request.speed, request.radius, 1.0, request.side_bias, request.key});
    motion.region = at.region;
    motion.position = at.point;
    motion.frame_start = at.point;
    motion.step_start = at.point;
    motion.starts_at = std::max(request.due, state.clock.seconds()) + request.wait;
    motion.route_class = class_of(state.routes, state.world.plan, info.preferences);
    if (info.goal != no_place) {
        motion.destination = destination_at(state.routes, state.world, info.goal, motion.route_class);
        open_exit(state.exits, state.world, state.crowd, info.goal);
    }
    agents.motion_of.push_back(static_cast<std::uint32_t>(agents.motions.size()));
    agents.motions.push_back(motion);

    auto& journal = state.journal;
    journal.changes->created.push_back(info.object);
    journal.changes->entered.emplace_back(state.world.plan.surfaces[at.region].id, info.object);
    journal.entered.push_back({agent, at.region, at.point, state.world.places[request.origin].doorway});
    auto context = task_context(state);
    instruct(context, agents.motions.back());
    return agent;
}

}  // namespace pedflux::engine
