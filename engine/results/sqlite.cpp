#include "engine/results/sqlite.h"

#include "engine/base/checks.h"

#include <fmt/format.h>
#include <sqlite3.h>

namespace pedflux::engine::sqlite {

void CloseConnection::operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
void FinalizeStatement::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Connection::Connection(std::string const& path, Mode mode) : path_(path) {
    int const flags = mode == Mode::READ ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3* opened = nullptr;
    int const outcome = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    connection_.reset(opened);
    if (outcome != SQLITE_OK) fail(outcome);
}

void Connection::execute(std::string const& statements) {
    int const outcome = sqlite3_exec(connection_.get(), statements.c_str(), nullptr, nullptr, nullptr);
    if (outcome != SQLITE_OK) fail(outcome);
}

void Connection::fail(int outcome) const {
    int const kind = outcome & 0xff;
    if (kind == SQLITE_NOTADB) refuse(fmt::format("The file '{}' is not a database of results", path_));
    if (kind == SQLITE_CORRUPT) refuse(fmt::format("The database of results '{}' is damaged", path_));
    char const* const reason = connection_ ? sqlite3_errmsg(connection_.get()) : sqlite3_errstr(outcome);
    refuse(fmt::format("The database of results '{}' cannot be used: {}", path_, reason));
}

Statement::Statement(Connection& connection, std::string_view text) : connection_(&connection) {
    sqlite3_stmt* prepared = nullptr;
    int const outcome = sqlite3_prepare_v2(connection.connection_.get(), text.data(), static_cast<int>(text.size()),
                                           &prepared, nullptr);
    statement_.reset(prepared);
    require(outcome);
}

void Statement::require(int outcome) const {
    if (outcome != SQLITE_OK) connection_->fail(outcome);
}

void Statement::reset() { sqlite3_reset(statement_.get()); }

void Statement::bind_one(int position, std::int64_t value) {
    require(sqlite3_bind_int64(statement_.get(), position, value));
}

void Statement::bind_one(int position, double value) {
    require(sqlite3_bind_double(statement_.get(), position, value));
}

void Statement::bind_one(int position, std::string const& value) {
    require(sqlite3_bind_text64(statement_.get(), position, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::bind_one(int position, Bytes value) {
    // An empty span has no address, and SQLite would take that for null.
    void const* const data = value.empty() ? "" : static_cast<void const*>(value.data());
    require(sqlite3_bind_blob64(statement_.get(), position, data, value.size(), SQLITE_STATIC));
}

bool Statement::step() {
    int const outcome = sqlite3_step(statement_.get());
    if (outcome != SQLITE_ROW && outcome != SQLITE_DONE) connection_->fail(outcome);
    return outcome == SQLITE_ROW;
}

void Statement::run() {
    step();
    reset();
}

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
double Statement::real(int column) const { return sqlite3_column_double(statement_.get(), column); }

std::string Statement::text(int column) const {
    auto const* const data = reinterpret_cast<char const*>(sqlite3_column_text(statement_.get(), column));
    auto const size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
    return data ? std::string(data, size) : std::string();
}

Bytes Statement::bytes(int column) const {
    auto const* const data = static_cast<std::byte const*>(sqlite3_column_blob(statement_.get(), column));
    return {data, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

}  // namespace pedflux::engine::sqlite
