#include "engine/simulation/world/ground.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace

Ground::Ground(std::vector<Triangle> const& faces) : lowest_(infinity), highest_(-infinity) {
    for (auto const& face : faces) {
        Plane plane;
        plane.least = {infinity, infinity};
        plane.most = {-infinity, -infinity};
        for (std::size_t i = 0; i < face.size(); ++i) {
            Vector const corner = face[i];
            plane.corners[i] = {corner.x, corner.z};
            plane.heights[i] = corner.y;
            plane.least = {std::min(plane.least.x, corner.x), std::min(plane.least.z, corner.z)};
            plane.most = {std::max(plane.most.x, corner.x), std::max(plane.most.z, corner.z)};
            lowest_ = std::min(lowest_, corner.y);
            highest_ = std::max(highest_, corner.y);
        }
        plane.doubled_area = orientation(plane.corners[0], plane.corners[1], plane.corners[2]);
        planes_.push_back(plane);
    }
}

double Ground::height(Point point) const {
    if (highest_ - lowest_ < 1e-6) return lowest_;
    double best_share = -infinity;
    double best_height = lowest_;
    for (auto const& plane : planes_) {
        auto const& [a, b, c] = plane.corners;
        std::array const shares{orientation(point, b, c) / plane.doubled_area,
                                orientation(a, point, c) / plane.doubled_area,
                                orientation(a, b, point) / plane.doubled_area};
        double const least_share = std::min({shares[0], shares[1], shares[2]});
        if (least_share <= best_share) continue;
        best_share = least_share;
        best_height = shares[0] * plane.heights[0] + shares[1] * plane.heights[1] + shares[2] * plane.heights[2];
        if (least_share >= 0) break;
    }
    return std::clamp(best_height, lowest_, highest_);
}

bool Ground::heights_in(Point least, Point most, double& low, double& high) const {
    low = infinity;
    high = -infinity;
    for (auto const& plane : planes_) {
        if (plane.most.x < least.x || plane.least.x > most.x) continue;
        if (plane.most.z < least.z || plane.least.z > most.z) continue;
        low = std::min({low, plane.heights[0], plane.heights[1], plane.heights[2]});
        high = std::max({high, plane.heights[0], plane.heights[1], plane.heights[2]});
    }
    return low <= high;
}

}  // namespace pedflux::engine
