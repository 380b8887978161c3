#include "engine/transport/lift_kinematics.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

double travel_time(LiftLimits const& limits, double distance) {
    double const v = limits.speed;
    double const j = limits.jerk;
    // An acceleration that the jerk cannot build up before the greatest speed is reached is never reached.
    double const a = std::min(limits.acceleration, std::sqrt(v * j));
    double const to_full_speed = a * v / j + v * v / a;  // the distance with no more than a moment at full speed
    double const to_full_acceleration = 2 * a * a * a / (j * j);  // the same at full acceleration
    if (distance >= to_full_speed) return distance / v + a / j + v / a;
    if (distance >= to_full_acceleration) return a / j + std::sqrt(4 * distance / a + (a / j) * (a / j));
    return std::cbrt(32 * distance / j);
}

}  // namespace pedflux::engine
