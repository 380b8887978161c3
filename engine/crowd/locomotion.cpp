#include "engine/crowd/locomotion.h"

#include "engine/base/checks.h"

#include <fmt/format.h>

namespace pedflux::engine::crowd {

namespace {

struct Bound {
    char const* name;
    double Locomotion::*constant;
    double least;
    double most;
};

/// The lower bound of the sight follows from bodies and steps, see largest_radius().
constexpr Bound bounds[] = {
    {"steepness", &Locomotion::steepness, 0.1, 20},
    {"jam_density", &Locomotion::jam_density, 1, 20},
    {"least_speed", &Locomotion::least_speed, 0, 0.5},
    {"sight", &Locomotion::sight, 1.2, 5},
    {"lane_half_width", &Locomotion::lane_half_width, 0.1, 1},
    {"oncoming_weight", &Locomotion::oncoming_weight, 0, 1},
    {"acceleration_time", &Locomotion::acceleration_time, 0, 10},
    {"anticipation", &Locomotion::anticipation, 0.1, 10},
    {"passing_gap", &Locomotion::passing_gap, 0, 1},
    {"avoidance", &Locomotion::avoidance, 0, 10},
    {"oncoming_avoidance", &Locomotion::oncoming_avoidance, 0, 10},
    {"overtaking_density", &Locomotion::overtaking_density, 0, 20},
    {"keep_right", &Locomotion::keep_right, -1, 1},
    {"side_speed", &Locomotion::side_speed, 0, 1},
    {"widest_turn", &Locomotion::widest_turn, 0, 10},
    {"turning", &Locomotion::turning, 0.01, 10},
};

}  // namespace

Locomotion Locomotion::young_adults() {
    Locomotion result;
    result.acceleration_time = 0.3;
    return result;
}

void validate(Locomotion const& locomotion) {
    for (Bound const& bound : bounds) {
        double const value = locomotion.*bound.constant;
        if (value >= bound.least && value <= bound.most) continue;
        refuse(fmt::format("Locomotion.{} is {}, it must be between {} and {}", bound.name, text_of(value),
                           text_of(bound.least), text_of(bound.most)));
    }
}

}  // namespace pedflux::engine::crowd
