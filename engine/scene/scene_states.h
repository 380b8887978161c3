#pragma once

#include "engine/model/enumerations.h"
#include "engine/model/rules.h"
#include "engine/model/state.h"

#include <pedflux/agent_actions.h>
#include <pedflux/distributions.h>
#include <pedflux/geometry.h>
#include <pedflux/objects.h>
#include <pedflux/scene.h>
#include <pedflux/wait_styles.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of objects with a geometry: see state.h for how a state lists its fields.
namespace pedflux::engine {

PEDFLUX_NAMES(AgentTraversalType,
              {{AgentTraversalType::FREE, "FREE"}, {AgentTraversalType::SINGLE_FILE, "SINGLE_FILE"}});
PEDFLUX_NAMES(ConnectionObjectDirection, {{ConnectionObjectDirection::BOTH_WAYS, "BOTH_WAYS"},
                                          {ConnectionObjectDirection::BALL_TO_BOX, "BALL_TO_BOX"},
                                          {ConnectionObjectDirection::BOX_TO_BALL, "BOX_TO_BALL"}});
PEDFLUX_NAMES(FlowRateType, {{FlowRateType::PERSONS_PER_SECOND, "PERSONS_PER_SECOND"},
                             {FlowRateType::PERSONS_PER_MINUTE, "PERSONS_PER_MINUTE"},
                             {FlowRateType::PERSONS_PER_METER_AND_SECOND, "PERSONS_PER_METER_AND_SECOND"},
                             {FlowRateType::PERSONS_PER_METER_AND_MINUTE, "PERSONS_PER_METER_AND_MINUTE"}});
PEDFLUX_NAMES(AgentDirectionBias, {{AgentDirectionBias::NONE, "NONE"},
                                   {AgentDirectionBias::LEFT, "LEFT"},
                                   {AgentDirectionBias::RIGHT, "RIGHT"}});
PEDFLUX_NAMES(SpeedDensityStandard, {{SpeedDensityStandard::NONE, "NONE"},
                                     {SpeedDensityStandard::WALKWAY, "WALKWAY"},
                                     {SpeedDensityStandard::STAIR, "STAIR"}});
PEDFLUX_NAMES(AgentInitialPlacement, {{AgentInitialPlacement::RANDOM, "RANDOM"},
                                      {AgentInitialPlacement::EVEN, "EVEN"},
                                      {AgentInitialPlacement::CENTER, "CENTER"}});
PEDFLUX_NAMES(ZoneMembershipStrategy,
              {{ZoneMembershipStrategy::BASE_MEMBERS, "BASE_MEMBERS"},
               {ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS, "BASE_MEMBERS_AND_CONNECTIONS"}});

PEDFLUX_NAMES(QueueSpacingType,
              {{QueueSpacingType::DISTANCE, "DISTANCE"},
               {QueueSpacingType::PERSONAL_SPACE, "PERSONAL_SPACE"},
               {QueueSpacingType::MAX_OF_DISTANCE_AND_PERSONAL_SPACE, "MAX_OF_DISTANCE_AND_PERSONAL_SPACE"},
               {QueueSpacingType::SUM_OF_DISTANCE_AND_PERSONAL_SPACE, "SUM_OF_DISTANCE_AND_PERSONAL_SPACE"}});
PEDFLUX_NAMES(PersonalSpaceSelection, {{PersonalSpaceSelection::BEHIND, "BEHIND"},
                                       {PersonalSpaceSelection::AHEAD, "AHEAD"},
                                       {PersonalSpaceSelection::LARGER, "LARGER"},
                                       {PersonalSpaceSelection::SMALLER, "SMALLER"}});
PEDFLUX_NAMES(CordonDirection, {{CordonDirection::BOTH_WAYS, "BOTH_WAYS"}, {CordonDirection::ONE_WAY, "ONE_WAY"}});

/// A mesh, or a rectangle, which is a mesh of two triangles.
inline constexpr GeometryRule mesh_rule{"a mesh",
                                        [](Geometry& geometry) { return geometry.AsMeshGeometry() != nullptr; }};
inline constexpr GeometryRule polyline_rule{
    "a polyline", [](Geometry& geometry) { return geometry.AsPolylineGeometry() != nullptr; }};

struct SceneState : ObjectState {
    std::shared_ptr<Geometry> geometry;  ///< replaced, never changed

    /// The geometries that the kind accepts.
    virtual GeometryRule geometry_rule() const { return mesh_rule; }

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("geometry", self.geometry, self.geometry_rule());
    }
};

struct NetworkObjectState : SceneState {
    std::optional<double> distance_added;  ///< metres

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        SceneState::fields(self, field);
        field("distanceAdded", self.distance_added, Range{0, unlimited, "m"});
    }
};

struct WalkableState : NetworkObjectState {};

struct PerimeterState;

struct FlowCap {
    FlowRateType type = FlowRateType::PERSONS_PER_SECOND;
    double value = 1;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("type", self.type);
        field("value", self.value, above_zero);
    }
};

struct Priority {
    ConnectionObjectDirection direction = ConnectionObjectDirection::BALL_TO_BOX;
    double cost = 0;      ///< seconds
    double distance = 2;  ///< metres
    bool commit_when_waiting = false;
    bool primary_yields_to_secondary = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("direction", self.direction);
        field("cost", self.cost, Range{0, unlimited, "s"});
        field("distance", self.distance, Range{0, unlimited, "m"});
        field("commitWhenWaiting", self.commit_when_waiting);
        field("primaryYieldToSecondary", self.primary_yields_to_secondary);
    }
};

/// The maximum speed of agents on a connection, in metres per second along the slope. Both are equal on level kinds.
struct SpeedLimit {
    double up = 0;
    double down = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr Range speed_range{0, 20, "m/s", true};
        field("up", self.up, speed_range);
        field("down", self.down, speed_range);
    }
};

struct Subject;

/// The rule of lists of perimeters.
RefersTo perimeters();

struct ConnectionState : WalkableState {
    AgentTraversalType traversal = AgentTraversalType::FREE;
    ConnectionObjectDirection direction = ConnectionObjectDirection::BOTH_WAYS;
    std::optional<FlowCap> flow_cap;
    std::shared_ptr<Distribution> entrance_delay;  ///< seconds; replaced, never changed
    std::shared_ptr<Distribution> exit_delay;      ///< seconds; replaced, never changed
    bool gated = false;
    bool ignore_barriers = false;
    bool ignore_neighbors = false;
    bool queuing_on_approach = false;
    std::shared_ptr<AgentAction> ball_enter_action;
    std::shared_ptr<AgentAction> ball_exit_action;
    std::shared_ptr<AgentAction> box_enter_action;
    std::shared_ptr<AgentAction> box_exit_action;
    std::optional<Priority> priority;
    std::vector<GlobalId> perimeters;
    std::optional<double> body_radius;  ///< metres
    std::optional<SpeedLimit> speed_limit;
    std::optional<AgentDirectionBias> direction_bias;
    std::optional<SpeedDensityStandard> speed_density_standard;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr Range seconds_range{0, unlimited, "s"};
        WalkableState::fields(self, field);
        field("agentTraversalType", self.traversal);
        field("direction", self.direction);
        field("enteringFlowCap", self.flow_cap);
        field("entranceDelayDistribution", self.entrance_delay, seconds_range);
        field("exitDelayDistribution", self.exit_delay, seconds_range);
        field("gated", self.gated);
        field("ignoreBarriers", self.ignore_barriers);
        field("ignoreNeighbors", self.ignore_neighbors);
        field("queuingForceOnApproach", self.queuing_on_approach);
        field("ballEnterAction", self.ball_enter_action);
        field("ballExitAction", self.ball_exit_action);
        field("boxEnterAction", self.box_enter_action);
        field("boxExitAction", self.box_exit_action);
        field("priority", self.priority);
        field("perimeters", self.perimeters, engine::perimeters());
        field("localAgentBodyRadius", self.body_radius, Range{0, 2, "m", true});
        field("localAgentMaxSpeed", self.speed_limit);
        field("localDirectionBias", self.direction_bias);
        field("localSpeedDensityStandard", self.speed_density_standard);
    }
    static void check(ConnectionState const& self);
};

struct FloorState : WalkableState {
    static constexpr ObjectType TYPE = ObjectType::FLOOR;
    static constexpr std::string_view NAME = "Floor";
    using Handle = Floor;

    std::shared_ptr<AgentAction> enter_action;
    std::shared_ptr<AgentAction> exit_action;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        WalkableState::fields(self, field);
        field("enterAction", self.enter_action);
        field("exitAction", self.exit_action);
    }
};

struct LinkState : ConnectionState {
    static constexpr ObjectType TYPE = ObjectType::LINK;
    static constexpr std::string_view NAME = "Link";
    using Handle = Link;
};

struct StairState : ConnectionState {
    static constexpr ObjectType TYPE = ObjectType::STAIR;
    static constexpr std::string_view NAME = "Stair";
    using Handle = Stair;
};

struct RampState : ConnectionState {
    static constexpr ObjectType TYPE = ObjectType::RAMP;
    static constexpr std::string_view NAME = "Ramp";
    using Handle = Ramp;
};

struct EscalatorState : ConnectionState {
    static constexpr ObjectType TYPE = ObjectType::ESCALATOR;
    static constexpr std::string_view NAME = "Escalator";
    using Handle = Escalator;

    EscalatorState() { direction = ConnectionObjectDirection::BALL_TO_BOX; }

    double tread_speed = 0.5;  ///< metres per second along the slope while running

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ConnectionState::fields(self, field);
        field("treadSpeedAlongIncline", self.tread_speed, Range{0, 2, "m/s", true});
    }
};

/// The spacing of agents in a queue.
struct QueueSpacing {
    QueueSpacingType type = QueueSpacingType::DISTANCE;
    std::shared_ptr<Distribution> distance;                ///< metres; not set if only the personal space counts
    std::optional<PersonalSpaceSelection> personal_space;  ///< not set if only the distance counts

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("type", self.type);
        field("distance", self.distance, Range{0, unlimited, "m"});
        field("personalSpaceSelection", self.personal_space);
    }
};

/// Throws Exception unless exactly the parts that the type needs are set.
void require_whole(Subject const& subject, QueueSpacing const& spacing);

struct PathState : ConnectionState {
    static constexpr ObjectType TYPE = ObjectType::PATH;
    static constexpr std::string_view NAME = "Path";
    using Handle = Path;

    GeometryRule geometry_rule() const override { return polyline_rule; }

    std::optional<QueueSpacing> queue_spacing;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ConnectionState::fields(self, field);
        field("localAgentQueueSpacing", self.queue_spacing);
    }
    static void check(PathState const& self);
};

struct PortalState : NetworkObjectState {
    static constexpr ObjectType TYPE = ObjectType::PORTAL;
    static constexpr std::string_view NAME = "Portal";
    using Handle = Portal;

    AgentInitialPlacement placement = AgentInitialPlacement::RANDOM;
    std::shared_ptr<AgentAction> enter_action;
    std::shared_ptr<AgentAction> waypoint_action;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        NetworkObjectState::fields(self, field);
        field("agentInitialPlacement", self.placement);
        field("enterAction", self.enter_action);
        field("waypointAction", self.waypoint_action);
    }
};

struct BarrierState : SceneState {
    static constexpr ObjectType TYPE = ObjectType::BARRIER;
    static constexpr std::string_view NAME = "Barrier";
    using Handle = Barrier;
};

struct CordonState : SceneState {
    static constexpr ObjectType TYPE = ObjectType::CORDON;
    static constexpr std::string_view NAME = "Cordon";
    using Handle = Cordon;

    CordonDirection direction = CordonDirection::BOTH_WAYS;
    bool inverted = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        SceneState::fields(self, field);
        field("cordonDirection", self.direction);
        field("directionInverted", self.inverted);
    }
};

struct WaitSpaceState : SceneState {
    static constexpr ObjectType TYPE = ObjectType::WAIT_SPACE;
    static constexpr std::string_view NAME = "WaitSpace";
    using Handle = WaitSpace;

    std::shared_ptr<WaitStyle> wait_style;  ///< agents stand still if not set

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        SceneState::fields(self, field);
        field("waitStyle", self.wait_style);
    }
    static void check(WaitSpaceState const& self);
};

struct VolumeState : SceneState {
    static constexpr ObjectType TYPE = ObjectType::VOLUME;
    static constexpr std::string_view NAME = "Volume";
    using Handle = Volume;
};

struct ZoneState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::ZONE;
    static constexpr std::string_view NAME = "Zone";
    using Handle = Zone;

    ZoneMembershipStrategy membership = ZoneMembershipStrategy::BASE_MEMBERS;
    std::vector<GlobalId> base_members;
    std::shared_ptr<AgentAction> enter_action;
    std::shared_ptr<AgentAction> exit_action;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("membershipType", self.membership);
        field("baseMembers", self.base_members,
              refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object"));
        field("enterAction", self.enter_action);
        field("exitAction", self.exit_action);
    }
};

}  // namespace pedflux::engine
