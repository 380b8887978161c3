#include "engine/base/checks.h"
#include "engine/results/agent_data.h"
#include "engine/results/run_reader.h"

#include <pedflux/database.h>

#include <algorithm>
#include <numeric>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::AgentFrame;
using engine::AgentRecord;
using engine::DatabaseAccess;
using engine::RunReader;

AgentRecord const& require_agent(RunReader const& reader, int agent) {
    if (agent < 0 || static_cast<std::size_t>(agent) >= reader.agents().size()) {
        engine::refuse(fmt::format("The run '{}' has the agents 0 to {}, not {}", reader.path(),
                                   static_cast<int>(reader.agents().size()) - 1, agent));
    }
    return reader.agents()[static_cast<std::size_t>(agent)];
}

std::uint16_t require_surface(RunReader const& reader, GlobalId const& floor) {
    auto const surface = reader.surface_of(floor);
    if (!surface) {
        engine::refuse(fmt::format("The run '{}' has no walkable object with the identifier '{}'", reader.path(),
                                   GlobalId(floor).GetString()));
    }
    return *surface;
}

std::vector<AgentData> data_of(RunReader& reader, int frame) {
    std::vector<AgentData> data;
    for (auto const& state : reader.frame(frame)) {
        data.push_back(agent_data(state, reader.surfaces()[state.surface].kind));
    }
    return data;
}

/// The state of an agent in a frame; the end if the frame does not show the agent.
std::vector<AgentFrame>::const_iterator find_agent(std::vector<AgentFrame> const& states, int agent) {
    auto const number = static_cast<std::uint32_t>(agent);
    auto const found = std::ranges::lower_bound(states, number, {}, &AgentFrame::agent);
    return found != states.end() && found->agent == number ? found : states.end();
}

}  // namespace

Database::Database(std::shared_ptr<RunReader> reader) : reader_(std::move(reader)) {}

std::shared_ptr<Database> Database::Open(std::string const& path) {
    return std::make_shared<Database>(std::make_shared<RunReader>(path));
}

void Database::Close() { reader_.reset(); }

int Database::GetFirstFrame() {
    DatabaseAccess::reader(*this);
    return engine::first_frame;
}
int Database::GetLastFrame() { return DatabaseAccess::reader(*this).last_frame(); }
int Database::GetFrameRate() { return DatabaseAccess::reader(*this).info().frame_rate; }
double Database::GetFrameLength() { return DatabaseAccess::reader(*this).seconds_at(1); }

int Database::GetAgentCount() { return static_cast<int>(DatabaseAccess::reader(*this).agents().size()); }
bool Database::HasAgent(int agent) { return agent >= 0 && agent < GetAgentCount(); }
int Database::GetAgentFirstFrame(int agent) { return require_agent(DatabaseAccess::reader(*this), agent).first_frame; }
int Database::GetAgentLastFrame(int agent) { return require_agent(DatabaseAccess::reader(*this), agent).last_frame; }
std::vector<int> Database::GetAllAgents() {
    std::vector<int> agents(static_cast<std::size_t>(GetAgentCount()));
    std::iota(agents.begin(), agents.end(), 0);
    return agents;
}

GlobalId Database::GetAgentCurrentFloor(int agent, int frame) {
    RunReader& reader = DatabaseAccess::reader(*this);
    require_agent(reader, agent);
    auto const states = reader.frame(frame);
    auto const state = find_agent(states, agent);
    if (state == states.end()) {
        engine::refuse(fmt::format("Frame {} does not show agent {}, which is there in the frames {} to {}", frame,
                                   agent, GetAgentFirstFrame(agent), GetAgentLastFrame(agent)));
    }
    return reader.surfaces()[state->surface].id;
}

std::vector<GlobalId> Database::GetAgentTokens(int agent, int frame) {
    GetAgentCurrentFloor(agent, frame);
    RunReader const& reader = DatabaseAccess::reader(*this);
    engine::require_doings(reader, "the tokens of its agents");
    std::vector<GlobalId> tokens;
    for (auto const& episode : reader.episodes()) {
        bool const holds = episode.agent == static_cast<std::uint32_t>(agent) &&
                           episode.kind == engine::EpisodeKind::HELD_TOKEN && episode.first_frame <= frame &&
                           frame <= episode.last_frame;
        if (holds) tokens.push_back(episode.object);
    }
    return tokens;
}

std::vector<int> Database::GetAgentsOnFloor(GlobalId const& floor, int frame) {
    RunReader& reader = DatabaseAccess::reader(*this);
    auto const surface = require_surface(reader, floor);
    std::vector<int> agents;
    for (auto const& state : reader.frame(frame)) {
        if (state.surface == surface) agents.push_back(static_cast<int>(state.agent));
    }
    return agents;
}

int Database::GetFloorPopulation(GlobalId const& floor, int frame) {
    return static_cast<int>(GetAgentsOnFloor(floor, frame).size());
}

std::vector<AgentData> Database::GetFrameData(int frame) { return data_of(DatabaseAccess::reader(*this), frame); }

std::vector<AgentData> Database::GetFrameData(double time) {
    RunReader& reader = DatabaseAccess::reader(*this);
    double const frame = reader.frame_at(engine::require_not_negative("A time in seconds", time));
    if (frame < engine::first_frame) return {};
    if (frame > reader.last_frame()) {
        engine::refuse(fmt::format("The run '{}' ends after {} s, before {} s", reader.path(),
                                   engine::text_of(reader.seconds_at(reader.last_frame())), engine::text_of(time)));
    }
    return data_of(reader, static_cast<int>(frame));
}

}  // namespace pedflux

namespace pedflux::engine {

std::shared_ptr<RunReader> const& DatabaseAccess::shared_reader(Database& database) {
    if (!database.reader_) refuse("The database of results is closed");
    return database.reader_;
}

}  // namespace pedflux::engine
