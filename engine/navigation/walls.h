#pragma once

#include "engine/navigation/navigation.h"

namespace pedflux::engine::navigation {

/// A line along which a boundary can be passed.
struct Opening {
    Segment line;
    ConnectionIndex connection = none;
    DestinationIndex destination = none;
};

/// The boundary of an area, cut at the ends of openings. Where openings overlap, the first one counts.
std::vector<Wall> walls_of(Polygons const& area, std::vector<Opening> const& openings);

}  // namespace pedflux::engine::navigation
