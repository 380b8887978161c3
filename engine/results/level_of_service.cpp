#include "engine/results/level_of_service.h"

#include "engine/base/checks.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

namespace pedflux {

float LevelOfService::GetDensity() { return density_; }
LevelOfServiceValue LevelOfService::GetLevel() { return level_; }
LevelOfServiceStandard LevelOfService::GetStandard() { return standard_; }

}  // namespace pedflux

namespace pedflux::engine {

struct LevelOfServiceAccess {
    static LevelOfService make(double density, LevelOfServiceValue level, LevelOfServiceStandard standard) {
        LevelOfService made;
        made.density_ = static_cast<float>(density);
        made.level_ = level;
        made.standard_ = standard;
        return made;
    }
};

namespace {

/// Square metres in a square foot.
constexpr double square_foot = 0.3048 * 0.3048;

constexpr LevelBounds of_square_feet(std::array<double, 5> const& spaces) {
    LevelBounds densities{};
    for (std::size_t i = 0; i < spaces.size(); ++i) densities[i] = 1 / (spaces[i] * square_foot);
    return densities;
}

constexpr LevelBounds fruin_walkway = of_square_feet({35, 25, 15, 10, 5});
constexpr LevelBounds fruin_stairway = of_square_feet({20, 15, 10, 7, 4});
constexpr LevelBounds fruin_platform = of_square_feet({13, 10, 7, 3, 2});
constexpr LevelBounds iata_wait_circulate = {1 / 2.7, 1 / 2.3, 1 / 1.9, 1 / 1.5, 1 / 1.0};

}  // namespace

LevelBounds const& bounds_of(LevelOfServiceStandard standard) {
    switch (standard) {
        case LevelOfServiceStandard::FRUIN_WALKWAY:
            return fruin_walkway;
        case LevelOfServiceStandard::FRUIN_STAIRWAY:
            return fruin_stairway;
        case LevelOfServiceStandard::FRUIN_PLATFORM:
            return fruin_platform;
        case LevelOfServiceStandard::IATA_WAIT_CIRCULATE:
            return iata_wait_circulate;
        case LevelOfServiceStandard::NONE:
            break;
    }
    refuse(fmt::format("A standard of levels of service must be one of 1 to 4, not {}", static_cast<int>(standard)));
}

LevelOfService level_of_service(double density, LevelOfServiceStandard standard) {
    auto const& bounds = bounds_of(standard);
    auto const passed = std::ranges::upper_bound(bounds, density) - bounds.begin();
    auto const level = static_cast<LevelOfServiceValue>(static_cast<int>(LevelOfServiceValue::A) + passed);
    return LevelOfServiceAccess::make(density, level, standard);
}

}  // namespace pedflux::engine
