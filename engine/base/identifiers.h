#pragma once

#include <pedflux/identifiers.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>

/// Access to identifiers beyond their public operations, many of which are not const.
namespace pedflux::engine {

/// The 128 bits, most significant first.
struct Identifier {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    friend bool operator==(Identifier const&, Identifier const&) = default;
    friend bool operator<(Identifier const& a, Identifier const& b) {
        return std::tie(a.high, a.low) < std::tie(b.high, b.low);
    }
};

std::string text_of(Identifier identifier);
/// The textual form; empty for an identifier that names no object.
std::string text_of(GlobalId const& id);

/// For containers.
struct GlobalIdHash {
    std::size_t operator()(GlobalId const& id) const { return static_cast<std::size_t>(id.InternalHashCode()); }
};
struct GlobalIdEqual {
    bool operator()(GlobalId const& a, GlobalId const& b) const { return a.InternalEquals(b); }
};
struct GlobalIdLess {
    bool operator()(GlobalId const& a, GlobalId const& b) const { return a.InternalCompare(b) < 0; }
};

}  // namespace pedflux::engine
