#pragma once

#include "engine/geometry/polygons.h"
#include "engine/navigation/navigation.h"

/// A station's size of plan, drawn by arithmetic: 252 m by 250 m (63,000 square metres) with 1,200 corners.
namespace pedflux::engine::navigation {

inline Ring box(double x, double z, double width, double depth) {
    return {{x, z}, {x + width, z}, {x + width, z + depth}, {x, z + depth}};
}

/// A hall full of pillars in the south, rooms off corridors in the north.
inline Polygons concourse() {
    Polygons obstacles;
    for (int i = 0; i < 15; ++i)
        for (int j = 0; j < 9; ++j) obstacles.push_back({box(14 + 16 * i, 12 + 14 * j, 1.2, 1.2), {}});
    // Rooms of 12 m by 14 m in rows of 20, in pairs back to back; walls of 0.2 m with doors of 1 m.
    for (int row = 0; row < 6; ++row) {
        double const z = 140 + 18.0 * row;
        for (int room = 0; room < 20; ++room) {
            double const x = 6 + 12.0 * room;
            obstacles.push_back({box(x, z, 5.5, 0.2), {}});
            obstacles.push_back({box(x + 6.5, z, 5.5, 0.2), {}});
            if (room % 3 != 0) obstacles.push_back({box(x, z, 0.2, 14), {}});
        }
        obstacles.push_back({box(6, z + 14, 240, 0.2), {}});
    }
    return difference({{box(0, 0, 252, 250), {}}}, united(obstacles));
}

/// The concourse with a hundred lines to go to, all over it.
inline NavigationInput concourse_input() {
    NavigationInput input{{{"concourse", concourse(), 1}}, {}, {}, 0.2};
    for (int i = 0; i < 100; ++i) {
        double const x = 9 + 24.0 * (i % 10);
        double const z = 3 + 24.2 * static_cast<double>(i / 10);
        input.destinations.push_back({"", {{0, {{x, z}, {x + 2, z}}}}, {}});
    }
    return input;
}

}  // namespace pedflux::engine::navigation
