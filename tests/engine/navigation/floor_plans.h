#pragma once

#include "engine/geometry/polygons.h"

#include <cmath>
#include <cstdint>
#include <numbers>

/// Floor plans of the tests.
namespace pedflux::engine::navigation::testing {

inline Ring rectangle(Point low, Point high) { return {low, {high.x, low.z}, high, {low.x, high.z}}; }

/// A sequence that is the same everywhere.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed * 2654435761U + 88172645463325252U) {}
    double between(double low, double high) {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return low + (high - low) * static_cast<double>(state_ >> 11) / 9007199254740992.0;
    }

  private:
    std::uint64_t state_;
};

/// A star with random radii around a point.
inline Ring random_star(Dice& dice, Point centre, double radius, int corners) {
    Ring ring;
    for (int i = 0; i < corners; ++i) {
        double const angle = 2 * std::numbers::pi * i / corners;
        ring.push_back(centre + dice.between(0.3, 1) * radius * Point{std::cos(angle), std::sin(angle)});
    }
    return ring;
}

/// A hall of 40 m by 40 m with random obstacles, some of which overlap, reach the walls or cut corners off.
inline Polygons random_hall(std::uint64_t seed, int obstacles) {
    Dice dice(seed);
    Polygons taken;
    for (int i = 0; i < obstacles; ++i) {
        Point const centre{dice.between(0, 40), dice.between(0, 40)};
        taken.push_back(
            {random_star(dice, centre, dice.between(0.5, 5), 3 + static_cast<int>(dice.between(0, 6))), {}});
    }
    return difference({{rectangle({0, 0}, {40, 40}), {}}}, united(taken));
}

}  // namespace pedflux::engine::navigation::testing
