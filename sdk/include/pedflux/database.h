#pragma once

#include <pedflux/agent_data.h>
#include <pedflux/api.h>
#include <pedflux/identifiers.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

class AgentFilter;

namespace engine {
struct DatabaseAccess;
class RunReader;
}  // namespace engine

/// The results of one simulation, read from the file that it wrote.
///
/// Frames count from 1, the state after the first step, without gaps; frame n is the state n frame lengths after the
/// start. Agents have numbers from 0, given in the order in which they were created. A number of an agent or frame that
/// the run does not have throws Exception, and so does everything but Close once the database is closed.
class PEDFLUX_API Database {
  public:
    /// Used by the library.
    explicit Database(std::shared_ptr<engine::RunReader> reader);

    /// Opens a file to read. Throws Exception when there is none, when it is no database of results, when it is of a
    /// newer format than this library knows, or when it is damaged.
    static std::shared_ptr<Database> Open(std::string const& path);
    /// Closes the file; closing again does nothing.
    void Close();

    int GetFirstFrame();
    /// One less than the first frame when the run has no frames.
    int GetLastFrame();
    /// Frames per second of the simulation.
    int GetFrameRate();
    /// Seconds.
    double GetFrameLength();

    /// How many agents took part in the run.
    int GetAgentCount();
    bool HasAgent(int agent);
    /// The first frame that shows the agent.
    int GetAgentFirstFrame(int agent);
    /// The last frame that shows the agent. Before the first one for an agent that left in the step in which it
    /// entered.
    int GetAgentLastFrame(int agent);
    /// All agents in the order of their numbers.
    std::vector<int> GetAllAgents();

    /// The walkable object on which the agent is in a frame: a floor, or a stair, ramp or link. Throws Exception for a
    /// frame that does not show the agent.
    GlobalId GetAgentCurrentFloor(int agent, int frame);
    /// The tokens that the agent has in a frame, in the order in which it got them. Throws Exception for a frame that
    /// does not show the agent, and for runs of older releases, which did not record tokens.
    std::vector<GlobalId> GetAgentTokens(int agent, int frame);
    /// The agents on a walkable object in a frame, in the order of their numbers.
    std::vector<int> GetAgentsOnFloor(GlobalId const& floor, int frame);
    /// Those of them that a filter selects. Zones and named filters are those of the project as it was simulated.
    /// Throws Exception for a filter that asks for what the run does not tell.
    std::vector<int> GetAgentsOnFloor(GlobalId const& floor, int frame, std::shared_ptr<AgentFilter> const& filter);
    int GetFloorPopulation(GlobalId const& floor, int frame);
    int GetFloorPopulation(GlobalId const& floor, int frame, std::shared_ptr<AgentFilter> const& filter);

    /// The agents of a frame, in the order of their numbers.
    std::vector<AgentData> GetFrameData(int frame);
    /// The agents at a time in seconds since the start: those of the last frame up to then, none before the first.
    std::vector<AgentData> GetFrameData(double time);

  private:
    friend struct engine::DatabaseAccess;

    std::shared_ptr<engine::RunReader> reader_;
};

}  // namespace pedflux
