#pragma once

#include "engine/crowd/surfaces.h"

#include <array>
#include <cstdint>
#include <limits>

namespace pedflux::engine::crowd {

/// The closed walls around one place, as seen from it.
struct NearWalls {
    /// Beyond this number walls are not seen; they still cannot be crossed, see moving.h.
    static constexpr std::uint32_t most = 32;

    struct Line {
        float from_x;
        float from_z;
        float to_x;
        float to_z;
        /// Twice the area of the triangle of the line and the place.
        float side;
    };

    std::array<Line, most> lines;
    std::uint32_t count = 0;
    /// Squared distance to the nearest of the lines, or how far they were looked for without any.
    float nearest = 0;

    /// Whether a wall may be within so many metres.
    bool any_within(float metres) const { return count == most || nearest <= metres * metres; }
    /// Whether a wall stands between the place and the point at (x, z) from it.
    bool hide(float x, float z) const;
};

/// Metres from a place to the nearest walls straight to the right and to the left of a direction.
struct Room {
    float right = std::numeric_limits<float>::max();
    float left = std::numeric_limits<float>::max();
};
Room room_beside(NearWalls const& walls, float forward_x, float forward_z);

/// The walls that a place sees within `reach` metres; `cell` is the place's own.
void gather_walls(Surfaces const& surfaces, std::uint32_t cell, float x, float z, float reach, NearWalls& walls);

}  // namespace pedflux::engine::crowd
