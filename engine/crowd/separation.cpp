#include "engine/crowd/separation.h"

#include "engine/crowd/walls.h"

#include <cmath>

namespace pedflux::engine::crowd {

namespace {

/// Share of an overlap that each of two bodies takes back in a pass. A half would do for two bodies, but in a packing
/// where each touches six it would make them oscillate.
constexpr float share = 0.4F;
/// Bodies whose intended positions are further apart than this beyond contact (metres) do not meet during separation:
/// each would have to be pushed by half of it.
constexpr float beyond_contact = 0.15F;

}  // namespace

void drop_far_contacts(Scene& scene, std::size_t first, std::size_t last) {
    Bodies& bodies = scene.bodies;
    for (std::size_t index = first; index < last; ++index) {
        std::uint32_t* const list = bodies.contacts.data() + index * Bodies::most_contacts;
        std::uint8_t kept = 0;
        for (std::uint32_t i = 0; i < bodies.contact_count[index]; ++i) {
            std::uint32_t const other = list[i];
            float const from_x = bodies.goal_x[index] - bodies.goal_x[other];
            float const from_z = bodies.goal_z[index] - bodies.goal_z[other];
            float const reach = bodies.radius[index] + bodies.radius[other] + beyond_contact;
            if (reach > 0 && from_x * from_x + from_z * from_z < reach * reach) list[kept++] = other;
        }
        bodies.contact_count[index] = kept;
    }
}

void separate(Scene& scene, std::size_t first, std::size_t last) {
    Bodies& bodies = scene.bodies;
    NearWalls walls;
    for (std::size_t index = first; index < last; ++index) {
        float const x = bodies.goal_x[index];
        float const z = bodies.goal_z[index];
        float const radius = bodies.radius[index];
        float shift_x = 0;
        float shift_z = 0;
        std::uint32_t const* const list = bodies.contacts.data() + index * Bodies::most_contacts;
        for (std::uint32_t i = 0; i < bodies.contact_count[index]; ++i) {
            std::uint32_t const other = list[i];
            float const from_x = x - bodies.goal_x[other];
            float const from_z = z - bodies.goal_z[other];
            float const squared = from_x * from_x + from_z * from_z;
            float const touching = radius + bodies.radius[other];
            if (squared >= touching * touching) continue;
            float const gap = std::sqrt(squared);
            if (gap > 1e-4F) {
                float const factor = share * (touching - gap) / gap;
                shift_x += factor * from_x;
                shift_z += factor * from_z;
            } else {
                // In the same place: apart along x, the later body to the right.
                shift_x += static_cast<std::uint32_t>(index) > other ? share * touching : -share * touching;
            }
        }
        float next_x = x + shift_x;
        float next_z = z + shift_z;
        if (radius >= 0 && bodies.near_wall[index] != 0) {
            gather_walls(scene.surfaces, bodies.cell[index], bodies.x[index], bodies.z[index],
                         radius + bodies.longest[index], walls);
            for (std::uint32_t i = 0; i < walls.count; ++i) {
                NearWalls::Line const& line = walls.lines[i];
                float const along_x = line.to_x - line.from_x;
                float const along_z = line.to_z - line.from_z;
                float const size = along_x * along_x + along_z * along_z;
                float const at_x = next_x - bodies.x[index] - line.from_x;
                float const at_z = next_z - bodies.z[index] - line.from_z;
                float const ahead = at_x * along_x + at_z * along_z;
                if (size > 0 && ahead > 0 && ahead < size) {
                    float const length = std::sqrt(size);
                    float const sign = line.side >= 0 ? 1.0F : -1.0F;
                    float const off = sign * (along_x * at_z - along_z * at_x) / length;
                    if (off >= radius) continue;
                    float const factor = sign * (radius - off) / length;
                    next_x -= factor * along_z;
                    next_z += factor * along_x;
                } else {
                    float const end_x = ahead > 0 ? at_x - along_x : at_x;
                    float const end_z = ahead > 0 ? at_z - along_z : at_z;
                    float const gap = std::sqrt(end_x * end_x + end_z * end_z);
                    if (gap >= radius || gap < 1e-4F) continue;
                    float const factor = (radius - gap) / gap;
                    next_x += factor * end_x;
                    next_z += factor * end_z;
                }
            }
        }
        // A body cannot be pushed further than it can walk. The others take back the rest in the next pass.
        float const way_x = next_x - bodies.x[index];
        float const way_z = next_z - bodies.z[index];
        float const squared_way = way_x * way_x + way_z * way_z;
        float const longest = bodies.longest[index];
        float const factor = squared_way > longest * longest ? longest / std::sqrt(squared_way) : 1.0F;
        bodies.next_x[index] = bodies.x[index] + factor * way_x;
        bodies.next_z[index] = bodies.z[index] + factor * way_z;
    }
}

}  // namespace pedflux::engine::crowd
