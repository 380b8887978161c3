#include "engine/transport/csv_reader.h"

#include "engine/base/checks.h"
#include "engine/model/names.h"

#include <algorithm>
#include <new>
#include <utility>

#include <csv.h>
#include <fmt/format.h>

namespace pedflux::engine {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool continues_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// The parser of libcsv. It is fed byte by byte, so that the position of every field and error is known.
class Parser {
  public:
    Parser(char delimiter, std::string_view file) : file_(file), delimiter_(delimiter) {
        if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
        csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
    }
    Parser(Parser const&) = delete;
    Parser& operator=(Parser const&) = delete;
    ~Parser() { csv_free(&parser_); }

    std::vector<CsvLine> parse(std::string_view text) {
        for (char const byte : text) {
            bool const blank = byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
            if (between_fields_ && (!blank || byte == delimiter_)) {
                field_start_ = here_;
                between_fields_ = false;
            }
            if (csv_parse(&parser_, &byte, 1, end_field, end_line, this) != 1) refuse(here_);
            advance(byte);
        }
        if (csv_fini(&parser_, end_field, end_line, this) != 0) refuse(field_start_);
        return std::move(lines_);
    }

  private:
    [[noreturn]] void refuse(TextPosition at) {
        if (csv_error(&parser_) != CSV_EPARSE) throw std::bad_alloc();
        refuse_at(file_, at,
                  "a quotation mark must stand at the start and at the end of a field, and twice for one within it");
    }

    void advance(char byte) {
        if (byte == '\n') {
            ++here_.line;
            here_.column = 1;
        } else if (!continues_character(byte)) {
            ++here_.column;
        }
    }

    static void end_field(void* text, std::size_t length, void* parser) {
        auto& self = *static_cast<Parser*>(parser);
        auto const at = self.between_fields_ ? self.here_ : self.field_start_;
        self.line_.push_back({std::string(static_cast<char const*>(text), length), at});
        self.between_fields_ = true;
    }
    static void end_line(int, void* parser) {
        auto& self = *static_cast<Parser*>(parser);
        self.lines_.push_back(std::exchange(self.line_, {}));
        self.between_fields_ = true;
    }

    csv_parser parser_;
    std::string_view file_;
    char delimiter_;
    TextPosition here_;
    TextPosition field_start_;
    bool between_fields_ = true;
    CsvLine line_;
    std::vector<CsvLine> lines_;
};

/// The first character that is not UTF-8.
TextPosition first_fault(std::string_view text) {
    TextPosition at;
    for (std::size_t start = 0; start < text.size(); ++at.line) {
        auto const end = std::min(text.find('\n', start), text.size() - 1) + 1;
        auto const line = text.substr(start, end - start);
        if (!is_utf8(line)) {
            for (std::size_t byte = 0; byte < line.size(); ++at.column) {
                std::size_t next = byte + 1;
                while (next < line.size() && continues_character(line[next])) ++next;
                if (!is_utf8(line.substr(byte, next - byte))) break;
                byte = next;
            }
            return at;
        }
        start = end;
    }
    return at;
}

}  // namespace

void refuse_at(std::string_view file, TextPosition at, std::string const& what) {
    refuse(fmt::format("the file '{}', line {}, column {}: {}", file, at.line, at.column, what));
}

std::vector<CsvLine> read_csv(std::string_view text, char delimiter, std::string_view file) {
    if (!is_utf8(text)) refuse_at(file, first_fault(text), "the bytes must be text in UTF-8");
    if (text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
    return Parser(delimiter, file).parse(text);
}

}  // namespace pedflux::engine
