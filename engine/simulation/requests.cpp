#include "engine/simulation/requests.h"

#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/scene/simulation_run_state.h"
#include "engine/simulation/agents/placement.h"
#include "engine/simulation/frame/stepping.h"
#include "engine/simulation/routing/surroundings.h"

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

/// Requested persons have keys of their own, from the top down.
std::uint32_t key_of_request(SimulationState const& run) { return ~static_cast<std::uint32_t>(run.infos.size()); }

SpawnRequest spawn_request_of(SimulationState& run, AgentRequest const& request) {
    GlobalId const& profile = AgentRequestAccess::profile(request);
    SpawnRequest spawned;
    if (run.run->document) {
        spawned = person_of(*run.run->document, profile, run.seed, key_of_request(run));
    } else if (profile.IsValid()) {
        refuse("The project is closed, so its profiles cannot be used any more");
    }
    spawned.due = run.seconds();
    spawned.origin = run.places.of(AgentRequestAccess::start(request));
    GlobalId const& goal = AgentRequestAccess::goal(request);
    if (goal.IsValid()) spawned.destination = run.places.of(goal);
    spawned.color = AgentRequestAccess::color(request).value_or(Color::BLUE);
    return spawned;
}

std::optional<Spot> spot_of(SimulationState const& run, SpawnRequest const& spawned, AgentRequest const& request) {
    Vec3d position = AgentRequestAccess::position(request);
    if (!position.IsValid()) return spot_for(run, spawned, Occupancy(run));
    auto const place = standpoint_of(run, position);
    if (!is_open(run, place, spawned.radius, gone)) return std::nullopt;
    return Spot{place.region, place.point};
}

}  // namespace

std::shared_ptr<Agent> request_agent(SimulationState& run, AgentRequest const& request) {
    if (run.stopped) refuse("The simulation was stopped and takes no more agents");
    auto const spawned = spawn_request_of(run, request);
    auto const spot = spot_of(run, spawned, request);
    if (!spot) return nullptr;
    auto& info = run.infos[enter(run, spawned, spot->region, spot->place)];
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
