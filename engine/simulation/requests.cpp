#include "engine/simulation/requests.h"

#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/simulation_run_state.h"
#include "engine/simulation/admission.h"
#include "engine/simulation/stepping.h"
#include "engine/simulation/surroundings.h"

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
std::uint32_t key_of_request(LiveRun const& run) { return ~static_cast<std::uint32_t>(run.persons.size()); }

Newcomer newcomer_of(LiveRun& run, AgentRequest const& request) {
    GlobalId const& profile = AgentRequestAccess::profile(request);
    Newcomer newcomer;
    if (run.run->document) {
        newcomer = person_of(*run.run->document, profile, run.seed, key_of_request(run));
    } else if (profile.IsValid()) {
        refuse("The project is closed, so its profiles cannot be used any more");
    }
    newcomer.due = run.seconds();
    newcomer.origin = run.places.of(AgentRequestAccess::start(request));
    GlobalId const& goal = AgentRequestAccess::goal(request);
    if (goal.IsValid()) newcomer.destination = run.places.of(goal);
    newcomer.color = AgentRequestAccess::color(request).value_or(Color::BLUE);
    return newcomer;
}

std::optional<Spot> spot_of(LiveRun const& run, Newcomer const& newcomer, AgentRequest const& request) {
    Vec3d position = AgentRequestAccess::position(request);
    if (!position.IsValid()) return spot_for(run, newcomer, Occupancy(run));
    auto const place = standpoint_of(run, position);
    if (!is_open(run, place, newcomer.radius, gone)) return std::nullopt;
    return Spot{place.region, place.point};
}

}  // namespace

std::shared_ptr<Agent> request_agent(LiveRun& run, AgentRequest const& request) {
    if (run.stopped) refuse("The simulation was stopped and takes no more agents");
    auto const newcomer = newcomer_of(run, request);
    auto const spot = spot_of(run, newcomer, request);
    if (!spot) return nullptr;
    auto& person = run.persons[enter(run, newcomer, spot->region, spot->place)];
    if (auto const heading = AgentRequestAccess::heading(request)) person.heading = *heading;
    return person.face;
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
