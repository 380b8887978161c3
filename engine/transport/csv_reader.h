#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Reading of tables of separated values (RFC 4180).
namespace pedflux::engine {

/// A place in a text, for messages. Both count from 1; a column is a character.
struct TextPosition {
    std::size_t line = 1;
    std::size_t column = 1;
};

struct CsvField {
    std::string text;
    TextPosition at;
};
using CsvLine = std::vector<CsvField>;

/// Throws Exception: the file 'a.csv', line 3, column 7: ...
[[noreturn]] void refuse_at(std::string_view file, TextPosition at, std::string const& what);

/// The lines of a text, empty ones left out. Throws Exception, which names the file and the place in it, when the text
/// is not UTF-8 or a quotation mark does not stand where one can. A byte order mark at the start is skipped.
std::vector<CsvLine> read_csv(std::string_view text, char delimiter, std::string_view file);

}  // namespace pedflux::engine
