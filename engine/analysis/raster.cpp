#include "engine/analysis/raster.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

namespace {

constexpr float nothing = std::numeric_limits<float>::quiet_NaN();

void add_crossings(Ring const& ring, double z, std::vector<double>& crossings) {
    for (std::size_t i = 0, previous = ring.size() - 1; i < ring.size(); previous = i++) {
        if (auto const x = crossing_of_row(ring[previous], ring[i], z)) crossings.push_back(*x);
    }
}

/// Gives the pixels whose centres lie in the polygons the surface's lowest height: between each pair of crossings of
/// their row with the boundary.
void fill(Raster& raster, Polygons const& polygons) {
    std::vector<double> crossings;
    for (int y = 0; y < raster.rows; ++y) {
        crossings.clear();
        for (auto const& polygon : polygons) {
            add_crossings(polygon.outline, raster.center_z(y), crossings);
            for (auto const& hole : polygon.holes) add_crossings(hole, raster.center_z(y), crossings);
        }
        std::ranges::sort(crossings);
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            auto const pixel_from = [&](double x) {
                return std::clamp(static_cast<int>(std::ceil((x - raster.min_x) / raster.pixel_size - 0.5)), 0,
                                  raster.columns);
            };
            for (int x = pixel_from(crossings[i]); x < pixel_from(crossings[i + 1]); ++x) {
                raster.heights[raster.index(x, y)] = static_cast<float>(raster.lowest);
            }
        }
    }
}

/// Raises the pixels that the triangle covers to its height.
void lift(Raster& raster, std::array<Vector, 3> const& handle) {
    auto const [a, b, c] = handle;
    double const area = orientation({a.x, a.z}, {b.x, b.z}, {c.x, c.z});
    if (area == 0) return;
    Bounds bounds;
    for (Vector const corner : handle) bounds.cover({corner.x, corner.z});
    auto const pixel = [&](double coordinate, double least, int count) {
        return std::clamp(static_cast<int>(std::floor((coordinate - least) / raster.pixel_size)), 0, count - 1);
    };
    int const last_x = pixel(bounds.high.x, raster.min_x, raster.columns);
    int const last_y = pixel(bounds.high.z, raster.min_z, raster.rows);
    for (int y = pixel(bounds.low.z, raster.min_z, raster.rows); y <= last_y; ++y) {
        for (int x = pixel(bounds.low.x, raster.min_x, raster.columns); x <= last_x; ++x) {
            auto& height = raster.heights[raster.index(x, y)];
            if (std::isnan(height)) continue;
            Point const center{raster.center_x(x), raster.center_z(y)};
            double const share_a = orientation(center, {b.x, b.z}, {c.x, c.z}) / area;
            double const share_b = orientation({a.x, a.z}, center, {c.x, c.z}) / area;
            double const share_c = 1 - share_a - share_b;
            if (std::min({share_a, share_b, share_c}) < -1e-9) continue;
            height = static_cast<float>(share_a * a.y + share_b * b.y + share_c * c.y);
        }
    }
}

}  // namespace

std::shared_ptr<Raster const> raster_of(Surface const& surface, double finest, double most_pixels) {
    Bounds bounds;
    for (auto const& polygon : surface.walkable) {
        for (Point const corner : polygon.outline) bounds.cover(corner);
    }
    auto raster = std::make_shared<Raster>();
    raster->surface = surface.id;
    raster->pixel_size = finest;
    if (surface.walkable.empty()) return raster;

    Point const size = bounds.high - bounds.low;
    while (std::ceil(size.x / raster->pixel_size) * std::ceil(size.z / raster->pixel_size) > most_pixels) {
        raster->pixel_size *= 2;
    }
    raster->min_x = bounds.low.x;
    raster->min_z = bounds.low.z;
    raster->columns = std::max(1, static_cast<int>(std::ceil(size.x / raster->pixel_size)));
    raster->rows = std::max(1, static_cast<int>(std::ceil(size.z / raster->pixel_size)));
    raster->heights.assign(static_cast<std::size_t>(raster->columns) * static_cast<std::size_t>(raster->rows), nothing);
    raster->lowest = std::numeric_limits<double>::infinity();
    for (auto const& face : surface.faces) {
        for (Vector const corner : face) raster->lowest = std::min(raster->lowest, corner.y);
    }
    if (surface.faces.empty()) raster->lowest = 0;
    fill(*raster, surface.walkable);
    for (auto const& face : surface.faces) lift(*raster, face);
    return raster;
}

}  // namespace pedflux::engine
