#pragma once

#include <pedflux/level_of_service.h>

#include <array>

namespace pedflux::engine {

/// The densities in persons per square metre at which the levels B to F begin.
using LevelBounds = std::array<double, 5>;

/// The bounds of a standard other than NONE; the sources stand at `ColorFunction`.
LevelBounds const& bounds_of(LevelOfServiceStandard standard);

/// The level of a density. A density at a bound belongs to the worse level.
LevelOfService level_of_service(double density, LevelOfServiceStandard standard);

}  // namespace pedflux::engine
