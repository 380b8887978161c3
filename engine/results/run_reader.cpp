#include "engine/results/run_reader.h"

#include "engine/base/checks.h"
#include "engine/base/identifiers.h"
#include "engine/results/shape_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <type_traits>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

std::string const& require_file(std::string const& path) {
    if (!std::filesystem::is_regular_file(path)) refuse(fmt::format("There is no database of results '{}'", path));
    return path;
}

[[noreturn]] void refuse_damaged(std::string const& path, std::string const& what) {
    refuse(fmt::format("The database of results '{}' is damaged: {}", path, what));
}

std::int64_t pragma(sqlite::Connection& connection, std::string const& name) {
    sqlite::Statement statement(connection, "PRAGMA " + name);
    return statement.step() ? statement.integer(0) : 0;
}

std::int64_t require_format(sqlite::Connection& connection) {
    if (pragma(connection, "application_id") != application_id) {
        refuse(fmt::format("The file '{}' is not a database of results", connection.path()));
    }
    auto const version = pragma(connection, "user_version");
    if (version < 1 || version > format_version) {
        refuse(fmt::format(
            "The database of results '{}' has the format {}, which is newer than {}, the newest that can be read",
            connection.path(), version, format_version));
    }
    return version;
}

/// A last page that is cut would read as zeros.
void require_whole(sqlite::Connection& connection) {
    auto const bytes = pragma(connection, "page_count") * pragma(connection, "page_size");
    auto const found = static_cast<std::int64_t>(std::filesystem::file_size(connection.path()));
    if (found < bytes) {
        refuse_damaged(connection.path(), fmt::format("it has {} of {} bytes", found, bytes));
    }
}

GlobalId id_of(std::string const& text) { return text.empty() ? GlobalId() : GlobalId(text); }

int require_int(std::string const& path, std::string const& what, std::int64_t value, std::int64_t least,
                std::int64_t most) {
    if (value < least || value > most) refuse_damaged(path, fmt::format("{} is {}", what, value));
    return static_cast<int>(value);
}

constexpr std::int64_t smallest_int = std::numeric_limits<int>::min();
constexpr std::int64_t largest_int = std::numeric_limits<int>::max();
constexpr auto last_episode_kind = static_cast<std::int64_t>(EpisodeKind::AT_SERVER);

}  // namespace

RunReader::RunReader(std::string const& path) : connection_(require_file(path), sqlite::Connection::Mode::READ) {
    format_ = require_format(connection_);
    require_whole(connection_);
    read_meta();
    read_surfaces();
    read_agents();
    if (tells_doings()) {
        read_episodes();
        read_project();
    }
    select_frame_.emplace(connection_, "SELECT states FROM frames WHERE number = ?");
}

void RunReader::read_meta() {
    sqlite::Statement meta(connection_, "SELECT value FROM meta WHERE name = ?");
    auto const read = [&](std::string const& name, std::int64_t least, std::int64_t most) {
        if (!meta.bind(name).step()) refuse_damaged(path(), fmt::format("it has no {}", name));
        return require_int(path(), name, meta.integer(0), least, most);
    };
    info_.frame_rate = read("frame_rate", 1, largest_int);
    info_.start_time = read("start_time", 0, largest_int);
    last_frame_ = read("last_frame", first_frame - 1, largest_int);
    std::string const project = "project";
    if (meta.bind(project).step()) info_.project = meta.text(0);

    sqlite::Statement count(connection_, "SELECT count(*), min(number), max(number) FROM frames");
    count.step();
    bool const gapless =
        last_frame_ < first_frame || (count.integer(1) == first_frame && count.integer(2) == last_frame_);
    if (count.integer(0) != last_frame_ - first_frame + 1 || !gapless) {
        refuse_damaged(path(),
                       fmt::format("it has {} frames instead of {}", count.integer(0), last_frame_ - first_frame + 1));
    }
}

void RunReader::read_surfaces() {
    sqlite::Statement select(connection_, "SELECT number, id, name, kind, shape FROM surfaces ORDER BY number");
    while (select.step()) {
        if (select.integer(0) != static_cast<std::int64_t>(surfaces_.size())) {
            refuse_damaged(path(), fmt::format("surface {} is missing", surfaces_.size()));
        }
        auto& surface = surfaces_.emplace_back();
        surface.id = id_of(select.text(1));
        surface.name = select.text(2);
        surface.kind = static_cast<SurfaceKind>(require_int(path(), "the kind of a surface", select.integer(3), 0, 1));
        read_shape(select.text(4), surface);
    }
}

void RunReader::read_agents() {
    std::string columns;
#define VALUE(Type, name, format) columns += (format) <= format_ ? ", " #name : ", ''";
    PEDFLUX_AGENT_VALUES(VALUE)
#undef VALUE
    sqlite::Statement select(connection_, "SELECT number" + columns + " FROM agents ORDER BY number");
    while (select.step()) {
        if (select.integer(0) != static_cast<std::int64_t>(agents_.size())) {
            refuse_damaged(path(), fmt::format("agent {} is missing", agents_.size()));
        }
        auto& agent = agents_.emplace_back();
        int column = 0;
        auto const read = [&]<class Value>(Value& value, std::string name) {
            ++column;
            if constexpr (std::is_same_v<Value, GlobalId>) {
                value = id_of(select.text(column));
            } else if constexpr (std::is_same_v<Value, bool>) {
                value = select.integer(column) != 0;
            } else {
                std::ranges::replace(name, '_', ' ');
                value = require_int(path(), "the " + name + " of an agent", select.integer(column), smallest_int,
                                    largest_int);
            }
        };
#define VALUE(Type, name, format) read(agent.name, #name);
        PEDFLUX_AGENT_VALUES(VALUE)
#undef VALUE
        require_int(path(), "the first frame of an agent", agent.first_frame, first_frame,
                    std::int64_t{last_frame_} + 1);
        require_int(path(), "the last frame of an agent", agent.last_frame, std::int64_t{agent.first_frame} - 1,
                    last_frame_);
    }
}

void RunReader::read_episodes() {
    sqlite::Statement select(connection_,
                             "SELECT agent, kind, object, first_frame, last_frame FROM episodes "
                             "ORDER BY agent, first_frame, rowid");
    auto const last_agent = static_cast<std::int64_t>(agents_.size()) - 1;
    while (select.step()) {
        auto& episode = episodes_.emplace_back();
        episode.agent = static_cast<std::uint32_t>(
            require_int(path(), "the agent of an episode", select.integer(0), 0, last_agent));
        episode.kind = static_cast<EpisodeKind>(
            require_int(path(), "the kind of an episode", select.integer(1), 0, last_episode_kind));
        episode.object = id_of(select.text(2));
        episode.first_frame =
            require_int(path(), "the first frame of an episode", select.integer(3), first_frame, last_frame_);
        episode.last_frame =
            require_int(path(), "the last frame of an episode", select.integer(4), episode.first_frame, last_frame_);
    }
}

void RunReader::read_project() {
    auto const surface = [&](std::int64_t number) {
        auto const last = static_cast<std::int64_t>(surfaces_.size()) - 1;
        return static_cast<std::uint16_t>(require_int(path(), "the number of a joined surface", number, 0, last));
    };
    sqlite::Statement joins(connection_, "SELECT connection, floor FROM joins ORDER BY rowid");
    while (joins.step()) project_.joins.push_back({surface(joins.integer(0)), surface(joins.integer(1))});
    sqlite::Statement objects(connection_, "SELECT text FROM objects ORDER BY rowid");
    while (objects.step()) project_.objects.push_back(objects.text(0));
}

std::optional<std::uint16_t> RunReader::surface_of(GlobalId const& object) const {
    auto const found =
        std::ranges::find_if(surfaces_, [&](Surface const& surface) { return surface.id.InternalEquals(object); });
    if (found == surfaces_.end()) return std::nullopt;
    return static_cast<std::uint16_t>(found - surfaces_.begin());
}

std::vector<AgentFrame> RunReader::frame(int number) {
    if (number < first_frame || number > last_frame_) {
        refuse(fmt::format("The run '{}' has the frames {} to {}, not {}", path(), first_frame, last_frame_, number));
    }
    std::scoped_lock const lock(mutex_);
    if (!select_frame_->bind(number).step()) refuse_damaged(path(), fmt::format("frame {} is missing", number));
    auto const bytes = select_frame_->bytes(0);
    auto const size = bytes_of_agent_frame(format_);
    std::vector<AgentFrame> states(bytes.size() / size);
    if (bytes.size() % size != 0) {
        refuse_damaged(path(), fmt::format("frame {} has {} bytes", number, bytes.size()));
    }
    for (std::size_t i = 0; i < states.size(); ++i) std::memcpy(&states[i], &bytes[i * size], size);
    select_frame_->reset();
    auto const is_known = [&](AgentFrame const& state) {
        return state.agent < agents_.size() && state.surface < surfaces_.size() && std::isfinite(state.x) &&
               std::isfinite(state.y) && std::isfinite(state.z);
    };
    auto const is_before = [](AgentFrame const& a, AgentFrame const& b) { return a.agent >= b.agent; };
    if (!std::ranges::all_of(states, is_known) || std::ranges::adjacent_find(states, is_before) != states.end()) {
        refuse_damaged(path(), fmt::format("frame {} shows agents or places that the run does not have", number));
    }
    return states;
}

void require_recorded(RunReader const& reader, std::int64_t format, std::string const& what) {
    if (reader.format() >= format) return;
    refuse(fmt::format("The run '{}' was recorded by an older release, which did not store {}; simulate it again",
                       reader.path(), what));
}

double RunReader::frame_at(double seconds) const {
    // Half a microsecond keeps a time that is a frame's own, but for rounding, from falling before it.
    return std::floor((seconds + 5e-7) * info_.frame_rate);
}

}  // namespace pedflux::engine
