#pragma once

#include "engine/crowd/crowd.h"
#include "engine/crowd/worker_pool.h"
#include "engine/navigation/navigation.h"
#include "engine/results/run_writer.h"
#include "engine/simulation/agents/spawn_requests.h"
#include "engine/simulation/agents/task_state.h"
#include "engine/simulation/routing/congestion_rerouting.h"
#include "engine/simulation/routing/connection_entrances.h"
#include "engine/simulation/routing/local_targets.h"
#include "engine/simulation/routing/route_classes.h"
#include "engine/simulation/tasks/behaviour_program.h"
#include "engine/simulation/tasks/servers.h"
#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/places.h"

#include <pedflux/agents.h>
#include <pedflux/issue.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A simulation while it runs: flat arrays that refer to each other by number. The project is not looked at any more,
/// but for its run, which gets connected to the results, and for the profiles of agents that a program asks for.
namespace pedflux::engine {

struct CarController;
class EventEngine;
struct SimulationRunState;

/// Everything about an agent that steps do not need for walking. Stays when the agent has left.
struct AgentInfo {
    enum class Fate : std::uint8_t { HERE, ARRIVED, FAILED };

    SpawnRequest origin;  ///< what it was as it came
    PlaceIndex goal = no_place;
    Color color;
    double height = 1.75;
    std::vector<GlobalId> tokens;  ///< in the order in which they were given
    std::optional<GlobalId> avatar;
    Fate fate = Fate::HERE;
    int first_frame = 0;
    int last_frame = 0;
    double heading = 0;  ///< degrees
    double speed = 0;    ///< over the last frame, along inclines
    Point velocity;      ///< over the last frame, in the plan
    double distance = 0;
    double moving_time = 0;
    navigation::RegionIndex previous_connection = navigation::none;
    AgentMovement movement = AgentMovement::STAND;
    std::optional<AgentMovement> next_movement;
    std::optional<double> shown_speed;  ///< of a controlled agent in this frame
    bool controlled = false;
    bool adjustable = true;
    std::optional<Point> direction_override;
    TaskState tasks;
    std::vector<std::size_t> open_episodes;  ///< in the run's list
    RoutingPreferences preferences;
    std::shared_ptr<Agent> object;
};

/// So near to its post (metres) a person stands.
inline constexpr double at_post = 0.15;

/// An agent as the steps see it. They stand in the order of the agents' numbers.
struct AgentMotion {
    std::uint32_t agent = 0;
    crowd::AgentIndex body = 0;
    navigation::RegionIndex region = 0;
    navigation::DestinationIndex destination = navigation::none;
    Point position;
    Point frame_start;  ///< where it was when the frame began
    Point direction;
    std::optional<Point> post;  ///< a point of its region where it goes straight, and stands
    double starts_at = 0;       ///< seconds; waits until then
    double walked = 0;          ///< metres in this frame, along inclines
    enum class Way : std::uint8_t { WALKS, STANDS, LOST, ARRIVED };
    Way way = Way::STANDS;
    RouteClassIndex route_class = 0;                       ///< of its wish
    navigation::ConnectionIndex ahead = navigation::none;  ///< the joint that its way crosses next, in sight
    navigation::RouteHint hint;
    LocalTarget lane;
    Reroute reroute;
};

/// What a FrameSummary tells.
struct FrameChanges {
    std::vector<std::shared_ptr<Agent>> created;
    std::vector<std::shared_ptr<Agent>> deleted;
    std::vector<std::pair<GlobalId, std::shared_ptr<Agent>>> entered;
    std::vector<std::pair<GlobalId, std::shared_ptr<Agent>>> exited;
    std::vector<std::pair<GlobalId, std::shared_ptr<Agent>>> received;  ///< by the token
    std::vector<std::pair<GlobalId, std::shared_ptr<Agent>>> lost;
};

/// A wall of the crowd that opens and closes.
struct DynamicWall {
    navigation::RegionIndex region;
    std::size_t wall;
};

/// Whether people may go into a connection, from its ball to its box and the other way: all, or some of them.
struct GateState {
    bool ball_to_box = true;
    bool box_to_ball = true;
    bool ball_to_box_for_some = false;  ///< though it is open, not to all
    bool box_to_ball_for_some = false;

    bool operator==(GateState const&) const = default;
};

enum class Phase : std::uint8_t { BEGUN, CREATED, CHOSEN };

struct SimulationInput;

struct SimulationState : std::enable_shared_from_this<SimulationState> {
    explicit SimulationState(SimulationInput&& input);
    SimulationState(SimulationState const&) = delete;
    SimulationState& operator=(SimulationState const&) = delete;
    ~SimulationState();

    // The world.
    std::unique_ptr<Document> project;  ///< as it was when the simulation was created
    FloorPlan plan;
    Places places;
    navigation::Navigation navigation;
    crowd::Crowd crowd;
    crowd::WorkerPool workers;
    std::vector<std::vector<DynamicWall>> joint_walls;    ///< of each joint, both sides
    std::vector<std::vector<DynamicWall>> doorway_walls;  ///< of each doorway
    std::vector<bool> doorway_is_exit;
    std::vector<std::vector<std::uint32_t>> exits_of;  ///< of each region, the doorways on its edge that are exits
    std::vector<Point> doorway_outward;   ///< of length 1 where the doorway lies on an edge, otherwise (0, 0)
    std::vector<GateState> gates;         ///< of each passageway
    std::vector<ServerQueue> servers;     ///< of the plan
    std::unique_ptr<EventEngine> events;  ///< triggers, and the events, tallies and gates that depend on them

    std::vector<std::shared_ptr<CarController>> elevators;

    // The people.
    BehaviourProgram rules;  ///< what they are told to do
    RouteClasses routes;
    Entrances entrances;
    CongestionRerouting rerouting;
    SpawnRequests requests;
    std::vector<std::size_t> next_request;  ///< of each place, in its list
    std::vector<std::uint32_t> entered_at;  ///< of each doorway, how many came in
    std::size_t waiting_to_enter = 0;
    std::vector<AgentInfo> infos;
    std::vector<AgentMotion> motions;
    DensityGrid density_grid;
    std::vector<std::uint32_t> motion_of;  ///< of each person, its place among the walkers while it is here

    // The time.
    std::uint64_t seed;
    int frame_rate;
    int start_time;   ///< seconds after midnight
    double duration;  ///< seconds
    int substeps;     ///< of the crowd in a frame
    int frame = 0;    ///< frames taken
    Phase phase = Phase::BEGUN;
    bool stopped = false;
    std::shared_ptr<FrameChanges> changes = std::make_shared<FrameChanges>();

    // What comes of it.
    std::vector<Issue> issues;
    std::vector<bool> said_lost;     ///< of each destination
    std::vector<bool> said_crowded;  ///< of each place
    std::optional<RunWriter> writer;
    std::vector<AgentFrame> frame_states;
    std::vector<Episode> episodes;  ///< in the order in which they began
    std::shared_ptr<SimulationRunState> run;
    std::string database_name;  ///< as the run is to keep it
    std::string database_path;

    double frame_length() const { return 1.0 / frame_rate; }
    double seconds() const { return static_cast<double>(frame) / frame_rate; }
};

inline constexpr std::uint32_t gone = std::numeric_limits<std::uint32_t>::max();

/// The destination of a place in the navigation for those who take all ways; found there when nobody asked for it
/// before.
navigation::DestinationIndex destination_at(SimulationState& run, PlaceIndex place);

/// How a joint may be passed, given the state of its connection's gate.
navigation::Passage passage_of(SimulationState const& run, std::size_t joint);
void set_gate(SimulationState& run, std::size_t passageway, GateState const& state);

/// Lets people leave by a portal that is an edge.
void open_exit(SimulationState& run, PlaceIndex place);

/// The height of a place on a region's surface.
inline double height_at(SimulationState const& run, navigation::RegionIndex region, Point point) {
    return run.plan.grounds[region].height(point);
}

/// Lets somebody hold a token, or no more; nothing happens when it is so already.
void give_token(SimulationState& run, std::uint32_t agent, GlobalId const& token);
void take_token(SimulationState& run, std::uint32_t agent, GlobalId const& token);

/// Lets somebody leave. Its number among the walkers stays taken until the end of the frame's part.
void take_out(SimulationState& run, AgentInfo::Fate fate, AgentMotion& motion, bool through_portal);
/// Closes the gaps that taking out has left.
void forget_those_who_left(SimulationState& run);

/// Ends the simulation and its database.
void stop(SimulationState& run);

}  // namespace pedflux::engine
