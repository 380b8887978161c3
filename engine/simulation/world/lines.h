#pragma once

#include "engine/geometry/plane.h"

#include <optional>
#include <vector>

/// Where lines that were drawn roughly lie on areas.
namespace pedflux::engine {

/// The parts of a line inside the area, in the line's direction.
std::vector<Segment> parts_inside(Segment line, Polygons const& area);

/// The line as it lies on the area: along an edge of it when both ends are within the reach (metres) of that edge, or
/// else its longest part inside. None when that is less than half of the line.
std::optional<Segment> line_on(Polygons const& area, Segment line, double reach);

}  // namespace pedflux::engine
