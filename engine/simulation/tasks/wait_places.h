#pragma once

#include "engine/navigation/navigation_input.h"
#include "engine/simulation/tasks/wait_program.h"

#include <cstdint>
#include <span>
#include <vector>

/// Agents that wait: in wait spaces, spread out, or where they stand.
namespace pedflux::engine {

struct AgentMotion;
struct TaskContext;

/// Where agents stand in a wait space. What can be found is found when the first agent comes to wait there.
struct WaitSpacePlaces {
    struct Taken {
        std::uint32_t agent;
        Point place;
        double radius;
    };

    std::vector<navigation::DestinationIndex> destinations;  ///< of route classes
    std::vector<Point> places;                               ///< where one could stand, from the middle outwards
    std::vector<Taken> taken;
};

struct WaitPlaces {
    std::vector<WaitSpacePlaces> spaces;  ///< of the program's wait spaces
};

/// All places are free.
WaitPlaces wait_places_of(std::span<WaitSpace const> spaces);

/// Finds places for agents that begin to wait, and frees those of agents that wait no longer.
void attend_waits(TaskContext& context);

/// Ends an agent's wait, and frees its place in a wait space.
void end_wait(TaskContext& context, AgentMotion& motion);

}  // namespace pedflux::engine
