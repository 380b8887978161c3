#include "engine/scene/cordon_direction.h"

#include "engine/scene/goal_lines.h"

#include <cmath>

namespace pedflux::engine {

Vector direction_of(CordonState const& cordon) {
    auto line = centre_goal_line(*cordon.geometry);
    auto const along = vector_of(line.GetEndPoint()) - vector_of(line.GetStartPoint());
    Vector const across = (1 / std::hypot(along.x, along.z)) * Vector{-along.z, 0, along.x};
    constexpr double rounding = 1e-9;
    bool const points_back = std::abs(across.z) > rounding ? across.z < 0 : across.x < 0;
    return points_back != cordon.inverted ? -across : across;
}

}  // namespace pedflux::engine
