#include "engine/model/names.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cstddef>
#include <optional>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Takes one code point off the front of the text; none when the text does not begin with one. Overlong forms,
/// surrogates and numbers beyond U+10FFFF are none (RFC 3629).
std::optional<char32_t> next_code_point(std::string_view& text) {
    struct Form {
        std::size_t length;
        char32_t least;
        unsigned char mask, lead;
    };
    constexpr Form forms[] = {
        {1, 0, 0x80, 0x00}, {2, 0x80, 0xe0, 0xc0}, {3, 0x800, 0xf0, 0xe0}, {4, 0x10000, 0xf8, 0xf0}};
    auto const lead = static_cast<unsigned char>(text.front());
    for (auto const& [length, least, mask, bits] : forms) {
        if ((lead & mask) != bits) continue;
        if (text.size() < length) return std::nullopt;
        char32_t code = lead & static_cast<unsigned char>(~mask);
        for (std::size_t i = 1; i < length; ++i) {
            auto const byte = static_cast<unsigned char>(text[i]);
            if ((byte & 0xc0) != 0x80) return std::nullopt;
            code = (code << 6) | (byte & 0x3f);
        }
        bool const surrogate = code >= 0xd800 && code <= 0xdfff;
        if (code < least || code > 0x10ffff || surrogate) return std::nullopt;
        text.remove_prefix(length);
        return code;
    }
    return std::nullopt;
}

/// What is wrong with a name; empty if nothing is.
std::string_view fault_of_name(std::string_view name) {
    if (name.empty()) return "is empty";
    if (name.size() > 255) return "is longer than 255 bytes";
    bool blank = true;
    while (!name.empty()) {
        auto const code = next_code_point(name);
        if (!code) return "is not UTF-8";
        if (*code < 0x20 || (*code >= 0x7f && *code < 0xa0)) return "has a control character";
        blank = blank && *code == ' ';
    }
    return blank ? "is blank" : "";
}

}  // namespace

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        if (!next_code_point(text)) return false;
    }
    return true;
}

bool is_valid_name(std::string_view name) { return fault_of_name(name).empty(); }

void require_valid_name(std::string_view name) {
    auto const fault = fault_of_name(name);
    if (fault.empty()) return;
    std::string const quoted = is_utf8(name) && name.size() <= 255 ? fmt::format(" '{}'", name) : "";
    throw Exception(
        fmt::format("the name{} {}: a name has 1 to 255 bytes of UTF-8, not only spaces, and no control characters",
                    quoted, fault));
}

}  // namespace pedflux::engine
