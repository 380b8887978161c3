#pragma once

#include <pedflux/identifiers.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

/// Areas: what objects of a project mean to agents that are in them, enter and leave them. Running simulations and
/// stored runs have the same ones.
namespace pedflux::engine {

struct ZoneState;

/// The number of a walkable surface in a simulation or stored run.
using SurfaceIndex = std::uint32_t;
/// Where agents are before they enter the simulation and after they have left it.
inline constexpr SurfaceIndex no_surface = std::numeric_limits<SurfaceIndex>::max();

/// A set of surfaces, a portal or a volume. An object that is disabled is none of them.
struct Area {
    std::vector<bool> surfaces{};
    std::optional<std::uint32_t> portal{};  ///< its number in the simulation or stored run
    std::optional<std::size_t> volume{};    ///< likewise

    bool has(SurfaceIndex surface) const { return surface < surfaces.size() && surfaces[surface]; }
    bool is_portal(std::optional<std::uint32_t> number) const { return portal && portal == number; }
};

/// The walkable surfaces of a building by their numbers, and the floors at which its connections end.
struct SurfaceTable {
    std::vector<GlobalId> ids;
    std::vector<std::pair<SurfaceIndex, SurfaceIndex>> joins;  ///< connection and floor, each pair once or more often
};

/// The surfaces of a zone: its members, and if its strategy says so the connections that join two of them.
std::vector<bool> surfaces_of(ZoneState const& zone, SurfaceTable const& table);

}  // namespace pedflux::engine
