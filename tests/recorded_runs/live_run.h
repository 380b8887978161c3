#pragma once

#include <pedflux/agents.h>
#include <pedflux/project.h>
#include <pedflux/simulation.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace pedflux::recorded {

struct Scenario;

/// A scenario while it is simulated, and the text of what the simulation says meanwhile.
class LiveRun {
  public:
    LiveRun(std::shared_ptr<Project> project, std::shared_ptr<Simulation> simulation, std::ostream& text);

    /// Whether the frame that comes next begins at a second of the simulation.
    bool at(int second) const;
    GlobalId id(std::string const& name) const;
    /// Those who are there; empty pointers for numbers that nobody has.
    std::shared_ptr<Agent> agent(int number) const { return simulation->GetAgent(number); }
    void note(std::string const& what, double value);
    void note(std::string const& what, Vec3d value);
    void note(std::string const& what, std::string const& value);
    /// Notes the message of the exception that an action throws, or that it threw none.
    void note_refusal(std::function<void()> const& action);

    void step();
    /// What is so after the last frame.
    void end();

    std::shared_ptr<Project> const project;
    std::shared_ptr<Simulation> const simulation;

  private:
    std::string name_of(GlobalId const& id) const;
    void list(std::string const& what, std::vector<std::shared_ptr<Agent>> const& agents);
    void show(FrameSummary& summary);
    void show_agents();
    void show_state();
    void show_issues();
    void show_if_new(std::string const& what, std::string const& value);

    std::ostream& text_;
    std::vector<std::shared_ptr<SimObject>> objects_;
    std::map<std::string, std::string> names_;  ///< of objects, by their identifiers
    std::map<std::string, std::string> shown_;
    std::size_t issues_ = 0;
};

/// Simulates a scenario into DIRECTORY/name.pfdb and DIRECTORY/name.txt.
void record(Scenario const& scenario, std::filesystem::path const& directory, int threads);

}  // namespace pedflux::recorded
