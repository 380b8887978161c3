#include "engine/scene/server_states.h"

#include "engine/geometry/access.h"
#include "engine/geometry/vector.h"

#include <pedflux/geometry.h>

#include <algorithm>

namespace pedflux::engine {

namespace {

double length_of(PolylineGeometry const& line) {
    auto const& vertices = polyline_of(line).vertices;
    double length = 0;
    for (std::size_t i = 1; i < vertices.size(); ++i) length += distance(vertices[i - 1], vertices[i]);
    return length;
}

}  // namespace

int capacity_limit_of(ServerState const& server) {
    auto const& capacity = server.capacity.value();
    if (auto const* const fixed = std::get_if<FixedCapacity>(&capacity)) return fixed->limit;
    // A line drawn as a multiple of the spacing has room for that many agents in spite of rounding.
    constexpr double rounding = 1e-9;
    double const length = length_of(*server.geometry->AsPolylineGeometry());
    double const spacings = length / std::get<AutoCapacity>(capacity).spacing;
    constexpr double most = 1e9;
    return static_cast<int>(std::min(spacings * (1 + rounding), most)) + 1;
}

}  // namespace pedflux::engine
