#include "engine/crowd/speed_law.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine::crowd {

SpeedLaw::SpeedLaw(Locomotion const& locomotion)
    : jam_density_(static_cast<float>(locomotion.jam_density)),
      per_density_(static_cast<float>((samples - 1) / locomotion.jam_density)),
      least_(static_cast<float>(locomotion.least_speed)) {
    table_[0] = 1;
    for (std::size_t i = 1; i < samples; ++i) {
        double const density = locomotion.jam_density * static_cast<double>(i) / (samples - 1);
        double const share = 1 - std::exp(-locomotion.steepness * (1 / density - 1 / locomotion.jam_density));
        table_[i] = static_cast<float>(std::max(share, locomotion.least_speed));
    }
}

}  // namespace pedflux::engine::crowd
