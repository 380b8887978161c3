#include "engine/analysis/csv.h"

#include "engine/base/checks.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include <fmt/format.h>

namespace pedflux::engine {

void Csv::add_field(std::string_view field) {
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
        text_ += field;
        return;
    }
    text_ += '"';
    for (char const character : field) text_.append(character == '"' ? 2 : 1, character);
    text_ += '"';
}

void Csv::add_line(std::vector<std::string> const& fields) {
    bool first = true;
    for (auto const& field : fields) {
        if (!first) text_ += ',';
        first = false;
        add_field(field);
    }
    text_ += "\r\n";
}

void Csv::write(std::string const& path) const {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text_;
    file.close();
    if (!file) refuse(fmt::format("The file '{}' cannot be written: {}", path, std::strerror(errno)));
}

}  // namespace pedflux::engine
