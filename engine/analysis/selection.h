#pragma once

#include "engine/results/run_reader.h"

#include <pedflux/agent_filters.h>

#include <memory>
#include <vector>

namespace pedflux::engine {

class Document;
struct RunFilter;

/// Whom an agent filter selects in each frame of a stored run.
class Selection {
  public:
    /// An empty filter selects everybody. Throws Exception for a filter that asks for what a stored run does not tell.
    Selection(std::shared_ptr<AgentFilter> const& filter, Document const& document, RunReader& reader);

    /// The persons of a frame, and for each of them whether it is selected.
    std::vector<bool> among(int frame, std::vector<AgentFrame> const& persons) const;
    /// The selected persons of a frame of the run.
    std::vector<AgentFrame> frame(int number) const;

  private:
    RunReader& reader_;
    std::shared_ptr<RunFilter const> filter_;  ///< empty: everybody
};

/// For each person of the run, whether a filter selects it in any frame of a range; who is in no frame of the range
/// is not selected.
std::vector<bool> ever_selected(Selection const& selection, RunReader const& reader, int first, int last);

}  // namespace pedflux::engine
