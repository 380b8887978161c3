#include "engine/transport/timetable_tables.h"

#include "engine/transport/csv_reader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

/// A table whose columns are found by name.
class Table {
  public:
    explicit Table(TimetableFile const& file)
        : name_(file.name), lines_(read_csv(file.data, file.delimiter.front(), file.name)) {
        if (lines_.empty()) refuse_at(name_, {}, "the first line must name the columns, not be missing");
        std::unordered_set<std::string_view> names;
        for (auto const& column : lines_.front()) {
            if (!names.insert(column.text).second) {
                refuse_at(name_, column.at, "the column '" + column.text + "' must be there once, not twice");
            }
        }
        for (auto const& line : lines_) {
            if (line.size() == lines_.front().size()) continue;
            refuse_at(name_, line.front().at,
                      "the line must have " + std::to_string(lines_.front().size()) +
                          " fields as the first one has, not " + std::to_string(line.size()));
        }
    }

    std::string const& name() const { return name_; }

    /// One entry for each line but the first.
    template <class Read>
    auto entries(Read const& read) const {
        std::vector<decltype(read(lines_.front()))> found;
        found.reserve(lines_.size() - 1);
        for (std::size_t line = 1; line < lines_.size(); ++line) found.push_back(read(lines_[line]));
        return found;
    }

    std::optional<std::size_t> find(std::string_view column) const {
        auto const& header = lines_.front();
        auto const found = std::ranges::find(header, column, &CsvField::text);
        if (found == header.end()) return std::nullopt;
        return static_cast<std::size_t>(found - header.begin());
    }
    std::size_t require(std::string_view column) const {
        auto const found = find(column);
        if (!found) {
            std::string names;
            for (auto const& field : lines_.front()) names += (names.empty() ? "" : ", ") + field.text;
            refuse_at(name_, lines_.front().front().at,
                      "there must be a column '" + std::string(column) + "', not only " + names);
        }
        return *found;
    }

  private:
    std::string const& name_;
    std::vector<CsvLine> lines_;
};

/// Reads the fields of a column. Throws Exception, which names the position, for a field of another type.
class Column {
  public:
    Column(Table const& table, std::string_view name) : file_(table.name()), name_(name), index_(table.require(name)) {}

    std::string text(CsvLine const& line) const {
        auto const& field = line[index_];
        if (field.text.empty()) refuse(field, "be given");
        return field.text;
    }

    /// A text that is unique in its column.
    std::string new_text(CsvLine const& line) {
        auto found = text(line);
        if (!seen_.insert(found).second) refuse(line[index_], "be there once");
        return found;
    }

    int number(CsvLine const& line, int least) const {
        auto const& field = line[index_];
        auto const number = whole(field.text);
        if (!number || *number < least) {
            bool const bounded = least > std::numeric_limits<int>::min();
            refuse(field, fmt::format("be a whole number{}",
                                      bounded ? " of at least " + std::to_string(least) : std::string()));
        }
        return *number;
    }

    /// H:MM or H:MM:SS as seconds after midnight. Hours may exceed 24, for the last departures of a day.
    int time(CsvLine const& line) const {
        auto const& field = line[index_];
        std::vector<int> parts;
        for (std::string_view rest = field.text;;) {
            auto const colon = rest.find(':');
            auto const part = rest.substr(0, colon);
            bool const digits = part.size() == 2 || (parts.empty() && part.size() == 1);
            auto const value = digits ? whole(part) : std::nullopt;
            if (!value || *value < 0 || (!parts.empty() && *value > 59)) refuse_time(field);
            parts.push_back(*value);
            if (colon == std::string_view::npos) break;
            rest.remove_prefix(colon + 1);
        }
        if (parts.size() < 2 || parts.size() > 3) refuse_time(field);
        return parts[0] * 3600 + parts[1] * 60 + (parts.size() == 3 ? parts[2] : 0);
    }

  private:
    static std::optional<int> whole(std::string_view text) {
        int value = 0;
        auto const* const end = text.data() + text.size();
        auto const [stop, error] = std::from_chars(text.data(), end, value);
        if (error != std::errc{} || stop != end) return std::nullopt;
        return value;
    }
    [[noreturn]] void refuse(CsvField const& field, std::string const& wanted) const {
        refuse_at(file_, field.at, name_ + " must " + wanted + ", not '" + field.text + "'");
    }
    [[noreturn]] void refuse_time(CsvField const& field) const {
        refuse(field, "be a time of day such as 8:05 or 08:05:30");
    }

    std::string const& file_;
    std::string name_;
    std::size_t index_;
    std::unordered_set<std::string> seen_;
};

constexpr int any_number = std::numeric_limits<int>::min();

}  // namespace

std::vector<ReferenceEvent> reference_events_in(TimetableFile const& file) {
    Table const table(file);
    Column name(table, "name");
    Column const time(table, "time");
    return table.entries([&](CsvLine const& line) { return ReferenceEvent{name.new_text(line), time.time(line)}; });
}

std::vector<TimetableGroup> groups_in(TimetableFile const& file) {
    Table const table(file);
    Column group(table, "group");
    Column const count(table, "count");
    Column const origin(table, "origin");
    auto const profile = table.find("profile");
    return table.entries([&](CsvLine const& line) {
        bool const named = profile && !line[*profile].text.empty();
        return TimetableGroup{group.new_text(line), count.number(line, 0), origin.text(line),
                              named ? std::optional(line[*profile].text) : std::nullopt};
    });
}

std::vector<TimetableActivity> activities_in(TimetableFile const& file) {
    Table const table(file);
    Column const group(table, "group");
    Column const event(table, "event");
    Column const offset(table, "offset");
    Column const place(table, "place");
    Column const duration(table, "duration");
    return table.entries([&](CsvLine const& line) {
        return TimetableActivity{group.text(line), event.text(line), offset.number(line, any_number), place.text(line),
                                 duration.number(line, 0)};
    });
}

}  // namespace pedflux::engine
