#pragma once

#include "engine/results/recorded_run.h"

#include <pedflux/identifiers.h>

#include <cmath>
#include <cstddef>
#include <memory>
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
    bool has(std::size_t index) const { return !std::isnan(heights[index]); }
};

/// The raster of a surface: pixels of `finest` metres, or a doubling of that so that there are at most `most_pixels`.
std::shared_ptr<Raster const> raster_of(Surface const& surface, double finest = 0.25, double most_pixels = 250'000);

}  // namespace pedflux::engine
