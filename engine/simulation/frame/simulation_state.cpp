#include "engine/simulation/frame/simulation_state.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/transport/car.h"

#include <pedflux/exception.h>

#include <utility>

namespace pedflux::engine {

namespace {

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

}  // namespace

SimulationState::SimulationState(World made_world, BehaviourProgram made_program, Routes made_routes,
                                 Spawning made_spawning, unsigned threads)
    : world(std::move(made_world)),
      program(std::move(made_program)),
      spawning(std::move(made_spawning)),
      crowd(crowd_plan(world.plan, made_routes.navigation), {}, threads),
      workers(threads),
      routes(std::move(made_routes)),
      density(world.plan) {}

SimulationState::~SimulationState() {
    try {
        if (!stopped) stop(*this);
    } catch (Exception const&) {
        // Nobody is left to tell; what could not be written was not there before either.
    }
}

TaskContext task_context(SimulationState& state) {
    return {state.world,  state.clock, state.program, *state.facts,  state.gates, state.agents,          state.spawning,
            state.routes, state.exits, state.crowd,   state.servers, state.waits, state.events->tallies, state.journal};
}

void require_running(SimulationState const& state) {
    if (state.stopped) refuse("The simulation was stopped and takes no more frames");
}

void stop(SimulationState& state) {
    if (state.stopped) return;
    state.stopped = true;
    finish_recording(state.recording, state.clock, state.world.places, state.agents, state.journal.episodes);
}

}  // namespace pedflux::engine
