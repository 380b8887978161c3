#pragma once

#include "engine/geometry/plane.h"

#include <pedflux/identifiers.h>

#include <array>

/// The lines across surfaces that count the agents that cross them.
namespace pedflux::engine {

class Document;

struct CordonLine {
    Segment line;
    double low = 0;  ///< metres, of its mesh
    double high = 0;
    std::array<bool, 2> counts{};  ///< crossings to its left, to its right
};

/// The line of a cordon; one that is disabled counts no crossings. Throws Exception for what is no cordon.
CordonLine cordon_line_of(Document const& document, GlobalId const& cordon);

/// Whether a step over the ground at a height crosses the line in a direction that counts. A cordon counts on the
/// ground that it lies on or reaches down to: from 2 m below its mesh to 0.3 m above it. A point on the line counts
/// as lying to its right, so that an agent that stops there is counted once.
bool crosses(CordonLine const& cordon, Segment step, double height);

}  // namespace pedflux::engine
