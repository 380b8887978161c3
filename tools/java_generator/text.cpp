#include "tools/java_generator/text.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace pedflux::java {

std::string fill(std::string_view pattern, std::initializer_list<std::string_view> values) {
    std::string text;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        if (pattern[index] == '$' && index + 1 < pattern.size() && pattern[index + 1] >= '1' &&
            pattern[index + 1] <= '9') {
            text += values.begin()[pattern[++index] - '1'];
        } else {
            text += pattern[index];
        }
    }
    return text;
}

std::string joined(std::vector<std::string> const& parts, std::string_view separator) {
    std::string text;
    for (auto const& part : parts) {
        if (&part != &parts.front()) text += separator;
        text += part;
    }
    return text;
}

std::string indented(std::string_view text) {
    std::string result;
    bool line_starts = true;
    for (char const character : text) {
        if (line_starts && character != '\n') result += "    ";
        result += character;
        line_starts = character == '\n';
    }
    return result;
}

std::string lower_first(std::string text) {
    if (!text.empty()) text.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(text.front())));
    return text;
}

std::string upper_words(std::string_view text) {
    std::string result;
    for (char const character : text) {
        auto const letter = static_cast<unsigned char>(character);
        if (std::isupper(letter) && !result.empty()) result += '_';
        result += static_cast<char>(std::toupper(letter));
    }
    return result;
}

bool write_file(std::filesystem::path const& path, std::string_view text) {
    if (std::ifstream there(path, std::ios::binary); there) {
        if (std::string(std::istreambuf_iterator<char>(there), {}) == text) return false;
    }
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
    return true;
}

}  // namespace pedflux::java
