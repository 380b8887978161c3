#pragma once

/// How lifts travel: the shortest way from standing still to standing still within the greatest speed, acceleration and
/// jerk (Peters, "Ideal lift kinematics", Elevator Technology 6, 1995).
namespace pedflux::engine {

struct LiftLimits {
    double speed;         ///< m/s
    double acceleration;  ///< m/s²
    double jerk;          ///< m/s³
};

/// Seconds for a distance of 0 or more metres. All limits are above 0.
double travel_time(LiftLimits const& limits, double distance);

}  // namespace pedflux::engine
