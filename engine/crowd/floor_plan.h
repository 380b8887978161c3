#pragma once

#include "engine/geometry/plane.h"

#include <cstdint>
#include <vector>

namespace pedflux::engine::crowd {

/// A boundary that no centre of a person ever crosses, from either side.
struct Wall {
    Point from;
    Point to;
    /// An open wall is no wall; see Crowd::set_wall_open.
    bool open = false;
};

/// A surface on which people meet and see each other by their plan positions: a floor, or one flight of stairs. Its
/// walls close it, except along crossings.
struct Region {
    std::vector<Wall> walls;
};

/// A line that a stair or door shares with the region beside it. Whoever walks over it changes the region. Seen along
/// the line, `left` lies where counter-clockwise is in a plan with x to the right and z up.
struct Crossing {
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    Point from;
    Point to;
};

/// Where a crowd walks. People on different regions meet only near the crossings that join these.
struct Plan {
    std::vector<Region> regions;
    std::vector<Crossing> crossings;
};

}  // namespace pedflux::engine::crowd
