#pragma once

#include <pedflux/api.h>

namespace pedflux {

namespace engine {
struct LevelOfServiceAccess;
}

/// How crowded people find a place, from free choice of speed and direction (A) to standstill (F).
enum class LevelOfServiceValue : int {
    NONE = 0,  ///< not measured
    A = 1,
    B = 2,
    C = 3,
    D = 4,
    E = 5,
    F = 6,
};

/// Whose bounds between the levels are meant.
enum class LevelOfServiceStandard : int {
    NONE = 0,
    FRUIN_WALKWAY = 1,
    FRUIN_STAIRWAY = 2,
    FRUIN_PLATFORM = 3,       ///< people who queue or wait
    IATA_WAIT_CIRCULATE = 4,  ///< people who wait and walk about in an airport's halls
};

/// A density and its level by one standard.
class PEDFLUX_API LevelOfService {
  public:
    /// Nothing measured: density 0, no level, no standard.
    LevelOfService() = default;

    /// Persons per square metre.
    float GetDensity();
    LevelOfServiceValue GetLevel();
    LevelOfServiceStandard GetStandard();

  private:
    friend struct engine::LevelOfServiceAccess;

    float density_ = 0;
    LevelOfServiceValue level_ = LevelOfServiceValue::NONE;
    LevelOfServiceStandard standard_ = LevelOfServiceStandard::NONE;
};

}  // namespace pedflux
