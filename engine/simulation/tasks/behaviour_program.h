#pragma once

#include "engine/behaviour/actions/action_program.h"
#include "engine/behaviour/tests/test_program.h"
#include "engine/simulation/tasks/servers.h"
#include "engine/simulation/tasks/wait_program.h"
#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/places.h"
#include "engine/simulation/world/volumes.h"

#include <pedflux/color.h>

#include <cstddef>
#include <limits>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

/// What agents are told to do, by events, profiles and places, compiled when the simulation is created.
namespace pedflux::engine {

/// The actions of a connection's ends.
struct EndActions {
    int enter = NONE;
    int exit = NONE;
};

/// The actions of a surface: those of a floor stand at the ball end.
struct SurfaceActions {
    EndActions ball;
    EndActions box;
};

struct PortalActions {
    int enter = NONE;     ///< of those who come in there
    int waypoint = NONE;  ///< of those who reach it on their way
};

struct ZoneActions {
    std::vector<bool> has;  ///< of each region, whether it belongs to the zone
    EndActions actions;
};

/// Who passes the test gets the colour.
struct ColorChoice {
    TestProgram test;
    Color color;
};

/// Walks from portal to portal. Nothing limits what is not set.
struct CirculationRules {
    std::vector<PlaceIndex> portals;
    std::optional<DistributionSpec> count;
    std::optional<DistributionSpec> duration;  ///< seconds
    std::optional<TimeInFrame> time;
    bool until_both = false;
};

/// What an evacuation tells those who are in its zones when it starts, whichever event brought them.
struct Clearance {
    GlobalId event;
    std::vector<PlaceIndex> zones;
    std::vector<PlaceIndex> exits;
    DistributionSpec wait;   ///< seconds before they walk
    int wait_style = NONE;   ///< in the action plan
    std::size_t starts = 0;  ///< of the event, that were obeyed
};

/// What a broadcast tells people while its range is on.
struct BroadcastRules {
    GlobalId event;
    int action = NONE;
    std::optional<TestProgram> test;
    std::optional<std::vector<bool>> regions;  ///< of its zone
    std::vector<std::size_t> told_in;          ///< of each agent, in which span of the range it was told last; from 1
};

/// Sends those on who are done at a source, to the easiest of the sinks.
struct DispatchRules {
    std::vector<PlaceIndex> sources;
    std::vector<PlaceIndex> sinks;
    int process = NONE;  ///< to go through what begins at a sink that is a server; in the action plan
};

/// What an event tells its agents.
struct EventRules {
    int initial_action = NONE;
    bool is_evacuation = false;
    int wait_style = NONE;  ///< of the wait before they move, in the action plan
    std::vector<ColorChoice> colors;
    std::uint32_t circulation = no_place;  ///< in `BehaviourProgram::circulations`
};

inline constexpr std::size_t no_gate = std::numeric_limits<std::size_t>::max();

/// What rules mention, as the simulation knows it.
struct SymbolTarget {
    PlaceIndex place = no_place;
    std::size_t passageway = no_gate;
    std::size_t volume = no_volume;
    std::uint32_t server = no_server;
};

/// Where the orders of programs begin in the lists of the plan, and how many there can be before done ones are
/// forgotten.
struct OrderExtent {
    std::size_t first_node = 0;
    std::size_t first_object = 0;
    std::size_t first_time = 0;
    std::size_t first_law = 0;
    std::size_t first_style = 0;
    std::size_t most = 0;
};

struct BehaviourProgram {
    template <class Value>
    using ById = std::unordered_map<GlobalId, Value, IdentifierHash, IdentifierEqual>;

    ActionProgram plan;  ///< the project's, then the orders of programs
    OrderExtent orders;
    std::vector<PlaceIndex> places;  ///< of the plan's objects; no_place for those that nobody goes to
    std::vector<TestProgram> tests;  ///< of the plan's tests
    WaitRules waits;
    SymbolTable symbols;
    std::vector<SymbolTarget> symbol_targets;  ///< of the mentions' objects
    std::vector<VolumeMesh> volumes;
    ById<EventRules> events;
    ById<int> profiles;                    ///< their initial actions
    ById<TestProgram> gate_tests;          ///< of gate accesses, whom they concern
    std::vector<SurfaceActions> surfaces;  ///< of each region
    std::vector<PortalActions> doorways;
    std::vector<ZoneActions> zones;  ///< those with actions
    std::vector<CirculationRules> circulations;
    std::vector<Clearance> clearances;
    std::vector<BroadcastRules> broadcasts;
    std::vector<DispatchRules> dispatches;  ///< the enabled ones, in the order of the project
    std::vector<ServerRules> servers;       ///< of the plan
    bool any_at_surfaces = false;
    /// Where the ends of connections are that signs lead through.
    std::map<std::pair<navigation::RegionIndex, bool>, navigation::DestinationIndex> ends;
};

/// Compiles all that enabled objects tell agents. Throws Exception that names the object when simulations do not follow
/// something of it.
BehaviourProgram behaviour_program_of(Document const& document, FloorPlan const& plan, Places& places);

/// The place that an action means by an object. Throws Exception for what is none.
PlaceIndex place_of(Places& places, AgentActionTypeId action, GlobalId const& object);
/// Finds the places that the plan's objects from the node on stand for. Throws Exception for what is none.
void resolve_places(BehaviourProgram& rules, Places& places, std::size_t first_node);

/// Compiles the plan's wait styles that are new. Throws Exception for wait spaces that take no part.
void resolve_waits(BehaviourProgram& rules);

}  // namespace pedflux::engine
