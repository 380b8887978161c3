#include "engine/analysis/selection.h"
#include "engine/base/checks.h"
#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/model/codec.h"
#include "engine/project/kinds.h"
#include "engine/results/run_reader.h"

#include <pedflux/database.h>

#include <map>
#include <mutex>
#include <string>

/// The operations of a database that select agents with a filter. A run records the zones and named filters of its
/// project.
namespace pedflux {

namespace {

using engine::RunReader;
using engine::Selection;

/// A cache of compiled filters. Programs ask frame by frame, and some filters scan the whole run when compiled.
struct FilterMemory : RunReader::Memory {
    explicit FilterMemory(RunReader const& reader) {
        for (auto const& text : reader.project().objects) {
            engine::add_from_text(project, text, engine::object_kinds());
        }
    }

    engine::Document project;
    std::map<std::string, Selection> selections;  ///< by the filter as in project files
};

constexpr std::size_t most_remembered = 32;

/// Requires the lock on the reader's memory.
Selection const& selection_of(RunReader& reader, std::shared_ptr<AgentFilter> const& filter) {
    if (!reader.memory) reader.memory = std::make_unique<FilterMemory>(reader);
    auto& memory = static_cast<FilterMemory&>(*reader.memory);
    auto const key = engine::json_of(filter).dump();
    if (auto const known = memory.selections.find(key); known != memory.selections.end()) return known->second;
    Selection selection(filter, memory.project, reader);
    if (memory.selections.size() == most_remembered) memory.selections.clear();
    return memory.selections.emplace(key, std::move(selection)).first->second;
}

}  // namespace

std::vector<int> Database::GetAgentsOnFloor(GlobalId const& floor, int frame,
                                            std::shared_ptr<AgentFilter> const& filter) {
    auto agents = GetAgentsOnFloor(floor, frame);
    if (!filter) return agents;
    RunReader& reader = engine::DatabaseAccess::reader(*this);
    std::scoped_lock const lock(reader.memory_mutex);
    std::vector<bool> selected(reader.agents().size());
    for (auto const& state : selection_of(reader, filter).frame(frame)) selected[state.agent] = true;
    std::erase_if(agents, [&](int agent) { return !selected[static_cast<std::size_t>(agent)]; });
    return agents;
}

int Database::GetFloorPopulation(GlobalId const& floor, int frame, std::shared_ptr<AgentFilter> const& filter) {
    return static_cast<int>(GetAgentsOnFloor(floor, frame, filter).size());
}

}  // namespace pedflux
