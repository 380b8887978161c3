#pragma once

#include "engine/navigation/navigation.h"

namespace pedflux::engine::navigation {

/// A line on which a boundary may be passed.
struct Opening {
    Segment line;
    ConnectionIndex connection = none;
    DestinationIndex destination = none;
};

/// The boundary of an area, cut where an opening begins or ends. Where openings overlap, the first one counts.
std::vector<Wall> walls_of(Polygons const& area, std::vector<Opening> const& openings);

}  // namespace pedflux::engine::navigation
