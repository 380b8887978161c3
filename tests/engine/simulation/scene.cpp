#include "tests/engine/simulation/scene.h"

#include <bit>
#include <cmath>
#include <stdexcept>

#include <unistd.h>

namespace pedflux {

namespace {

std::string database_path() {
    static int number = 0;
    return testing::TempDir() + "simulation-" + std::to_string(getpid()) + "-" + std::to_string(number++) + ".pfdb";
}

}  // namespace

Scene::Scene() : project(Project::Create()), database(database_path()) { project->SetDurationInSeconds(3600); }
Scene::~Scene() {
    project->Close();
    std::filesystem::remove(database);
}

std::shared_ptr<Floor> Scene::floor(std::string const& name, std::vector<Vec2d> const& outline, double y) const {
    return project->CreateFloor(name, MeshGeometry::CreateFlatPolygon(y, outline));
}

std::shared_ptr<Floor> Scene::room(std::string const& name, double x1, double z1, double x2, double z2,
                                   double y) const {
    return floor(name, {{x1, z1}, {x2, z1}, {x2, z2}, {x1, z2}}, y);
}

std::shared_ptr<Portal> Scene::portal(std::string const& name, double x1, double z1, double x2, double z2,
                                      double y) const {
    return project->CreatePortal(name, MeshGeometry::CreateVerticalRectangle({x1, y, z1}, {x2, y + 2, z2}));
}

std::shared_ptr<Barrier> Scene::wall(std::string const& name, double x1, double z1, double x2, double z2) const {
    return project->CreateBarrier(name, MeshGeometry::CreateBox({x1, 0, z1}, {x2, 3, z2}));
}

std::shared_ptr<Stair> Scene::stair(std::string const& name, Vec3d const& bottom, Vec3d const& top,
                                    double width) const {
    return project->CreateStair(name, MeshGeometry::CreateRamp(bottom, top, width));
}

std::shared_ptr<Profile> Scene::walkers(std::string const& name, double speed) const {
    auto profile = project->CreateProfile(name);
    profile->SetSpeedDistribution(Distribution::CreateConstant(speed));
    return profile;
}

std::shared_ptr<Journey> Scene::journey(std::string const& name, GlobalId const& from, GlobalId const& to, double count,
                                        GlobalId const& profile) const {
    return journey(name, CountPopulationSource({from}, {to}, count), profile);
}

std::shared_ptr<Journey> Scene::journey(std::string const& name, CountPopulationSource const& source,
                                        GlobalId const& profile) const {
    auto created = project->CreateJourney(name);
    created->SetPopulationSource(std::make_shared<CountPopulationSource>(source));
    created->SetProfile(profile);
    return created;
}

std::shared_ptr<Simulation> Scene::simulate(int seed, int threads) const try {
    SimulationOptions options;
    options.SetRandomSeed(seed);
    options.SetThreadCount(threads);
    return Simulation::Create(project, "Run", database, options);
} catch (Exception const& exception) {
    throw std::runtime_error(exception.GetMessage());
}

double Scene::run_until_empty(Simulation& simulation, double most) const {
    while (!simulation.IsDone()) {
        simulation.Step();
        double const seconds = simulation.GetClock()->GetCurrentSecond();
        if (seconds > most) {
            ADD_FAILURE() << simulation.GetAllAgents().size() << " agents are still there after " << most << " s";
            break;
        }
    }
    return simulation.GetClock()->GetCurrentSecond();
}

void step_to(Simulation& simulation, double seconds) {
    while (simulation.GetClock()->GetCurrentSecond() < seconds - 1e-6) simulation.Step();
}

void step_for(Simulation& simulation, double seconds) {
    step_to(simulation, simulation.GetClock()->GetCurrentSecond() + seconds);
}

std::shared_ptr<Trigger> after(int seconds) { return std::make_shared<SimulationStartTrigger>(seconds); }

std::uint64_t hash_of(std::string const& path) {
    auto const run = Database::Open(path);
    std::uint64_t hash = 14695981039346656037U;
    auto const add = [&hash](double value) { hash = (hash ^ std::bit_cast<std::uint64_t>(value)) * 1099511628211U; };
    for (int frame = run->GetFirstFrame(); frame <= run->GetLastFrame(); ++frame) {
        for (auto& agent : run->GetFrameData(frame)) {
            Vec3d position = agent.GetPosition();
            add(agent.GetAgentId());
            add(position.GetX());
            add(position.GetY());
            add(position.GetZ());
            add(agent.GetSpeed());
        }
    }
    return hash;
}

}  // namespace pedflux
