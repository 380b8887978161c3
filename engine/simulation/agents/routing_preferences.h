#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace pedflux::engine {

using NetworkIndex = std::uint32_t;
inline constexpr NetworkIndex no_network = std::numeric_limits<NetworkIndex>::max();

/// A class of agents whose preferences are equal, so that they share routes. 0 is the class of those who take all ways
/// at their length.
using RouteClassIndex = std::uint32_t;

/// What tells the routes of agents apart.
struct RoutingPreferences {
    NetworkIndex network = no_network;  ///< none: all ways
    double climbing = 1;                ///< what a metre on stairs and slopes counts as, in metres on the level
    std::vector<std::uint32_t> closed;  ///< ways into passageways that rules close to the agent, see way_into()

    // NOLINTNEXTLINE(modernize-use-nullptr): the linter takes what the compiler writes for code.
    auto operator<=>(RoutingPreferences const&) const = default;
};

/// The number of a way into a passageway. Ways are 0, from ball to box, and 1, from box to ball.
constexpr std::uint32_t way_into(std::size_t passageway, std::size_t way) {
    return static_cast<std::uint32_t>(2 * passageway + way);
}

}  // namespace pedflux::engine
