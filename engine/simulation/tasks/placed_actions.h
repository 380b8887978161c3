#pragma once

#include "engine/behaviour/actions/action_program.h"
#include "engine/simulation/tasks/wait_program.h"
#include "engine/simulation/world/places.h"

#include <vector>

namespace pedflux::engine {

/// Actions, and what their objects and wait styles are in the simulated building.
struct PlacedActions {
    ActionProgram program;
    std::vector<PlaceIndex> places;  ///< of the program's objects; no_place for those that nobody goes to
    std::vector<WaitProgram> waits;  ///< of the program's wait styles
};

/// A task that a program gave to an agent. The frames of the agent's stack share it, so that it is gone when the agent
/// has done it.
struct OrderProgram {
    PlacedActions actions;
    int root = 0;        ///< its node
    int first_node = 0;  ///< the number of its first node in a list of all actions: the project's, then all orders
};

/// The place that an action means by an object. Throws Exception for what is none.
PlaceIndex place_of(Places& places, AgentActionTypeId action, GlobalId const& object);

/// Finds the places that the objects of the nodes from `first_node` on stand for, and compiles the wait styles that are
/// new. Throws Exception for objects that are no places and for wait spaces that take no part.
void place_actions(PlacedActions& actions, Places& places, std::vector<WaitSpace> const& wait_spaces,
                   std::size_t first_node);
/// Compiles the wait styles that are new.
void compile_waits(PlacedActions& actions, std::vector<WaitSpace> const& wait_spaces);

}  // namespace pedflux::engine
