#include "engine/base/identifiers.h"

#include "engine/base/checks.h"
#include "engine/base/hashing.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fmt/format.h>
#include <sys/random.h>

namespace pedflux {

namespace engine {

namespace {

constexpr std::size_t text_length = 36;

constexpr bool is_dash_position(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// 16 for what is no digit.
constexpr unsigned digit_value(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
    return 16;
}

[[noreturn]] void refuse_text(std::string const& text) {
    refuse(
        fmt::format("\"{}\" is no identifier; an identifier is 32 hexadecimal digits, not all 0, in groups of "
                    "8-4-4-4-12, such as 8f14e45f-ceea-467f-a0e5-95c0d4a5c7d2",
                    text));
}

Identifier parsed(std::string const& text) {
    if (text.size() != text_length) refuse_text(text);
    Identifier result;
    for (std::size_t position = 0; position < text_length; ++position) {
        if (is_dash_position(position)) {
            if (text[position] != '-') refuse_text(text);
            continue;
        }
        unsigned const value = digit_value(text[position]);
        if (value == 16) refuse_text(text);
        auto& half = position < 19 ? result.high : result.low;
        half = half << 4 | value;
    }
    if (result == Identifier()) refuse_text(text);
    return result;
}

Identifier random_identifier() {
    std::array<std::uint64_t, 2> bits;
    if (getentropy(bits.data(), sizeof bits) != 0)
        refuse(fmt::format("the operating system gave no random bits for an identifier: {}", std::strerror(errno)));
    constexpr std::uint64_t version_mask = 0xF000;
    constexpr std::uint64_t variant_mask = std::uint64_t{3} << 62;
    return {(bits[0] & ~version_mask) | 0x4000, (bits[1] & ~variant_mask) | std::uint64_t{2} << 62};
}

}  // namespace

std::string text_of(Identifier identifier) {
    std::string text(text_length, '-');
    for (std::size_t position = 0, digit = 0; position < text_length; ++position) {
        if (is_dash_position(position)) continue;
        std::uint64_t const half = digit < 16 ? identifier.high : identifier.low;
        text[position] = "0123456789abcdef"[half >> (60 - 4 * (digit % 16)) & 0xF];
        ++digit;
    }
    return text;
}

std::string text_of(GlobalId const& id) { return GlobalId(id).GetString(); }

}  // namespace engine

constinit GlobalId const GlobalId::INVALID;

GlobalId::GlobalId(std::string const& text)
    : identifier_(std::make_shared<engine::Identifier const>(engine::parsed(text))) {}

GlobalId::GlobalId(std::shared_ptr<engine::Identifier const> identifier) : identifier_(std::move(identifier)) {}

GlobalId GlobalId::Generate() {
    return GlobalId(std::make_shared<engine::Identifier const>(engine::random_identifier()));
}

std::string GlobalId::GetString() { return identifier_ ? engine::text_of(*identifier_) : std::string(); }
bool GlobalId::IsValid() const { return identifier_ != nullptr; }

bool GlobalId::InternalEquals(GlobalId const& other) const { return InternalCompare(other) == 0; }

int GlobalId::InternalHashCode() const {
    return identifier_ ? engine::hash_of_words({identifier_->high, identifier_->low}) : 0;
}

int GlobalId::InternalCompare(GlobalId const& other) const {
    if (identifier_ == other.identifier_) return 0;
    if (!identifier_) return -1;
    if (!other.identifier_) return 1;
    if (*identifier_ == *other.identifier_) return 0;
    return *identifier_ < *other.identifier_ ? -1 : 1;
}

}  // namespace pedflux
