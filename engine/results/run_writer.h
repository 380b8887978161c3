#pragma once

#include "engine/results/recorded_run.h"
#include "engine/results/sqlite.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pedflux::engine {

/// Writes a run while it is simulated. The file has a name of its own beside `path` and is renamed when the run is
/// finished, so a program that ends early leaves an existing file as it was.
class RunWriter {
  public:
    /// Throws Exception when the path cannot be written, or names a file that is no database of results.
    RunWriter(std::string const& path, RunInfo const& info, std::vector<Surface> const& surfaces,
              RecordedProject const& project = {});
    RunWriter(RunWriter const&) = delete;
    RunWriter& operator=(RunWriter const&) = delete;
    /// Deletes the file of a run that was not finished.
    ~RunWriter();

    /// The next frame, its agents in ascending order.
    void write_frame(std::span<AgentFrame const> states);
    /// Completes the file. The agents are in the order of their numbers.
    void finish(std::vector<AgentRecord> const& agents, std::vector<Episode> const& episodes = {});

  private:
    std::string path_;
    std::string unfinished_path_;
    std::optional<sqlite::Connection> connection_;
    std::optional<sqlite::Statement> insert_frame_;
    int frames_written_ = 0;
};

}  // namespace pedflux::engine
