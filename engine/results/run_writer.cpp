#include "engine/results/run_writer.h"

#include "engine/base/checks.h"
#include "engine/base/identifiers.h"
#include "engine/results/shape_text.h"

#include <bit>
#include <filesystem>
#include <system_error>

#include <fmt/format.h>

namespace pedflux::engine {

static_assert(std::endian::native == std::endian::little, "frames are stored as they stand in memory");

namespace {

/// Enough that the cost of a transaction vanishes, few enough that memory stays small.
constexpr int frames_per_transaction = 50;

/// Without journal and synchronisation, since an unfinished file is deleted anyway. Large pages suit large frames.
constexpr auto settings = R"(
    PRAGMA page_size = 32768;
    PRAGMA journal_mode = OFF;
    PRAGMA synchronous = OFF;
    PRAGMA locking_mode = EXCLUSIVE;
)";
constexpr auto tables_before_agents = R"(
    CREATE TABLE meta (name TEXT PRIMARY KEY, value) WITHOUT ROWID;
    CREATE TABLE surfaces (number INTEGER PRIMARY KEY, id TEXT NOT NULL, name TEXT NOT NULL, kind INTEGER NOT NULL,
                           shape TEXT NOT NULL);
)";
constexpr auto tables_after_agents = R"(
    CREATE TABLE frames (number INTEGER PRIMARY KEY, states BLOB NOT NULL);
    CREATE TABLE episodes (agent INTEGER NOT NULL, kind INTEGER NOT NULL, object TEXT NOT NULL,
                           first_frame INTEGER NOT NULL, last_frame INTEGER NOT NULL);
    CREATE TABLE joins (connection INTEGER NOT NULL, floor INTEGER NOT NULL);
    CREATE TABLE objects (text TEXT NOT NULL);
)";

template <class Value>
constexpr auto column_type = "INTEGER NOT NULL";
template <>
inline constexpr auto column_type<GlobalId> = "TEXT NOT NULL";

/// The statement that creates the table of agents. SQLite keeps its text in the file, line breaks included; they have
/// always been at 120 characters.
std::string table_of_agents() {
    constexpr std::size_t longest_line = 120;
    std::string const start = "    CREATE TABLE agents (";
    std::string const indent(start.size(), ' ');
    std::string text;
    std::string line = start + "number INTEGER PRIMARY KEY";
    auto const add = [&](std::string_view name, std::string_view type) {
        auto const column = fmt::format("{} {}", name, type);
        line += ',';
        if (line.size() + 1 + column.size() + 1 > longest_line) {
            text += line + '\n';
            line = indent + column;
        } else {
            line += ' ' + column;
        }
    };
#define VALUE(Type, name, format) add(#name, column_type<Type>);
    PEDFLUX_AGENT_VALUES(VALUE)
#undef VALUE
    return text + line + ");";
}

/// Only a file of results, damaged or not, may be overwritten.
void require_results_file(std::string const& path) {
    sqlite::Connection connection(path, sqlite::Connection::Mode::READ);
    sqlite::Statement statement(connection, "PRAGMA application_id");
    if (!statement.step() || statement.integer(0) != application_id) {
        refuse(fmt::format("The file '{}' is not a database of results and is not overwritten", path));
    }
}

void write_meta(sqlite::Connection& connection, RunInfo const& info) {
    sqlite::Statement text(connection, "INSERT INTO meta VALUES (?, ?)");
    text.bind(std::string("project"), info.project).run();
    text.bind(std::string("frame_rate"), info.frame_rate).run();
    text.bind(std::string("start_time"), info.start_time).run();
}

void write_surfaces(sqlite::Connection& connection, std::vector<Surface> const& surfaces) {
    sqlite::Statement insert(connection, "INSERT INTO surfaces VALUES (?, ?, ?, ?, ?)");
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        Surface const& surface = surfaces[i];
        auto const id = text_of(surface.id);
        auto const shape = shape_text(surface);
        insert.bind(static_cast<std::int64_t>(i), id, surface.name, static_cast<int>(surface.kind), shape).run();
    }
}

void write_project(sqlite::Connection& connection, RecordedProject const& project) {
    sqlite::Statement join(connection, "INSERT INTO joins VALUES (?, ?)");
    for (auto const& [link, floor] : project.joins) join.bind(int{link}, int{floor}).run();
    sqlite::Statement insert(connection, "INSERT INTO objects VALUES (?)");
    for (auto const& object : project.objects) insert.bind(object).run();
}

int stored(int value) { return value; }
std::string stored(GlobalId const& id) { return text_of(id); }

void write_agents(sqlite::Connection& connection, std::vector<AgentRecord> const& agents) {
#define VALUE(Type, name, format) ", ?"
    sqlite::Statement insert(connection, "INSERT INTO agents VALUES (?" PEDFLUX_AGENT_VALUES(VALUE) ")");
#undef VALUE
    for (std::size_t i = 0; i < agents.size(); ++i) {
#define VALUE(Type, name, format) , stored(agents[i].name)
        insert.bind(static_cast<std::int64_t>(i) PEDFLUX_AGENT_VALUES(VALUE)).run();
#undef VALUE
    }
}

void write_episodes(sqlite::Connection& connection, std::vector<Episode> const& episodes) {
    sqlite::Statement insert(connection, "INSERT INTO episodes VALUES (?, ?, ?, ?, ?)");
    for (auto const& episode : episodes) {
        auto const object = text_of(episode.object);
        insert
            .bind(std::int64_t{episode.agent}, static_cast<int>(episode.kind), object, episode.first_frame,
                  episode.last_frame)
            .run();
    }
}

}  // namespace

RunWriter::RunWriter(std::string const& path, RunInfo const& info, std::vector<Surface> const& surfaces,
                     RecordedProject const& project)
    : path_(path), unfinished_path_(path + ".unfinished") {
    if (path.empty()) refuse("The database of results needs the name of a file");
    if (std::filesystem::exists(path)) require_results_file(path);
    std::error_code ignored;
    std::filesystem::remove(unfinished_path_, ignored);
    connection_.emplace(unfinished_path_, sqlite::Connection::Mode::CREATE);
    connection_->execute(settings);
    connection_->execute(tables_before_agents + table_of_agents() + tables_after_agents + "BEGIN;");
    write_meta(*connection_, info);
    write_surfaces(*connection_, surfaces);
    write_project(*connection_, project);
    insert_frame_.emplace(*connection_, "INSERT INTO frames VALUES (?, ?)");
}

RunWriter::~RunWriter() {
    if (!connection_) return;
    insert_frame_.reset();
    connection_.reset();
    std::error_code ignored;
    std::filesystem::remove(unfinished_path_, ignored);
}

void RunWriter::write_frame(std::span<AgentFrame const> states) {
    insert_frame_->bind(first_frame + frames_written_, std::as_bytes(states)).run();
    ++frames_written_;
    if (frames_written_ % frames_per_transaction == 0) connection_->execute("COMMIT; BEGIN");
}

void RunWriter::finish(std::vector<AgentRecord> const& agents, std::vector<Episode> const& episodes) {
    write_agents(*connection_, agents);
    write_episodes(*connection_, episodes);
    sqlite::Statement(*connection_, "INSERT INTO meta VALUES ('last_frame', ?)")
        .bind(first_frame + frames_written_ - 1)
        .run();
    connection_->execute("PRAGMA application_id = " + std::to_string(application_id) +
                         "; PRAGMA user_version = " + std::to_string(format_version) + "; COMMIT");
    insert_frame_.reset();
    connection_.reset();
    std::error_code error;
    std::filesystem::rename(unfinished_path_, path_, error);
    if (error) refuse(fmt::format("The database of results '{}' cannot be written: {}", path_, error.message()));
}

}  // namespace pedflux::engine
