#pragma once

#include "engine/results/recorded_run.h"
#include "engine/results/sqlite.h"

#include <pedflux/database.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pedflux::engine {

/// A stored run. All but its frames is read when it is opened. May be used from several threads at once.
class RunReader {
  public:
    /// Throws Exception when the file is missing, foreign, newer than this version or damaged.
    explicit RunReader(std::string const& path);

    std::string const& path() const { return connection_.path(); }
    RunInfo const& info() const { return info_; }
    int last_frame() const { return last_frame_; }
    std::vector<Surface> const& surfaces() const { return surfaces_; }
    std::vector<AgentRecord> const& agents() const { return agents_; }
    /// The number of the object's surface; none if the run has no such object.
    std::optional<std::uint16_t> surface_of(GlobalId const& object) const;

    /// The persons of a frame. Throws Exception for a frame that the run does not have.
    std::vector<AgentFrame> frame(int number);
    double seconds_at(int frame) const { return static_cast<double>(frame) / info_.frame_rate; }
    /// The last frame up to a time in seconds, not checked against the frames that there are.
    double frame_at(double seconds) const;

  private:
    void read_meta();
    void read_surfaces();
    void read_agents();

    sqlite::Connection connection_;
    RunInfo info_;
    int last_frame_ = 0;
    std::vector<Surface> surfaces_;
    std::vector<AgentRecord> agents_;
    std::optional<sqlite::Statement> select_frame_;
    std::mutex mutex_;
};

struct DatabaseAccess {
    /// The open reader. Throws Exception when the database is closed.
    static RunReader& reader(Database& database) { return *shared_reader(database); }
    static std::shared_ptr<RunReader> const& shared_reader(Database& database);
};

}  // namespace pedflux::engine
