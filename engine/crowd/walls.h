#pragma once

#include "engine/crowd/surfaces.h"

#include <array>
#include <cstdint>
#include <limits>

namespace pedflux::engine::crowd {

/// The closed walls around a position, relative to it.
struct NearWalls {
    /// Further walls are not seen; they still cannot be crossed, see moving.h.
    static constexpr std::uint32_t most = 32;

    struct Line {
        float from_x;
        float from_z;
        float to_x;
        float to_z;
        /// Twice the area of the triangle of the line and the position; its sign tells the side.
        float side;
    };

    std::array<Line, most> lines;
    std::uint32_t count = 0;
    /// Squared distance to the nearest line; without any, the squared range of the search.
    float nearest = 0;

    /// Whether a wall may be within the distance.
    bool any_within(float metres) const { return count == most || nearest <= metres * metres; }
    /// Whether a wall hides the point at (x, z) from the position. Like cross_each_other() with touching counted, for a
    /// segment from the origin in single precision and with the side of the origin known.
    bool hide(float x, float z) const;
};

/// Distance to the nearest walls straight to the right and left of a direction (metres).
struct Room {
    float right = std::numeric_limits<float>::max();
    float left = std::numeric_limits<float>::max();
};
Room room_beside(NearWalls const& walls, float forward_x, float forward_z);

/// The walls within `reach` metres of a position; `cell` is its cell.
void gather_walls(Surfaces const& surfaces, std::uint32_t cell, float x, float z, float reach, NearWalls& walls);

}  // namespace pedflux::engine::crowd
