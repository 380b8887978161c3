#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pedflux::engine {

/// Comma-separated values (RFC 4180): lines end in CR LF; fields with a comma, a quotation mark or a line break are
/// quoted.
class Csv {
  public:
    void add_line(std::vector<std::string> const& fields);
    std::string const& text() const { return text_; }
    /// Throws Exception when the file cannot be written whole.
    void write(std::string const& path) const;

  private:
    void add_field(std::string_view field);

    std::string text_;
};

}  // namespace pedflux::engine
