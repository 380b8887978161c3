#pragma once

#include "engine/crowd/locomotion.h"

#include <array>
#include <cstddef>

namespace pedflux::engine::crowd {

/// The share of the free speed at which people walk at a given density (Weidmann, "Transporttechnik der Fussgänger",
/// 1993): 1 - exp(-steepness * (1 / density - 1 / jam density)). Tabulated, as it is needed for every agent in every
/// step and must not depend on the mathematical library.
class SpeedLaw {
  public:
    explicit SpeedLaw(Locomotion const& locomotion);

    /// `density` in persons per square metre, not negative.
    float share(float density) const {
        float const place = density * per_density_;
        auto const last = static_cast<float>(samples - 1);
        if (place >= last) return least_;
        auto const index = static_cast<std::size_t>(place);
        float const fraction = place - static_cast<float>(index);
        return table_[index] + fraction * (table_[index + 1] - table_[index]);
    }

    /// The same on ground that reduces the speed to `factor` of that on the level. The time gaps between followers stay
    /// the same, so distances count more: the steepness grows with the inverse of the factor. For Weidmann's stairs,
    /// walked at 0.46 up and 0.52 down, this gives 4.2 and 3.7, against his 3.7 and 3.8.
    float share(float density, float factor) const {
        if (factor >= 1 || density <= 0 || density >= jam_density_) return share(density);
        float const gap = 1 / density - 1 / jam_density_;
        return share(1 / (1 / jam_density_ + gap / factor));
    }

  private:
    static constexpr std::size_t samples = 512;
    std::array<float, samples> table_;
    float jam_density_;
    float per_density_;
    float least_;
};

}  // namespace pedflux::engine::crowd
