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

/// A stored run. Everything but the frames is read when the file is opened. Thread-safe.
class RunReader {
  public:
    /// What analysis caches with a run.
    struct Memory {
        Memory() = default;
        Memory(Memory const&) = delete;
        Memory& operator=(Memory const&) = delete;
        virtual ~Memory() = default;
    };

    /// Throws Exception when the file is missing, foreign, newer than this version or damaged.
    explicit RunReader(std::string const& path);

    std::string const& path() const { return connection_.path(); }
    RunInfo const& info() const { return info_; }
    int last_frame() const { return last_frame_; }
    std::vector<Surface> const& surfaces() const { return surfaces_; }
    std::vector<AgentRecord> const& agents() const { return agents_; }
    /// In the order of agents, each agent's in the order of time.
    std::vector<Episode> const& episodes() const { return episodes_; }
    RecordedProject const& project() const { return project_; }
    std::int64_t format() const { return format_; }
    /// Whether the run was recorded with activities, tokens, servers and the events that agents come from.
    bool tells_doings() const { return format_ >= format_with_doings; }
    /// The number of the object's surface; none if the run has no such object.
    std::optional<std::uint16_t> surface_of(GlobalId const& object) const;

    /// The persons of a frame. Throws Exception for a frame that the run does not have.
    std::vector<AgentFrame> frame(int number);
    double seconds_at(int frame) const { return static_cast<double>(frame) / info_.frame_rate; }
    /// The last frame up to a time in seconds, not checked against the frames that there are.
    double frame_at(double seconds) const;

    std::unique_ptr<Memory> memory;
    std::mutex memory_mutex;  ///< guards `memory`

  private:
    void read_meta();
    void read_surfaces();
    void read_agents();
    void read_episodes();
    void read_project();

    sqlite::Connection connection_;
    std::int64_t format_ = format_version;
    RunInfo info_;
    int last_frame_ = 0;
    std::vector<Surface> surfaces_;
    std::vector<AgentRecord> agents_;
    std::vector<Episode> episodes_;
    RecordedProject project_;
    std::optional<sqlite::Statement> select_frame_;
    std::mutex mutex_;
};

/// Throws Exception if the file has an older format than the one that added `what`.
void require_recorded(RunReader const& reader, std::int64_t format, std::string const& what);
inline void require_doings(RunReader const& reader, std::string const& what) {
    require_recorded(reader, format_with_doings, what);
}

struct DatabaseAccess {
    /// The open reader. Throws Exception when the database is closed.
    static RunReader& reader(Database& database) { return *shared_reader(database); }
    static std::shared_ptr<RunReader> const& shared_reader(Database& database);
};

}  // namespace pedflux::engine
