#pragma once

#include "engine/simulation/world/world.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pedflux::engine {

/// What an object means to agents that come and go: regions, a portal or a volume. One that is disabled is none of
/// them.
struct ObjectArea {
    std::vector<bool> regions;
    std::uint32_t doorway = no_place;
    std::size_t volume = no_volume;  ///< of the project's enabled ones

    bool has(navigation::RegionIndex region) const { return region < regions.size() && regions[region]; }
};

/// Throws Exception for objects of which simulations do not know who is in them.
ObjectArea object_area_of(Document const& document, World& world, GlobalId const& object);

}  // namespace pedflux::engine
