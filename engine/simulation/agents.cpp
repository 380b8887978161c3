#include "engine/geometry/checks.h"
#include "engine/results/agent_data.h"
#include "engine/results/level_of_service.h"
#include "engine/simulation/present_agent.h"
#include "engine/simulation/routing/congestion_rerouting.h"
#include "engine/simulation/routing/direction_choice.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/tasks/leaving.h"

#include <pedflux/agents.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pedflux {

namespace {

using engine::AgentInfo;
using engine::FreeSpace;
using engine::Point;
using engine::present_agent;
using engine::PresentAgent;
using engine::refuse;
using engine::SimulationState;
using engine::Standpoint;

constexpr double degrees_per_radian = 180 / std::numbers::pi;
constexpr double longest_look = 100;

std::string title(int id) { return "Agent " + std::to_string(id); }

AgentInfo::Fate fate_of(std::weak_ptr<SimulationState> const& weak, int id) {
    auto const state = weak.lock();
    return state ? state->agents.infos[static_cast<std::size_t>(id)].fate : AgentInfo::Fate::HERE;
}

double require_distance(double distance) {
    if (!(distance > 0 && distance <= longest_look)) {
        refuse("A distance to look must be greater than 0 and at most 100 m, not " + engine::text_of(distance));
    }
    return distance;
}

Point require_level_direction(Vec3d const& direction) {
    auto const given = engine::require_direction(
        "A direction", {Vec3d(direction).GetX(), Vec3d(direction).GetY(), Vec3d(direction).GetZ()});
    Point const level = engine::unit({given.x, given.z});
    if (level == Point{}) refuse("A direction must not be vertical");
    return level;
}

double heading_of(Point direction) {
    double const heading = std::atan2(direction.x, -direction.z) * degrees_per_radian;
    return heading < 0 ? heading + 360 : heading;
}

Vec3d level(Point direction) { return {direction.x, 0, direction.z}; }

Vec3d position_or_invalid(SimulationState const& state, std::optional<Standpoint> const& found) {
    return found ? position_of(state.world.plan, *found) : Vec3d::INVALID;
}

/// The identifier of a place of the agent, which must have one.
GlobalId id_of(PresentAgent const& agent, engine::PlaceIndex place, std::string const& what) {
    if (place == engine::no_place) refuse("Agent " + std::to_string(agent.motion.agent) + " has no " + what);
    return agent.state->world.places[place].id;
}

engine::WayToNext way_from(PresentAgent const& agent, Standpoint const& from) {
    id_of(agent, agent.info.goal, "goal");
    bool const by_reroute = takes_reroute(agent.state->routes, agent.motion, agent.motion.destination);
    auto const& reroute = agent.motion.reroute;
    auto way = way_to_next(agent.state->routes.navigation, agent.state->world.plan, from,
                           by_reroute ? reroute.way : agent.motion.destination);
    if (way && by_reroute) way->connection = reroute.joint;
    if (!way) {
        refuse("No way leads agent " + std::to_string(agent.motion.agent) + " to " +
               agent.state->world.places[agent.info.goal].title);
    }
    return *way;
}

Vec3d point_with_way(PresentAgent const& agent, Standpoint const& from, double distance) {
    id_of(agent, agent.info.goal, "goal");
    auto const found = nearest_with_way(agent.state->routes.navigation, from.region, from.point,
                                        require_distance(distance), agent.motion.destination);
    return found ? position_of(agent.state->world.plan, {from.region, *found}) : Vec3d::INVALID;
}

/// Puts another body in the place of the agent's, as a body's radius never changes.
void replace_body(PresentAgent const& agent) {
    auto& crowd = agent.state->crowd;
    auto const& origin = agent.info.origin;
    crowd.remove(agent.motion.body);
    agent.motion.body = crowd.add(
        {agent.motion.position, agent.motion.region, origin.speed, origin.radius, 1.0, origin.side_bias, origin.key});
}

void put(PresentAgent const& agent, Vec3d const& position) {
    if (!agent.info.controlled) {
        refuse("Agent " + std::to_string(agent.motion.agent) + " is not controlled: AssumeControl comes first");
    }
    auto const place = standpoint_of(surroundings_of(*agent.state), position);
    agent.state->crowd.place(agent.motion.body, place.point, place.region);
    agent.motion.walked += engine::distance(agent.motion.position, place.point);
    agent.motion.position = place.point;
    agent.motion.region = place.region;
}

void leave(PresentAgent const& agent, AgentInfo::Fate fate) {
    auto context = task_context(*agent.state);
    take_out(context, fate, agent.motion, false);
    remove_gone(agent.state->agents);
}

}  // namespace

ObstaclePoint::ObstaclePoint() = default;
Vec3d ObstaclePoint::GetPosition() { return position_; }
Vec3d ObstaclePoint::GetNormal() { return normal_; }

AvailableSpace::AvailableSpace() : space_(std::make_shared<FreeSpace>()) {}
AvailableSpace::AvailableSpace(std::shared_ptr<FreeSpace const> space) : space_(std::move(space)) {}
double AvailableSpace::GetArea() const {
    double area = 0;
    for (int segment = 0; segment < FreeSpace::segments; ++segment) area += GetSegmentArea(segment);
    return area;
}
int AvailableSpace::GetMinSegmentIndex() const {
    return static_cast<int>(std::ranges::min_element(space_->radii) - space_->radii.begin());
}
double AvailableSpace::GetMinSegmentRadius() const { return std::ranges::min(space_->radii); }
double AvailableSpace::GetSegmentArea(int segment) const {
    double const radius = GetSegmentRadius(segment);
    return std::numbers::pi / FreeSpace::segments * radius * radius;
}
double AvailableSpace::GetSegmentRadius(int segment) const {
    return space_->radii[engine::require_index("segment", segment, space_->radii.size())];
}
Vec3d AvailableSpace::GetSegmentDirection(int segment) {
    engine::require_index("segment", segment, space_->radii.size());
    return level(engine::direction_of_segment(segment));
}
int AvailableSpace::GetSegmentIndex(Vec3d const& direction) const {
    double const share = heading_of(require_level_direction(direction)) / 360 * FreeSpace::segments;
    return static_cast<int>(std::lround(share)) % FreeSpace::segments;
}

int Agent::GetId() { return id_; }
bool Agent::Exists() {
    auto const state = run_.lock();
    return state && state->agents.is_here(static_cast<std::uint32_t>(id_));
}
bool Agent::HasExitedWithError() { return fate_of(run_, id_) == AgentInfo::Fate::FAILED; }
bool Agent::HasExitedWithSuccess() { return fate_of(run_, id_) == AgentInfo::Fate::ARRIVED; }

Vec3d Agent::GetPosition() {
    auto const agent = present_agent(run_, id_);
    return position_of(agent.state->world.plan, agent.standpoint());
}
Vec3d Agent::GetVelocity() {
    auto const agent = present_agent(run_, id_);
    auto const& info = agent.info;
    double const ahead = agent.state->clock.frame_length();
    double const rise =
        height_at(agent.state->world.plan, agent.motion.region, agent.motion.position) -
        height_at(agent.state->world.plan, agent.motion.region, agent.motion.position - ahead * info.velocity);
    return {info.velocity.x, rise / ahead, info.velocity.z};
}
double Agent::GetSpeed() { return present_agent(run_, id_).info.speed; }
double Agent::GetHeading() { return present_agent(run_, id_).info.heading; }
double Agent::GetRadius() { return present_agent(run_, id_).info.origin.radius; }
void Agent::SetRadius(double radius) {
    auto const agent = present_agent(run_, id_);
    if (!(radius >= 0.05 && radius <= 1)) {
        refuse("The radius of " + title(id_) + " must be 0.05 to 1 m, not " + engine::text_of(radius));
    }
    agent.info.origin.radius = radius;
    replace_body(agent);
}
double Agent::GetHeight() { return present_agent(run_, id_).info.height; }
void Agent::SetHeight(double height) {
    auto const agent = present_agent(run_, id_);
    if (!(height > 0 && height <= 3)) {
        refuse("The height of " + title(id_) + " must be greater than 0 and at most 3 m, not " +
               engine::text_of(height));
    }
    agent.info.height = height;
}
double Agent::GetDesiredUnconstrainedSpeed() { return present_agent(run_, id_).info.origin.speed; }
void Agent::SetDesiredUnconstrainedSpeed(double speed) {
    auto const agent = present_agent(run_, id_);
    if (!(speed > 0 && speed <= 20)) {
        refuse("The desired speed of " + title(id_) + " must be greater than 0 and at most 20 m/s, not " +
               engine::text_of(speed));
    }
    agent.info.origin.speed = speed;
    agent.state->crowd.set_speed(agent.motion.body, speed);
}
double Agent::GetCurrentMaxSpeed() {
    auto const agent = present_agent(run_, id_);
    auto const& incline = agent.state->world.plan.inclines[agent.motion.region];
    double const speed = agent.info.origin.speed;
    return speed * ground_factor(incline, speed, agent.motion.direction) * incline.length_factor;
}
double Agent::GetDistanceTraveled() {
    auto const agent = present_agent(run_, id_);
    return agent.info.distance + agent.motion.walked;
}

AgentMovement Agent::GetAgentMovement() { return present_agent(run_, id_).info.movement; }
void Agent::SetNextAgentMovement(AgentMovement movement) {
    auto const number = static_cast<int>(movement);
    if (number < 0 || number > static_cast<int>(AgentMovement::RUN)) {
        refuse("A movement must be STAND (0), WALK (1) or RUN (2), not " + std::to_string(number));
    }
    present_agent(run_, id_).info.next_movement = movement;
}

Color Agent::GetColor() { return present_agent(run_, id_).info.color; }
void Agent::SetColor(Color color) { present_agent(run_, id_).info.color = color; }
void Agent::ClearColor() {
    auto const agent = present_agent(run_, id_);
    agent.info.color = agent.info.origin.color;
}
LevelOfService Agent::GetLevelOfService() {
    auto const agent = present_agent(run_, id_);
    auto const kind = agent.state->world.plan.surfaces[agent.motion.region].kind;
    return engine::level_of_service(agent.state->crowd.local_density(agent.motion.body), engine::standard_of(kind));
}

GlobalId Agent::GetProfileId() { return present_agent(run_, id_).info.origin.profile; }
bool Agent::HasStartObject() { return present_agent(run_, id_).info.origin.origin != engine::no_place; }
GlobalId Agent::GetStartObjectId() {
    auto const agent = present_agent(run_, id_);
    return id_of(agent, agent.info.origin.origin, "start object");
}
bool Agent::HasInitialGoal() { return present_agent(run_, id_).info.origin.destination != engine::no_place; }
GlobalId Agent::GetInitialGoalId() {
    auto const agent = present_agent(run_, id_);
    return id_of(agent, agent.info.origin.destination, "goal");
}
bool Agent::HasCurrentGoal() { return present_agent(run_, id_).info.goal != engine::no_place; }
GlobalId Agent::GetCurrentGoalId() {
    auto const agent = present_agent(run_, id_);
    return id_of(agent, agent.info.goal, "goal");
}
bool Agent::HasCurrentFloor() {
    auto const agent = present_agent(run_, id_);
    return agent.motion.region < agent.state->world.plan.floor_count;
}
GlobalId Agent::GetCurrentFloorId() {
    auto const agent = present_agent(run_, id_);
    auto const& surface = agent.state->world.plan.surfaces[agent.motion.region];
    if (agent.motion.region >= agent.state->world.plan.floor_count) {
        refuse(title(id_) + " is on no floor but on '" + surface.name + "'");
    }
    return surface.id;
}

bool Agent::HasPreviousWaypoint() {
    return present_agent(run_, id_).info.previous_connection != engine::navigation::none;
}
GlobalId Agent::GetPreviousWaypointId() {
    auto const agent = present_agent(run_, id_);
    auto const connection = agent.info.previous_connection;
    if (connection == engine::navigation::none) refuse(title(id_) + " has passed no waypoint yet");
    return agent.state->world.plan.surfaces[connection].id;
}
bool Agent::HasTargetWaypoint() { return HasCurrentGoal() && HasPathToTargetWaypoint(); }
GlobalId Agent::GetTargetWaypointId() {
    auto const agent = present_agent(run_, id_);
    auto const way = way_from(agent, agent.standpoint());
    bool const is_goal = way.connection == engine::navigation::none;
    if (is_goal) return agent.state->world.places[agent.info.goal].id;
    return agent.state->world.plan.surfaces[agent.state->world.plan.joints[way.connection].connection].id;
}
LineSeg3d Agent::GetTargetWaypointGoalLine() {
    auto const agent = present_agent(run_, id_);
    auto const way = way_from(agent, agent.standpoint());
    auto const& goal = agent.state->world.places[agent.info.goal];
    bool const is_portal = way.connection == engine::navigation::none && goal.is_portal();
    auto const line = is_portal ? agent.state->world.plan.doorways[goal.doorway].line.line : way.line;
    return {position_of(agent.state->world.plan, {agent.motion.region, line.from}),
            position_of(agent.state->world.plan, {agent.motion.region, line.to})};
}
bool Agent::HasPathToTargetWaypoint() { return HasPathToTargetWaypoint(GetPosition()); }
bool Agent::HasPathToTargetWaypoint(Vec3d const& position) {
    auto const agent = present_agent(run_, id_);
    auto const from = standpoint_of(surroundings_of(*agent.state), position);
    return agent.info.goal != engine::no_place &&
           agent.state->routes.navigation.reachable(from.region, from.point, agent.motion.destination);
}
double Agent::GetDistanceToTargetWaypoint() {
    auto const agent = present_agent(run_, id_);
    return way_from(agent, agent.standpoint()).distance;
}
double Agent::GetDistanceToTargetWaypointFrom(Vec3d const& position) {
    auto const agent = present_agent(run_, id_);
    return way_from(agent, standpoint_of(surroundings_of(*agent.state), position)).distance;
}
Vec3d Agent::GetDirectionToTargetWaypoint() {
    auto const agent = present_agent(run_, id_);
    return level(way_from(agent, agent.standpoint()).direction);
}
Vec3d Agent::GetDirectionToTargetWaypointFrom(Vec3d const& position) {
    auto const agent = present_agent(run_, id_);
    return level(way_from(agent, standpoint_of(surroundings_of(*agent.state), position)).direction);
}
Vec3d Agent::GetClosestPointWithPathToTargetWaypoint(double distance) {
    auto const agent = present_agent(run_, id_);
    return point_with_way(agent, agent.standpoint(), distance);
}
Vec3d Agent::GetPointWithPathToTargetWaypointClosestTo(Vec3d const& position, double distance) {
    auto const agent = present_agent(run_, id_);
    auto const place = engine::require_point("A position", position);
    return point_with_way(agent, {agent.motion.region, {place.x, place.z}}, distance);
}

bool Agent::IsInOpenSpace() { return IsInOpenSpace(GetPosition()); }
bool Agent::IsInOpenSpace(Vec3d const& position) {
    auto const agent = present_agent(run_, id_);
    auto const place = engine::require_point("A position", position);
    return is_open(surroundings_of(*agent.state), {agent.motion.region, {place.x, place.z}}, agent.info.origin.radius,
                   agent.motion.agent);
}
Vec3d Agent::GetClosestOpenPoint(double distance) { return GetOpenPointClosestTo(GetPosition(), distance); }
Vec3d Agent::GetOpenPointClosestTo(Vec3d const& position, double distance) {
    auto const agent = present_agent(run_, id_);
    auto const place = engine::require_point("A position", position);
    return position_or_invalid(*agent.state,
                               nearest_open(surroundings_of(*agent.state), {agent.motion.region, {place.x, place.z}},
                                            require_distance(distance), agent.info.origin.radius, agent.motion.agent));
}
std::shared_ptr<ObstaclePoint> Agent::GetClosestObstaclePoint(double distance) {
    auto const agent = present_agent(run_, id_);
    return nearest_obstacle(surroundings_of(*agent.state), agent.standpoint(), require_distance(distance));
}
std::shared_ptr<ObstaclePoint> Agent::GetObstaclePointClosestTo(Vec3d const& position, double distance) {
    auto const agent = present_agent(run_, id_);
    auto const place = engine::require_point("A position", position);
    return nearest_obstacle(surroundings_of(*agent.state), {agent.motion.region, {place.x, place.z}},
                            require_distance(distance));
}
std::shared_ptr<ObstaclePoint> Agent::GetObstaclePointInDirection(Vec3d const& direction, double distance) {
    auto const agent = present_agent(run_, id_);
    return obstacle_towards(surroundings_of(*agent.state), agent.standpoint(), require_level_direction(direction),
                            require_distance(distance));
}
AvailableSpace Agent::GetAvailableSpace(double distance) { return GetAvailableSpaceAround(GetPosition(), distance); }
AvailableSpace Agent::GetAvailableSpaceAround(Vec3d const& position, double distance) {
    auto const agent = present_agent(run_, id_);
    auto const from = standpoint_of(surroundings_of(*agent.state), position);
    return AvailableSpace(std::make_shared<FreeSpace>(
        free_space_around(surroundings_of(*agent.state), from, require_distance(distance), agent.motion.agent)));
}

void Agent::AssumeControl() { present_agent(run_, id_).info.controlled = true; }
void Agent::ReleaseControl() { present_agent(run_, id_).info.controlled = false; }
void Agent::MoveTo(Vec3d const& position) { put(present_agent(run_, id_), position); }
void Agent::MoveTo(Vec3d const& position, Vec3d const& direction) {
    auto const heading = heading_of(require_level_direction(direction));
    MoveTo(position);
    present_agent(run_, id_).info.heading = heading;
}
void Agent::MoveTo(Vec3d const& position, Vec3d const& direction, double speed) {
    engine::require_not_negative("A speed", speed);
    MoveTo(position, direction);
    present_agent(run_, id_).info.shown_speed = speed;
}
void Agent::AllowAdjustment() { present_agent(run_, id_).info.adjustable = true; }
void Agent::DisallowAdjustment() { present_agent(run_, id_).info.adjustable = false; }
void Agent::SetGoalDirectionOverride(Vec3d const& direction) {
    present_agent(run_, id_).info.direction_override = require_level_direction(direction);
}
void Agent::ClearGoalDirectionOverride() { present_agent(run_, id_).info.direction_override.reset(); }
void Agent::ExitSimulation() { leave(present_agent(run_, id_), AgentInfo::Fate::ARRIVED); }
void Agent::ExitSimulationWithError(std::string const& message) {
    auto const agent = present_agent(run_, id_);
    agent.state->journal.issues.emplace_back(IssueCategory::ERROR, title(id_) + " left with an error", message);
    leave(agent, AgentInfo::Fate::FAILED);
}

bool Agent::InternalEquals(std::shared_ptr<Agent> const& other) {
    bool const same_run = other && !run_.owner_before(other->run_) && !other->run_.owner_before(run_);
    return same_run && id_ == other->id_;
}
int Agent::InternalHashCode() { return id_; }
int Agent::InternalCompare(std::shared_ptr<Agent> const& other) {
    if (!other) refuse(title(id_) + " cannot be compared with no agent");
    return (id_ > other->id_) - (id_ < other->id_);
}

}  // namespace pedflux
