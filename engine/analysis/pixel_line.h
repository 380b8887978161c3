#pragma once

#include "engine/analysis/raster.h"
#include "engine/geometry/plane.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace pedflux::engine {

/// The pixel of a point; none outside the grid.
inline std::optional<std::size_t> pixel_of(Raster const& raster, Point place) {
    double const x = std::floor((place.x - raster.min_x) / raster.pixel_size);
    double const y = std::floor((place.z - raster.min_z) / raster.pixel_size);
    if (!(x >= 0 && x < raster.columns && y >= 0 && y < raster.rows)) return std::nullopt;
    return raster.index(static_cast<int>(x), static_cast<int>(y));
}

/// Calls visit(index) for the pixels that the straight line between two places crosses, in their order. It is followed
/// from one pixel border to the next (Amanatides and Woo, "A fast voxel traversal algorithm for ray tracing", 1987).
template <class Visit>
void for_each_pixel_between(Raster const& raster, Point from, Point to, Visit const& visit) {
    constexpr double never = std::numeric_limits<double>::infinity();
    /// Along one axis: the pixel, the way of the next border as a share of the line, and from one border to the next.
    struct Axis {
        double pixel;
        double step;
        double next;
        double between;
    };
    auto const axis = [&](double start, double end, double least) {
        double const pixel = std::floor((start - least) / raster.pixel_size);
        double const length = end - start;
        double const step = length > 0 ? 1 : -1;
        double const border = least + (pixel + (length > 0 ? 1 : 0)) * raster.pixel_size;
        return Axis{pixel, step, length == 0 ? never : (border - start) / length,
                    length == 0 ? never : raster.pixel_size / std::abs(length)};
    };
    Axis x = axis(from.x, to.x, raster.min_x);
    Axis y = axis(from.z, to.z, raster.min_z);
    while (true) {
        if (x.pixel >= 0 && x.pixel < raster.columns && y.pixel >= 0 && y.pixel < raster.rows) {
            visit(raster.index(static_cast<int>(x.pixel), static_cast<int>(y.pixel)));
        }
        Axis& nearer = x.next <= y.next ? x : y;
        if (!(nearer.next <= 1)) return;
        nearer.pixel += nearer.step;
        nearer.next += nearer.between;
    }
}

}  // namespace pedflux::engine
