#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

struct sqlite3;
struct sqlite3_stmt;

/// A thin layer over SQLite. Failures throw pedflux::Exception that names the file.
namespace pedflux::engine::sqlite {

using Bytes = std::span<std::byte const>;

struct CloseConnection {
    void operator()(sqlite3* connection) const;
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};

class Connection;

/// A prepared statement. It must not outlive its connection.
class Statement {
  public:
    Statement(Connection& connection, std::string_view text);

    /// Gives the parameters their values, from the first one on. Bytes and texts must stay until the next reset.
    template <class... Values>
    Statement& bind(Values const&... values) {
        reset();
        int position = 0;
        (bind_one(++position, values), ...);
        return *this;
    }
    /// Whether there is a next row.
    bool step();
    /// Runs a statement without rows.
    void run();

    std::int64_t integer(int column) const;
    double real(int column) const;
    std::string text(int column) const;
    /// Valid until the next step or reset.
    Bytes bytes(int column) const;
    void reset();

  private:
    void bind_one(int position, std::int64_t value);
    void bind_one(int position, int value) { bind_one(position, std::int64_t{value}); }
    void bind_one(int position, double value);
    void bind_one(int position, std::string const& value);
    void bind_one(int position, Bytes value);
    void require(int outcome) const;

    Connection* connection_;
    std::unique_ptr<sqlite3_stmt, FinalizeStatement> statement_;
};

class Connection {
  public:
    enum class Mode { READ, CREATE };

    Connection(std::string const& path, Mode mode);

    /// Runs statements that return no rows.
    void execute(std::string const& statements);
    std::string const& path() const { return path_; }
    [[noreturn]] void fail(int outcome) const;

  private:
    friend class Statement;

    std::string path_;
    std::unique_ptr<sqlite3, CloseConnection> connection_;
};

}  // namespace pedflux::engine::sqlite
