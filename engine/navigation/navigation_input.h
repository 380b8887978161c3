#pragma once

#include "engine/geometry/plane.h"

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// What routes are computed from: the walkable regions of a building, how they join, and where people want to go.
/// Names appear in messages only. Lengths in metres.
namespace pedflux::engine::navigation {

using RegionIndex = std::uint32_t;
using ConnectionIndex = std::uint32_t;
using DestinationIndex = std::uint32_t;
inline constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

/// Where people walk and see each other in one plan: a floor, or one flight of stairs. Its parts do not overlap; they
/// need not join.
struct Region {
    std::string name;
    Polygons walkable;
    /// Length walked per metre of plan, at least 1: an incline is longer than its plan.
    double length_factor = 1;
};

/// A line in a region, on its edge or inside it.
struct RegionLine {
    RegionIndex region = 0;
    Segment line;
};

struct RegionArea {
    RegionIndex region = 0;
    Polygon area;
};

/// Whether people pass a connection, and at what cost: metres that its use adds to the length of a route.
struct Passage {
    bool open_forward = true;
    bool open_backward = true;
    double cost = 0;
};

/// A line of one region that is also a line of another: a door, or the first or last step of a flight. Who crosses it
/// at some fraction of `from` is then at the same fraction of `to`; where both regions share a plan the two are equal.
struct Connection {
    std::string name;
    RegionLine from;
    RegionLine to;
    Passage passage;
};

/// What some people do not pass although it is open, and what walking counts to them. Empty lists: as for all.
struct RouteClass {
    struct Closure {
        bool forward = false;
        bool backward = false;

        bool operator==(Closure const&) const = default;
    };
    std::vector<Closure> closed;  ///< of each connection
    std::vector<double> weights;  ///< of each region, what a metre walked there counts as, in metres; above 0
};

/// Reached on any of its lines or in any of its areas.
struct Destination {
    std::string name;
    std::vector<RegionLine> lines;
    std::vector<RegionArea> areas;
};

struct NavigationInput {
    std::vector<Region> regions;
    std::vector<Connection> connections;
    std::vector<Destination> destinations;
    /// Routes keep this distance from walls, so what is narrower than twice as much is no way through.
    double clearance = 0.2;
};

}  // namespace pedflux::engine::navigation
