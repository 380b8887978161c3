#include "engine/crowd/bodies.h"

namespace pedflux::engine::crowd {

void Bodies::resize(std::size_t count) {
    for (auto* numbers : {&source, &cell}) numbers->resize(count);
    for (auto* lengths : {&x, &z, &velocity_x, &velocity_z, &direction_x, &direction_z, &radius, &longest, &goal_x,
                          &goal_z, &next_x, &next_z})
        lengths->resize(count);
    for (auto* counts : {&near_wall, &contact_count}) counts->resize(count);
    contacts.resize(count * most_contacts);
}

}  // namespace pedflux::engine::crowd
