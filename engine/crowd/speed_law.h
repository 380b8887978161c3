#pragma once

#include "engine/crowd/locomotion.h"

#include <array>
#include <cstddef>

namespace pedflux::engine::crowd {

/// The share of the free speed at which people walk in a crowd (Weidmann 1993, "Transporttechnik der Fussgaenger"):
/// 1 - exp(-steepness * (1 / density - 1 / jam density)). A table, because it is asked for every agent in every step
/// and must not differ between mathematical libraries.
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

  private:
    static constexpr std::size_t samples = 512;
    std::array<float, samples> table_;
    float per_density_;
    float least_;
};

}  // namespace pedflux::engine::crowd
