#pragma once

#include "engine/behaviour/actions/action_stack.h"
#include "engine/behaviour/tests/test_program.h"
#include "engine/simulation/tasks/placed_actions.h"
#include "engine/simulation/world/world.h"

#include <pedflux/color.h>

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

/// What agents are told to do by events, profiles and places, compiled when a simulation is created. Actions are nodes
/// of `BehaviourProgram::actions`, or NONE.
namespace pedflux::engine {

/// The actions at one end of a connection.
struct EndActions {
    int enter = NONE;
    int exit = NONE;
};

/// The actions of a surface. Those of a floor are the ones at the ball end.
struct SurfaceActions {
    EndActions ball;
    EndActions box;
};

struct PortalActions {
    int enter = NONE;     ///< of agents that enter there
    int waypoint = NONE;  ///< of agents that reach it on their way
};

struct ZoneActions {
    std::vector<bool> has;  ///< of each region, whether it belongs to the zone
    EndActions actions;
};

/// The colour of agents that pass `test`.
struct ColorChoice {
    TestProgram test;
    Color color;
};

/// Walks from portal to portal. What is not set does not limit them.
struct CirculationProgram {
    std::vector<PlaceIndex> portals;
    std::optional<DistributionSpec> count;     ///< portals to reach
    std::optional<DistributionSpec> duration;  ///< seconds
    std::optional<TimeInFrame> time;
    bool until_both = false;  ///< ends when both limits are reached, not with the first one
};

/// What an evacuation tells those who are in its zones when it starts, whichever event brought them.
struct Clearance {
    GlobalId event;
    std::vector<PlaceIndex> zones;
    std::vector<PlaceIndex> exits;
    DistributionSpec wait;  ///< seconds before they walk
    int wait_style = NONE;  ///< of that wait, in the actions' wait styles
};

/// What a broadcast tells agents while its range is on.
struct BroadcastProgram {
    GlobalId event;
    int action = NONE;
    std::optional<TestProgram> test;
    std::optional<std::vector<bool>> regions;  ///< of its zone
};

/// Sends agents on that are done at a source, to the easiest of the sinks.
struct DispatchProgram {
    std::vector<PlaceIndex> sources;
    std::vector<PlaceIndex> sinks;
    int process = NONE;  ///< the action of going through what begins at a sink that is a server
};

/// What an event tells its agents.
struct EventInstructions {
    int initial_action = NONE;
    bool is_evacuation = false;
    int wait_style = NONE;  ///< of the wait before they move, in the actions' wait styles
    std::vector<ColorChoice> colors;
    std::uint32_t circulation = no_place;  ///< in `BehaviourProgram::circulations`
};

/// The seconds that a server takes for agents that pass `test`.
struct ContactTime {
    TestProgram test;
    DistributionSpec seconds;
};

/// Whom a server takes, for how long, and what it tells them.
struct ServerProgram {
    std::optional<TestProgram> required;
    std::optional<TestProgram> preferred;
    std::vector<ContactTime> contact_times;        ///< the first whose test passes counts
    std::optional<DistributionSpec> contact_time;  ///< seconds for all others
    int processed_action = NONE;
    int release_action = NONE;
};

inline constexpr std::size_t no_gate = std::numeric_limits<std::size_t>::max();

/// An object that tests mention, as the simulation knows it.
struct SymbolTarget {
    PlaceIndex place = no_place;
    std::size_t passageway = no_gate;
    std::size_t volume = no_volume;
    std::uint32_t server = no_server;
};

struct BehaviourProgram {
    template <class Value>
    using ById = std::unordered_map<GlobalId, Value, IdentifierHash, IdentifierEqual>;

    PlacedActions actions;           ///< of the project
    std::vector<TestProgram> tests;  ///< of the actions' tests
    std::vector<WaitSpace> wait_spaces;
    SymbolTable symbols;                       ///< that the tests mention
    std::vector<SymbolTarget> symbol_targets;  ///< of the symbols' objects
    ById<EventInstructions> events;
    ById<int> profiles;                    ///< their initial actions
    ById<TestProgram> gate_tests;          ///< of gate accesses, whom they concern
    std::vector<SurfaceActions> surfaces;  ///< of each region
    std::vector<PortalActions> doorways;
    std::vector<ZoneActions> zones;  ///< those with actions
    std::vector<CirculationProgram> circulations;
    std::vector<Clearance> clearances;
    std::vector<BroadcastProgram> broadcasts;
    std::vector<DispatchProgram> dispatches;  ///< the enabled ones, in the order of the project
    std::vector<ServerProgram> servers;       ///< of the floor plan
    bool any_at_surfaces = false;             ///< whether any surface or zone has actions
};

/// Compiles all that enabled objects tell agents; the world has its places and volumes. Throws Exception that names the
/// object when simulations do not follow something of it.
BehaviourProgram behaviour_program_of(Document const& document, World& world);

/// The places that agents may be sent to, some of them more than once.
std::vector<PlaceIndex> goals_of(BehaviourProgram const& program, Places const& places);

/// The actions that a task is of: the project's or those of an order.
inline PlacedActions const& actions_of(BehaviourProgram const& program, ActionTask const& task) {
    return task.order ? task.order->actions : program.actions;
}
inline ActionNode const& node_of(BehaviourProgram const& program, ActionTask const& task) {
    return actions_of(program, task).program.nodes[static_cast<std::size_t>(task.node)];
}
/// The number of a task's node among all actions: the project's, then those of all orders.
inline int number_of(ActionTask const& task) { return task.order ? task.order->first_node + task.node : task.node; }
/// The objects that a task is about.
inline std::span<GlobalId const> objects_of(BehaviourProgram const& program, ActionTask const& task) {
    return actions_of(program, task).program.objects_of(node_of(program, task));
}
/// The places that a task can lead to.
inline std::span<PlaceIndex const> places_of(BehaviourProgram const& program, ActionTask const& task) {
    auto const& objects = node_of(program, task).objects;
    return std::span(actions_of(program, task).places).subspan(objects.first, objects.count);
}

}  // namespace pedflux::engine
