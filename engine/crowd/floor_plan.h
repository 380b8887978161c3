#pragma once

#include "engine/geometry/plane.h"

#include <cstdint>
#include <vector>

namespace pedflux::engine::crowd {

/// A boundary that the centre of a body never crosses, from either side.
struct Wall {
    Point from;
    Point to;
    /// An open wall is ignored; see Crowd::set_wall_open.
    bool open = false;
};

/// A surface on which people interact by their positions in the plane: a floor, or one flight of stairs. It is enclosed
/// by its walls, except along crossings.
struct Region {
    std::vector<Wall> walls;
};

/// A line that a stair or door shares with the adjoining region. Walking over it changes the region. Seen along the
/// line, `left` is counter-clockwise when x points right and z up.
struct Crossing {
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    Point from;
    Point to;
};

/// The floor plan of a crowd. People in different regions interact only near the crossings between these.
struct FloorPlan {
    std::vector<Region> regions;
    std::vector<Crossing> crossings;
};

}  // namespace pedflux::engine::crowd
