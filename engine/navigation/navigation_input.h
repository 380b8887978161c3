#pragma once

#include "engine/geometry/plane.h"

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// The input of route computation: the walkable regions of a building, their connections and the destinations. Names
/// appear in messages only. Lengths in metres.
namespace pedflux::engine::navigation {

using RegionIndex = std::uint32_t;
using ConnectionIndex = std::uint32_t;
using DestinationIndex = std::uint32_t;
inline constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

/// A surface on which people walk and see each other: a floor, or one flight of stairs. Its parts do not overlap and
/// need not be connected.
struct Region {
    std::string name;
    Polygons walkable;
    /// Walking distance per metre of the plane, at least 1; above 1 on an incline.
    double length_factor = 1;
};

/// A line inside a region or on its edge.
struct RegionLine {
    RegionIndex region = 0;
    Segment line;
};

struct RegionArea {
    RegionIndex region = 0;
    Polygon area;
};

/// Whether a connection can be passed, and its cost: metres that it adds to the length of a route.
struct Passage {
    bool open_forward = true;
    bool open_backward = true;
    double cost = 0;
};

/// A line that two regions share: a door, or the first or last step of a flight. Crossing it at some fraction of `from`
/// leads to the same fraction of `to`; the lines are equal where both regions share coordinates.
struct Connection {
    std::string name;
    RegionLine from;
    RegionLine to;
    Passage passage;
};

/// Restrictions and costs of one class of people. Empty lists stand for the defaults: all connections as they are,
/// weights of 1.
struct RouteClass {
    struct Closure {
        bool forward = false;
        bool backward = false;

        bool operator==(Closure const&) const = default;
    };
    std::vector<Closure> closed;  ///< by connection
    std::vector<double> weights;  ///< by region: cost of a metre walked there, in metres; above 0
};

/// A goal that is reached on any of its lines or in any of its areas.
struct Destination {
    std::string name;
    std::vector<RegionLine> lines;
    std::vector<RegionArea> areas;
};

struct NavigationInput {
    std::vector<Region> regions;
    std::vector<Connection> connections;
    std::vector<Destination> destinations;
    /// Distance that routes keep from walls. Passages narrower than twice this are impassable.
    double clearance = 0.2;
};

}  // namespace pedflux::engine::navigation
