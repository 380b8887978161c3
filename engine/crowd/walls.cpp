#include "engine/crowd/walls.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine::crowd {

bool NearWalls::hide(float x, float z) const {
    for (std::uint32_t i = 0; i < count; ++i) {
        Line const& line = lines[i];
        float const along_x = line.to_x - line.from_x;
        float const along_z = line.to_z - line.from_z;
        float const far_side = along_x * (z - line.from_z) - along_z * (x - line.from_x);
        if (far_side * line.side > 0) continue;
        float const from_side = x * line.from_z - z * line.from_x;
        float const to_side = x * line.to_z - z * line.to_x;
        if (from_side * to_side <= 0) return true;
    }
    return false;
}

Room room_beside(NearWalls const& walls, float forward_x, float forward_z) {
    Room room;
    for (std::uint32_t i = 0; i < walls.count; ++i) {
        NearWalls::Line const& line = walls.lines[i];
        float const from_ahead = forward_x * line.from_x + forward_z * line.from_z;
        float const to_ahead = forward_x * line.to_x + forward_z * line.to_z;
        if ((from_ahead > 0) == (to_ahead > 0)) continue;
        float const from_right = forward_z * line.from_x - forward_x * line.from_z;
        float const to_right = forward_z * line.to_x - forward_x * line.to_z;
        float const right = from_right + from_ahead / (from_ahead - to_ahead) * (to_right - from_right);
        float& side = right > 0 ? room.right : room.left;
        side = std::min(side, std::abs(right));
    }
    return room;
}

void gather_walls(Surfaces const& surfaces, std::uint32_t cell, float x, float z, float reach, NearWalls& walls) {
    walls.count = 0;
    walls.nearest = reach * reach;
    for (std::uint32_t const number : surfaces.walls_of[cell]) {
        if (surfaces.wall_open[number] != 0) continue;
        Segment const& wall = surfaces.walls[number];
        float const from_x = static_cast<float>(wall.from.x) - x;
        float const from_z = static_cast<float>(wall.from.z) - z;
        float const along_x = static_cast<float>(wall.to.x) - x - from_x;
        float const along_z = static_cast<float>(wall.to.z) - z - from_z;
        float const size = along_x * along_x + along_z * along_z;
        float const ahead = -(from_x * along_x + from_z * along_z);
        float const fraction = size > 0 ? std::clamp(ahead / size, 0.0F, 1.0F) : 0.0F;
        float const near_x = from_x + fraction * along_x;
        float const near_z = from_z + fraction * along_z;
        float const squared = near_x * near_x + near_z * near_z;
        if (squared > reach * reach) continue;
        walls.nearest = std::min(walls.nearest, squared);
        walls.lines[walls.count++] = {from_x, from_z, from_x + along_x, from_z + along_z,
                                      along_z * from_x - along_x * from_z};
        if (walls.count == NearWalls::most) return;
    }
}

}  // namespace pedflux::engine::crowd
