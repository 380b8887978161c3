#include "engine/simulation/requests.h"

#include "engine/geometry/checks.h"
#include "engine/simulation/agents/placement.h"
#include "engine/simulation/frame/entering.h"
#include "engine/simulation/present_agent.h"

#include <cmath>

namespace pedflux::engine {

struct AgentRequestAccess {
    static GlobalId const& start(AgentRequest const& request) { return request.start_; }
    static GlobalId const& goal(AgentRequest const& request) { return request.goal_; }
    static GlobalId const& profile(AgentRequest const& request) { return request.profile_; }
    static Vec3d position(AgentRequest const& request) { return request.position_; }
    static std::optional<Color> color(AgentRequest const& request) {
        return request.hasColor_ ? std::optional(request.color_) : std::nullopt;
    }
    static std::optional<double> heading(AgentRequest const& request) {
        return request.hasHeading_ ? std::optional(request.heading_) : std::nullopt;
    }
};

namespace {

/// Requested agents have keys of their own, from the top down.
std::uint32_t key_of_request(SimulationState const& state) {
    return ~static_cast<std::uint32_t>(state.agents.infos.size());
}

SpawnRequest spawn_request_of(SimulationState& state, AgentRequest const& request) {
    GlobalId const& profile = AgentRequestAccess::profile(request);
    auto spawned = person_of(state.spawning.program, profile, state.world.seed, key_of_request(state));
    spawned.due = state.clock.seconds();
    spawned.origin = state.world.places.of(AgentRequestAccess::start(request));
    GlobalId const& goal = AgentRequestAccess::goal(request);
    if (goal.IsValid()) spawned.destination = state.world.places.of(goal);
    spawned.color = AgentRequestAccess::color(request).value_or(Color::BLUE);
    return spawned;
}

std::optional<Standpoint> spot_of(SimulationState const& state, SpawnRequest const& spawned,
                                  AgentRequest const& request) {
    Vec3d position = AgentRequestAccess::position(request);
    if (!position.IsValid())
        return spot_for(state.world, state.routes.navigation, state.spawning, state.clock, spawned,
                        Occupancy(state.agents, state.crowd));
    auto const place = standpoint_of(surroundings_of(state), position);
    if (!is_open(surroundings_of(state), place, spawned.radius, gone)) return std::nullopt;
    return place;
}

}  // namespace

std::shared_ptr<Agent> request_agent(SimulationState& state, AgentRequest const& request) {
    if (state.stopped) refuse("The simulation was stopped and takes no more agents");
    auto const spawned = spawn_request_of(state, request);
    auto const spot = spot_of(state, spawned, request);
    if (!spot) return nullptr;
    auto& info = state.agents.infos[enter(state, spawned, *spot)];
    if (auto const heading = AgentRequestAccess::heading(request)) info.heading = *heading;
    return info.object;
}

}  // namespace pedflux::engine

namespace pedflux {

AgentRequest::AgentRequest(GlobalId const& start) : start_(start) {}
AgentRequest::AgentRequest(AgentRequest const&) = default;
AgentRequest::AgentRequest(AgentRequest&&) noexcept = default;
AgentRequest& AgentRequest::operator=(AgentRequest const&) = default;
AgentRequest& AgentRequest::operator=(AgentRequest&&) noexcept = default;
AgentRequest::~AgentRequest() = default;
void AgentRequest::SetColor(Color const& color) {
    color_ = color;
    hasColor_ = true;
}
void AgentRequest::SetGoal(GlobalId const& goal) { goal_ = goal; }
void AgentRequest::SetProfile(GlobalId const& profile) { profile_ = profile; }
void AgentRequest::SetPosition(Vec3d const& position) {
    engine::require_point("A position", position);
    position_ = position;
}
void AgentRequest::SetHeading(double heading) {
    double const turned = std::fmod(engine::require_finite("A heading", heading), 360);
    heading_ = turned < 0 ? turned + 360 : turned;
    hasHeading_ = true;
}

}  // namespace pedflux
