#pragma once

#include <pedflux/identifiers.h>

#include <cstddef>
#include <vector>

namespace pedflux::engine {

/// The grid that maps of one surface share. Lengths in metres, pixels row by row along z.
struct Raster {
    GlobalId surface;
    double pixel_size = 1;
    double min_x = 0;
    double min_z = 0;
    int columns = 0;
    int rows = 0;
    /// The height of the surface at each pixel's centre; NaN where people cannot walk.
    std::vector<float> heights;
    double lowest = 0;

    std::size_t size() const { return heights.size(); }
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(x);
    }
    double center_x(int x) const { return min_x + (x + 0.5) * pixel_size; }
    double center_z(int y) const { return min_z + (y + 0.5) * pixel_size; }
    bool has(std::size_t index) const { return heights[index] == heights[index]; }
};

}  // namespace pedflux::engine
