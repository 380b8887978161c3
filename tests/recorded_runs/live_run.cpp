#include "tests/recorded_runs/live_run.h"

#include "tests/recorded_runs/scenarios.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace pedflux::recorded {

namespace {

constexpr std::uint64_t hash_start = 14695981039346656037U;

std::uint64_t hash_on(std::uint64_t hash, std::uint64_t value) { return (hash ^ value) * 1099511628211U; }

/// All digits of a number, so that no difference is rounded away.
std::string exact(double value) {
    std::array<char, 40> digits{};
    std::snprintf(digits.data(), digits.size(), "%.17g", value);
    return digits.data();
}

std::string exact(Vec3d value) {
    if (!value.IsValid()) return "nowhere";
    return "(" + exact(value.GetX()) + ", " + exact(value.GetY()) + ", " + exact(value.GetZ()) + ")";
}

std::string hexadecimal(std::uint64_t value) {
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(value));
    return digits.data();
}

/// An identifier for an object's name. Their order has nothing to do with that of the objects, as with random ones.
std::string identifier_of(std::string const& name) {
    std::uint64_t high = hash_start;
    for (char const letter : name) high = hash_on(high, static_cast<unsigned char>(letter));
    std::uint64_t low = hash_on(high, 1);
    for (int turn = 0; turn < 8; ++turn) low = hash_on(std::rotl(low, 29), high);
    auto const first = hexadecimal(high);
    auto const second = hexadecimal(low);
    return first.substr(0, 8) + "-" + first.substr(8, 4) + "-" + first.substr(12) + "-" + second.substr(0, 4) + "-" +
           second.substr(4);
}

void replace_all(std::string& text, std::string const& from, std::string const& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// The drawing with identifiers that are the same each time, since results name objects by them.
std::shared_ptr<Project> with_fixed_identifiers(Project& drawn, std::filesystem::path const& path) {
    drawn.Save(path.string());
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    for (auto const& object : drawn.GetObjects()) {
        replace_all(text, object->GetId().GetString(), identifier_of(object->GetName()));
    }
    std::ofstream(path, std::ios::binary) << text;
    auto project = Project::Open(path.string());
    std::filesystem::remove(path);
    return project;
}

/// Everything that an agent says of itself, as one number.
std::uint64_t hash_of(Agent& agent) {
    std::uint64_t hash = hash_start;
    auto const add = [&hash](double value) { hash = hash_on(hash, std::bit_cast<std::uint64_t>(value)); };
    auto const add_point = [&](Vec3d point) { add(point.GetX()), add(point.GetY()), add(point.GetZ()); };
    auto const add_id = [&](GlobalId id) {
        for (char const letter : id.GetString()) hash = hash_on(hash, static_cast<unsigned char>(letter));
    };
    add(agent.GetId());
    add_point(agent.GetPosition());
    add_point(agent.GetVelocity());
    for (double const value :
         {agent.GetSpeed(), agent.GetHeading(), agent.GetRadius(), agent.GetHeight(),
          agent.GetDesiredUnconstrainedSpeed(), agent.GetCurrentMaxSpeed(), agent.GetDistanceTraveled(),
          static_cast<double>(agent.GetAgentMovement()), static_cast<double>(agent.GetLevelOfService().GetDensity()),
          static_cast<double>(agent.GetLevelOfService().GetLevel()), static_cast<double>(agent.GetCurrentTaskType())}) {
        add(value);
    }
    auto color = agent.GetColor();
    for (double const value : {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()}) add(value);
    for (auto const& token : agent.GetTokenIds()) add_id(token);
    for (auto const& goal : agent.GetCurrentTaskGoalIds()) add_id(goal);
    add_id(agent.GetProfileId());
    if (agent.HasAvatar()) add_id(agent.GetAvatar()->GetId());
    if (agent.HasNetwork()) add_id(agent.GetNetwork());
    if (agent.HasCurrentGoal()) add_id(agent.GetCurrentGoalId());
    if (agent.HasCurrentFloor()) add_id(agent.GetCurrentFloorId());
    if (agent.HasPreviousWaypoint()) add_id(agent.GetPreviousWaypointId());
    if (agent.HasTargetWaypoint()) add_id(agent.GetTargetWaypointId());
    return hash;
}

std::string access_text(bool is_open, bool is_closed) { return is_open ? "open" : is_closed ? "closed" : "for some"; }

}  // namespace

LiveRun::LiveRun(std::shared_ptr<Project> opened, std::shared_ptr<Simulation> created, std::ostream& text)
    : project(std::move(opened)), simulation(std::move(created)), text_(text), objects_(project->GetObjects()) {
    for (auto const& object : objects_) names_[object->GetId().GetString()] = object->GetName();
    show_state();
    show_issues();
}

bool LiveRun::at(int second) const {
    return simulation->GetCurrentFrame() == static_cast<int>(second * simulation->GetFrameRate());
}

GlobalId LiveRun::id(std::string const& name) const {
    auto const object = project->GetObject(name);
    if (!object) throw std::runtime_error("the scenario has no object '" + name + "'");
    return object->GetId();
}

void LiveRun::note(std::string const& what, std::string const& value) {
    text_ << "  " << what << ": " << value << '\n';
}
void LiveRun::note(std::string const& what, double value) { note(what, exact(value)); }
void LiveRun::note(std::string const& what, Vec3d value) { note(what, exact(value)); }

void LiveRun::note_refusal(std::function<void()> const& action) {
    try {
        action();
    } catch (Exception const& exception) {
        return note("refused", exception.GetMessage());
    }
    note("refused", "nothing");
}

void LiveRun::step() {
    auto summary = simulation->Step();
    text_ << "frame " << simulation->GetCurrentFrame() << '\n';
    show(summary);
    show_agents();
    show_state();
    show_issues();
}

void LiveRun::end() {
    note("end", simulation->GetClock()->GetCurrentTimeString());
    note("seconds", simulation->GetClock()->GetCurrentSecond());
    note("whole seconds", simulation->GetClock()->GetCurrentSecondAsInt());
    note("frames", simulation->GetClock()->GetCurrentFrame());
    note("done", simulation->IsDone());
    list("still there", simulation->GetAllAgents());
    simulation->Stop();
    note("valid", simulation->IsValid());
}

std::string LiveRun::name_of(GlobalId const& id) const {
    auto const found = names_.find(GlobalId(id).GetString());
    return found == names_.end() ? "unknown" : found->second;
}

void LiveRun::list(std::string const& what, std::vector<std::shared_ptr<Agent>> const& agents) {
    if (agents.empty()) return;
    text_ << "  " << what << ' ' << agents.size() << ':';
    for (auto const& agent : agents) text_ << ' ' << agent->GetId();
    text_ << '\n';
}

void LiveRun::show(FrameSummary& summary) {
    list("created", summary.GetCreatedAgents());
    list("deleted", summary.GetDeletedAgents());
    for (auto const& agent : summary.GetDeletedAgents()) {
        if (agent->HasExitedWithError()) note("failed", agent->GetId());
        if (agent->Exists() || !agent->HasExitedWithSuccess()) note("has not left well", agent->GetId());
    }
    for (auto const& object : objects_) {
        auto const name = object->GetName();
        auto const id = object->GetId();
        list("entered " + name, summary.GetAgentsThatEntered(id));
        list("exited " + name, summary.GetAgentsThatExited(id));
        list("received " + name, summary.GetAgentsThatReceived(id));
        list("lost " + name, summary.GetAgentsThatLost(id));
    }
}

/// A number for all in each frame, and from time to time each agent, to tell whom a difference concerns.
void LiveRun::show_agents() {
    constexpr int frames_between_lists = 25;
    bool const lists = simulation->GetCurrentFrame() % frames_between_lists == 0;
    std::uint64_t all = hash_start;
    for (auto const& agent : simulation->GetAllAgents()) {
        auto const hash = hash_of(*agent);
        all = hash_on(all, hash);
        if (!lists) continue;
        text_ << "  agent " << agent->GetId() << ' ' << hexadecimal(hash) << " at " << exact(agent->GetPosition());
        if (agent->HasCurrentGoal()) text_ << " to " << name_of(agent->GetCurrentGoalId());
        text_ << '\n';
    }
    note("agents", hexadecimal(all));
}

void LiveRun::show_state() {
    for (auto const& object : objects_) {
        auto const id = object->GetId();
        if (!object->IsEnabled()) continue;
        if (auto const tally = std::dynamic_pointer_cast<TallyObject>(object)) {
            show_if_new(tally->GetName(), exact(simulation->GetTallyValue(id)));
        } else if (auto const gate = std::dynamic_pointer_cast<ConnectionObject>(object); gate && gate->IsGated()) {
            for (auto const way : {ConnectionObjectDirection::BALL_TO_BOX, ConnectionObjectDirection::BOX_TO_BALL}) {
                show_if_new(gate->GetName() + std::string(" way ") + std::to_string(static_cast<int>(way)),
                            access_text(simulation->IsGateOpenToAll(id, way), simulation->IsGateClosedToAll(id, way)));
            }
            show_if_new(gate->GetName() + std::string(" both ways"),
                        access_text(simulation->IsGateOpenToAll(id), simulation->IsGateClosedToAll(id)));
        } else if (auto const server = std::dynamic_pointer_cast<Server>(object)) {
            show_if_new(
                server->GetName() + std::string(" entrance"),
                access_text(simulation->IsServerEntranceOpenToAll(id), simulation->IsServerEntranceClosedToAll(id)));
            show_if_new(server->GetName() + std::string(" exit"),
                        access_text(simulation->IsServerExitOpenToAll(id), simulation->IsServerExitClosedToAll(id)));
        }
    }
}

void LiveRun::show_issues() {
    auto issues = simulation->GetIssues();
    for (; issues_ < issues.size(); ++issues_) {
        auto& issue = issues[issues_];
        note("issue " + std::to_string(static_cast<int>(issue.GetIssueCategory())) + " " + issue.GetTitle(),
             issue.GetSummary() + (issue.HasDescription() ? " " + issue.GetDescription() : ""));
    }
}

void LiveRun::show_if_new(std::string const& what, std::string const& value) {
    if (shown_[what] == value) return;
    shown_[what] = value;
    note(what, value);
}

void record(Scenario const& scenario, std::filesystem::path const& directory, int threads) {
    std::ofstream text(directory / (scenario.name + ".txt"));
    auto const project = [&] {
        Drawing drawing;
        drawing.project->SetDurationInSeconds(scenario.seconds);
        scenario.draw(drawing);
        return with_fixed_identifiers(*drawing.project, directory / (scenario.name + ".project"));
    }();
    SimulationOptions options;
    options.SetRandomSeed(scenario.seed);
    options.SetThreadCount(std::max(threads, scenario.threads));
    for (auto const& goal : scenario.goals) options.AddExtraGoal(project->GetObject(goal)->GetId());
    auto const database = (directory / (scenario.name + ".pfdb")).string();
    std::shared_ptr<Simulation> simulation;
    try {
        simulation = Simulation::Create(project, "Run", database, options);
    } catch (Exception const& exception) {
        if (!scenario.is_refused) throw;
        text << "refused: " << exception.GetMessage() << '\n';
    }
    if (simulation && scenario.is_refused) throw std::runtime_error("the simulation was not refused");
    if (simulation) {
        LiveRun run(project, simulation, text);
        while (!simulation->IsDone()) {
            if (scenario.steer) scenario.steer(run);
            run.step();
        }
        run.end();
    }
    project->Close();
    if (!text.flush()) throw std::runtime_error("the text cannot be written");
}

}  // namespace pedflux::recorded
