#pragma once

#include "engine/crowd/worker_pool.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/frame/recording.h"
#include "engine/simulation/frame/warnings.h"
#include "engine/simulation/routing/congestion_rerouting.h"
#include "engine/simulation/routing/connection_entrances.h"
#include "engine/simulation/routing/density_grid.h"
#include "engine/simulation/tasks/broadcasts.h"
#include "engine/simulation/tasks/task_context.h"

#include <memory>
#include <vector>

namespace pedflux::engine {

class Document;
struct CarController;

/// How far a frame has come.
enum class Phase : std::uint8_t { BEGUN, CREATED, CHOSEN };

/// A simulation while it runs: data with owners that refer to each other by number. Only the phases of a frame and the
/// SDK's handle classes see all of it; every system takes the parts that it needs. The project is not read any more,
/// but for the objects that a program asks for.
struct SimulationState : std::enable_shared_from_this<SimulationState> {
    SimulationState(World made_world, BehaviourProgram made_program, Routes made_routes, Spawning made_spawning,
                    unsigned threads);
    SimulationState(SimulationState const&) = delete;
    SimulationState& operator=(SimulationState const&) = delete;
    ~SimulationState();

    // What does not change while stepping.
    World world;
    BehaviourProgram const program;
    std::unique_ptr<Document> project;  ///< as it was when the simulation was created

    Clock clock;
    Phase phase = Phase::BEGUN;
    bool stopped = false;

    // The agents.
    Spawning spawning;
    Agents agents;
    crowd::Crowd crowd;
    crowd::WorkerPool workers;

    // Their ways.
    Routes routes;
    Gates gates;
    Exits exits;
    ConnectionEntrances entrances;
    CongestionRerouting rerouting;
    DensityGrid density;

    // What they are told.
    ServerQueues servers;
    WaitPlaces waits;
    BroadcastsTold broadcasts;
    std::vector<std::size_t> clearances;  ///< of the program's clearances, the starts of the event that were obeyed

    std::unique_ptr<EventEngine> events;
    std::unique_ptr<EventFacts> facts;
    std::vector<std::shared_ptr<CarController>> elevators;

    // What comes of it.
    Journal journal;
    Warnings warnings;
    Recording recording;
};

/// What the tasks of agents read and change of a simulation.
TaskContext task_context(SimulationState& state);

/// Throws Exception when the simulation was stopped.
void require_running(SimulationState const& state);
/// Ends the simulation and its database.
void stop(SimulationState& state);

}  // namespace pedflux::engine
