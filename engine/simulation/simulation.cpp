#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/results/run_files.h"
#include "engine/scene/simulation_run_state.h"
#include "engine/simulation/events/gate_access.h"
#include "engine/simulation/frame/create.h"
#include "engine/simulation/frame/frame.h"
#include "engine/simulation/requests.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/routing/surroundings.h"

#include <pedflux/simulation.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace pedflux {

namespace {

using engine::GateState;
using engine::refuse;
using engine::SimulationRunState;
using engine::SimulationState;
using engine::Standpoint;
using Direction = ConnectionObjectDirection;

std::string text(GlobalId id) { return "'" + id.GetString() + "'"; }

engine::Document& require_document(std::shared_ptr<Project> const& project) {
    if (!project) refuse("A simulation needs a project, and there is none");
    return engine::document_of(*project);
}

std::string default_database(SimulationRunState const& run) {
    auto name = run.name;
    std::ranges::replace(name, '/', '-');
    return name + ".pfdb";
}

std::shared_ptr<SimulationRunState> shared(SimulationRunState& run) {
    auto const& objects = run.document->objects();
    auto const found = std::ranges::find(objects, &run, &std::shared_ptr<engine::ObjectState>::get);
    return std::static_pointer_cast<SimulationRunState>(*found);
}

std::size_t require_gate(SimulationState const& state, GlobalId const& gate) {
    auto const region = state.world.places.region_of(gate);
    if (region == engine::navigation::none || region < state.world.plan.floor_count) {
        refuse(text(gate) + " is no connection of the simulated project");
    }
    auto const passageway = region - state.world.plan.floor_count;
    if (!state.world.plan.passageways[passageway].gated) {
        refuse(state.world.plan.passageways[passageway].title + " is no gate: it is not gated");
    }
    return passageway;
}

engine::TallyIndex require_tally(SimulationState const& state, GlobalId const& tally) {
    auto const found = state.events->program.tallies.find(tally);
    if (!found) refuse(text(tally) + " is no tally object of the simulated project");
    return *found;
}

bool concerns(Direction direction, Direction way) {
    if (direction != Direction::BOTH_WAYS && direction != Direction::BALL_TO_BOX &&
        direction != Direction::BOX_TO_BALL) {
        refuse("A direction must be BOTH_WAYS (0), BALL_TO_BOX (1) or BOX_TO_BALL (2), not " +
               std::to_string(static_cast<int>(direction)));
    }
    return direction == Direction::BOTH_WAYS || direction == way;
}

/// Without an answer, the gate is left to the project's rules again.
void open_or_close(SimulationState& state, GlobalId const& gate, Direction direction, std::optional<bool> open) {
    auto const passageway = require_gate(state, gate);
    concerns(direction, Direction::BOTH_WAYS);
    set_gate_by_program(state.events->gates, state.clock, state.world.plan, state.gates, state.routes.navigation,
                        state.crowd, passageway, direction, open);
}

/// Whether the gate is open (or closed) to all of the directions that it has among those asked for.
bool is_gate(SimulationState const& state, GlobalId const& gate, Direction direction, bool open) {
    auto const passageway = require_gate(state, gate);
    auto const& directions = state.world.plan.passageways[passageway];
    GateState const& gate_state = state.gates.states[passageway];
    bool const is_ball = gate_state.ball_to_box == open && !(open && gate_state.ball_to_box_for_some);
    bool const is_box = gate_state.box_to_ball == open && !(open && gate_state.box_to_ball_for_some);
    bool const ball = !concerns(direction, Direction::BALL_TO_BOX) || !directions.ball_to_box || is_ball;
    bool const box = !concerns(direction, Direction::BOX_TO_BALL) || !directions.box_to_ball || is_box;
    return ball && box;
}

Standpoint require_start(SimulationState const& state, GlobalId const& start, Vec3d const& point) {
    auto const region = state.world.places.region_of(start);
    if (region == engine::navigation::none) refuse(text(start) + " is no walkable object of the simulated project");
    engine::Vector const place = engine::require_point("A point", point);
    return {region, {place.x, place.z}};
}

Standpoint require_on(SimulationState const& state, GlobalId const& start, Vec3d const& point) {
    auto const standpoint = require_start(state, start, point);
    if (!state.routes.navigation.contains(standpoint.region, standpoint.point)) {
        refuse("The point " + engine::text_of(standpoint.point) + " does not lie on the walkable area of " +
               state.world.plan.surfaces[standpoint.region].name);
    }
    return standpoint;
}

[[noreturn]] void refuse_way(SimulationState const& state, engine::PlaceIndex goal) {
    refuse("No way leads from there to " + state.world.places[goal].title);
}

/// The present agents for which a condition holds.
template <class Condition>
std::vector<std::shared_ptr<Agent>> agents_where(SimulationState const& state, Condition const& condition) {
    std::vector<std::shared_ptr<Agent>> agents;
    for (auto const& motion : state.agents.motions) {
        if (condition(motion)) agents.push_back(state.agents.infos[motion.agent].object);
    }
    return agents;
}

template <class Condition>
std::vector<std::shared_ptr<Agent>> agents_on(SimulationState& state, GlobalId const& object,
                                              Condition const& condition) {
    auto const& place = state.world.places[state.world.places.of(object)];
    if (place.is_portal()) refuse(place.title + " is a portal, which nobody is on");
    std::vector<bool> belongs(state.world.plan.surfaces.size());
    for (auto const region : place.regions) belongs[region] = true;
    return agents_where(state,
                        [&](engine::AgentMotion const& motion) { return belongs[motion.region] && condition(motion); });
}

std::shared_ptr<SimulationState> begin(engine::Document const& document, SimulationRunState& run,
                                       std::string const& name, SimulationOptions const& options) {
    auto const seed = engine::SimulationOptionsAccess::seed(options).value_or(document.settings.random_seed);
    return create_simulation(
        document,
        {static_cast<std::uint32_t>(seed), engine::SimulationOptionsAccess::threads(options),
         engine::SimulationOptionsAccess::extra_goals(options), shared(run), name, engine::file_of(document, name)});
}

}  // namespace

SimulationOptions::SimulationOptions() = default;
SimulationOptions::SimulationOptions(SimulationOptions const&) = default;
SimulationOptions::SimulationOptions(SimulationOptions&&) noexcept = default;
SimulationOptions& SimulationOptions::operator=(SimulationOptions const&) = default;
SimulationOptions& SimulationOptions::operator=(SimulationOptions&&) noexcept = default;
SimulationOptions::~SimulationOptions() = default;
void SimulationOptions::SetRandomSeed(int seed) { randomSeed_ = seed; }
void SimulationOptions::SetThreadCount(int count) {
    if (count < 1 || count > 256) refuse("A thread count must be 1 to 256, not " + std::to_string(count));
    threadCount_ = count;
}
void SimulationOptions::AddExtraGoal(GlobalId const& goal) { extraGoals_.push_back(goal); }
void SimulationOptions::AddExtraGoals(std::vector<GlobalId> const& goals) {
    extraGoals_.insert(extraGoals_.end(), goals.begin(), goals.end());
}

namespace {

std::shared_ptr<SimulationState const> state_of(std::weak_ptr<SimulationState const> const& weak) {
    auto found = weak.lock();
    if (!found) engine::refuse("The clock belongs to a simulation that is gone");
    return found;
}

}  // namespace

Clock::Clock(std::weak_ptr<SimulationState const> run) : run_(std::move(run)) {}
int Clock::GetCurrentFrame() { return state_of(run_)->clock.frame; }
double Clock::GetCurrentSecond() { return state_of(run_)->clock.seconds(); }
int Clock::GetCurrentSecondAsInt() {
    auto const state = state_of(run_);
    return state->clock.frame / state->clock.frame_rate;
}
std::string Clock::GetCurrentTimeString() {
    constexpr long long day = 24LL * 60 * 60 * 10;
    auto const state = state_of(run_);
    auto const tenths = (state->clock.start_time * 10LL + state->clock.frame * 10LL / state->clock.frame_rate) % day;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%d", static_cast<int>(tenths / 36000),
                  static_cast<int>(tenths / 600 % 60), static_cast<int>(tenths / 10 % 60),
                  static_cast<int>(tenths % 10));
    return text.data();
}

Simulation::Simulation(std::shared_ptr<SimulationState> run) : run_(std::move(run)) {}
Simulation::~Simulation() = default;

std::shared_ptr<Simulation> Simulation::Create(std::shared_ptr<Project> const& project, GlobalId const& simulationRun) {
    return Create(project, simulationRun, {});
}
std::shared_ptr<Simulation> Simulation::Create(std::shared_ptr<Project> const& project, GlobalId const& simulationRun,
                                               SimulationOptions const& options) {
    auto& document = require_document(project);
    auto* const run = document.find<SimulationRunState>(simulationRun);
    if (!run) refuse(text(simulationRun) + " is no simulation run of the project");
    auto const name = run->database_file_name.empty() ? default_database(*run) : run->database_file_name;
    return std::make_shared<Simulation>(begin(document, *run, name, options));
}
std::shared_ptr<Simulation> Simulation::Create(std::shared_ptr<Project> const& project, std::string const& runName,
                                               std::string const& databasePath) {
    return Create(project, runName, databasePath, {});
}
std::shared_ptr<Simulation> Simulation::Create(std::shared_ptr<Project> const& project, std::string const& runName,
                                               std::string const& databasePath, SimulationOptions const& options) {
    auto& document = require_document(project);
    auto* run = document.find<SimulationRunState>(runName);
    bool const is_new = run == nullptr;
    if (is_new) run = &document.add<SimulationRunState>(runName);
    try {
        return std::make_shared<Simulation>(
            begin(document, *run, databasePath.empty() ? default_database(*run) : databasePath, options));
    } catch (...) {
        if (is_new) document.remove(*run);
        throw;
    }
}

FrameSummary Simulation::Step() { return MoveAgents(); }
std::vector<std::shared_ptr<Agent>> Simulation::CreateAgents() { return create_agents(*run_); }
void Simulation::ChooseAgentTargets() { choose_targets(*run_); }
FrameSummary Simulation::MoveAgents() { return FrameSummary(move_agents(*run_)); }
void Simulation::Stop() { stop(*run_); }
bool Simulation::IsDone() {
    bool const is_empty = run_->spawning.waiting_to_enter == 0 && run_->agents.motions.empty() &&
                          !may_start(*run_->events, run_->spawning);
    return run_->stopped || is_empty || run_->clock.seconds() >= run_->clock.duration;
}
bool Simulation::IsValid() const { return !run_->stopped; }

int Simulation::GetCurrentFrame() { return run_->clock.frame; }
double Simulation::GetFrameLength() { return run_->clock.frame_length(); }
double Simulation::GetFrameRate() { return run_->clock.frame_rate; }
std::shared_ptr<Clock> Simulation::GetClock() { return std::make_shared<Clock>(run_); }
std::vector<Issue> Simulation::GetIssues() { return run_->journal.issues; }
void Simulation::ClearIssues() { run_->journal.issues.clear(); }

std::shared_ptr<Agent> Simulation::GetAgent(int agent) {
    auto const number = static_cast<std::size_t>(agent);
    bool const is_here =
        agent >= 0 && number < run_->agents.infos.size() && run_->agents.motion_of[number] != engine::gone;
    return is_here ? run_->agents.infos[number].object : nullptr;
}
std::vector<std::shared_ptr<Agent>> Simulation::GetAllAgents() {
    return agents_where(*run_, [](engine::AgentMotion const&) { return true; });
}
std::vector<std::shared_ptr<Agent>> Simulation::GetAgentsInBox(BoundingBox3d const& box) {
    BoundingBox3d bounds = box;
    return agents_where(*run_, [&](engine::AgentMotion const& motion) {
        return bounds.Contains(position_of(run_->world.plan, {motion.region, motion.position}));
    });
}
std::vector<std::shared_ptr<Agent>> Simulation::GetAgentsNearPoint(Vec3d const& point, double distance, double height) {
    engine::Vector const place = engine::require_point("A point", point);
    engine::require_not_negative("A distance", distance);
    engine::require_not_negative("A height", height);
    return agents_where(*run_, [&](engine::AgentMotion const& motion) {
        return engine::distance(motion.position, {place.x, place.z}) <= distance &&
               std::abs(height_at(run_->world.plan, motion.region, motion.position) - place.y) <= height;
    });
}
std::vector<std::shared_ptr<Agent>> Simulation::GetAgentsOn(GlobalId const& object) {
    return agents_on(*run_, object, [](engine::AgentMotion const&) { return true; });
}
int Simulation::GetPopulation(GlobalId const& object) { return static_cast<int>(GetAgentsOn(object).size()); }

std::shared_ptr<Agent> Simulation::RequestNewAgent(GlobalId const& start) {
    return RequestNewAgent(AgentRequest(start));
}
std::shared_ptr<Agent> Simulation::RequestNewAgent(AgentRequest const& request) {
    return request_agent(*run_, request);
}

void Simulation::OpenGate(GlobalId const& gate) { OpenGate(gate, Direction::BOTH_WAYS); }
void Simulation::OpenGate(GlobalId const& gate, ConnectionObjectDirection direction) {
    open_or_close(*run_, gate, direction, true);
}
void Simulation::CloseGate(GlobalId const& gate) { CloseGate(gate, Direction::BOTH_WAYS); }
void Simulation::CloseGate(GlobalId const& gate, ConnectionObjectDirection direction) {
    open_or_close(*run_, gate, direction, false);
}
void Simulation::ResetGate(GlobalId const& gate) { ResetGate(gate, Direction::BOTH_WAYS); }
void Simulation::ResetGate(GlobalId const& gate, ConnectionObjectDirection direction) {
    open_or_close(*run_, gate, direction, std::nullopt);
}
bool Simulation::IsGateOpenToAll(GlobalId const& gate) { return IsGateOpenToAll(gate, Direction::BOTH_WAYS); }
bool Simulation::IsGateOpenToAll(GlobalId const& gate, ConnectionObjectDirection direction) {
    return is_gate(*run_, gate, direction, true);
}
bool Simulation::IsGateClosedToAll(GlobalId const& gate) { return IsGateClosedToAll(gate, Direction::BOTH_WAYS); }
bool Simulation::IsGateClosedToAll(GlobalId const& gate, ConnectionObjectDirection direction) {
    return is_gate(*run_, gate, direction, false);
}

double Simulation::GetTallyValue(GlobalId const& tally) const {
    return run_->events->tallies.value(require_tally(*run_, tally));
}
void Simulation::AddToTallyValue(GlobalId const& tally, double value) {
    run_->events->tallies.add(require_tally(*run_, tally), engine::require_finite("A value", value));
}
void Simulation::ResetTallyValue(GlobalId const& tally) { run_->events->tallies.reset(require_tally(*run_, tally)); }

bool Simulation::ExistsPathTo(GlobalId const& start, Vec3d const& point, GlobalId const& goal) {
    auto const from = require_on(*run_, start, point);
    return run_->routes.navigation.reachable(from.region, from.point,
                                             destination_at(run_->routes, run_->world, run_->world.places.of(goal)));
}
double Simulation::GetDistanceAlongPathTo(GlobalId const& start, Vec3d const& point, GlobalId const& goal) {
    auto const from = require_on(*run_, start, point);
    auto const place = run_->world.places.of(goal);
    auto const distance =
        run_->routes.navigation.distance(from.region, from.point, destination_at(run_->routes, run_->world, place));
    if (!distance) refuse_way(*run_, place);
    return *distance;
}
Vec3d Simulation::GetDirectionAlongPathTo(GlobalId const& start, Vec3d const& point, GlobalId const& goal) {
    auto const from = require_on(*run_, start, point);
    auto const place = run_->world.places.of(goal);
    auto const direction =
        direction_to(run_->routes.navigation, from, destination_at(run_->routes, run_->world, place));
    if (!direction) refuse_way(*run_, place);
    return {direction->x, 0, direction->z};
}
Vec3d Simulation::GetClosestPointWithPathTo(GlobalId const& start, Vec3d const& point, double distance,
                                            GlobalId const& goal) {
    auto const from = require_start(*run_, start, point);
    engine::require_not_negative("A distance", distance);
    auto const found = nearest_with_way(run_->routes.navigation, from.region, from.point, distance,
                                        destination_at(run_->routes, run_->world, run_->world.places.of(goal)));
    return found ? position_of(run_->world.plan, {from.region, *found}) : Vec3d::INVALID;
}

}  // namespace pedflux
